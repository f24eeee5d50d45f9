#include "binding/Enumeration.h"

namespace binding {

std::vector<std::string_view> literalsOf(const Tarvelon::metamodel::EnumerationName& enumeration) {
  std::vector<std::string_view> literals;
  std::string_view rest(enumeration.literals);
  while (!rest.empty()) {
    const auto comma = rest.find(',');
    literals.push_back(rest.substr(0, comma));
    if (comma == std::string_view::npos) break;
    rest.remove_prefix(std::min(rest.size(), comma + 2));
  }
  return literals;
}

K7Q::ImmutableType getMetaTypeOfValue(const K7Q::Object& self) {
  self.requireValid();
  return self.getInterface()->getMetaType(self.getDeviant());
}

}  // namespace binding
