#pragma once

#include <array>
#include <span>

#include "tarvelon/binding/Methods.h"

/// Describes methods as rows of constant data, from which addRows() creates the records.
namespace binding {

/// Placeholders in a row. addRows() replaces them by the names of the class itself, of its iterator class and
/// of its element class.
inline constexpr char kSelf[] = "<self>";
inline constexpr char kIterator[] = "<iterator>";
inline constexpr char kElement[] = "<element>";

/// The names that replace the placeholders.
struct RowNames {
  InternedName self;
  InternedName iterator;
  InternedName element;
};

/// A method. A type is a dotted class name, a word such as "int32 scalar", or a placeholder. `self` is null
/// for a method without self. Unused places at the end of `arguments` are null.
struct MethodRow {
  static constexpr std::size_t kMaxArguments = 3;
  using Arguments = std::array<const char*, kMaxArguments>;

  const char* name;
  const char* result;
  const char* self;
  Arguments arguments;
  InvokerFunction invoker;
  NativeFunction (*native)();
  std::uint32_t attributes = 0;
  const char* parameterNames = "";

  /// A copy of the row with this flag word.
  constexpr MethodRow with(std::uint32_t word) const {
    MethodRow row = *this;
    row.attributes = word;
    return row;
  }
  /// A copy of the row with another class of self.
  constexpr MethodRow of(const char* type) const {
    MethodRow row = *this;
    row.self = type;
    return row;
  }
  /// A copy of the row with parameter names.
  constexpr MethodRow naming(const char* parameters) const {
    MethodRow row = *this;
    row.parameterNames = parameters;
    return row;
  }
};

/// The invoker for the type of a native function.
template <class Result, class... Arguments>
constexpr InvokerFunction invokerOf(Result (* /*function*/)(Arguments...)) {
  return &invoker::invoke<Result, Arguments...>;
}

/// Returns the NativeFunction of F. A row stores a pointer to this function, because a constant expression
/// cannot convert a function pointer to the integer that NativeFunction stores.
template <auto F>
NativeFunction nativeOf() {
  return NativeFunction::of(F);
}

/// A method with self.
template <auto F>
constexpr MethodRow member(const char* name, const char* result, MethodRow::Arguments arguments = {}) {
  return {name, result, kSelf, arguments, invokerOf(F), &nativeOf<F>};
}

/// A method that takes its object as the first ordinary argument (kSelfAsArgument). `arguments` includes the
/// object.
template <auto F>
constexpr MethodRow asArgument(const char* name, const char* result, MethodRow::Arguments arguments) {
  return {name, result, nullptr, arguments, invokerOf(F), &nativeOf<F>, ruvo::factory::kSelfAsArgument};
}

/// A static method.
template <auto F>
constexpr MethodRow classLevel(const char* name, const char* result, MethodRow::Arguments arguments = {}) {
  return {name, result, nullptr, arguments, invokerOf(F), &nativeOf<F>};
}

/// Adds one record for each row to the class, in the order of the rows.
void addRows(ruvo::RVOClass& cls, std::span<const MethodRow> rows, const RowNames& names);

}  // namespace binding
