#pragma once

#include <span>
#include <string>
#include <string_view>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/platform/ruvo/HostValue.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"

/// The words of the object system's errors: each kind has its format here.
namespace ruvo {

/// A name between quotes: one that no person writes is cut, and its length said.
TARVELON_API std::string quotedName(std::string_view name);

/// "; did you mean 'symbol'?", empty if no candidate is close.
TARVELON_API std::string didYouMean(std::string_view name, std::span<const std::string_view> candidates);

/// "logical scalar", a class's full name: what a list of arguments shows of a value.
std::string typeText(const HostValue& value);
/// What a person gives for a type, where its name is one of the mechanics: "char vector" for "char", "int32
/// scalar or an empty value" for an optional one. Other types by their names.
TARVELON_API std::string expectedText(const InternedName& type);
/// "int32 scalar (a whole number from -2147483648 to 2147483647)": what a number out of range should have
/// been.
std::string rangeText(const InternedName& type);

/// `where`: expected `expected`, got `value`.
std::string mismatchText(std::string_view where, std::string_view expected, const HostValue& value);
/// "Runnable.symbol", by the object's own class.
std::string memberText(const Class& cls, std::string_view member);

/// What is said of a class without constructor: those below it that have one, the first of them by name.
TARVELON_API std::string abstractText(std::string_view className,
                                      std::span<const std::string_view> constructible);
/// Raises K7Q::WrongType for a class without constructor, naming those below it that have one.
/// Cost: defines every class of the package tree that the class stands in.
[[noreturn]] void throwAbstract(Class& cls);
/// Raises K7Q::UnknownName for what a class has not: `kind` is "property" or "method".
[[noreturn]] void throwUnknownMember(Class& cls, std::string_view kind, std::string_view name);

}  // namespace ruvo
