#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/platform/model/words/KeyedHash.h"

/// How the metamodel is called in files. One rule for each kind of thing:
///
/// - A package has the namespace `urn:tarvelon:metamodel:` and its dotted name behind `Tarvelon.metamodel.`;
///   its prefix is the last part of that.
/// - A stored property is a feature of the class whose row introduces it, under the name that hosts show. A
///   row that redefines an inherited one shares its storage, and so its feature.
/// - A derived property is not in files.
namespace Tarvelon::files {

namespace native = metamodel::native;

inline constexpr std::string_view kXmi = "http://www.omg.org/XMI";
inline constexpr std::string_view kXsi = "http://www.w3.org/2001/XMLSchema-instance";
inline constexpr std::string_view kOwn = "urn:tarvelon:file";

std::string namespaceOf(const native::PackageRow& package);
/// "behavior"
std::string_view prefixOf(const native::PackageRow& package) noexcept;
/// The package in which a class stands.
const native::PackageRow& packageOf(const native::ClassMethods& cls);
/// "behavior:Runnable"
std::string typeName(const native::ClassMethods& cls);

/// A stored property as an object of some class has it.
struct Feature {
  /// The row that introduces it: with its name and the type that xsi:type is measured against.
  const native::Property* declared = nullptr;
  /// The narrowest row: what a value is checked against.
  const native::Property* narrowest = nullptr;
  std::uint8_t slot = 0;
  std::uint64_t nameHash = 0;
  std::string_view name() const noexcept { return declared->row().name; }
  /// Whether its values stand as elements in a file, else in an attribute.
  bool isElement() const noexcept;
};

/// A class as files know it.
struct ClassSchema {
  explicit ClassSchema(const native::ClassData& data);
  ClassSchema(const ClassSchema&) = delete;
  ClassSchema& operator=(const ClassSchema&) = delete;

  /// Null for a name without feature.
  const Feature* find(std::string_view name) const noexcept;
  std::vector<std::string_view> featureNames() const;

  const native::ClassData* data;
  std::string type;
  std::uint64_t typeHash;
  /// By slot.
  std::vector<Feature> features;
  /// Those whose features are elements.
  std::uint64_t elementSlots = 0;
  /// The feature that names an object, null for a class without one.
  const Feature* name = nullptr;
  /// How many values the last object of the class had: a guess of the reader for the next.
  unsigned expectedValues = 4;

 private:
  static constexpr std::uint8_t kNone = 0xFF;
  std::size_t bucketOf(std::uint64_t hash) const noexcept { return hash & (mBuckets.size() - 1); }
  /// Slots by the hash of the name, open addressing.
  std::vector<std::uint8_t> mBuckets;
};

/// The classes that one writing or reading meets, made when they are first met.
class Schema {
 public:
  ClassSchema& of(const native::ClassData& data) {
    if (data.ordinal < mClasses.size() && mClasses[data.ordinal]) return *mClasses[data.ordinal];
    return make(data);
  }

 private:
  ClassSchema& make(const native::ClassData& data);
  std::vector<std::unique_ptr<ClassSchema>> mClasses;
};

/// A hash that is the same in every process and on every machine.
std::uint64_t hashOf(std::string_view text) noexcept;
std::uint64_t hashOf(std::u16string_view text) noexcept;
using native::mixed;

}  // namespace Tarvelon::files
