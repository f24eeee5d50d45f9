#include "tests/ruvo/Fixture.h"

#include <map>
#include <stdexcept>

namespace ruvo::testing {

using factory::basic::BindingRegistry;
using factory::basic::BindingSlot;

TestMethod::TestMethod(const std::string& name, std::uint32_t flags, Body body)
    : RuvoMethod(InternedName(std::string_view(name)), factory::MethodAttributes(flags), ""),
      mBody(std::move(body)) {}

void TestMethod::invoke(const RVOClient* /*client*/, std::uint32_t& count, RVOValue* results,
                        int argumentCount, const RVOValue* arguments) const {
  if (mBody) mBody(count, results, argumentCount, arguments);
}

TestProperty::TestProperty(const char* name, const std::string& type, Traits traits)
    : PropertyImplBase(name, "", factory::PropertyAttributes(0)),
      mType(std::string_view(type)),
      mTraits(traits) {}

bool TestProperty::isRaw() const noexcept {
  const auto kind = mType.kind();
  return kind == internal::TypeKind::Logical || kind == internal::TypeKind::Int32 ||
         kind == internal::TypeKind::Double;
}

RVOValue TestProperty::getValue(RVOInterface* /*object*/) {
  return isRaw() ? raw : RVOValue(hx::hxDuplicateArray(array.get()));
}

void TestProperty::setValue(RVOInterface* /*object*/, RVOValue value) {
  ++writes;
  if (isRaw()) {
    raw = value;
  } else {
    array.reset(hx::hxDuplicateArray(value.array()));
  }
}

void TestProperty::releaseValue(RVOInterface* /*object*/, RVOValue value) {
  if (!isRaw()) hx::hxDestroyArray(value.array());
}

void TestProperty::requireSettable(RVOInterface* object) const {
  if (mTraits.isMany) throw std::runtime_error("many");
  if (mTraits.isReadOnly) throw std::runtime_error("read-only");
  if (BindingSlot::isImmutable(object->getBoundPointer(mType))) throw std::runtime_error("immutable");
}

void TestProperty::throwWrongValue(RVOInterface* /*object*/, const hxArray* /*given*/) const {
  throw std::runtime_error("wrong value");
}

Definition& Definition::base(const std::string& fullName) {
  mClass->addSuperClass(InternedName(std::string_view(fullName)), 1, 0, 1);
  return *this;
}

Definition& Definition::add(TestMethod* record, const std::string& self, const char* result,
                            std::initializer_list<const char*> arguments, const char* names) {
  const std::vector<const char*> types(arguments);
  factory::impl::Invoker::createSignature(names, result, self.empty() ? nullptr : self.c_str(), types,
                                          record->signature());
  mClass->addMethod(record);
  return *this;
}

Definition& Definition::constructor(std::initializer_list<const char*> arguments, Body body,
                                    const char* names) {
  auto* record = new TestConstructor(mClass->getClassName(), factory::kStatic, std::move(body));
  return add(record, "", mClass->getClassName(), arguments, names);
}

Definition& Definition::method(const std::string& name, std::initializer_list<const char*> arguments,
                               Body body, std::uint32_t flags, const std::string& self, const char* result) {
  return add(new TestMethod(name, flags, std::move(body)), self.empty() ? mClass->getClassName() : self,
             result, arguments);
}

Definition& Definition::staticMethod(const std::string& name, std::initializer_list<const char*> arguments,
                                     Body body, std::uint32_t flags, const char* result) {
  return add(new TestMethod(name, flags | factory::kStatic, std::move(body)), "", result, arguments);
}

Definition& Definition::selfAsArgument(const std::string& name, std::initializer_list<const char*> arguments,
                                       Body body) {
  return add(new TestMethod(name, factory::kSelfAsArgument, std::move(body)), "", "int32 scalar", arguments);
}

TestProperty& Definition::property(const char* name, const std::string& type, TestProperty::Traits traits) {
  auto* property = new TestProperty(name, type, traits);
  mClass->addProperty(property, property);
  return *property;
}

TestClassInfo::TestClassInfo(const std::string& name, Define define)
    : RuvoFactoryClassInfo(InternedName(name).c_str(), ""), mDefine(std::move(define)) {}
TestClassInfo::~TestClassInfo() = default;

void TestClassInfo::defineMembers(RVOClass* cls, const RVOClient* /*client*/) {
  ++definitions;
  Definition definition(cls);
  if (mDefine) mDefine(definition);
}

void TestClassInfo::destroyInstance(RVOClass* /*cls*/, const RVOClient* /*client*/, void* instance) {
  if (onDestroy) onDestroy(instance);
  BindingRegistry::remove(instance);
}

void* Native::mutableId() noexcept {
  return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(&slots[0]) | BindingSlot::kSlotted);
}
void* Native::immutableId() noexcept {
  return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(&slots[1]) | BindingSlot::kSlotted |
                                 BindingSlot::kImmutable);
}

std::string uniqueName(const std::string& stem) {
  static std::map<std::string, int> used;
  return stem + std::to_string(++used[stem]);
}

RuvoTest::RuvoTest()
    : mName(uniqueName("test")),
      mPackage(static_cast<Package&>(*factory::registerRuvoPackage(mName, {}))),
      mArrays(hx::hxLiveArrays()),
      mBindings(BindingRegistry::size()) {}

RuvoTest::~RuvoTest() {
  EXPECT_EQ(hx::hxLiveArrays(), mArrays) << "arrays are left";
  EXPECT_EQ(BindingRegistry::size(), mBindings) << "bindings are left";
}

Class& RuvoTest::addClass(const std::string& name, Define define) {
  mPackage.addClass(new TestClassInfo(name, std::move(define)), 2);
  return Class::get(full(name));
}

RVOInterfacePtr RuvoTest::object(Class& cls, Native& native, bool isImmutable) {
  return RVOInterfacePtr(
      BindingRegistry::announce(isImmutable ? native.immutableId() : native.mutableId(), cls.getFullName()));
}

}  // namespace ruvo::testing
