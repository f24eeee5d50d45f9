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

/// Registration of method records: signature strings, native function, and the invoker made for that
/// function's types.
namespace binding {

using ruvo::factory::impl::GeneratedMethod;
using ruvo::factory::impl::InvokerFunction;
using ruvo::factory::impl::NativeFunction;

/// Whether a method of that handle type refuses an empty self before it is called. Elsewhere an empty self
/// reaches the operation: what is tested there is the address of the local handle, which is never null.
template <class Handle>
inline constexpr bool kSelfMustBeThere = false;

namespace invoker {

/// The arguments as local values, converted from left to right. A slot per argument.
template <class... Arguments, std::size_t... Index>
auto convert(const RVOValue* slots, std::index_sequence<Index...> /*index*/) {
  return std::tuple<std::decay_t<Arguments>...>{
      Conversion<std::decay_t<Arguments>>::fromSlot(slots[Index])...};
}

inline void countResult(std::uint32_t* count) noexcept {
  if (*count == 0) *count = 1;
}

/// The test of self, behind the conversion of all arguments.
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

/// Calls a free function; a method with self takes it as the first argument.
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

/// Ties a new native object to the host object under construction; the object goes again if that fails.
void bindConstructed(const GeneratedMethod& record, const K7Q::ClassObject& object, hx::hxArray* array);

/// Calls a constructor's forwarder: the result slot holds the object under construction.
template <class... Arguments>
void construct(const GeneratedMethod* record, const ruvo::RVOClient* /*client*/, std::uint32_t* count,
               RVOValue* results, int /*argumentCount*/, const RVOValue* slots) {
  auto arguments = convert<Arguments...>(slots, std::index_sequence_for<Arguments...>());
  const auto function = record->native.as<K7Q::ClassObject (*)(Arguments...)>();
  bindConstructed(*record, std::apply(function, arguments), results[0].array());
  countResult(count);
}

}  // namespace invoker

/// How a record is found to be static: by its attributes and whether it has a self.
struct MethodSpec {
  const char* name;
  std::uint32_t attributes;
  /// Stored as it stands; a literal.
  const char* parameterNames;
  InternedName result;
  /// The empty name: no self. Such a method is static, or takes the object as an ordinary first argument when
  /// the attributes have 4096.
  InternedName self;
};

/// Adds records to a class in the order of the calls. The class owns them.
class MethodTable {
 public:
  explicit MethodTable(ruvo::RVOClass& cls) noexcept : mClass(cls) {}
  ruvo::RVOClass& cls() const noexcept { return mClass; }

  /// The native function's first parameter is self when the record has one.
  template <class Result, class... Arguments>
  void add(const MethodSpec& spec, std::initializer_list<InternedName> arguments,
           Result (*function)(Arguments...)) {
    add(spec, {arguments.begin(), arguments.size()}, &invoker::invoke<Result, Arguments...>,
        NativeFunction::of(function));
  }
  /// REQUIRES: an invoker made for the function's types.
  void add(const MethodSpec& spec, std::span<const InternedName> arguments, InvokerFunction invoker,
           NativeFunction native);

  /// A constructor: named like the class, attributes 0, no parameter names, result the class.
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

/// An interned name of a text.
inline InternedName named(const char* text) { return InternedName(ruvo::internal::makeInterned(text)); }

}  // namespace binding
