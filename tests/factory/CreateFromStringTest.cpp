#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tests/factory/Support.h"
#include "tests/support/FailingNew.h"

using namespace factory;

namespace {

class CreateFromString : public Factories {
 protected:
  RVOInterfacePtr make(std::u16string_view cls) const {
    return host::callObject(mFactory, "createFromString", {host::text(cls)});
  }
  RVOInterfacePtr make(std::u16string_view cls, std::u16string_view name) const {
    return host::callObject(mFactory, "createFromString", {host::text(cls), host::text(name)});
  }
  std::string refused(std::u16string_view cls) const {
    return raised([&] { make(cls); });
  }
};

TEST_F(CreateFromString, TakesADottedName) {
  const auto made = make(u"Tarvelon.metamodel.arplatform.common.Package");
  EXPECT_EQ(host::className(made), "Tarvelon.metamodel.arplatform.common.Package");
  EXPECT_EQ(host::callObject(made, "getModel"), mModel);
}

TEST_F(CreateFromString, TakesANameFromThePackageOn) {
  EXPECT_EQ(host::className(make(u"variant.SystemConst")),
            "Tarvelon.metamodel.arplatform.variant.SystemConst");
}

TEST_F(CreateFromString, MakesEveryClassThatTheFactoryMakes) {
  for (const auto* each : host::cls("Factory").methods()) {
    if (!each->getName().view().starts_with("createmetamodel")) continue;
    const std::string cls(each->getSignature()->result().view());
    EXPECT_EQ(host::className(make(std::u16string(cls.begin(), cls.end()))), cls);
  }
}

TEST_F(CreateFromString, SetsTheName) {
  const auto made = make(u"common.Package", u"Brakes");
  EXPECT_EQ(host::getText(made, "Name"), "Brakes");
  EXPECT_EQ(host::getText(make(u"common.Package", u""), "Name"), "");
  EXPECT_EQ(host::getText(make(u"common.Package"), "Name"), "");
}

TEST_F(CreateFromString, NamesTheNearestOfAnUnknownClass) {
  EXPECT_EQ(refused(u"common.Pakage"),
            "Factory.createFromString: there is no class 'common.Pakage'; did you mean 'common.Package'? "
            "(write the name with its package, as in 'common.Package')");
  EXPECT_THROW(make(u"common.Pakage"), K7Q::UnknownName);
}

TEST_F(CreateFromString, RefusesWhatIsNoNameOfAClass) {
  const std::u16string_view names[] = {u"",
                                       u".",
                                       u"common",
                                       u"common.",
                                       u".Package",
                                       u"Package",
                                       u"common.package",
                                       u" common.Package",
                                       u"common.Package ",
                                       u"common..Package",
                                       u"K7Q.Model",
                                       u"K7Q.ClassObject",
                                       u"common.ImmutablePackage",
                                       u"common.PackageMetaProperty",
                                       u"common.SequenceOfPackage",
                                       u"variant.BindingTimeKind",
                                       u"Factory",
                                       u"Tarvelon.metamodel.arplatform.Factory",
                                       u"\u00fc.\U0001F697"};
  for (const auto cls : names) {
    EXPECT_THROW(make(cls), K7Q::UnknownName) << K7Q::String::to_string(cls);
  }
}

TEST_F(CreateFromString, RefusesALongName) {
  const std::u16string name(100'000, u'x');
  EXPECT_THROW(make(name), K7Q::UnknownName);
}

TEST_F(CreateFromString, SaysWhichClassIsAbstract) {
  const auto text = refused(u"common.Identifiable");
  EXPECT_NE(text.find("Identifiable"), std::string::npos) << text;
  EXPECT_NE(text.find("abstract"), std::string::npos) << text;
  EXPECT_EQ(raised([&] { make(u"common.Identifiable", u"name"); }), text);
}

TEST_F(CreateFromString, SaysWhichClassHasNoName) {
  EXPECT_EQ(raised([&] { make(u"documentation.DocRevision", u"first"); }),
            "Factory.createFromString: objects of class 'documentation.DocRevision' have no name; give only "
            "the class");
  EXPECT_THROW(make(u"documentation.DocRevision", u"first"), K7Q::WrongValue);
  EXPECT_NO_THROW(make(u"documentation.DocRevision"));
}

TEST_F(CreateFromString, LeavesNoObjectBehindWhenTheNameIsRefused) {
  const auto lone = std::u16string(u"a") + char16_t{0xD800};
  const auto withNul = std::u16string(u"a") + char16_t{0} + u"b";
  const auto refuseBoth = [&] {
    EXPECT_THROW(make(u"common.Package", lone), K7Q::WrongValue);
    EXPECT_THROW(make(u"common.Package", withNul), K7Q::WrongValue);
  };
  refuseBoth();
  const auto live = failing::live();
  const auto bindings = ruvo::factory::basic::BindingRegistry::size();
  for (int i = 0; i < 100; ++i) refuseBoth();
  EXPECT_EQ(failing::live(), live);
  EXPECT_EQ(ruvo::factory::basic::BindingRegistry::size(), bindings);
}

TEST_F(CreateFromString, AcceptsNoOtherArguments) {
  EXPECT_THROW(host::call(mFactory, "createFromString"), K7Q::WrongType);
  EXPECT_THROW(host::call(mFactory, "createFromString", {host::integer(3)}), K7Q::WrongType);
  EXPECT_THROW(host::call(mFactory, "createFromString",
                          {host::text(u"common.Package"), host::text(u"P"), host::text(u"Q")}),
               K7Q::WrongType);
}

}  // namespace
