#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tarvelon/boundary/hx/Array.h"
#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/boundary/ruvo/Interned.h"

/// The error texts of this library.
namespace K7Q::text {

inline constexpr const char* kNoMessage = "Internal assertion without a message detected! Please fix me asap";
inline constexpr const char* kNullSequence =
    "Cannot access NULL sequence. Use MakeSequence to create sequences.See testSequenceCreation in "
    "k7q/kernel/unittest/sequence_tests.";
inline constexpr const char* kSequenceEmpty = "sequence is empty";
inline constexpr const char* kIndexNotPositive = "sequence index must be positive";
inline constexpr const char* kIndexOutOfBounds = "sequence index out of bounds";
inline constexpr const char* kIteratorAtEnd =
    "the iterator is after the last element; compare it with end() first";
inline constexpr const char* kIteratorAtBegin =
    "the iterator is at the first element; compare it with begin() first";
inline constexpr const char* kIteratorStale =
    "the sequence has changed since the iterator was taken; take a new one from begin() or end(), or use "
    "the one that the change returned";
inline constexpr const char* kIteratorOfOther =
    "the iterator belongs to another sequence; take one from this sequence";
inline constexpr const char* kMultiValued = "You cannot set a multi-valued property";
inline constexpr const char* kReadOnly = "You cannot set a read-only property";
inline constexpr const char* kThroughImmutable =
    "You cannot set a property through an immutable object; use the mutable object, which asMutable() "
    "returns";
inline constexpr const char* kReadOnlyView =
    "the view is read-only because of its deviant; asDeviant(model) with the model itself returns a writable "
    "view";
inline constexpr const char* kTooManyElements =
    "too many elements: set an optional value to one element, or unset it with an empty array";
inline constexpr const char* kNoModelFactory =
    "no library that creates models is loaded; load the native model library, or set one with "
    "K7Q::setModelFactory()";

/// Formats "`where`: expected `expected`, got `given`".
std::string mismatch(std::string_view where, std::string_view expected, std::string_view given);
/// Formats a host value or a number as the object system does.
std::string shown(const hx::hxArray* given);
std::string shown(double number);
/// The part of a dotted name behind the last dot.
std::string_view shortName(const ruvo::InternedName& dotted);
/// Formats the class of a native object.
std::string shown(const NSInterface::ObjectIntf& object);
/// The details of a wrong index: the index counted from 0 (C++) and from 1 (hosts), and the size of the
/// sequence.
TARVELON_API std::string indexDetail(std::string_view sequence, std::int64_t index, std::size_t size);
/// The error text for a URI that another open model has.
std::string uriTaken(std::u16string_view uri);

}  // namespace K7Q::text

/// The same function as k7q::getTooManyElementsMessage(), with C linkage.
extern "C" TARVELON_API const char* k7q_getTooManyElementsMessage();
