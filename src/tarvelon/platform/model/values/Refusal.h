#pragma once

#include <string>
#include <string_view>

#include "tarvelon/boundary/k7q/Object.h"

/// Every refusal of the engine, with its text, in one place. A text names the thing, what was expected, what
/// came and the cure.
namespace Tarvelon::metamodel::native {

class ClassMethods;
class EnumerationType;
class Instance;
class NativeModel;
class Property;
struct ClassData;

/// Raises an assertion of that message at the place of the caller, named relative to the repository. The
/// detail stands behind all that.
[[noreturn]] void raiseAssertion(const char* message, const std::string& detail = {},
                                 const char* file = __builtin_FILE(), int line = __builtin_LINE());
/// The text for an empty handle.
[[noreturn]] void raiseNullReference(const char* file = __builtin_FILE(), int line = __builtin_LINE());
/// The same text for an object or a model that cannot be used any more, with what it was and what became of
/// it.
[[noreturn]] void raiseLost(const Instance& object, const char* file = __builtin_FILE(),
                            int line = __builtin_LINE());
[[noreturn]] void raiseLost(const NativeModel& model, const char* file = __builtin_FILE(),
                            int line = __builtin_LINE());
/// "common.Package 'Brakes'", the class alone of an object without a name. A very long name is cut.
std::string describe(const Instance& object);
std::string describe(const Instance& object, std::u16string_view name);
/// "common.Package 'Brakes' was destroyed", by its name for as long as the object may come back.
std::string lossOf(const Instance& object);
/// "the model 'brakes' is closed".
std::string lossOf(const NativeModel& model);

/// The property of an object of a class, as a text names it: "Package.category".
std::string nameOf(const ClassData& cls, const Property& property);
/// A value as a text shows it: `int32 scalar 7`, `char vector "yes"`, a class name, `nothing`.
std::string describe(const K7Q::Object& value);

/// A value of the wrong kind: K7Q::WrongType.
[[noreturn]] void refuseKind(const ClassData& cls, const Property& property, const K7Q::Object& given);
/// A number that does not fit the property's type: K7Q::OutOfRange.
[[noreturn]] void refuseRange(const ClassData& cls, const Property& property, const K7Q::Object& given);
/// Any other value that may not stand here: K7Q::WrongValue.
[[noreturn]] void refuseEmpty(const ClassData& cls, const Property& property);
[[noreturn]] void refuseForeign(const ClassData& cls, const Property& property, const K7Q::Object& given);
[[noreturn]] void refuseDead(const ClassData& cls, const Property& property, const K7Q::Object& given);
[[noreturn]] void refuseCycle(const ClassData& cls, const Property& property, const Instance& given);
[[noreturn]] void refuseText(const ClassData& cls, const Property& property, char16_t unit,
                             std::size_t position);
/// A change that the property does not take whatever the value: K7Q::Exception.
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
