#pragma once

#include <vector>

#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace fuzz {

/// The kinds of objects that have different calls.
enum class Kind : std::uint8_t { Object, Sequence, Iterator, ValueSequence, ValueIterator };

/// The members of a class, including inherited ones.
struct Members {
  std::vector<ruvo::InternedName> methods;
  std::vector<const ruvo::PropertySlot*> properties;
  Kind kind = Kind::Object;
};

/// Everything that the object system publishes, collected once.
class Catalog {
 public:
  /// Loads the module on the first call.
  static Catalog& instance();

  std::vector<ruvo::Class*> classes;
  std::vector<ruvo::Package*> packages;
  /// The classes with constructors.
  std::vector<ruvo::Class*> concrete;
  /// The sequences of enumeration values.
  std::vector<ruvo::Class*> valueSequences;
  /// Names of every kind, for misspelling.
  std::vector<std::string_view> names;

  const Members& membersOf(ruvo::Class& cls);
  /// A class and its subclasses, as far as they have constructors.
  const std::vector<ruvo::Class*>& concreteBelow(ruvo::Class& cls);

 private:
  Catalog();
  void collect(ruvo::Package& package);
};

bool isEnumeration(ruvo::Class& cls);

}  // namespace fuzz
