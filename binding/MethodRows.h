#pragma once

#include <array>
#include <span>

#include "binding/Methods.h"

/// Method records as rows of constant data.
namespace binding {

/// Words of a row that stand for a name which the class fills in: the class itself, its iterator and its
/// element.
inline constexpr char kSelf[] = "<self>";
inline constexpr char kIterator[] = "<iterator>";
inline constexpr char kElement[] = "<element>";

struct RowNames {
  InternedName self;
  InternedName iterator;
  InternedName element;
};

/// One record: its types are dotted names or words of the vocabulary; no self type means none, and the
/// arguments end with the first null.
struct MethodRow {
  static constexpr std::size_t kMaxArguments = 3;
  using Arguments = std::array<const char*, kMaxArguments>;

  const char* name;
  const char* result;
  const char* self;
  Arguments arguments;
  void (*add)(MethodTable& table, const MethodSpec& spec, std::span<const InternedName> arguments);
  std::uint32_t attributes = 0;
  const char* parameterNames = "";

  /// The same row with attributes.
  constexpr MethodRow with(std::uint32_t word) const {
    MethodRow row = *this;
    row.attributes = word;
    return row;
  }
  /// The same row with names for its parameters.
  constexpr MethodRow naming(const char* parameters) const {
    MethodRow row = *this;
    row.parameterNames = parameters;
    return row;
  }
};

/// Adds a record for native function F.
template <auto F>
void addRecord(MethodTable& table, const MethodSpec& spec, std::span<const InternedName> arguments) {
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

/// A method with self.
template <auto F>
constexpr MethodRow member(const char* name, const char* result, MethodRow::Arguments arguments = {}) {
  return {name, result, kSelf, arguments, &addRecord<F>};
}

/// A method that takes its object as an ordinary first argument, which the arguments name.
template <auto F>
constexpr MethodRow asArgument(const char* name, const char* result, MethodRow::Arguments arguments) {
  return {name, result, nullptr, arguments, &addRecord<F>, ruvo::factory::kSelfAsArgument};
}

/// A method without self.
template <auto F>
constexpr MethodRow classLevel(const char* name, const char* result, MethodRow::Arguments arguments = {}) {
  return {name, result, nullptr, arguments, &addRecord<F>};
}

/// Adds the rows in their order.
void addRows(ruvo::RVOClass& cls, std::span<const MethodRow> rows, const RowNames& names);

}  // namespace binding
