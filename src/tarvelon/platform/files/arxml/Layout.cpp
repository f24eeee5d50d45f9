#include "tarvelon/platform/files/arxml/Layout.h"

namespace Tarvelon::files::arxml {

std::string_view indentOf(const Document& document, std::uint32_t element) noexcept {
  const std::string_view before = document.text().substr(0, document.element(element).begin);
  const std::size_t line = before.rfind('\n');
  const std::string_view indent = line == std::string_view::npos ? before : before.substr(line + 1);
  return indent.find_first_not_of(" \t") == std::string_view::npos ? indent : std::string_view();
}

Layout Layout::of(const Document& document) {
  Layout layout;
  const std::size_t line = document.text().find('\n');
  if (line != std::string_view::npos && line > 0 && document.text()[line - 1] == '\r')
    layout.newline = "\r\n";
  for (std::uint32_t each = 1; each < document.size(); ++each) {
    const Element& element = document.element(each);
    const Element& parent = document.element(element.parent);
    const std::string_view between = document.slice(parent.contentBegin, element.begin);
    if (each != element.parent + 1) continue;
    const bool isOnNewLine = between.find('\n') != std::string_view::npos;
    layout.hasLines = isOnNewLine || (layout.hasLines && each != 1);
    if (!isOnNewLine) continue;
    const std::string_view outer = indentOf(document, element.parent);
    const std::string_view inner = indentOf(document, each);
    if (inner.size() > outer.size() && inner.starts_with(outer)) {
      layout.unit = inner.substr(outer.size());
      break;
    }
    layout.unit.clear();
  }
  return layout;
}

}  // namespace Tarvelon::files::arxml
