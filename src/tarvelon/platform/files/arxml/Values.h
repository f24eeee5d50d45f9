#pragma once

#include <string>
#include <string_view>

#include "tarvelon/platform/files/shared/ScalarText.h"

namespace Tarvelon::files::arxml {

/// Reads a number, a truth value or the text of an enumeration value, as ARXML writes them: integers may be
/// hexadecimal (0x1F), binary (0b101) or octal (017), numbers may be INF, -INF and NaN. REQUIRES: trimmed
/// text.
ScalarFault readValue(const metamodel::native::Property& property, std::string_view text,
                      metamodel::native::Word& word);
/// The text of such a value. Empty for an enumeration value that no file can have.
std::string valueText(const metamodel::native::Property& property, metamodel::native::Word word);
/// What a text should have been: "a whole number", "one of A, B, C".
std::string expectedText(const metamodel::native::Property& property);

/// Appends text with `&`, `<` and `>` as references.
void appendEscaped(std::string& target, std::string_view text);
/// The same for the value of an attribute in quotes.
void appendAttribute(std::string& target, std::string_view text);
/// A start tag with another value of an attribute. An empty value leaves the attribute out. The tag stays as
/// it is if the attribute has the value.
std::string withAttribute(std::string tag, std::string_view name, const std::string& value);

}  // namespace Tarvelon::files::arxml
