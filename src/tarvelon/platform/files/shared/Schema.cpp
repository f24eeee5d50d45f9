#include "tarvelon/platform/files/shared/Schema.h"

#include <algorithm>
#include <bit>

#include "tarvelon/platform/model/metamodel/ClassMethods.h"

namespace Tarvelon::files {

using native::ClassData;

namespace {

constexpr std::string_view kMetamodel = "Tarvelon.metamodel.";

}  // namespace

std::uint64_t hashOf(std::string_view text) noexcept {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char unit : text) hash = (hash ^ static_cast<unsigned char>(unit)) * 0x100000001B3;
  return mixed(hash);
}

std::uint64_t hashOf(std::u16string_view text) noexcept {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char16_t unit : text) hash = (hash ^ unit) * 0x100000001B3;
  return mixed(hash);
}

std::string namespaceOf(const native::PackageRow& package) {
  std::string_view name = package.name;
  if (name.starts_with(kMetamodel)) name.remove_prefix(kMetamodel.size());
  return std::string(kMetamodelSpace) + std::string(name);
}

std::string_view prefixOf(const native::PackageRow& package) noexcept {
  return package.name.substr(package.name.rfind('.') + 1);
}

const native::PackageRow& packageOf(const native::ClassMethods& cls) {
  const std::string_view full = cls.className().name;
  const std::string_view name = full.substr(0, full.rfind('.'));
  return *std::ranges::find(native::packageRows(), name, &native::PackageRow::name);
}

std::string typeName(const native::ClassMethods& cls) {
  return std::string(prefixOf(packageOf(cls))) + ":" + cls.className().shortName();
}

bool Feature::isElement() const noexcept {
  const native::Storage storage = declared->storage();
  return declared->holds() || storage == native::Storage::Texts || storage == native::Storage::Enumerations;
}

ClassSchema::ClassSchema(const ClassData& cls)
    : data(&cls), type(typeName(*cls.methods)), typeHash(hashOf(type)), features(cls.slotProperties.size()) {
  for (const ClassData* ancestor : cls.ancestors) {
    for (const auto& property : ancestor->properties) {
      if (!property || property->storage() == native::Storage::None || property->row().redefined) continue;
      const std::uint8_t slot = cls.placeOf(*ancestor, property->id()).slot;
      features[slot] = {property.get(), cls.slotProperties[slot], slot, hashOf(property->row().name)};
    }
  }
  mBuckets.resize(std::bit_ceil(2 * features.size() + 2), kNone);
  for (const Feature& feature : features) {
    if (feature.isElement()) elementSlots |= std::uint64_t{1} << feature.slot;
    std::size_t bucket = bucketOf(feature.nameHash);
    while (mBuckets[bucket] != kNone) bucket = bucketOf(bucket + 1);
    mBuckets[bucket] = feature.slot;
  }
  const Feature* named = find("Name");
  if (named && named->declared->storage() == native::Storage::Text) name = named;
}

const Feature* ClassSchema::find(std::string_view wanted) const noexcept {
  for (std::size_t bucket = bucketOf(hashOf(wanted));; bucket = bucketOf(bucket + 1)) {
    if (mBuckets[bucket] == kNone) return nullptr;
    const Feature& feature = features[mBuckets[bucket]];
    if (feature.name() == wanted) return &feature;
  }
}

std::vector<std::string_view> ClassSchema::featureNames() const {
  std::vector<std::string_view> names;
  for (const Feature& feature : features) names.push_back(feature.name());
  return names;
}

ClassSchema& Schema::make(const ClassData& data) {
  if (data.ordinal >= mClasses.size()) mClasses.resize(data.ordinal + 1);
  mClasses[data.ordinal] = std::make_unique<ClassSchema>(data);
  return *mClasses[data.ordinal];
}

}  // namespace Tarvelon::files
