#pragma once

#include <vector>

#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace fuzz {

/// What a class's objects are, as far as the calls on them differ.
enum class Kind : std::uint8_t { Object, Sequence, Iterator, ValueSequence, ValueIterator };

/// What can be asked of a class, inherited members too.
struct Members {
  std::vector<ruvo::InternedName> methods;
  std::vector<const ruvo::PropertySlot*> properties;
  Kind kind = Kind::Object;
};

/// Everything that the object system publishes, found once.
class Catalog {
 public:
  /// Loads the module at first.
  static Catalog& instance();

  std::vector<ruvo::Class*> classes;
  std::vector<ruvo::Package*> packages;
  /// The classes with constructors.
  std::vector<ruvo::Class*> concrete;
  /// The sequences of enumeration values.
  std::vector<ruvo::Class*> valueSequences;
  /// Names of every kind, to be misspelt.
  std::vector<std::string_view> names;

  const Members& membersOf(ruvo::Class& cls);
  /// Those with constructors at or below a class.
  const std::vector<ruvo::Class*>& concreteBelow(ruvo::Class& cls);

 private:
  Catalog();
  void collect(ruvo::Package& package);
};

bool isEnumeration(ruvo::Class& cls);

}  // namespace fuzz
