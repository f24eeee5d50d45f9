#pragma once

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "binding/Methods.h"
#include "boundary/tarvelon/Names.h"
#include "boundary/ut/Memory.h"

/// The members of an enumeration's class.
namespace binding {

/// The description that every enumeration's class has.
inline constexpr const char* kEnumerationDescription = "An enumeration";

/// The literals of an enumeration in ascending order of value.
std::vector<std::string_view> literalsOf(const Tarvelon::metamodel::EnumerationName& enumeration);

constexpr std::size_t countLiterals(std::string_view literals) {
  return literals.empty() ? 0
                          : 1 + static_cast<std::size_t>(std::count(literals.begin(), literals.end(), ','));
}

/// The shared question of every class, asked of an enumeration value.
K7Q::ImmutableType getMetaTypeOfValue(const K7Q::Object& self);

/// The native functions behind the records of enumeration E.
template <class E>
struct EnumerationFunctions {
  static bool isvalid(const E& self) { return self.isValid(); }
  static K7Q::ImmutableDataType getMetaDataType(const E& self) { return self.getMetaDataType(); }
  static K7Q::String toString(const E& self) { return self.toString(); }
  static void disp(const E& self) { utPrintf("%s\n", K7Q::String::to_string(self.toString()).c_str()); }

  /// One instance a literal, made at first use.
  template <int Value>
  static E literal() {
    static const E instance(static_cast<typename E::Value>(Value));
    return instance;
  }

  static bool eq(const E& left, const E& right) { return left.value() == right.value(); }
  static bool ne(const E& left, const E& right) { return left.value() != right.value(); }
  static bool gt(const E& left, const E& right) { return left.value() > right.value(); }
  static bool ge(const E& left, const E& right) { return left.value() >= right.value(); }
  static bool lt(const E& left, const E& right) { return left.value() < right.value(); }
  static bool le(const E& left, const E& right) { return left.value() <= right.value(); }

  template <std::size_t... Value>
  static void addLiterals(MethodTable& table, InternedName name, std::index_sequence<Value...> /*values*/) {
    const auto literals = literalsOf(E::kName);
    (table.add({InternedName(literals[Value]).c_str(), 0, "", name, {}}, {},
               &literal<static_cast<int>(Value)>),
     ...);
  }
};

/// Adds the members in their order: queries, conversions, literals by value, comparisons.
template <class E>
void defineEnumeration(ruvo::RVOClass& cls) {
  using Functions = EnumerationFunctions<E>;
  ruvo::factory::detail::initStringDataTypes();
  MethodTable table(cls);
  const auto name = named(E::kName.name);
  const auto logical = named("logical scalar");
  const auto dataType = named("K7Q.ImmutableDataType");
  table.add({"isvalid", 0, "", logical, name}, {}, &Functions::isvalid);
  table.add({"MetaDataType", 0, "", dataType, {}}, {}, &E::MetaDataType);
  table.add({"getMetaDataType", 0, "", dataType, name}, {}, &Functions::getMetaDataType);
  table.add(
      {"getMetaType", ruvo::factory::kHiddenMethod, "", named("K7Q.ImmutableType"), named("K7Q.Object")}, {},
      &getMetaTypeOfValue);
  table.add({"fromString", 0, "", name, {}}, {named("char")}, &E::fromString);
  table.add({"toString", 0, "", named("char vector"), name}, {}, &Functions::toString);
  constexpr std::uint32_t kSelf = ruvo::factory::kSelfAsArgument;
  table.add({"disp", kSelf, "", named("void"), {}}, {name}, &Functions::disp);
  Functions::addLiterals(table, name, std::make_index_sequence<countLiterals(E::kName.literals)>());
  table.add({"eq", kSelf, "other", logical, {}}, {name, name}, &Functions::eq);
  table.add({"ne", kSelf, "other", logical, {}}, {name, name}, &Functions::ne);
  table.add({"gt", kSelf, "other", logical, {}}, {name, name}, &Functions::gt);
  table.add({"ge", kSelf, "other", logical, {}}, {name, name}, &Functions::ge);
  table.add({"lt", kSelf, "other", logical, {}}, {name, name}, &Functions::lt);
  table.add({"le", kSelf, "other", logical, {}}, {name, name}, &Functions::le);
}

}  // namespace binding
