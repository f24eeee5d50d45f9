#pragma once

#include <initializer_list>
#include <memory>
#include <span>
#include <tuple>
#include <type_traits>
#include <utility>

#include "tarvelon/binding/Conversion.h"
#include "tarvelon/boundary/k7q/Object.h"
#include "tarvelon/boundary/ruvo/Class.h"
#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/boundary/ruvo/Package.h"

/// Creates method records from type names, a native function and the invoker for the type of that function.
namespace binding {

using ruvo::factory::impl::GeneratedMethod;
using ruvo::factory::impl::InvokerFunction;
using ruvo::factory::impl::NativeFunction;

/// Whether the invoker rejects a null self for methods of that handle type. For other handle types, the
/// native function itself gets the null handle.
template <class Handle>
inline constexpr bool kSelfMustBeThere = false;

namespace invoker {

/// Converts the slots to native values, from left to right.
template <class... Arguments, std::size_t... Index>
auto convert(const RVOValue* slots, std::index_sequence<Index...> /*index*/) {
  return std::tuple<std::decay_t<Arguments>...>{
      Conversion<std::decay_t<Arguments>>::fromSlot(slots[Index])...};
}

inline void countResult(std::uint32_t* count) noexcept {
  if (*count == 0) *count = 1;
}

/// Tests self. The invokers call this function after all arguments are converted.
template <class... Arguments>
void validateSelf(const std::tuple<Arguments...>& arguments, const GeneratedMethod& record) {
  if constexpr (sizeof...(Arguments) > 0) {
    if constexpr (kSelfMustBeThere<std::tuple_element_t<0, std::tuple<Arguments...>>>) {
      if (!record.isStatic()) {
        ruvo::factory::impl::validateSelfPointer(std::get<0>(arguments).getInterface(), record);
      }
    }
  }
}

/// The invoker of methods and package functions. The native function is a free function; self is its first
/// argument.
template <class Result, class... Arguments>
void invoke(const GeneratedMethod* record, const ruvo::RVOClient* /*client*/, std::uint32_t* count,
            RVOValue* results, int /*argumentCount*/, const RVOValue* slots) {
  auto arguments = convert<Arguments...>(slots, std::index_sequence_for<Arguments...>());
  validateSelf(arguments, *record);
  const auto function = record->native.as<Result (*)(Arguments...)>();
  if constexpr (std::is_void_v<Result>) {
    std::apply(function, arguments);
  } else {
    results[0] = Conversion<std::decay_t<Result>>::toSlot(std::apply(function, arguments),
                                                          record->getSignature()->result());
    countResult(count);
  }
}

/// Binds a new native object to the host object under construction. If that fails, destroys the native object
/// and rethrows.
void bindConstructed(const GeneratedMethod& record, const K7Q::ClassObject& object, hx::hxArray* array);

/// The invoker of constructors. results[0] contains the array with the host object under construction.
template <class... Arguments>
void construct(const GeneratedMethod* record, const ruvo::RVOClient* /*client*/, std::uint32_t* count,
               RVOValue* results, int /*argumentCount*/, const RVOValue* slots) {
  auto arguments = convert<Arguments...>(slots, std::index_sequence_for<Arguments...>());
  const auto function = record->native.as<K7Q::ClassObject (*)(Arguments...)>();
  bindConstructed(*record, std::apply(function, arguments), results[0].array());
  countResult(count);
}

}  // namespace invoker

/// The name, flag word and types of a method, without its arguments.
struct MethodSpec {
  const char* name;
  std::uint32_t attributes;
  /// REQUIRES: lives as long as the record, as a literal does.
  const char* parameterNames;
  InternedName result;
  /// The class of self. The empty name: the method takes the object as its first ordinary argument if the
  /// attributes have the bit kSelfAsArgument, and is static otherwise.
  InternedName self;
};

/// Adds records to a class, in the order of the calls. The class owns the records.
class MethodTable {
 public:
  explicit MethodTable(ruvo::RVOClass& cls) noexcept : mClass(cls) {}
  ruvo::RVOClass& cls() const noexcept { return mClass; }

  /// Adds a method. If the method has a self, self is the first parameter of the native function.
  template <class Result, class... Arguments>
  void add(const MethodSpec& spec, std::initializer_list<InternedName> arguments,
           Result (*function)(Arguments...)) {
    add(spec, {arguments.begin(), arguments.size()}, &invoker::invoke<Result, Arguments...>,
        NativeFunction::of(function));
  }
  /// Adds a method with that invoker. REQUIRES: the invoker is for the type of the native function.
  void add(const MethodSpec& spec, std::span<const InternedName> arguments, InvokerFunction invoker,
           NativeFunction native);

  /// Adds a constructor. Its record has the dotted name of the class, the flag kStatic and no parameter
  /// names, and its result is the class.
  template <class... Arguments>
  void addConstructor(std::span<const InternedName> arguments, K7Q::ClassObject (*function)(Arguments...)) {
    addConstructorRecord(arguments, &invoker::construct<Arguments...>, NativeFunction::of(function));
  }

 private:
  void addConstructorRecord(std::span<const InternedName> arguments, InvokerFunction invoker,
                            NativeFunction native);

  ruvo::RVOClass& mClass;
};

/// Adds a package function without arguments.
template <class Result>
void addPackageFunction(ruvo::RVOPackage& package, const char* name, const char* resultType,
                        Result (*function)());

void addPackageFunctionRecord(ruvo::RVOPackage& package, const char* name, const char* resultType,
                              InvokerFunction invoker, NativeFunction native);

template <class Result>
void addPackageFunction(ruvo::RVOPackage& package, const char* name, const char* resultType,
                        Result (*function)()) {
  addPackageFunctionRecord(package, name, resultType, &invoker::invoke<Result>, NativeFunction::of(function));
}

/// The interned name of a text.
inline InternedName named(const char* text) { return InternedName(ruvo::internal::makeInterned(text)); }

}  // namespace binding
