#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "tarvelon/boundary/tarvelon/Rows.h"

/// The shape of the metamodel's classes in ARXML files. All facts about the format follow the AUTOSAR schemas
/// as collected by the crate autosar-data-specification (Daniel Thaler, MIT or Apache-2.0).
///
/// The Shapes.h of a package has one function shape(Is<X>) for each class X and one function items(Is<E>) for
/// each enumeration E. A shape says which element an object is, and where each of its properties stands:
///
///   constexpr auto shape(Is<Runnable>) {
///     return shapeOf(elements(element("RUNNABLE-ENTITY")),
///                    places(text("Symbol", "SYMBOL"),
///                           inside("DataAccess", "DATA-READ-ACCESSS").when("Kind",
///                           DataAccessKind::ImplicitRead), reference("SwAddrMethod",
///                           "SW-ADDR-METHOD-REF")));
///   }
///
/// A class has the places of its bases too; a place of its own replaces those of the bases for the same
/// property. A property may have several places: the first one that the schema knows at that point, in the
/// release of the file, is written, and all of them are read.
///
/// Paths:  The names of elements, from the object's element inwards, with "/" between them. Elements on the
///         way that are missing are added. If a many-valued property stands in its own elements, the last
///         element is repeated; a "*" behind a name marks another one: "A-REFS/A-REF-CONDITIONAL*/A-REF".
///
/// The path of a property may lead through the element of a contained object (Form::Role). Then the value
/// stands in that object's element, but it belongs to the owner. If the object has a property for the same
/// element, a file that is read sets the owner's one. Writing uses the object's value if the owner has none.
namespace Tarvelon::metamodel {

/// How a property stands in the element of its object.
enum class Form : std::uint8_t {
  Text,       ///< the value is the text of the element at the path
  Attribute,  ///< the value is an XML attribute of the object's element
  Body,       ///< the value is the text of the object's element itself
  Role,       ///< the contained object is the element at the path, whose name says the role
  Inside,     ///< the contained objects are below the path, as elements of their classes
  Reference,  ///< the element at the path has the path of the target as text; an empty path: the element
              ///< itself
  Inlined,    ///< the content of the contained object stands in the object's element
  Chosen,     ///< the element of the object, or the place where it stands, says the value
  Nowhere,    ///< no file has the property
};

/// A value that an object has because of its element, or because of the place where it stands.
struct ChoiceRow {
  const char* property = nullptr;  ///< the meta name; null if there is no choice
  std::int32_t value = 0;
};

/// The place of a property.
struct PlaceRow {
  const char* property = nullptr;  ///< the meta name
  Form form = Form::Nowhere;
  const char* path = "";      ///< of an attribute: its name
  const char* reason = "";    ///< of Nowhere: why no file has the property
  const char* fallback = "";  ///< of an attribute: what a new element has if the property has no value
  ChoiceRow choice;           ///< only contained objects with this value stand here, and all of them have it

  /// A new element has this text in the attribute if the property has no value, since the format requires
  /// one.
  constexpr PlaceRow otherwise(const char* text) const {
    PlaceRow row = *this;
    row.fallback = text;
    return row;
  }
  /// Only objects whose property `chosen` has this value stand at the place. Objects that are read there get
  /// the value.
  template <class Literal>
  constexpr PlaceRow when(const char* chosen, Literal value) const {
    PlaceRow row = *this;
    row.choice = {chosen, static_cast<std::int32_t>(value)};
    return row;
  }
};

constexpr PlaceRow placeRow(const char* property, Form form, const char* path = "", const char* reason = "") {
  PlaceRow row;
  row.property = property;
  row.form = form;
  row.path = path;
  row.reason = reason;
  return row;
}
constexpr PlaceRow text(const char* property, const char* path) {
  return placeRow(property, Form::Text, path);
}
constexpr PlaceRow attribute(const char* property, const char* name) {
  return placeRow(property, Form::Attribute, name);
}
constexpr PlaceRow body(const char* property) { return placeRow(property, Form::Body); }
constexpr PlaceRow role(const char* property, const char* path) {
  return placeRow(property, Form::Role, path);
}
constexpr PlaceRow inside(const char* property, const char* path) {
  return placeRow(property, Form::Inside, path);
}
constexpr PlaceRow reference(const char* property, const char* path = "") {
  return placeRow(property, Form::Reference, path);
}
constexpr PlaceRow inlined(const char* property) { return placeRow(property, Form::Inlined); }
constexpr PlaceRow chosen(const char* property) { return placeRow(property, Form::Chosen); }
constexpr PlaceRow nowhere(const char* property, const char* reason) {
  return placeRow(property, Form::Nowhere, "", reason);
}

/// The name of an element that is an object of the class, and what chooses the class if objects of several
/// classes have an element of this name.
struct ElementRow {
  const char* name = nullptr;
  ChoiceRow choice;                         ///< objects with this value have this element
  const char* reference = nullptr;          ///< the path of a reference inside the element ...
  const char* dest = nullptr;               ///< ... whose attribute DEST has this value
  const char* inlined = nullptr;            ///< the meta name of a property whose object is inlined ...
  const ClassName* inlinedClass = nullptr;  ///< ... and has this class
  const char* fixed = "";                   ///< an attribute that a new element has: `xml:space="default"`

  /// New elements have this attribute, which the format requires and no property has.
  constexpr ElementRow always(const char* attributeText) const {
    ElementRow row = *this;
    row.fixed = attributeText;
    return row;
  }
  template <class Literal>
  constexpr ElementRow when(const char* chosen, Literal value) const {
    ElementRow row = *this;
    row.choice = {chosen, static_cast<std::int32_t>(value)};
    return row;
  }
  /// The element is an object of this class if the reference at the path has this DEST.
  constexpr ElementRow ifDest(const char* path, const char* value) const {
    ElementRow row = *this;
    row.reference = path;
    row.dest = value;
    return row;
  }
  /// The element is the object together with an object of class X in `property`, which is Inlined.
  template <class X>
  constexpr ElementRow with(const char* property) const {
    ElementRow row = *this;
    row.inlined = property;
    row.inlinedClass = &X::Interface::kName;
    return row;
  }
};

constexpr ElementRow element(const char* name) {
  ElementRow row;
  row.name = name;
  return row;
}

/// The elements of a class.
template <std::size_t N>
struct ElementRows {
  std::array<ElementRow, N> rows{};
  const char* reason = "";  ///< why the class has no element of its own
};

template <class... Rows>
constexpr ElementRows<sizeof...(Rows)> elements(Rows... rows) {
  return {{rows...}};
}
/// The class is abstract, or its objects stand in elements that are named by their role (Form::Role) or in
/// the element of another object (Form::Inlined).
constexpr ElementRows<0> noElement() { return {}; }
/// No file has objects of the class.
constexpr ElementRows<0> noElement(const char* reason) { return {{}, reason}; }

template <class... Rows>
constexpr std::array<PlaceRow, sizeof...(Rows)> places(Rows... rows) {
  return {rows...};
}

/// The shape of a class; shapeOf(...) creates it.
template <std::size_t E, std::size_t P>
struct ShapeRow {
  ElementRows<E> elements;
  std::array<PlaceRow, P> places;
};

template <std::size_t E, std::size_t P>
constexpr ShapeRow<E, P> shapeOf(ElementRows<E> elementRows, std::array<PlaceRow, P> placeRows) {
  return {elementRows, placeRows};
}

/// The texts of an enumeration's values in files, in the order of the literals. An empty text: no file has
/// the value. No texts at all: the place or the element of an object says the value (Form::Chosen).
template <class... Texts>
constexpr std::array<std::string_view, sizeof...(Texts)> itemTexts(Texts... texts) {
  return {std::string_view(texts)...};
}

/// The content of one kind of element: which elements may stand in it, in which order, and in which releases.
struct ContentRow {
  const char* type;  ///< the name of the element; elements of one name with different content: name@owner
  bool isOrdered;    ///< whether the order of the items is binding
  /// The items, separated by "; ". An item is the name of an element, "=" and its kind if a row describes its
  /// content, "*" if it may be repeated, a blank, and the numbers of the releases: "PORTS=PORTS 1-22".
  const char* items;
};

/// A release of the format.
struct ReleaseRow {
  unsigned number;
  const char* name;     ///< as people write it: "R22-11"
  const char* schema;   ///< the file name of its schema: "AUTOSAR_00051.xsd"
  const char* aliases;  ///< other names, separated by blanks
};

/// The shape of a class without C++ types, for code that loops over all classes.
struct ShapeTable {
  const ClassName* name = nullptr;
  std::span<const ElementRow> elements;
  std::span<const PlaceRow> places;
  const char* reason = "";
};

/// The texts of an enumeration without C++ types.
struct ItemTable {
  const EnumerationName* name = nullptr;
  std::span<const std::string_view> texts;
};

}  // namespace Tarvelon::metamodel
