#include "tarvelon/binding/Enumeration.h"

#include "tarvelon/boundary/ut/Memory.h"

namespace binding {

namespace {

// All enumerations share these functions, because values compare as numbers.
bool eq(AnyEnumeration left, AnyEnumeration right) { return left.value == right.value; }
bool ne(AnyEnumeration left, AnyEnumeration right) { return left.value != right.value; }
bool gt(AnyEnumeration left, AnyEnumeration right) { return left.value > right.value; }
bool ge(AnyEnumeration left, AnyEnumeration right) { return left.value >= right.value; }
bool lt(AnyEnumeration left, AnyEnumeration right) { return left.value < right.value; }
bool le(AnyEnumeration left, AnyEnumeration right) { return left.value <= right.value; }

template <auto F>
constexpr MethodRow comparison(const char* name) {
  return asArgument<F>(name, "logical scalar", {kSelf, kSelf}).naming("other");
}

constexpr MethodRow kComparisons[] = {
    comparison<&eq>("eq"), comparison<&ne>("ne"), comparison<&gt>("gt"),
    comparison<&ge>("ge"), comparison<&lt>("lt"), comparison<&le>("le"),
};

}  // namespace

AnyEnumeration Conversion<AnyEnumeration>::fromSlot(RVOValue slot) {
  const auto unboxed = unboxAs(slot.array(), K7Q::tagsOf<K7Q::NSInterface::ObjectIntf>());
  if (!unboxed.interface) return {0, 0};
  const K7Q::Object object(static_cast<K7Q::NSInterface::ObjectIntf*>(unboxed.interface), unboxed.deviant);
  return {Tarvelon::metamodel::native::enumerationFromObject(object), 1};
}

std::vector<std::string_view> literalsOf(const EnumerationName& enumeration) {
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

void displayEnumeration(const EnumerationName& name, std::int32_t value) {
  utPrintf("%s\n",
           K7Q::String::to_string(Tarvelon::metamodel::native::enumerationToString(name, value)).c_str());
}

void defineEnumeration(ruvo::RVOClass& cls, const EnumerationBinding& binding) {
  ruvo::factory::detail::initStringDataTypes();
  const RowNames names{named(binding.name->name), {}, {}};
  addRows(cls, binding.queries, names);
  MethodTable table(cls);
  const auto literals = literalsOf(*binding.name);
  for (std::size_t value = 0; value < literals.size(); ++value) {
    table.add({InternedName(literals[value]).c_str(), 0, "", names.self, {}}, {}, binding.literals[value]);
  }
  addRows(cls, kComparisons, names);
}

}  // namespace binding
