#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/platform/model/words/KeyedHash.h"

/// The names of the metamodel in files:
///
/// - A package has the namespace `urn:tarvelon:metamodel:` followed by its dotted name without
///   `Tarvelon.metamodel.`. Its prefix is the last part of that name.
/// - A stored property is a feature of the class whose row introduces it. Its name is the one that hosts
///   show. A row that redefines an inherited property shares the storage of that property, and so its
///   feature.
/// - A derived property is not written to files.
namespace Tarvelon::files {

namespace native = metamodel::native;

inline constexpr std::string_view kXmi = "http://www.omg.org/XMI";
inline constexpr std::string_view kXsi = "http://www.w3.org/2001/XMLSchema-instance";
inline constexpr std::string_view kOwn = "urn:tarvelon:file";
inline constexpr std::string_view kMetamodelSpace = "urn:tarvelon:metamodel:";

std::string namespaceOf(const native::PackageRow& package);
/// "behavior"
std::string_view prefixOf(const native::PackageRow& package) noexcept;
/// The package that contains a class.
const native::PackageRow& packageOf(const native::ClassMethods& cls);
/// "behavior:Runnable"
std::string typeName(const native::ClassMethods& cls);

/// A stored property of a class.
struct Feature {
  /// The declaration that introduces the property. It gives the name, and the type that xsi:type is compared
  /// with.
  const native::Property* declared = nullptr;
  /// The most derived declaration. Values are checked against it.
  const native::Property* narrowest = nullptr;
  std::uint8_t slot = 0;
  std::uint64_t nameHash = 0;
  std::string_view name() const noexcept { return declared->row().name; }
  /// Whether the values are written as elements; otherwise they are written as one attribute.
  bool isElement() const noexcept;
};

/// A class with its names in files.
struct ClassSchema {
  explicit ClassSchema(const native::ClassData& data);
  ClassSchema(const ClassSchema&) = delete;
  ClassSchema& operator=(const ClassSchema&) = delete;

  /// Null if there is no feature of that name.
  const Feature* find(std::string_view name) const noexcept;
  std::vector<std::string_view> featureNames() const;

  const native::ClassData* data;
  std::string type;
  std::uint64_t typeHash;
  /// Indexed by slot.
  std::vector<Feature> features;
  /// A bit mask of the slots whose features are written as elements.
  std::uint64_t elementSlots = 0;
  /// The feature Name. Null if the class has none.
  const Feature* name = nullptr;
  /// The number of values of the last object that was read. The reader reserves as many for the next object.
  unsigned expectedValues = 4;

 private:
  static constexpr std::uint8_t kNone = 0xFF;
  std::size_t bucketOf(std::uint64_t hash) const noexcept { return hash & (mBuckets.size() - 1); }
  /// A hash table of slots by feature name, with open addressing.
  std::vector<std::uint8_t> mBuckets;
};

/// The classes that a save or load has used so far, created on demand.
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

/// A hash that is the same in every process and on every machine; ids are computed from it.
std::uint64_t hashOf(std::string_view text) noexcept;
std::uint64_t hashOf(std::u16string_view text) noexcept;
using native::mixed;

}  // namespace Tarvelon::files
