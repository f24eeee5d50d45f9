// The types that the native handles accept, which the compiler checks, and the sequences that they return.

#include <type_traits>

#include "tarvelon/platform/model/api/Copy.h"
#include "tests/native/Support.h"

namespace {

using K7Q::Model;

template <class X, class... Arguments>
concept CanCreate = requires(const Model& model, Arguments... arguments) {
  X::create(model, arguments...);
};

template <class X, class Value>
concept CanSetCode = requires(const X& object, Value value) {
  object.template set<"errorCode">(value);
};

// Integer types whose values all fit into an int32 scalar are accepted, others are not.
static_assert(CanCreate<common::ApplicationError, int, const char16_t*>);
static_assert(CanCreate<common::ApplicationError, short, const char16_t*>);
static_assert(CanCreate<common::ApplicationError, unsigned short, const char16_t*>);
static_assert(CanCreate<common::ApplicationError, K7Q::Integer, const char16_t*>);
static_assert(!CanCreate<common::ApplicationError, unsigned, const char16_t*>);
static_assert(!CanCreate<common::ApplicationError, long, const char16_t*>);
static_assert(!CanCreate<common::ApplicationError, char, const char16_t*>);
static_assert(!CanCreate<common::ApplicationError, char16_t, const char16_t*>);
static_assert(!CanCreate<common::ApplicationError, bool, const char16_t*>);
static_assert(!CanCreate<common::ApplicationError, double, const char16_t*>);

// Types whose values a double represents exactly are accepted.
static_assert(CanCreate<variant::SystemConstValue, double, variant::SystemConst>);
static_assert(CanCreate<variant::SystemConstValue, float, variant::SystemConst>);
static_assert(CanCreate<variant::SystemConstValue, int, variant::SystemConst>);
static_assert(!CanCreate<variant::SystemConstValue, long, variant::SystemConst>);
static_assert(!CanCreate<variant::SystemConstValue, long double, variant::SystemConst>);
static_assert(!CanCreate<variant::SystemConstValue, char, variant::SystemConst>);
static_assert(!CanCreate<variant::SystemConstValue, double, common::Package>);

// A read-only handle must not give access to a writable handle, neither by conversion nor through its
// properties.
using common::ImmutablePackage;
using common::Package;
static_assert(std::is_constructible_v<ImmutablePackage, Package>);
static_assert(!std::is_constructible_v<Package, ImmutablePackage>);
static_assert(!std::is_assignable_v<Package&, ImmutablePackage>);
static_assert(!std::is_constructible_v<K7Q::Object, ImmutablePackage>);
static_assert(!std::is_constructible_v<K7Q::Object, K7Q::ObjectHandle>);
static_assert(!std::is_constructible_v<K7Q::ClassObject, ImmutablePackage>);
static_assert(!std::is_constructible_v<K7Q::Model, K7Q::ImmutableModel>);
static_assert(
    !std::is_constructible_v<K7Q::Sequence<K7Q::Object>, const K7Q::ImmutableSequence<K7Q::Object>&>);
static_assert(
    !std::is_constructible_v<K7Q::Iterator<K7Q::Object>, const K7Q::ImmutableIterator<K7Q::Object>&>);
static_assert(std::is_same_v<decltype(ImmutablePackage::cast(ImmutablePackage())), ImmutablePackage>);

template <class Handle>
concept CanAdd = requires(const Handle& handle, const common::ReferenceBase& base) {
  handle.template get<"ReferenceBase">().add(base);
};
template <class Handle>
concept CanEmpty = requires(const Handle& handle) {
  handle.template get<"ReferenceBase">().clear();
};
template <class Handle>
concept CanDestroyElements = requires(const Handle& handle) {
  (*handle.template get<"ReferenceBase">().begin()).destroy();
  handle.template get<"ReferenceBase">().at(0).destroy();
};
static_assert(CanAdd<Package> && CanEmpty<Package> && CanDestroyElements<Package>);
static_assert(!CanAdd<ImmutablePackage> && !CanEmpty<ImmutablePackage>);
static_assert(!CanDestroyElements<ImmutablePackage>);

template <class... Arguments>
concept CanClone = requires(const Arguments&... arguments) {
  Tarvelon::metamodel::clone(arguments...);
};
static_assert(CanClone<Package> && CanClone<ImmutablePackage, Package> && CanClone<Package, Model>);
static_assert(!CanClone<ImmutablePackage> && !CanClone<Package, ImmutablePackage>);
static_assert(!CanClone<Package, K7Q::ImmutableModel>);

TEST(NativeSequence, OfAnImmutableHandleIsReadThroughImmutableHandles) {
  const Model model = Model::create();
  const auto package = Package::create(model, u"P");
  package.get<"PackagedElement">().add(variant::SystemConst::create(model, u"C"));

  const auto elements = ImmutablePackage(package).get<"PackagedElement">();

  static_assert(std::is_same_v<decltype(elements[0]), foundation::ImmutablePackageableElement>);
  EXPECT_EQ(elements.size(), 1);
  EXPECT_TRUE(elements.contains(elements[0]));
  for (const auto& element : elements)
    EXPECT_EQ(foundation::ImmutableNamedElement::cast(element).get<"Name">().view(), u"C");
}

TEST(NativeSequence, HoldsAReferenceOnceWhateverPutsItThere) {
  const Model model = Model::create();
  const auto formula = variant::SystemConstDependentFormula::create(model, u"f");
  std::vector<variant::SystemConst> made;
  for (const char16_t* name : {u"a", u"b", u"c"}) made.push_back(variant::SystemConst::create(model, name));
  const auto constants = formula.get<"SysConst">();
  const auto names = [&constants] {
    std::u16string all;
    for (const auto& each : constants) all += each.get<"Name">().view();
    return all;
  };
  for (const auto& each : made) constants.add(each);
  constants.add(made[0]);
  EXPECT_EQ(names(), u"abc");
  constants.insert(2, made[0]);
  EXPECT_EQ(names(), u"bac");
  constants.replace(0, made[2]);
  EXPECT_EQ(names(), u"cab");
  EXPECT_TRUE(constants.contains(made[1]));
  constants.erase(1);
  EXPECT_EQ(names(), u"cb");
  constants.clear();
  EXPECT_TRUE(constants.empty());
}

TEST(NativeSequence, OfTextsIsReadAndChanged) {
  const Model model = Model::create();
  const auto condition = variant::PostBuildVariantCondition::create(model);
  const auto texts = condition.get<"ValueVariationPoint">();

  texts.add(u"a");
  texts.add(K7Q::String(u"b"));
  texts.add(u"a");

  ASSERT_EQ(texts.size(), 3);
  EXPECT_EQ(texts[0].view(), u"a");
  EXPECT_EQ(texts.at(1).view(), u"b");
  std::u16string all;
  for (const K7Q::String& text : texts) all += text.view();
  EXPECT_EQ(all, u"aba");
  EXPECT_TRUE(texts.remove(u"a"));
  EXPECT_FALSE(texts.remove(u"a"));
  ASSERT_EQ(texts.size(), 1);
  EXPECT_EQ(condition.get<"ValueVariationPoint">()[0].view(), u"b");
}

TEST(NativeSequence, OfObjectsGivesHandlesOfTheElementsClass) {
  const Model model = Model::create();
  const auto package = common::Package::create(model, u"P");
  const auto constant = variant::SystemConst::create(model, u"C");

  package.get<"PackagedElement">().add(constant);

  const foundation::PackageableElement element = package.get<"PackagedElement">()[0];
  EXPECT_EQ(element, constant);
  EXPECT_FALSE(package.get<"PackagedElement">().remove(package));
  EXPECT_TRUE(package.get<"PackagedElement">().remove(constant));
}

TEST(NativeHandle, GivesItselfBackFromWhatChangesIt) {
  const Model model = Model::create();
  const auto constant = variant::SystemConst::create(model, u"C");
  const auto value = variant::SystemConstValue::create(model, 2.0, constant);

  const auto set =
      variant::SystemConstValueSet::create(model, u"S").set<"category">(u"VALUE").add<"SysConstValue">(value);

  EXPECT_EQ(set.get<"category">().view(), u"VALUE");
  ASSERT_EQ(set.get<"SysConstValue">().size(), 1);
  EXPECT_EQ(set.get<"SysConstValue">()[0], value);
}

TEST(NativeHandle, AddsInTheOrderGivenUntilOneIsRefused) {
  const Model model = Model::create();
  const Model other = Model::create();
  const auto package = common::Package::create(model, u"P");
  const auto first = variant::SystemConst::create(model, u"A");
  const auto second = common::Package::create(model, u"B");

  package.add<"PackagedElement">(first, second);
  EXPECT_THROW(package.add<"PackagedElement">(variant::SystemConst::create(model, u"C"),
                                              variant::SystemConst::create(other, u"D"),
                                              variant::SystemConst::create(model, u"E")),
               K7Q::Exception);

  std::u16string names;
  for (const auto& element : package.get<"PackagedElement">()) names += element.get<"Name">().view();
  EXPECT_EQ(names, u"ABC");
}

TEST(NativeRead, GivesTheElementsOfOneKindInASequenceOfItsOwn) {
  const Model model = Model::create();
  const auto runnable = behavior::Runnable::create(model, u"f", u"F");
  const auto accessOf = [&](behavior::DataAccessKind kind, const char16_t* name) {
    return behavior::FlowDataAccess::create(model).set<"Kind">(kind).set<"Name">(name);
  };
  runnable.add<"dataAccess">(accessOf(behavior::DataAccessKind::ExplicitWrite, u"a"),
                             accessOf(behavior::DataAccessKind::ImplicitRead, u"b"),
                             accessOf(behavior::DataAccessKind::ExplicitWrite, u"c"));

  const auto written = runnable.read<"explicitWrite">();

  ASSERT_EQ(written.size(), 2);
  const behavior::FlowDataAccess first = written[0];
  EXPECT_EQ(first.get<"Name">().view(), u"a");
  EXPECT_EQ(written[1].get<"Name">().view(), u"c");
  EXPECT_EQ(runnable.read<"implicitRead">().size(), 1);
  EXPECT_TRUE(runnable.read<"implicitWrite">().empty());
  written.remove(first);
  EXPECT_EQ(runnable.get<"dataAccess">().size(), 3);
}

TEST(NativeRead, IsRefusedByANullHandle) {
  expectNullReference([] { behavior::Runnable().read<"implicitRead">(); });
}

}  // namespace
