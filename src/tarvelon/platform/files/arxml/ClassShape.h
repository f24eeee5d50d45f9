#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "tarvelon/platform/files/arxml/Format.h"
#include "tarvelon/platform/model/metamodel/ClassData.h"

namespace Tarvelon::files::arxml {

/// A place of a property in objects of one class.
struct Place {
  const metamodel::PlaceRow* row = nullptr;
  const native::Property* property = nullptr;  ///< the most derived declaration
  std::uint8_t slot = 0;
  std::uint16_t index = 0;    ///< its index in ClassShape::places
  std::uint16_t spot = 0;     ///< where its values stand: their own elements, or the element around them
  std::uint16_t repeats = 0;  ///< the spot that is repeated for each value; 0: none
  bool isMany() const noexcept { return property->isMany(); }
  metamodel::Form form() const noexcept { return row->form; }
};

/// An element inside of an object's element, as far as the places of the class lead there.
struct Spot {
  std::uint32_t name = 0;  ///< Format::numberOf(); 0 for the object's element itself
  std::uint16_t parent = 0;
  std::uint16_t value = kNone;          ///< the place whose value the element is
  std::vector<std::uint16_t> inside;    ///< the places whose objects stand directly inside
  std::vector<std::uint16_t> children;  ///< the spots below
  std::vector<std::uint16_t> places;    ///< all places here and below
  static constexpr std::uint16_t kNone = 0xFFFF;
};

/// The shape of a class, with the places of its bases.
class ClassShape {
 public:
  explicit ClassShape(const native::ClassData& cls);
  ClassShape(const ClassShape&) = delete;
  ClassShape& operator=(const ClassShape&) = delete;

  const native::ClassData& cls() const noexcept { return *mClass; }
  const metamodel::ShapeTable& rows() const noexcept { return *mRows; }
  const std::vector<Place>& places() const noexcept { return mPlaces; }
  const Spot& spot(std::uint16_t index) const noexcept { return mSpots[index]; }
  std::uint16_t spotCount() const noexcept { return static_cast<std::uint16_t>(mSpots.size()); }
  /// The spot of that name directly below another one; 0 if there is none.
  std::uint16_t find(std::uint16_t spot, std::uint32_t name) const noexcept;
  /// The place that is the text of the object's element, or its reference. Null if there is none.
  const Place* body() const noexcept { return mBody == Spot::kNone ? nullptr : &mPlaces[mBody]; }
  const std::vector<std::uint16_t>& attributes() const noexcept { return mAttributes; }
  const std::vector<std::uint16_t>& inlined() const noexcept { return mInlined; }
  /// Whether objects have a SHORT-NAME, and so a path.
  bool isNamed() const noexcept { return mNamePlace != Spot::kNone; }
  /// The slot of the property with that meta name; ClassData::kNoSlot if it is not stored.
  const native::Property* property(std::string_view metaName) const noexcept {
    return mClass->findProperty(metaName);
  }
  std::uint8_t slotOf(const native::Property& property) const noexcept;

 private:
  void addPlaces(const native::ClassData& from);
  bool isSpoken(std::uint8_t slot, const native::ClassData& by) const;
  void addPlace(const metamodel::PlaceRow& row, const native::ClassData& from);
  void addPath(Place& place);
  std::uint16_t addSpot(std::uint16_t parent, std::string_view name);

  const native::ClassData* mClass;
  const metamodel::ShapeTable* mRows;
  std::vector<Place> mPlaces;
  std::vector<Spot> mSpots;
  std::vector<std::uint16_t> mAttributes;
  std::vector<std::uint16_t> mInlined;
  std::uint16_t mBody = Spot::kNone;
  std::uint16_t mNamePlace = Spot::kNone;
};

/// The shapes that a load or save has used so far, created on demand.
class ClassShapes {
 public:
  const ClassShape& of(const native::ClassData& cls) {
    if (cls.ordinal < mShapes.size() && mShapes[cls.ordinal]) return *mShapes[cls.ordinal];
    return make(cls);
  }

 private:
  const ClassShape& make(const native::ClassData& cls);
  std::vector<std::unique_ptr<ClassShape>> mShapes;
};

}  // namespace Tarvelon::files::arxml
