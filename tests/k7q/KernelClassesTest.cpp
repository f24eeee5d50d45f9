#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/boundary/k7q/ModelCache.h"
#include "tarvelon/platform/k7q/classes/Initialize.h"
#include "tarvelon/platform/k7q/handles/ModelFactory.h"
#include "tests/k7q/Fake.h"

using host::object;
using host::raised;
using ruvo::RVOInterface;
using ruvo::RVOInterfacePtr;

namespace {

using Names = std::vector<std::string>;

Names linearization(const char* name) {
  fake::publish();
  Names names;
  for (const auto* cls : ruvo::Class::get(name).linearization())
    names.emplace_back(cls->getFullName().view());
  return names;
}

bool says(const std::string& message, const char* part) { return message.find(part) != std::string::npos; }

}  // namespace

TEST(KernelPackage, StandsOnceHoweverOftenItIsInitialized) {
  K7Q::mi::initialize();
  K7Q::mi::initialize();
  const auto names = ruvo::Package::get("K7Q").classNames();
  EXPECT_EQ(names.size(), 19U);
  EXPECT_EQ(names.front(), "ImmutableObject");
}

TEST(KernelClasses, GiveModelClassesALinearOrder) {
  EXPECT_EQ(linearization("Fake.Thing"),
            (Names{"Fake.Thing", "Fake.ImmutableThing", "Fake.Base", "Fake.ImmutableBase", "K7Q.ClassObject",
                   "K7Q.ImmutableClassObject", "K7Q.Object", "K7Q.ImmutableObject"}));
  EXPECT_EQ(linearization("K7Q.ImmutableClass"), (Names{"K7Q.ImmutableClass", "K7Q.ImmutableType",
                                                        "K7Q.ImmutableClassObject", "K7Q.ImmutableObject"}));
}

TEST(ClassObject, TellsWhetherItIsValid) {
  const auto thing = fake::thing();
  EXPECT_TRUE(host::call(thing, "isvalid").slot().logical());
  host::call(thing, "destroy");
  EXPECT_FALSE(host::call(thing, "isvalid").slot().logical());
  for (const char* method : {"destroy", "getModel", "getContainer", "asImmutable"}) {
    EXPECT_TRUE(says(raised([&] { host::call(thing, method); }), K7Q::kNullReference)) << method;
  }
}

TEST(ClassObject, ChangesItsView) {
  const auto thing = fake::thing();
  const auto immutable = host::callObject(thing, "asImmutable");
  EXPECT_EQ(host::className(immutable), "Fake.ImmutableThing");
  EXPECT_EQ(static_cast<RVOInterface*>(host::callObject(immutable, "asMutable")),
            static_cast<RVOInterface*>(thing));
  EXPECT_EQ(static_cast<RVOInterface*>(host::callObject(immutable, "asImmutable")),
            static_cast<RVOInterface*>(immutable));
}

TEST(ClassObject, SeenUnderAFrozenModelRefusesWriting) {
  const auto thing = fake::thing();
  const auto model = fake::hostOf(fake::model());
  const auto frozen = host::callObject(model, "frozen");
  EXPECT_EQ(host::className(frozen), "K7Q.ImmutableModel");

  const auto view = host::callObject(thing, "asDeviant", {object(frozen)});
  EXPECT_EQ(host::className(view), "Fake.Thing");
  EXPECT_TRUE(says(raised([&] { host::call(view, "destroy"); }), "the view is read-only"));
  EXPECT_TRUE(says(raised([&] { host::set(view, "number", host::integer(1)); }), "the view is read-only"));
  EXPECT_EQ(static_cast<RVOInterface*>(host::callObject(view, "asDeviant", {object(model)})),
            static_cast<RVOInterface*>(thing));
}

TEST(ClassObject, SeenUnderAFrozenModelIsThawedByThatModelAlone) {
  const auto thing = fake::thing();
  const auto model = fake::hostOf(fake::model());
  const auto view = host::callObject(thing, "asDeviant", {object(host::callObject(model, "frozen"))});
  EXPECT_EQ(static_cast<RVOInterface*>(host::callObject(view, "asDeviant", {host::nothing()})),
            static_cast<RVOInterface*>(view));
  const auto back = host::callObject(host::callObject(view, "asImmutable"), "asMutable");
  EXPECT_EQ(static_cast<RVOInterface*>(back), static_cast<RVOInterface*>(view));
  EXPECT_EQ(static_cast<RVOInterface*>(host::callObject(view, "asDeviant", {object(model)})),
            static_cast<RVOInterface*>(thing));
}

TEST(ClassObject, NamesItsModelAndNoContainerWhereThereIsNone) {
  const auto thing = fake::thing();
  EXPECT_EQ(host::className(host::callObject(thing, "getModel")), "K7Q.Model");
  EXPECT_EQ(host::className(host::callObject(fake::immutableOf(thing), "getModel")), "K7Q.ImmutableModel");
  EXPECT_FALSE(host::callObject(thing, "getContainer"));
}

TEST(Model, IsMadeByTheFactoryThatWasSet) {
  fake::publish();
  K7Q::setModelFactory(nullptr);
  EXPECT_TRUE(says(raised([] { K7Q::Model::create(); }), "no library that creates models is loaded"));
  EXPECT_TRUE(says(raised([] { K7Q::NSInterface::FactoryIntf::createNewModel(u"x"); }), "no library"));
  static std::u16string named;
  K7Q::setModelFactory([](const std::u16string& name) {
    named = name;
    return fake::model();
  });
  EXPECT_EQ(host::className(RVOInterfacePtr(fake::callStatic("K7Q.Model", "create", {}).object())),
            "K7Q.Model");
  EXPECT_EQ(named, u"");
  EXPECT_EQ(K7Q::NSInterface::FactoryIntf::createNewModel(u"x"), fake::model());
  EXPECT_EQ(named, u"x");
  K7Q::setModelFactory(nullptr);
}

TEST(Model, HasAUri) {
  const auto model = fake::hostOf(fake::model());
  host::call(model, "setUri", {host::text(u"file.arxml")});
  EXPECT_EQ(host::textOf(host::call(model, "getUri")), "file.arxml");
  const auto frozen = host::callObject(model, "frozen");
  EXPECT_EQ(host::textOf(host::call(frozen, "getUri")), "file.arxml");
  host::call(model, "setUri", {host::text(u"")});
}

TEST(Model, KeepsItsBindingWhenItsUriChanges) {
  auto& cache = K7Q::ModelCache::instance();
  const auto model = fake::hostOf(fake::model());
  host::call(model, "setUri", {host::text(u"one")});
  cache.bindModel(u"one", fake::model());
  cache.bindModel(u"two", fake::otherModel());

  EXPECT_THROW(host::call(model, "setUri", {host::text(u"two")}), K7Q::WrongValue);
  EXPECT_EQ(host::textOf(host::call(model, "getUri")), "one");
  host::call(model, "setUri", {host::text(u"three")});
  EXPECT_EQ(cache.find(u"three"), fake::model());
  EXPECT_TRUE(cache.find(u"one").isNull());

  host::call(model, "close");
  host::call(model, "close");
  EXPECT_TRUE(cache.find(u"three").isNull());
  cache.unbind(fake::otherModel().getModelInterface());
}

TEST(Model, RefusesAnEmptyHandle) {
  fake::publish();
  for (const char* method : {"create", "frozen", "close", "getUri"}) {
    auto& record = *ruvo::Class::get("K7Q.Model").findMethods(std::string_view(method))->candidates[0];
    const ruvo::RVOValue self(nullptr);
    std::uint32_t count = 0;
    ruvo::RVOValue result;
    const auto text = raised([&] { record.invoke(nullptr, count, &result, 1, &self); });
    EXPECT_EQ(says(text, K7Q::kNullReference), std::string_view(method) != "create") << method;
  }
}

TEST(Description, OfAClassAnswers) {
  const auto cls = fake::hostOf(fake::methodsOf(fake::thingMethods()).metaClass(), true);
  EXPECT_EQ(host::className(cls), "K7Q.ImmutableClass");
  EXPECT_EQ(host::textOf(host::call(cls, "name")), "Thing");
  EXPECT_EQ(host::textOf(host::call(cls, "fullName")), "Fake.Thing");
  EXPECT_EQ(host::textOf(host::call(cls, "package")), "Fake");
  EXPECT_FALSE(host::call(cls, "isAbstract").slot().logical());
  EXPECT_TRUE(host::call(cls, "isvalid").slot().logical());

  const auto bases = host::callObject(cls, "superclasses");
  EXPECT_EQ(host::className(bases), "K7Q.ImmutableSequenceOfImmutableObject");
  ASSERT_EQ(host::call(bases, "size").slot().int32(), 1);
  const auto base = host::callObject(bases, "front");
  EXPECT_EQ(host::className(base), "K7Q.ImmutableClass");
  EXPECT_EQ(host::textOf(host::call(base, "name")), "Base");
  EXPECT_TRUE(host::call(base, "isAbstract").slot().logical());
}

TEST(Description, OfAPropertyAnswers) {
  const auto cls = fake::hostOf(fake::methodsOf(fake::thingMethods()).metaClass(), true);
  const auto properties = host::callObject(cls, "properties");
  ASSERT_EQ(host::call(properties, "size").slot().int32(), 1);
  const auto property = host::callObject(host::callObject(properties, "begin"), "item");
  EXPECT_EQ(host::textOf(host::call(property, "name")), "Text");
  EXPECT_EQ(host::call(property, "id").slot().int32(), 1);
  EXPECT_EQ(host::textOf(host::call(property, "type")), "char vector");
  EXPECT_EQ(host::call(property, "lowerBound").slot().int32(), 1);
  EXPECT_EQ(host::call(property, "upperBound").slot().int32(), 1);
  EXPECT_FALSE(host::call(property, "isReadOnly").slot().logical());
  EXPECT_FALSE(host::call(property, "isContainment").slot().logical());
  EXPECT_EQ(static_cast<RVOInterface*>(host::callObject(property, "owner")), static_cast<RVOInterface*>(cls));
}

TEST(Description, OfAScalarTypeHasNoLiterals) {
  const K7Q::Object number = K7Q::Integer(1);
  const auto type = fake::hostOf(number.getInterface()->getMetaType(K7Q::Deviant()), true);
  EXPECT_EQ(host::className(type), "K7Q.ImmutableDataType");
  const auto literals = host::callObject(type, "literals");
  EXPECT_EQ(host::className(literals), "K7Q.ImmutableSequenceOfString");
  EXPECT_EQ(host::call(literals, "size").slot().int32(), 0);
}
