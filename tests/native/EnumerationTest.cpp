// Enumeration values as texts, as objects and as types.

#include "tests/native/Support.h"

using variant::BindingTimeKind;

TEST(Enumeration, IsWrittenAsItsLiteralOrItsNumber) {
  EXPECT_EQ(BindingTimeKind(BindingTimeKind::LinkTime).toString(), K7Q::String(u"LinkTime"));
  EXPECT_EQ(BindingTimeKind(17).toString(), K7Q::String(u"17"));
  EXPECT_EQ(BindingTimeKind(-1).toString(), K7Q::String(u"-1"));
}

TEST(Enumeration, IsReadFromTheExactName) {
  EXPECT_EQ(BindingTimeKind::fromString("SystemDesignTime").value(), 0);
  EXPECT_EQ(BindingTimeKind::fromString("LinkTime"), BindingTimeKind(BindingTimeKind::LinkTime));
  for (const std::string name : {"linktime", " LinkTime", "", "LinkTime,", "3"}) {
    const std::string hint = name.size() > 1 ? "; did you mean 'LinkTime'?" : "";
    EXPECT_EQ(refusalOf([&] { BindingTimeKind::fromString(name); }),
              "enumeration 'Tarvelon.metamodel.arplatform.variant.BindingTimeKind' has no literal '" + name +
                  "'" + hint +
                  "; there are 'SystemDesignTime', 'CodeGenerationTime', 'PreCompileTime', 'LinkTime'");
  }
}

TEST(Enumeration, IsBoxedInACellOfItsOwn) {
  const K7Q::Object first = BindingTimeKind(1);
  const K7Q::Object second = BindingTimeKind(1);
  EXPECT_FALSE(first == second);
  EXPECT_EQ(first.getInterface()->numRef(), 1);
  EXPECT_TRUE(first.isValid());
  EXPECT_EQ(BindingTimeKind(first), BindingTimeKind(1));
  for (const bool immutable : {false, true}) {
    EXPECT_EQ(first.getInterface()->getRuvoName(immutable).view(),
              "Tarvelon.metamodel.arplatform.variant.BindingTimeKind");
  }
  EXPECT_TRUE(first.getInterface()->getMetaType({}) == BindingTimeKind::MetaDataType());
  EXPECT_EQ(first.getInterface()->cast(K7Q::tagsOf<K7Q::NSInterface::ObjectIntf>()), first.getInterface());
  EXPECT_EQ(first.getInterface()->cast(K7Q::tagsOf<K7Q::NSInterface::ClassObjectIntf>()), nullptr);
}

TEST(Enumeration, IsUnboxedFromNothingAsLiteralZero) {
  EXPECT_EQ(BindingTimeKind(K7Q::Object()).value(), 0);
  EXPECT_EQ(refusalOf<K7Q::WrongType>([] { BindingTimeKind{K7Q::Object(K7Q::Integer(1))}; }),
            "expected the value of an enumeration, got int32 scalar 1");
}

TEST(Enumeration, IsDescribedByOneType) {
  const auto type = BindingTimeKind::MetaDataType();
  ASSERT_NE(type.getDataType(), nullptr);
  EXPECT_TRUE(type == BindingTimeKind(2).getMetaDataType());
  EXPECT_EQ(type.getDataType()->name(), u"BindingTimeKind");
  EXPECT_EQ(type.getDataType()->fullName().view(), "Tarvelon.metamodel.arplatform.variant.BindingTimeKind");
  const auto literals = type.getDataType()->literals();
  ASSERT_EQ(literals.size(), 4U);
  EXPECT_EQ(literals[0], "SystemDesignTime");
  EXPECT_EQ(literals[3], "LinkTime");
  EXPECT_EQ(type.getInterface()->getRuvoName(true).view(), "K7Q.ImmutableDataType");
}

TEST(Enumeration, IsTheSameTypeWhicheverLibraryNamesIt) {
  // The same name at another address, as in another library.
  static constexpr Tarvelon::metamodel::EnumerationName kCopy = BindingTimeKind::kName;
  EXPECT_TRUE(Tarvelon::metamodel::native::enumerationDataType(kCopy) == BindingTimeKind::MetaDataType());
}
