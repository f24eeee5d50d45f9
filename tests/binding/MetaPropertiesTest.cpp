#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tarvelon/arplatform/Tables.h"
#include "tarvelon/binding/ClassWrappers.h"
#include "tarvelon/boundary/tarvelon/Foundation.h"
#include "tests/support/Host.h"

namespace arplatform = Tarvelon::metamodel::arplatform;
namespace foundation = Tarvelon::metamodel::foundation;

namespace {

template <class X>
std::vector<std::string> listOf() {
  std::vector<std::string> names;
  for (const auto& entry : binding::metaPropertyList(X::Interface::sIntrospectiveMethods)) {
    names.push_back(
        std::string(entry.owner->name(false).view().substr(entry.owner->name(false).view().rfind('.') + 1)) +
        "." + entry.name + " " + std::to_string(entry.id));
  }
  return names;
}

const std::vector<std::string> kElementAndKernel = {
    "Element.OwnedElement 1",     "Element.Owner 2",
    "Element.OwnedComment 3",     "ClassObject.AppliedStereotypeInstance 1",
    "ClassObject.ModelK7Q 2",     "ClassObject.ContainerK7Q 3",
    "ClassObject.ContaineeK7Q 4", "ClassObject.RootModel 5",
    "ClassObject.ExternalId 6",   "ClassObject.ExternalToolInfo 7",
    "ClassObject.Uri 8"};

std::vector<std::string> joined(std::vector<std::string> first, const std::vector<std::string>& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

TEST(MetaPropertyList, OfAPlainElementHasElevenEntries) {
  EXPECT_EQ(listOf<arplatform::common::SdgContents>(), kElementAndKernel);
}

TEST(MetaPropertyList, GivesASharedBaseAtItsFirstPlace) {
  const auto expected =
      joined(joined({"Package.ReferenceBase 1", "Identifiable.Category 1", "Identifiable.Introduction 2",
                     "Identifiable.AdminData 3", "Identifiable.Desc 4", "Referrable.LongName 1",
                     "NamedElement.Name 1", "NamedElement.Visibility 2", "NamedElement.ClientDependency 3",
                     "NamedElement.Namespace 4"},
                    kElementAndKernel),
             {"Package.PackagedElement 1", "Package.OwnedType 2", "Package.NestedPackage 3",
              "Package.NestingPackage 4", "Package.PackageImport 5", "Namespace.ElementImport 1",
              "Namespace.OwnedMember 3"});
  EXPECT_EQ(listOf<arplatform::common::Package>(), expected);
}

TEST(MetaPropertyList, GivesARedefinitionOnceWithItsOwnId) {
  const auto list = listOf<arplatform::common::AUTOSAR>();
  EXPECT_EQ(list.front(), "AUTOSAR.PackagedElement 1");
  EXPECT_EQ(std::count(list.begin(), list.end(), "Package.PackagedElement 1"), 0);
}

TEST(MetaPropertyList, LeavesOutWhatAnotherNameRedefines) {
  const auto list = listOf<arplatform::common::Sd>();
  EXPECT_EQ(std::count(list.begin(), list.end(), "Comment.Body 1"), 0);
  EXPECT_EQ(std::count(list.begin(), list.end(), "Comment.AnnotatedElement 2"), 1);
  const auto mapping = listOf<arplatform::common::DataTypeMappingSet>();
  EXPECT_EQ(std::count(mapping.begin(), mapping.end(), "Element.OwnedElement 1"), 0);
}

TEST(MetaPropertyLookUp, RefusesAnIdBeyondTheOwnersOwn) {
  const auto& methods = foundation::NSInterface::NamespaceIntf::sIntrospectiveMethods;
  EXPECT_EQ(methods.numberOfProperties(), 3U);
  EXPECT_NO_THROW(binding::lookUpMetaProperty(methods, 3));
  const auto text = host::raised([&] { binding::lookUpMetaProperty(methods, 4); });
  EXPECT_EQ(text.substr(0, 46), "Assertion failed: invalid meta property id at ");
}

TEST(MetaPropertyLookUp, OfIdZeroPassesTheTestAndIsEmpty) {
  const auto& methods = foundation::NSInterface::NamespaceIntf::sIntrospectiveMethods;
  EXPECT_TRUE(binding::lookUpMetaProperty(methods, 0).isNull());
}

TEST(MetaPropertyEntry, ReadsItsOwnersDescriptor) {
  host::openModule();
  const auto dummy = host::callStatic("common.Package", "MetaProperty");
  const auto property = ruvo::call(dummy.object(), "Category", {});
  ASSERT_NE(property.object(), nullptr);
  EXPECT_STREQ(property.object()->getClass()->getClassName(), "K7Q.ImmutableProperty");
  EXPECT_EQ(property.object(), host::callStatic("common.SdgCaptionMetaProperty", "Category").object());
}

}  // namespace
