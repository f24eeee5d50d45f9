#include "tarvelon/platform/files/arxml/ClassShape.h"

#include <algorithm>

namespace Tarvelon::files::arxml {

using metamodel::Form;
using metamodel::PlaceRow;

namespace {

bool hasPath(Form form) noexcept {
  return form == Form::Text || form == Form::Role || form == Form::Inside || form == Form::Reference;
}

}  // namespace

ClassShape::ClassShape(const native::ClassData& cls)
    : mClass(&cls), mRows(&Format::get().shapeOf(cls.methods->className())) {
  mSpots.emplace_back();
  addPlaces(cls);
  for (auto base = cls.ancestors.rbegin(); base != cls.ancestors.rend(); ++base) {
    if (*base != &cls) addPlaces(**base);
  }
}

std::uint8_t ClassShape::slotOf(const native::Property& property) const noexcept {
  return mClass->placeOf(property.ownerClass().data(), property.id()).slot;
}

/// Whether a more derived class has places for the property. `by` is the class whose places are being added.
bool ClassShape::isSpoken(std::uint8_t slot, const native::ClassData& by) const {
  const metamodel::ShapeTable& own = Format::get().shapeOf(by.methods->className());
  return std::ranges::any_of(mPlaces, [&](const Place& place) {
    if (place.slot != slot) return false;
    return std::ranges::none_of(own.places, [&](const PlaceRow& row) { return &row == place.row; });
  });
}

void ClassShape::addPlaces(const native::ClassData& from) {
  for (const PlaceRow& row : Format::get().shapeOf(from.methods->className()).places) {
    addPlace(row, from);
  }
}

void ClassShape::addPlace(const PlaceRow& row, const native::ClassData& from) {
  Place place;
  place.row = &row;
  const native::Property* found = property(row.property);
  if (!found) return;
  const native::PropertyPlace& stored = mClass->placeOf(found->ownerClass().data(), found->id());
  if (stored.slot == native::ClassData::kNoSlot || isSpoken(stored.slot, from)) return;
  place.property = mClass->slotProperties[stored.slot];
  place.slot = stored.slot;
  place.index = static_cast<std::uint16_t>(mPlaces.size());
  if (hasPath(row.form)) {
    addPath(place);
  } else if (row.form == Form::Attribute) {
    mAttributes.push_back(place.index);
  } else if (row.form == Form::Inlined) {
    mInlined.push_back(place.index);
  } else if (row.form == Form::Body) {
    mBody = place.index;
  }
  mPlaces.push_back(place);
}

std::uint16_t ClassShape::addSpot(std::uint16_t parent, std::string_view name) {
  const std::uint32_t number = Format::get().numberOf(name);
  if (const std::uint16_t found = find(parent, number); found != 0) return found;
  const auto index = static_cast<std::uint16_t>(mSpots.size());
  Spot spot;
  spot.name = number;
  spot.parent = parent;
  mSpots.push_back(std::move(spot));
  mSpots[parent].children.push_back(index);
  return index;
}

void ClassShape::addPath(Place& place) {
  std::string_view path = place.row->path;
  std::uint16_t spot = 0;
  while (!path.empty()) {
    const std::size_t slash = std::min(path.find('/'), path.size());
    std::string_view name = path.substr(0, slash);
    path.remove_prefix(std::min(slash + 1, path.size()));
    const bool isRepeated = name.ends_with('*');
    if (isRepeated) name.remove_suffix(1);
    spot = addSpot(spot, name);
    if (isRepeated) place.repeats = spot;
  }
  place.spot = spot;
  const Form form = place.form();
  if (form == Form::Inside) {
    mSpots[spot].inside.push_back(place.index);
  } else if (spot == 0) {
    mBody = place.index;
  } else {
    if (place.isMany() && place.repeats == 0) place.repeats = spot;
    if (mSpots[spot].value == Spot::kNone) mSpots[spot].value = place.index;
    if (place.slot == mClass->nameSlot && std::string_view(place.row->path) == "SHORT-NAME")
      mNamePlace = place.index;
  }
  for (std::uint16_t each = spot;; each = mSpots[each].parent) {
    mSpots[each].places.push_back(place.index);
    if (each == 0) return;
  }
}

std::uint16_t ClassShape::find(std::uint16_t spot, std::uint32_t name) const noexcept {
  for (const std::uint16_t child : mSpots[spot].children) {
    if (mSpots[child].name == name) return child;
  }
  return 0;
}

const ClassShape& ClassShapes::make(const native::ClassData& cls) {
  if (cls.ordinal >= mShapes.size()) mShapes.resize(cls.ordinal + 1);
  mShapes[cls.ordinal] = std::make_unique<ClassShape>(cls);
  return *mShapes[cls.ordinal];
}

}  // namespace Tarvelon::files::arxml
