#pragma once

#include <array>
#include <span>

#include "binding/Methods.h"

/// Method records as rows of constant data.
namespace K7Q::mi {

/// Words of a row that stand for a name which the class fills in: the class itself, its iterator and its
/// element.
inline constexpr char kSelf[] = "<self>";
inline constexpr char kIterator[] = "<iterator>";
inline constexpr char kElement[] = "<element>";

struct RowNames {
  ruvo::InternedName self;
  ruvo::InternedName iterator;
  ruvo::InternedName element;
};

/// One record: its types are dotted names or words of the vocabulary; no self type means none, and the
/// arguments end with the first null.
struct MethodRow {
  static constexpr std::size_t kMaxArguments = 3;

  const char* name;
  std::uint32_t attributes;
  const char* parameterNames;
  const char* result;
  const char* self;
  std::array<const char*, kMaxArguments> arguments;
  void (*add)(binding::MethodTable& table, const binding::MethodSpec& spec,
              std::span<const ruvo::InternedName> arguments);
};

/// Adds a record for native function F.
template <auto F>
void addRecord(binding::MethodTable& table, const binding::MethodSpec& spec,
               std::span<const ruvo::InternedName> arguments) {
  switch (arguments.size()) {
    case 0:
      return table.add(spec, {}, F);
    case 1:
      return table.add(spec, {arguments[0]}, F);
    case 2:
      return table.add(spec, {arguments[0], arguments[1]}, F);
    default:
      return table.add(spec, {arguments[0], arguments[1], arguments[2]}, F);
  }
}

/// Adds the rows in their order.
void addRows(ruvo::RVOClass& cls, std::span<const MethodRow> rows, const RowNames& names);

}  // namespace K7Q::mi
