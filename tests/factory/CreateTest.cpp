#include <set>
#include <string>

#include "tarvelon/arplatform/Tables.h"
#include "tarvelon/boundary/tarvelon/Factory.h"
#include "tarvelon/foundation/Table.h"
#include "tests/factory/Support.h"

using namespace factory;

namespace arplatform = Tarvelon::metamodel::arplatform;

namespace {

constexpr std::string_view kPrefix = "createmetamodelarplatform";
constexpr const char* kReadOnlyView =
    "the view is read-only because of its deviant; asDeviant(model) with the model itself returns a writable "
    "view";

/// A package, created without arguments.
K7Q::ClassObject createPackage(const arplatform::Factory& factory) {
  return factory.create(arplatform::common::Package::Interface::sIntrospectiveMethods, 0, {});
}

class Create : public Factories {
 protected:
  /// The create methods of the factory, in their order.
  static std::vector<const ruvo::RVOMethodInfo*> creates() {
    std::vector<const ruvo::RVOMethodInfo*> found;
    for (const auto* each : host::cls("Factory").methods()) {
      if (each->getName().view().starts_with(kPrefix)) found.push_back(each);
    }
    return found;
  }
  static std::string nameOf(const ruvo::RVOMethodInfo& record) {
    return std::string(record.getName().view());
  }

  /// Calls a record with an empty self and otherwise correct arguments, in hand-made slots.
  static std::string raisedByEmptySelf(const char* name, std::size_t index,
                                       std::initializer_list<const ArrayPtr*> arguments) {
    return raised([&] { invoke(record("Factory", name, index), arguments); });
  }
};

/// The arguments of one call: texts and numbers that differ by position, and objects of matching classes.
class Values {
 public:
  Values(const RVOInterfacePtr& model, std::span<const ruvo::InternedName> types) : mModel(model) {
    mTexts.reserve(types.size());
    mObjects.reserve(types.size());
    for (const auto& type : types) mValues.push_back(valueOf(type.view()));
  }
  std::vector<HostValue> mValues;

 private:
  HostValue valueOf(std::string_view type) {
    const auto place = static_cast<int>(mValues.size()) + 1;
    if (type == "char vector") {
      mTexts.push_back(u"text" + std::u16string(1, static_cast<char16_t>(u'0' + place)));
      return host::text(mTexts.back());
    }
    if (type == "int32 scalar") return host::integer(40 + place);
    if (type == "double scalar") return host::number(0.5 + place);
    if (type == "logical scalar") return host::logical(true);
    mObjects.push_back(objectOf(ruvo::Class::get(type)));
    return host::object(mObjects.back());
  }
  RVOInterfacePtr objectOf(ruvo::Class& cls) const {
    if (cls.findMethods("fromString")) {
      const auto literals = host::callObject(metaTypeOf(cls), "literals");
      const auto last =
          host::call(literals, "at", {host::integer(host::call(literals, "size").slot().int32())});
      const std::u16string literal(hx::hxGetText(last.slot().array()));
      const HostValue argument = host::text(literal);
      return RVOInterfacePtr(ruvo::callStatic(cls, "fromString", {&argument, 1}).object());
    }
    ruvo::Class& made = concrete(cls);
    const HostValue argument = host::object(mModel);
    return ruvo::construct(made, {&argument, 1});
  }
  /// The class itself, or for an abstract class the first concrete subclass.
  static ruvo::Class& concrete(ruvo::Class& cls) {
    if (cls.constructors()) return cls;
    std::vector<std::string> packages{"Tarvelon.metamodel.foundation", "Tarvelon.metamodel.types"};
    const std::string root = "Tarvelon.metamodel.arplatform";
    for (const auto& child : ruvo::Package::get(root).packageNames()) {
      packages.push_back(root + "." + std::string(child));
    }
    for (const auto& package : packages) {
      for (auto* made : ruvo::Package::get(package).classes()) {
        if (made->constructors() && made->isKindOf(cls)) return *made;
      }
    }
    ADD_FAILURE() << "nothing can be made that is a " << cls.getClassName();
    return cls;
  }
  static RVOInterfacePtr metaTypeOf(ruvo::Class& cls) {
    return RVOInterfacePtr(ruvo::callStatic(cls, "MetaDataType", {}).object());
  }
  RVOInterfacePtr mModel;
  std::vector<std::u16string> mTexts;
  std::vector<RVOInterfacePtr> mObjects;
};

/// A property's value as text: scalars and texts as they are, objects by their class.
std::string shown(const RVOInterfacePtr& object, const ruvo::PropertySlot& slot) {
  std::string name(slot.name.view());
  const auto value = ruvo::getProperty(object, slot);
  if (value.isRaw()) return name + "=" + std::to_string(value.slot().word());
  if (!value.isArray()) return name;
  if (hx::hxGetClassId(value.slot().array()) != hx::hxObject) return name + "=" + host::textOf(value);
  const RVOInterfacePtr found(value.object());
  if (!found) return name + "=nothing";
  const auto& cls = ruvo::classOf(*found);
  const bool isLiteral = const_cast<ruvo::Class&>(cls).findMethods("fromString") != nullptr;
  return name + "=" + (isLiteral ? host::textOf(host::call(found, "toString")) : cls.getClassName());
}

/// The values of all own and inherited properties of an object.
std::vector<std::string> shown(const RVOInterfacePtr& object) {
  std::vector<std::string> values;
  for (auto* cls : ruvo::classOf(*object).linearization()) {
    for (const auto& slot : cls->properties()) values.push_back(shown(object, slot));
  }
  return values;
}

TEST_F(Create, HasAFormForEachConstructor) {
  std::set<std::string> names;
  for (const auto* each : host::cls("Factory").methods()) names.insert(nameOf(*each));
  EXPECT_EQ(host::cls("Factory").methods().size(), 416U);
  EXPECT_EQ(names.size(), 229U);
  std::size_t constructors = 0;
  for (const auto& child : ruvo::Package::get("Tarvelon.metamodel.arplatform").packageNames()) {
    auto& package = ruvo::Package::get("Tarvelon.metamodel.arplatform." + std::string(child));
    for (auto* cls : package.classes()) {
      if (const auto* found = cls->constructors()) constructors += found->candidates.size();
    }
  }
  EXPECT_EQ(creates().size(), constructors);
}

TEST_F(Create, NamesAClassByPackageAndClassRunTogether) {
  for (const auto* each : creates()) {
    std::string expected = "create";
    for (const char c : each->getSignature()->result().view().substr(std::string_view("Tarvelon.").size())) {
      if (c != '.') expected += c;
    }
    EXPECT_EQ(nameOf(*each), expected);
    EXPECT_EQ(each->getSignature()->self().view(), "Tarvelon.metamodel.arplatform.Factory");
    EXPECT_EQ(each->getFlags(), 0U);
  }
}

TEST_F(Create, StartsEachClassWithItsFormWithoutArguments) {
  std::string before;
  for (const auto* each : creates()) {
    EXPECT_EQ(each->getSignature()->arguments().empty(), nameOf(*each) != before) << nameOf(*each);
    before = nameOf(*each);
  }
}

TEST_F(Create, HasNoRecordForAnAbstractClass) {
  for (const char* abstract :
       {"commonIdentifiable", "commonReferrable", "documentationLanguageSpecific", "variantAttributeValue"}) {
    const std::string name = std::string(kPrefix) + abstract;
    EXPECT_EQ(host::cls("Factory").findMethods(name), nullptr) << name;
  }
}

TEST_F(Create, MakesWhatTheConstructorMakes) {
  for (const auto* each : creates()) {
    const std::string cls(each->getSignature()->result().view());
    const auto types = each->getSignature()->arguments();
    const Values ours(mModel, types);
    const RVOInterfacePtr made(ruvo::call(mFactory, each->getName().view(), ours.mValues).object());
    ASSERT_TRUE(made) << cls;
    EXPECT_EQ(host::className(made), cls);
    EXPECT_TRUE(host::call(made, "isvalid").slot().logical()) << cls;
    EXPECT_EQ(host::callObject(made, "getModel"), mModel) << cls;

    Values theirs(mModel, types);
    theirs.mValues.insert(theirs.mValues.begin(), host::object(mModel));
    EXPECT_EQ(shown(made), shown(ruvo::construct(ruvo::Class::get(cls), theirs.mValues))) << cls;
  }
}

TEST_F(Create, TakesItsArgumentsInOrder) {
  const auto sd = create("commonSd", {host::text(u"key"), host::text(u"value")});
  EXPECT_EQ(host::getText(sd, "gid"), "key");
  EXPECT_EQ(host::getText(sd, "Value"), "value");
}

TEST_F(Create, RefusesArgumentsThatNoFormTakes) {
  const auto refused = raised([&] { create("commonPackage", {host::logical(true), host::text(u"P")}); });
  EXPECT_NE(refused.find("createmetamodelarplatformcommonPackage(char vector"), std::string::npos) << refused;
  EXPECT_THROW(create("commonPackages"), K7Q::UnknownName);
}

TEST_F(Create, RefusesAnEmptyFactoryOfNoModel) {
  const auto factory = host::callStatic("Factory", "createNewFactory", {host::nothing()});
  ASSERT_TRUE(factory.isArray());
  EXPECT_EQ(factory.object(), nullptr);
  EXPECT_STREQ(hx::hxGetClassName(factory.slot().array()), "Tarvelon.metamodel.arplatform.Factory");
  const ArrayPtr self(hx::hxDuplicateArray(factory.slot().array()));
  const auto name = text(u"P");
  EXPECT_EQ(raisedByEmptySelf("createmetamodelarplatformcommonPackage", 0, {&self}),
            "method 'createmetamodelarplatformcommonPackage': expected an object to call it on, got an empty "
            "value");
  EXPECT_EQ(raisedByEmptySelf("createmetamodelarplatformcommonPackage", 1, {&self, &name}),
            "method 'createmetamodelarplatformcommonPackage': expected an object to call it on, got an empty "
            "value");
}

TEST_F(Create, RefusesAnEmptySelfInEachOfTheOtherMethods) {
  const auto self = empty();
  const auto cls = text(u"common.Package");
  const std::string rest = "': expected an object to call it on, got an empty value";
  EXPECT_EQ(raisedByEmptySelf("createFromString", 0, {&self, &cls}), "method 'createFromString" + rest);
  EXPECT_EQ(raisedByEmptySelf("createFromString", 1, {&self, &cls, &cls}), "method 'createFromString" + rest);
  EXPECT_EQ(raisedByEmptySelf("toK7QObject", 0, {&self}), "method 'toK7QObject" + rest);
  EXPECT_EQ(raisedByEmptySelf("toK7QFactoryObject", 0, {&self}), "method 'toK7QFactoryObject" + rest);
}

TEST_F(Create, TellsOfTheArgumentBeforeTheSelf) {
  const auto self = empty();
  // A package instead of an enumeration value. A host would refuse this argument.
  const auto wrong = box(create("commonPackage"));
  const auto formula = text(u"a > 1");
  const auto refused =
      raisedByEmptySelf("createmetamodelarplatformvariantConditionByFormula", 1, {&self, &wrong, &formula});
  EXPECT_EQ(refused.find("expected an object to be called on"), std::string::npos) << refused;
  EXPECT_NE(refused.find("Package"), std::string::npos) << refused;
}

TEST_F(Create, RefusesAReadOnlyDeviant) {
  const auto factory = readOnlyFactory();
  const auto refused =
      raised([&] { host::call(factory, "createmetamodelarplatformcommonPackage", {host::text(u"P")}); });
  EXPECT_NE(refused.find(kReadOnlyView), std::string::npos) << refused;
  EXPECT_THROW(host::call(factory, "createmetamodelarplatformcommonPackage"), K7Q::Exception);
}

TEST_F(Create, LooksAtNoDeviantWhenCreatingFromAString) {
  const auto made = host::callObject(readOnlyFactory(), "createFromString", {host::text(u"common.Package")});
  ASSERT_TRUE(made);
  EXPECT_EQ(nativeOf(made).deviant.word, K7Q::Deviant::kFrozen);
  const auto named = host::callObject(readOnlyFactory(), "createFromString",
                                      {host::text(u"common.Package"), host::text(u"Brakes")});
  EXPECT_EQ(host::getText(named, "Name"), "Brakes");
  EXPECT_THROW(host::set(named, "Name", host::text(u"Wheels")), K7Q::Exception);
}

TEST_F(Create, LetsAReadOnlyDeviantThroughWhileAssertionsAreOff) {
  const auto factory = readOnlyFactory();
  const auto made = [&] {
    const Assertions off(false);
    return host::callObject(factory, "createmetamodelarplatformcommonPackage", {host::text(u"P")});
  }();
  EXPECT_EQ(host::getText(made, "Name"), "P");
  EXPECT_EQ(nativeOf(made).deviant.word, K7Q::Deviant::kFrozen);
  EXPECT_THROW(host::set(made, "Name", host::text(u"Q")), K7Q::Exception);
}

TEST_F(Create, GivesWhatItMakesTheFactorysDeviant) {
  constexpr K7Q::Deviant kOther{32};
  const auto native = nativeOf(mFactory);
  using Intf = arplatform::NSInterface::FactoryIntf;
  auto* interface = static_cast<Intf*>(native.object->cast(K7Q::tagsOf<Intf>()));
  ASSERT_NE(interface, nullptr);
  const arplatform::Factory factory(interface, kOther);
  EXPECT_EQ(createPackage(factory).getDeviant(), kOther);
  EXPECT_EQ(interface->createFromString(kOther, K7Q::String(u"common.Package")).getDeviant(), kOther);
}

/// A factory that ignores the deviant it is given.
class OwnFactory final : public arplatform::NSInterface::FactoryIntf {
 public:
  explicit OwnFactory(const K7Q::Model& model) : mModel(model) {}
  const ruvo::InternedName& getRuvoName(bool) const override { return mName; }
  K7Q::ImmutableType getMetaType(K7Q::Deviant) const override { return {}; }
  K7Q::Model getModel(K7Q::Deviant) const override { return mModel; }
  K7Q::ClassObject create(K7Q::Deviant, const K7Q::IntrospectiveMethods& cls, unsigned constructor,
                          std::span<const K7Q::Object> arguments) override {
    return cls.create(mModel, constructor, arguments);
  }
  K7Q::Object createFromString(K7Q::Deviant, const K7Q::String&) override { return {}; }
  K7Q::Object createFromString(K7Q::Deviant, const K7Q::String&, const K7Q::String&) override { return {}; }

 private:
  K7Q::Model mModel;
  ruvo::InternedName mName;
};

TEST_F(Create, GivesTheFactorysDeviantWhateverTheInterfaceGave) {
  constexpr K7Q::Deviant kOther{32};
  OwnFactory interface(K7Q::Model::create());
  const arplatform::Factory factory(&interface, kOther);
  EXPECT_EQ(createPackage(factory).getDeviant(), kOther);
}

TEST_F(Create, IsTypedForAProgram) {
  const auto factory = arplatform::Factory::createNewFactory(K7Q::Model::create());
  const auto package = factory.create<arplatform::common::Package>(u"P");
  EXPECT_EQ(K7Q::String::to_string(package.get<"Name">()), "P");
  EXPECT_EQ(factory.create<arplatform::common::Sd>(u"key", u"value").getDeviant(), factory.getDeviant());
}

TEST_F(Create, OfAnEmptyNativeHandleRaisesTheNullText) {
  const auto refused = raised([] { createPackage(arplatform::Factory()); });
  EXPECT_EQ(refused.find(kNullText), 0U) << refused;
  EXPECT_TRUE(arplatform::Factory::createNewFactory(K7Q::Model()).isNull());
}

TEST_F(Create, RefusesAClosedModel) {
  host::call(mModel, "close");
  const auto refused = raised([&] { create("commonPackage"); });
  EXPECT_EQ(refused.find(kNullText), 0U) << refused;
  const auto fromString =
      raised([&] { host::call(mFactory, "createFromString", {host::text(u"common.Package")}); });
  EXPECT_EQ(fromString.find(kNullText), 0U) << fromString;
  EXPECT_FALSE(host::call(mFactory, "isvalid").slot().logical());
  EXPECT_EQ(raised([&] { factoryOf(mModel); }).find(kNullText), 0U);
}

TEST_F(Create, RefusesAnObjectOfAnotherModel) {
  const auto other = RVOInterfacePtr(host::callStatic("Factory", "createNewModel").object());
  const auto foreign = host::make("common.Package", {host::object(other)});
  EXPECT_THROW(
      create("commonReferenceBase", {host::logical(true), host::text(u"base"), host::object(foreign)}),
      K7Q::WrongValue);
}

TEST_F(Create, HoldsItsModel) {
  mModel = host::newModel();
  mFactory = factoryOf(mModel);
  const auto* native = nativeOf(mModel).object;
  mModel = RVOInterfacePtr();
  const auto package = create("commonPackage", {host::text(u"P")});
  EXPECT_EQ(nativeOf(host::callObject(mFactory, "getModel")).object, native);
  mFactory = RVOInterfacePtr();
  EXPECT_EQ(host::getText(package, "Name"), "P");
}

TEST_F(Create, SetsNothingOfAnObjectThatIsRefused) {
  const auto wheels = create("variantSystemConst", {host::text(u"Wheels")});
  host::call(wheels, "destroy");
  EXPECT_THROW(create("variantSystemConstValue", {host::number(2), host::object(wheels)}), K7Q::Exception);
}

}  // namespace
