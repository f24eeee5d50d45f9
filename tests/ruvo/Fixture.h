#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tarvelon/boundary/ruvo/Class.h"
#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/boundary/ruvo/Package.h"
#include "tarvelon/boundary/ruvo/Property.h"
#include "tarvelon/platform/hx/ArrayPtr.h"
#include "tarvelon/platform/ruvo/ObjectSystem.h"

/// Packages, classes, records and native objects for tests.
namespace ruvo::testing {

using Body = std::function<void(std::uint32_t& count, RVOValue* results, int argumentCount,
                                const RVOValue* arguments)>;

/// A record whose behaviour is set by the test.
class TestMethod : public factory::RuvoMethod {
 public:
  TestMethod(const std::string& name, std::uint32_t flags, Body body);
  void invoke(const RVOClient* client, std::uint32_t& count, RVOValue* results, int argumentCount,
              const RVOValue* arguments) const override;

 private:
  Body mBody;
};

class TestConstructor final : public TestMethod {
 public:
  using TestMethod::TestMethod;
  bool isConstructor() const override { return true; }
};

/// A property with one value for all objects: an array or a raw word.
class TestProperty final : public factory::impl::PropertyImplBase, public PropertyGuard {
 public:
  struct Traits {
    bool isOptional = false;
    bool isMany = false;
    bool isReadOnly = false;
  };
  TestProperty(const char* name, const std::string& type, Traits traits);

  const InternedName& getDataType() const override { return mType; }
  int getMemberGetAccess() const override { return 0; }
  int getMemberSetAccess() const override { return 0; }
  RVOValue getValue(RVOInterface* object) override;
  void setValue(RVOInterface* object, RVOValue value) override;
  void releaseValue(RVOInterface* object, RVOValue value) override;
  void requireSettable(RVOInterface* object) const override;
  [[noreturn]] void throwWrongValue(RVOInterface* object, const hxArray* given) const override;
  bool isOptional() const override { return mTraits.isOptional; }
  bool isMany() const override { return mTraits.isMany; }
  bool isReadOnly() const override { return mTraits.isReadOnly; }

  /// The number of writes, and the last written value.
  int writes = 0;
  RVOValue raw;
  hx::ArrayPtr array;

 private:
  bool isRaw() const noexcept;
  InternedName mType;
  Traits mTraits;
};

/// Helper for the definition of a test's class.
class Definition {
 public:
  explicit Definition(RVOClass* cls) : mClass(cls) {}
  Definition& base(const std::string& fullName);
  Definition& constructor(std::initializer_list<const char*> arguments, Body body, const char* names = "");
  Definition& method(const std::string& name, std::initializer_list<const char*> arguments, Body body,
                     std::uint32_t flags = 0, const std::string& self = "", const char* result = "void");
  Definition& staticMethod(const std::string& name, std::initializer_list<const char*> arguments, Body body,
                           std::uint32_t flags = 0, const char* result = "void");
  Definition& selfAsArgument(const std::string& name, std::initializer_list<const char*> arguments,
                             Body body);
  TestProperty& property(const char* name, const std::string& type, TestProperty::Traits traits = {});
  RVOClass* get() const noexcept { return mClass; }

 private:
  Definition& add(TestMethod* record, const std::string& self, const char* result,
                  std::initializer_list<const char*> arguments, const char* names = "");
  RVOClass* mClass;
};

using Define = std::function<void(Definition&)>;

/// A class defined by a test. Its objects are bound to a Native or to nothing.
class TestClassInfo final : public factory::RuvoFactoryClassInfo {
 public:
  TestClassInfo(const std::string& name, Define define);
  ~TestClassInfo() override;
  void defineMembers(RVOClass* cls, const RVOClient* client) override;
  void destroyInstance(RVOClass* cls, const RVOClient* client, void* instance) override;

  std::function<void(void*)> onDestroy;
  int definitions = 0;

 private:
  Define mDefine;
};

/// A native object with an id for each view, and the number of host objects that refer to it.
struct Native {
  factory::basic::BindingSlot slots[2];
  int holders = 0;

  void* mutableId() noexcept;
  void* immutableId() noexcept;
};

/// A package whose contents are set by a test.
class TestPackageInfo final : public RVOPackageInfo {
 public:
  using Fill = std::function<void(RVOPackage*)>;
  explicit TestPackageInfo(std::string name, Fill fill = {})
      : mName(std::move(name)), mFill(std::move(fill)) {}
  const char* getName() const override { return mName.c_str(); }
  void initializePackage(RVOPackage* package) override {
    if (mFill) mFill(package);
  }
  bool attemptToLoadSubPackage(const char* name) override { return onMissing && onMissing("package", name); }
  bool attemptToLoadClass(const char* name) override { return onMissing && onMissing("class", name); }
  bool attemptToLoadFunction(const char* name) override { return onMissing && onMissing("function", name); }
  bool attemptToLoadType(const char* name) override { return onMissing && onMissing("type", name); }

  std::function<bool(const std::string& kind, const std::string& name)> onMissing;

 private:
  std::string mName;
  Fill mFill;
};

/// A name that no other test uses, because registered things stay until the process ends.
std::string uniqueName(const std::string& stem);

/// The text of the exception of type E that `action` raises. If it raises none, the test fails and the text
/// is empty.
template <class E, class Action>
std::string errorOf(Action action) {
  try {
    action();
  } catch (const E& error) {
    return error.what();
  } catch (const std::exception& error) {
    ADD_FAILURE() << "raised another kind: " << error.what();
    return "";
  }
  ADD_FAILURE() << "raised nothing";
  return "";
}

/// A test with its own package. Checks at its end that nothing is left behind.
class RuvoTest : public ::testing::Test {
 protected:
  RuvoTest();
  ~RuvoTest() override;

  /// Adds a class to the test's package.
  Class& addClass(const std::string& name, Define define = {});
  TestClassInfo& infoOf(Class& cls) { return static_cast<TestClassInfo&>(cls.info()); }
  std::string full(const std::string& name) const { return mName + "." + name; }
  /// A host object of the class, bound to a native object.
  RVOInterfacePtr object(Class& cls, Native& native, bool isImmutable = false);

  std::string mName;
  Package& mPackage;

 private:
  std::size_t mArrays;
  std::size_t mBindings;
};

/// Results, written as an invoker writes them.
inline void giveInt32(std::uint32_t& count, RVOValue* results, std::int32_t value) {
  results[0] = RVOValue::ofInt32(value);
  if (count == 0) count = 1;
}
inline void giveArray(std::uint32_t& count, RVOValue* results, hx::hxArray* array) {
  results[0] = RVOValue(array);
  if (count == 0) count = 1;
}
/// A record's body that returns `number`, to identify the record.
inline Body giving(std::int32_t number) {
  return [number](std::uint32_t& count, RVOValue* results, int, const RVOValue*) {
    giveInt32(count, results, number);
  };
}

inline HostValue number(double value) { return HostValue::ofDouble(value); }
inline HostValue integer(std::int64_t value) { return HostValue::ofInteger(value); }
inline HostValue logical(bool value) { return HostValue::ofLogical(value); }
inline HostValue text(std::u16string_view value) { return HostValue::ofText(value); }
inline HostValue object(RVOInterface* value) { return HostValue::ofObject(value); }

/// A list of arguments.
class Arguments {
 public:
  Arguments(std::initializer_list<HostValue> values) : mValues(values) {}
  operator std::span<const HostValue>() const noexcept {
    return mValues;
  }  // NOLINT(google-explicit-constructor)

 private:
  std::vector<HostValue> mValues;
};

}  // namespace ruvo::testing
