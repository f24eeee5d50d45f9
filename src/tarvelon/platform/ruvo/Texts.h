#pragma once

#include <span>
#include <string>
#include <string_view>

#include "tarvelon/boundary/Export.h"
#include "tarvelon/platform/ruvo/HostValue.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"

/// The error texts of the object system.
namespace ruvo {

/// The name in quotes. A very long name is truncated, and its length is given.
TARVELON_API std::string quotedName(std::string_view name);

/// "; did you mean 'symbol'?", or empty if no candidate is similar.
TARVELON_API std::string didYouMean(std::string_view name, std::span<const std::string_view> candidates);

/// The type of a value as shown in a list of arguments: "logical scalar", or the full name of a class.
std::string typeText(const HostValue& value);
/// The expected type in words of a user: "char vector" for "char", "int32 scalar or an empty value" for an
/// optional scalar. Other types have their own names.
TARVELON_API std::string expectedText(const InternedName& type);
/// The type with its range, for a number out of range: "int32 scalar (a whole number from -2147483648 to
/// 2147483647)".
std::string rangeText(const InternedName& type);

/// Formats "`where`: expected `expected`, got `value`".
std::string mismatchText(std::string_view where, std::string_view expected, const HostValue& value);
/// "Runnable.symbol": the short name of the object's class, and the member.
std::string memberText(const Class& cls, std::string_view member);

/// The error text for an abstract class. It lists the subclasses that can be constructed; after the first 12
/// it only gives their number.
TARVELON_API std::string abstractText(std::string_view className,
                                      std::span<const std::string_view> constructible);
/// Raises K7Q::WrongType for an abstract class; the text lists the subclasses that can be constructed.
/// Cost: defines every class of the package tree that the class belongs to.
[[noreturn]] void throwAbstract(Class& cls);
/// Raises K7Q::UnknownName for a member that does not exist. `kind` is "property" or "method".
[[noreturn]] void throwUnknownMember(Class& cls, std::string_view kind, std::string_view name);

}  // namespace ruvo
