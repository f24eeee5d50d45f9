#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/Deviants.h"
#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/k7q/ModelCache.h"
#include "tarvelon/module/EntryPoints.h"
#include "tests/support/Host.h"

/// Helpers for the tests of the factories. The module's objects are linked into the program; no library is
/// loaded.
namespace factory {

using host::HostValue;
using host::raised;
using host::RVOInterfacePtr;

inline constexpr const char* kNullText =
    "Assertion failed: Cannot access NULL ref. Use isValid() before calling methods at ";

/// The native object of a host object, and the deviant of the view.
inline K7Q::VariantInfo nativeOf(const RVOInterfacePtr& object) {
  return K7Q::DeviantRegistry::getVariantInfo(object->getBoundPointer({}));
}

/// The index-th record of a class with that name.
inline const ruvo::RVOMethodInfo& record(const char* cls, std::string_view name, std::size_t index = 0) {
  for (const auto* each : host::cls(cls).methods()) {
    if (each->getName().view() == name && index-- == 0) return *each;
  }
  throw K7Q::Exception("no record " + std::string(name));
}

/// Owns an array of a slot, and destroys it after the call.
struct DestroyArray {
  void operator()(hx::hxArray* array) const { hx::hxDestroyArray(array); }
};
using ArrayPtr = std::unique_ptr<hx::hxArray, DestroyArray>;

inline ArrayPtr empty() { return ArrayPtr(hx::hxCreateObjectMatrix(0, 0, "K7Q.Object")); }
inline ArrayPtr box(const RVOInterfacePtr& object) {
  return ArrayPtr(ruvo::boxInterface(object, object->getClass()->getFullName()));
}
inline ArrayPtr text(std::u16string_view characters) {
  return ArrayPtr(hx::hxCreateString_UTF16(characters));
}

/// Calls a record with hand-made slots, which a host would not pass. Returns the result slot, which is empty
/// if the call has no result.
inline ruvo::RVOValue invoke(const ruvo::RVOMethodInfo& method,
                             std::initializer_list<const ArrayPtr*> arguments) {
  std::vector<ruvo::RVOValue> slots;
  for (const ArrayPtr* each : arguments) slots.emplace_back(each->get());
  ruvo::RVOValue result;
  std::uint32_t count = 0;
  method.invoke(nullptr, count, &result, static_cast<int>(slots.size()), slots.data());
  return result;
}

/// A model and its factory.
class Factories : public testing::Test {
 protected:
  void SetUp() override {
    ZtInitialize_mm_arplatform_mi();
    mModel = RVOInterfacePtr(host::callStatic("Factory", "createNewModel").object());
    mFactory = factoryOf(mModel);
  }
  static RVOInterfacePtr factoryOf(const RVOInterfacePtr& model) {
    return RVOInterfacePtr(host::callStatic("Factory", "createNewFactory", {host::object(model)}).object());
  }
  /// A factory on a read-only view of the model.
  RVOInterfacePtr readOnlyFactory() const {
    const auto frozen = host::callObject(mModel, "frozen");
    return host::callObject(mFactory, "asDeviant", {host::object(frozen)});
  }
  RVOInterfacePtr create(const char* name, std::initializer_list<HostValue> arguments = {}) const {
    return host::callObject(mFactory, (std::string("createmetamodelarplatform") + name).c_str(), arguments);
  }
  RVOInterfacePtr mModel;
  RVOInterfacePtr mFactory;
};

/// Sets the switch of the deviant assertions for the length of a scope.
class Assertions {
 public:
  explicit Assertions(bool enable) : mBefore(K7Q::DeviantAssertions::enableAssertions(enable)) {}
  Assertions(const Assertions&) = delete;
  Assertions& operator=(const Assertions&) = delete;
  ~Assertions() { K7Q::DeviantAssertions::enableAssertions(mBefore); }

 private:
  bool mBefore;
};

}  // namespace factory
