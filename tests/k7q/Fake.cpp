#include "tests/k7q/Fake.h"

#include <array>

#include "tarvelon/binding/Methods.h"
#include "tarvelon/boundary/k7q/ClassMetaData.h"
#include "tarvelon/platform/k7q/classes/Initialize.h"
#include "tests/k7q/FakeTables.h"

namespace fake {

namespace {

using K7Q::mi::Multiplicity;
using K7Q::mi::Mutability;
using ruvo::InternedName;

K7Q::CooperativeVisitor::TagPair classObjectTags() { return K7Q::tagsOf<ClassObjectIntf>(); }

class FakeModel final : public K7Q::NSInterface::ModelIntf {
 public:
  const InternedName& getRuvoName(bool immutable) const override {
    static const InternedName names[] = {InternedName("K7Q.Model"), InternedName("K7Q.ImmutableModel")};
    return names[immutable ? 1 : 0];
  }
  K7Q::ImmutableType getMetaType(Deviant) const override { return {}; }
  void setUri(Deviant, std::u16string_view uri) override { mUri = uri; }
  std::u16string getUri(Deviant) const override { return mUri; }
  void close() override {}

 private:
  std::u16string mUri;
};

/// A value of Fake.Kind as an object.
class KindCell final : public K7Q::NSInterface::ObjectIntf {
 public:
  explicit KindCell(int kindValue) : value(kindValue) {}
  void addRef() const override { ++mReferences; }
  void release() const override {
    if (--mReferences == 0) delete this;
  }
  const InternedName& getRuvoName(bool) const override {
    static const InternedName name("Fake.Kind");
    return name;
  }
  K7Q::ImmutableType getMetaType(Deviant) const override { return {}; }
  const int value;

 private:
  mutable int mReferences = 0;
};

class KindHelper final : public K7Q::mi::PropHelperBase {
 public:
  ruvo::RVOValue unboxAndReturn(K7Q::Object value, const InternedName& typeName) override {
    const auto* scalar = dynamic_cast<const KindCell*>(value.getInterface());
    const K7Q::Object cell(new KindCell(scalar ? scalar->value : 0), Deviant());
    return ruvo::RVOValue(binding::boxAs(cell.getInterface(), Deviant(), false, typeName));
  }
  bool boxAndSet(K7Q::ClassObject* object, ruvo::RVOValue& value, const K7Q::IntrospectiveMethods* methods,
                 unsigned id) override {
    const auto unboxed = binding::unboxAs(value.array(), K7Q::tagsOf<K7Q::NSInterface::ObjectIntf>());
    if (!unboxed.interface) return false;
    const K7Q::Object given(static_cast<K7Q::NSInterface::ObjectIntf*>(unboxed.interface), unboxed.deviant);
    methods->set(object->getClassObject(), object->getDeviant(), id, given);
    return true;
  }
};

class FakeClassInfo final : public K7Q::mi::ClassMetaData {
 public:
  using Define = void (*)(ruvo::RVOClass& cls);
  FakeClassInfo(const char* name, Define define) : ClassMetaData(name, ""), mDefine(define) {}
  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient*) override { mDefine(*cls); }

 private:
  Define mDefine;
};

void addSuper(ruvo::RVOClass& cls, const char* name) { cls.addSuperClass(binding::named(name), 1, 0, 1); }

void defineThing(ruvo::RVOClass& cls) {
  addSuper(cls, "Fake.ImmutableBase");
  K7Q::mi::K7qmiPropertyFactory factory(&cls, cls.getFullName(), &methodsOf(thingMethods()));
  constexpr auto kMaybe = Multiplicity::Optional;
  constexpr auto kOne = Multiplicity::One;
  constexpr auto kMany = Multiplicity::Many;
  constexpr auto kWritable = Mutability::Writable;
  constexpr auto kReadOnly = Mutability::ReadOnly;
  const ruvo::factory::PropertyAttributes plain(0);
  const ruvo::factory::PropertyAttributes hidden(2048);
  const auto base = binding::named("Fake.ImmutableBase");
  const auto bases = binding::named("Fake.ImmutableSequenceOfImmutableBase");
  const auto kind = binding::named("Fake.Kind");
  factory.String<K7Q::String>("text", kText, "char vector", kOne, kWritable, hidden);
  factory.String<K7Q::String>("textMaybe", kTextMaybe, "char vector", kMaybe, kWritable, plain);
  factory.Primitive<K7Q::Boolean>("flag", kFlag, kOne, kWritable, plain);
  factory.Primitive<K7Q::Boolean>("flagMaybe", kFlagMaybe, kMaybe, kWritable, plain);
  factory.Primitive<K7Q::Integer>("number", kNumber, kOne, kWritable, plain);
  factory.Primitive<K7Q::Integer>("numberMaybe", kNumberMaybe, kMaybe, kWritable, plain);
  factory.Primitive<K7Q::Double>("real", kReal, kOne, kWritable, plain);
  factory.Primitive<K7Q::Real>("realMaybe", kRealMaybe, kMaybe, kWritable, plain);
  factory.DataType("kind", kKind, kind, new KindHelper, kOne, kWritable, plain);
  factory.DataType("kindMaybe", kKindMaybe, kind, new KindHelper, kMaybe, kWritable, plain);
  factory.ClassObject("other", kOther, base, kOne, kWritable, plain);
  factory.ClassObject("otherMaybe", kOtherMaybe, base, kMaybe, kWritable, plain);
  factory.ClassObject("otherMany", kOtherMany, bases, kMany, kWritable, plain);
  factory.ClassObject("fixedMany", kFixedMany, bases, kMany, kReadOnly, plain);
  factory.ClassObject("fixed", kFixed, base, kMaybe, kReadOnly, plain);
  factory.PrimitiveSequence("textMany", kTextMany, binding::named("K7Q.ImmutableSequenceOfString"), kWritable,
                            plain);
}

void addCompanions(ruvo::RVOPackage& package, const std::string& name,
                   const std::vector<std::string>& bases) {
  using namespace K7Q::mi;
  const std::string p = "Fake.";
  const auto add = [&package](ruvo::RVOClassInfo* info) { package.addClass(info, 2); };
  const std::string immutable = "Immutable" + name;
  const std::string fixed = "ImmutableIterator";
  add(createSequenceOfRefClassInfo("SequenceOf" + name, "d", p + "SequenceOf" + name, p + name,
                                   p + name + "Iterator", bases));
  add(createSequenceOfImmutableRefClassInfo("SequenceOf" + immutable, "d", p + "SequenceOf" + immutable,
                                            p + immutable, p + immutable + "Iterator", bases));
  add(createImmutableSequenceOfRefClassInfo("ImmutableSequenceOf" + name, "d",
                                            p + "ImmutableSequenceOf" + name, p + name, p + name + fixed,
                                            bases));
  add(createImmutableSequenceOfImmutableRefClassInfo("ImmutableSequenceOf" + immutable, "d",
                                                     p + "ImmutableSequenceOf" + immutable, p + immutable,
                                                     p + immutable + fixed, bases));
  add(createIteratorOfRefClassInfo(name + "Iterator", "d", p + name + "Iterator", p + name));
  add(createIteratorOfImmutableRefClassInfo(immutable + "Iterator", "d", p + immutable + "Iterator",
                                            p + immutable));
  add(createImmutableIteratorOfRefClassInfo(name + fixed, "d", p + name + fixed, p + name));
  add(createImmutableIteratorOfImmutableRefClassInfo(immutable + fixed, "d", p + immutable + fixed,
                                                     p + immutable));
}

void populate(ruvo::RVOPackage* package) {
  const auto add = [package](const char* name, FakeClassInfo::Define define) {
    package->addClass(new FakeClassInfo(name, define), 2);
  };
  add("ImmutableBase", [](ruvo::RVOClass& cls) { addSuper(cls, "K7Q.ImmutableClassObject"); });
  add("Base", [](ruvo::RVOClass& cls) {
    addSuper(cls, "Fake.ImmutableBase");
    addSuper(cls, "K7Q.ClassObject");
  });
  add("ImmutableThing", &defineThing);
  add("Thing", [](ruvo::RVOClass& cls) {
    addSuper(cls, "Fake.ImmutableThing");
    addSuper(cls, "Fake.Base");
  });
  add("Kind", [](ruvo::RVOClass&) {});
  add("ThingMetaProperty", [](ruvo::RVOClass& cls) {
    K7Q::mi::K7qmiPropertyFactory factory(&cls, cls.getFullName(), &methodsOf(thingMethods()));
    factory.addMetaProperty("Text", &descriptorOf, methodsOf(thingMethods()), kText);
  });
  addCompanions(*package, "Base", {"K7Q.ClassObject"});
  addCompanions(*package, "Thing", {"Fake.Base"});
}

}  // namespace

int Object::sLive = 0;

const InternedName& Object::getRuvoName(bool immutable) const { return methodsOf(mMethods).name(immutable); }

K7Q::ImmutableType Object::getMetaType(Deviant) const {
  if (!mIsAlive) K7Q::LocalAsserter("fake", 1) = K7Q::Asserter::MakeAlways(K7Q::kNullReference);
  return methodsOf(mMethods).metaClass();
}

void Object::destroy(Deviant) {
  mIsAlive = false;
  model().getModelInterface()->noteDestruction();
}

K7Q::Model Object::getModel(Deviant deviant) const { return {model().getModelInterface(), deviant}; }

K7Q::Model model() {
  static FakeModel* const model = new FakeModel;
  return {model, Deviant()};
}

K7Q::Model otherModel() {
  static FakeModel* const model = new FakeModel;
  return {model, Deviant()};
}

K7Q::ClassObject newThing() { return {new Object(thingMethods()), Deviant()}; }
K7Q::ClassObject newBase() { return {new Object(baseMethods()), Deviant()}; }

std::vector<std::string>& journal() {
  static std::vector<std::string> journal;
  return journal;
}

void publish() {
  static ruvo::RVOPackage* const package = [] {
    K7Q::mi::initialize();
    return ruvo::factory::registerRuvoPackage("Fake", &populate);
  }();
  static_cast<void>(package);
}

RVOInterfacePtr hostOf(const K7Q::ImmutableObject& object, bool immutable) {
  publish();
  hx::hxArray* array = binding::boxObject(object, immutable, InternedName());
  RVOInterfacePtr host = ruvo::omGetArrayElement(array, 0);
  hx::hxDestroyArray(array);
  return host;
}

namespace {

K7Q::VariantInfo infoOf(const RVOInterfacePtr& host) {
  return K7Q::DeviantRegistry::getVariantInfo(host->getBoundPointer(InternedName()));
}

}  // namespace

Object& nativeOf(const RVOInterfacePtr& host) {
  return *static_cast<Object*>(static_cast<ClassObjectIntf*>(infoOf(host).object->cast(classObjectTags())));
}

RVOInterfacePtr thing() { return hostOf(newThing()); }

RVOInterfacePtr immutableOf(const RVOInterfacePtr& host) {
  return hostOf(K7Q::ImmutableObject(&nativeOf(host), infoOf(host).deviant), true);
}

RVOInterfacePtr frozenOf(const RVOInterfacePtr& host) {
  return hostOf(K7Q::ImmutableObject(&nativeOf(host), Deviant{Deviant::kReadOnly}));
}

RVOInterfacePtr kind(int value) { return hostOf(K7Q::ImmutableObject(new KindCell(value), Deviant())); }

int kindOf(const RVOInterfacePtr& host) {
  auto* object = infoOf(host).object->cast(K7Q::tagsOf<K7Q::NSInterface::ObjectIntf>());
  return dynamic_cast<KindCell&>(*static_cast<K7Q::NSInterface::ObjectIntf*>(object)).value;
}

host::HostResult callStatic(const char* cls, const char* method,
                            std::initializer_list<host::HostValue> arguments) {
  publish();
  return ruvo::callStatic(ruvo::Class::get(cls), method, {arguments.begin(), arguments.size()});
}

K7Q::mi::K7qmiProperty& record(const char* name) {
  publish();
  auto* property = ruvo::Class::get("Fake.Thing").findProperty(std::string_view(name))->property;
  return dynamic_cast<K7Q::mi::K7qmiProperty&>(*property);
}

}  // namespace fake
