#pragma once

#include <array>
#include <span>

#include "tarvelon/binding/Methods.h"

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
  InvokerFunction invoker;
  NativeFunction (*native)();
  std::uint32_t attributes = 0;
  const char* parameterNames = "";

  /// The same row with attributes.
  constexpr MethodRow with(std::uint32_t word) const {
    MethodRow row = *this;
    row.attributes = word;
    return row;
  }
  /// The same row with a self of another class.
  constexpr MethodRow of(const char* type) const {
    MethodRow row = *this;
    row.self = type;
    return row;
  }
  /// The same row with names for its parameters.
  constexpr MethodRow naming(const char* parameters) const {
    MethodRow row = *this;
    row.parameterNames = parameters;
    return row;
  }
};

/// The invoker that is made for the types of a native function.
template <class Result, class... Arguments>
constexpr InvokerFunction invokerOf(Result (* /*function*/)(Arguments...)) {
  return &invoker::invoke<Result, Arguments...>;
}

/// A constant cannot hold the number that a record keeps of a function, so a row holds who knows it.
template <auto F>
NativeFunction nativeOf() {
  return NativeFunction::of(F);
}

/// A method with self.
template <auto F>
constexpr MethodRow member(const char* name, const char* result, MethodRow::Arguments arguments = {}) {
  return {name, result, kSelf, arguments, invokerOf(F), &nativeOf<F>};
}

/// A method that takes its object as an ordinary first argument, which the arguments name.
template <auto F>
constexpr MethodRow asArgument(const char* name, const char* result, MethodRow::Arguments arguments) {
  return {name, result, nullptr, arguments, invokerOf(F), &nativeOf<F>, ruvo::factory::kSelfAsArgument};
}

/// A method without self.
template <auto F>
constexpr MethodRow classLevel(const char* name, const char* result, MethodRow::Arguments arguments = {}) {
  return {name, result, nullptr, arguments, invokerOf(F), &nativeOf<F>};
}

/// Adds the rows in their order.
void addRows(ruvo::RVOClass& cls, std::span<const MethodRow> rows, const RowNames& names);

}  // namespace binding
