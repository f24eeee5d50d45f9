#pragma once

#include <string>
#include <string_view>

#include "tarvelon/boundary/k7q/Object.h"

/// All errors that the engine raises, with their texts. A text names the thing, what was expected, what was
/// given, and how to correct it.
namespace Tarvelon::metamodel::native {

class ClassMethods;
class EnumerationType;
class Instance;
class NativeModel;
class Property;
struct ClassData;

/// Raises K7Q::Exception with that message, the caller's position in the source, and the detail. The path of
/// the source is relative to the repository.
[[noreturn]] void raiseAssertion(const char* message, const std::string& detail = {},
                                 const char* file = __builtin_FILE(), int line = __builtin_LINE());
/// Raises K7Q::Exception with the text kNullReference, for a null handle.
[[noreturn]] void raiseNullReference(const char* file = __builtin_FILE(), int line = __builtin_LINE());
/// Raises the same exception for an object or model that cannot be used any more. Its text also says what the
/// object was and what happened to it.
[[noreturn]] void raiseLost(const Instance& object, const char* file = __builtin_FILE(),
                            int line = __builtin_LINE());
[[noreturn]] void raiseLost(const NativeModel& model, const char* file = __builtin_FILE(),
                            int line = __builtin_LINE());
/// "common.Package 'Brakes'", or the class alone if the object has no name. A very long name is shortened.
std::string describe(const Instance& object);
std::string describe(const Instance& object, std::u16string_view name);
/// "common.Package 'Brakes' was destroyed". The name is known as long as an undo can restore the object.
std::string lossOf(const Instance& object);
/// "the model 'brakes' is closed".
std::string lossOf(const NativeModel& model);

/// The name of a property in texts: "Package.category".
std::string nameOf(const ClassData& cls, const Property& property);
/// A value in texts: `int32 scalar 7`, `char vector "yes"`, the name of a class, or `nothing`.
std::string describe(const K7Q::Object& value);

/// Raise K7Q::WrongType: a value of the wrong kind.
[[noreturn]] void refuseKind(const ClassData& cls, const Property& property, const K7Q::Object& given);
/// Raise K7Q::OutOfRange: a number that the property's type cannot hold.
[[noreturn]] void refuseRange(const ClassData& cls, const Property& property, const K7Q::Object& given);
/// Raise K7Q::WrongValue: a value of the right type that is not allowed here.
[[noreturn]] void refuseEmpty(const ClassData& cls, const Property& property);
[[noreturn]] void refuseForeign(const ClassData& cls, const Property& property, const K7Q::Object& given);
[[noreturn]] void refuseDead(const ClassData& cls, const Property& property, const K7Q::Object& given);
[[noreturn]] void refuseCycle(const ClassData& cls, const Property& property, const Instance& given);
[[noreturn]] void refuseText(const ClassData& cls, const Property& property, char16_t unit,
                             std::size_t position);
/// Raise K7Q::Exception: the property does not allow this operation, whatever the value is.
[[noreturn]] void refuseMany(const ClassData& cls, const Property& property);
[[noreturn]] void refuseSingle(const ClassData& cls, const Property& property);
[[noreturn]] void refuseReadOnly(const ClassData& cls, const Property& property);
[[noreturn]] void refuseUnset(const ClassData& cls, const Property& property);
[[noreturn]] void refuseImmutableView(const ClassData& cls, const Property& property);
[[noreturn]] void refuseIterator(const ClassData& cls, const Property& property);
[[noreturn]] void refuseStaleIterator(const ClassData& cls, const Property& property);

[[noreturn]] void refuseLiteral(const EnumerationType& type, std::string_view literal);
[[noreturn]] void refuseAsEnumeration(const K7Q::Object& given);

}  // namespace Tarvelon::metamodel::native
