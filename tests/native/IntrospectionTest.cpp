// The descriptions of classes, properties and packages.

#include <set>
#include <string>

#include "tarvelon/boundary/tarvelon/Packages.h"
#include "tests/native/Support.h"

using Tarvelon::metamodel::native::metaPackage;

namespace {

const K7Q::NSInterface::PropertyIntf& property(const K7Q::IntrospectiveMethods& methods,
                                               std::string_view name) {
  return *methods.descriptor(idOf(methods, name));
}

constexpr const char* kPackages[] = {"K7Q",
                                     "Tarvelon.metamodel.foundation",
                                     "Tarvelon.metamodel.types",
                                     "Tarvelon.metamodel.arplatform.common",
                                     "Tarvelon.metamodel.arplatform.documentation",
                                     "Tarvelon.metamodel.arplatform.variant"};

}  // namespace

TEST(PropertyDescription, StandsAtItsIdAndNowhereElse) {
  const auto& methods = table<foundation::Namespace>();
  EXPECT_EQ(methods.numberOfProperties(), 3U);
  EXPECT_EQ(methods.descriptor(0), nullptr);
  EXPECT_STREQ(methods.descriptor(1)->name(), "ElementImport");
  EXPECT_EQ(methods.descriptor(2), nullptr);
  EXPECT_STREQ(methods.descriptor(3)->name(), "OwnedMember");
  EXPECT_EQ(methods.descriptor(4), nullptr);
  EXPECT_EQ(table<foundation::PackageableElement>().numberOfProperties(), 0U);
  EXPECT_EQ(table<foundation::PackageableElement>().descriptor(0), nullptr);
}

TEST(PropertyDescription, AnswersWhatTheRowSays) {
  const auto& category = property(table<common::Identifiable>(), "Category");
  EXPECT_EQ(category.id(), 1U);
  EXPECT_EQ(&category.owner(), &table<common::Identifiable>());
  EXPECT_EQ(category.typeName().view(), "char vector");
  EXPECT_EQ(category.multiplicity(), K7Q::mi::Multiplicity::Optional);
  EXPECT_EQ(category.mutability(), K7Q::mi::Mutability::Writable);
  EXPECT_FALSE(category.isContainment());
  EXPECT_EQ(category.hiddenName(), nullptr);

  const auto& bases = property(table<common::Package>(), "ReferenceBase");
  EXPECT_EQ(bases.typeName().view(), "Tarvelon.metamodel.arplatform.common.ReferenceBase");
  EXPECT_EQ(bases.multiplicity(), K7Q::mi::Multiplicity::Many);
  EXPECT_TRUE(bases.isContainment());
  EXPECT_FALSE(property(table<common::ReferenceBase>(), "Package").isContainment());

  const auto& owner = property(table<foundation::Element>(), "Owner");
  EXPECT_EQ(owner.mutability(), K7Q::mi::Mutability::ReadOnly);
  EXPECT_EQ(property(table<common::ReferenceBase>(), "IsDefault").typeName().view(), "logical scalar");
  EXPECT_EQ(property(table<common::ApplicationError>(), "ErrorCode").typeName().view(), "int32 scalar");
  EXPECT_EQ(property(table<variant::SystemConstValue>(), "Value").typeName().view(), "double scalar");
  EXPECT_EQ(property(table<common::SwAddrMethod>(), "SectionType").typeName().view(),
            "Tarvelon.metamodel.arplatform.behavior.SectionTypeKind");
}

TEST(PropertyDescription, OfARedefinitionTellsWhatItHides) {
  EXPECT_STREQ(property(table<common::Sd>(), "Value").hiddenName(), "Body");
  EXPECT_STREQ(property(table<common::DataTypeMappingSet>(), "DataTypeMap").hiddenName(), "OwnedElement");
  const auto& elements = property(table<common::AUTOSAR>(), "PackagedElement");
  EXPECT_EQ(elements.id(), 1U);
  EXPECT_EQ(&elements.owner(), &table<common::AUTOSAR>());
  EXPECT_EQ(elements.hiddenName(), nullptr);
  EXPECT_EQ(elements.typeName().view(), "Tarvelon.metamodel.foundation.PackageableElement");
  EXPECT_EQ(elements.multiplicity(), K7Q::mi::Multiplicity::Many);
  EXPECT_TRUE(elements.isContainment());
}

TEST(PropertyDescription, IsAnObjectOfTheInfrastructure) {
  auto& category =
      const_cast<K7Q::NSInterface::PropertyIntf&>(property(table<common::Identifiable>(), "Category"));
  EXPECT_EQ(category.getRuvoName(true).view(), "K7Q.ImmutableProperty");
  EXPECT_TRUE(category.isValid({}));
  EXPECT_EQ(category.cast(K7Q::tagsOf<K7Q::NSInterface::PropertyIntf>()), &category);
  EXPECT_EQ(category.cast(K7Q::tagsOf<K7Q::NSInterface::ClassIntf>()), nullptr);
  EXPECT_FALSE(category.getMetaType({}).isNull());
}

TEST(ClassDescription, AnswersNamesBasesAndAbstraction) {
  const auto& methods = table<common::Package>();
  EXPECT_EQ(methods.name(false).view(), "Tarvelon.metamodel.arplatform.common.Package");
  EXPECT_EQ(methods.name(true).view(), "Tarvelon.metamodel.arplatform.common.ImmutablePackage");
  ASSERT_EQ(methods.bases().size(), 2U);
  EXPECT_EQ(methods.bases()[0], &table<common::Identifiable>());
  EXPECT_EQ(methods.bases()[1], &table<foundation::Package>());
  EXPECT_FALSE(methods.isAbstract());
  EXPECT_TRUE(table<common::Identifiable>().isAbstract());

  const auto cls = methods.metaClass();
  EXPECT_TRUE(cls == common::Package::MetaClass());
  EXPECT_EQ(cls.getClass()->name(), u"Package");
  EXPECT_EQ(cls.getClass()->fullName().view(), "Tarvelon.metamodel.arplatform.common.Package");
  EXPECT_EQ(&cls.getClass()->methods(), &methods);
  EXPECT_EQ(cls.getInterface()->getRuvoName(true).view(), "K7Q.ImmutableClass");
}

TEST(ClassDescription, IsWhatAnObjectReportsAsItsType) {
  const auto package = common::Package::create(K7Q::Model::create(), u"P");
  EXPECT_TRUE(package.getInterface()->getMetaType({}) == common::Package::MetaClass());
  EXPECT_EQ(package.getInterface()->getRuvoName(false).view(),
            "Tarvelon.metamodel.arplatform.common.Package");
  EXPECT_EQ(package.getInterface()->getRuvoName(true).view(),
            "Tarvelon.metamodel.arplatform.common.ImmutablePackage");
}

TEST(ClassDescription, TellsInstancesOfTheClassAndBelow) {
  const auto model = K7Q::Model::create();
  const auto package = common::Package::create(model, u"P");
  EXPECT_TRUE(table<common::Package>().isInstance(package.getInterface()));
  EXPECT_TRUE(table<foundation::Package>().isInstance(package.getInterface()));
  EXPECT_TRUE(table<kernel::ClassObject>().isInstance(package.getInterface()));
  EXPECT_FALSE(table<common::Packageable>().isInstance(package.getInterface()));
  EXPECT_FALSE(table<common::Package>().isInstance(nullptr));
  EXPECT_FALSE(table<common::Package>().isInstance(model.getInterface()));
  EXPECT_FALSE(table<common::Package>().isInstance(K7Q::Object(K7Q::Integer(1)).getInterface()));
  EXPECT_TRUE(common::Packageable::cast(package).isNull());
  EXPECT_FALSE(foundation::PackageableElement::cast(package).isNull());
}

TEST(ClassDescription, CastsToTheInterfacesOfTheClassAndAbove) {
  const auto package = common::Package::create(K7Q::Model::create(), u"P");
  auto* object = package.getClassObject();
  EXPECT_EQ(object->cast(K7Q::tagsOf<common::NSInterface::PackageIntf>()), object);
  EXPECT_EQ(object->cast(K7Q::tagsOf<foundation::NSInterface::PackageIntf>()), object);
  EXPECT_EQ(object->cast(K7Q::tagsOf<foundation::NSInterface::ElementIntf>()), object);
  EXPECT_EQ(object->cast(K7Q::tagsOf<K7Q::NSInterface::ClassObjectIntf>()), object);
  EXPECT_EQ(object->cast(K7Q::tagsOf<K7Q::NSInterface::ObjectIntf>()), object);
  EXPECT_EQ(object->cast(K7Q::tagsOf<K7Q::ReferenceCountingIntf>()), object);
  EXPECT_EQ(object->cast(K7Q::tagsOf<common::NSInterface::SdgIntf>()), nullptr);
  EXPECT_EQ(object->cast(K7Q::tagsOf<K7Q::NSInterface::ModelIntf>()), nullptr);
  const auto tags = K7Q::tagsOfClass(table<common::Package>());
  EXPECT_EQ(tags.interface, K7Q::tagsOf<common::NSInterface::PackageIntf>().interface);
  EXPECT_EQ(tags.domain, K7Q::tagsOf<common::NSInterface::PackageIntf>().domain);
}

TEST(ClassDescription, OfAClassWithoutRowsIsEmpty) {
  const auto& methods = table<kernel::Model>();
  EXPECT_EQ(methods.name(false).view(), "K7Q.Model");
  EXPECT_EQ(methods.numberOfProperties(), 0U);
  EXPECT_EQ(methods.descriptor(0), nullptr);
  EXPECT_TRUE(methods.bases().empty());
  EXPECT_TRUE(methods.isAbstract());
  const auto model = K7Q::Model::create();
  EXPECT_FALSE(methods.isInstance(common::Package::create(model).getInterface()));
  EXPECT_EQ(refusalOf([&] { methods.create(model, 0, {}); }),
            "class 'K7Q.Model' is not a class of model objects and cannot be constructed in a model");
}

TEST(PackageDescription, ListsClassesEnumerationsAndPackages) {
  const auto root = metaPackage("Tarvelon.metamodel.arplatform");
  EXPECT_EQ(root.getPackage()->name(), u"arplatform");
  EXPECT_TRUE(root.getPackage()->classes().empty());
  const auto children = root.getPackage()->subPackages();
  ASSERT_EQ(children.size(), 13U);
  EXPECT_EQ(children.front()->fullName().view(), "Tarvelon.metamodel.arplatform.documentation");
  EXPECT_EQ(children.back()->fullName().view(), "Tarvelon.metamodel.arplatform.system");

  const auto commons = metaPackage("Tarvelon.metamodel.arplatform.common");
  EXPECT_EQ(commons.getInterface()->getRuvoName(true).view(), "K7Q.ImmutablePackage");
  ASSERT_EQ(commons.getPackage()->classes().size(), 21U);
  EXPECT_EQ(commons.getPackage()->classes().front()->name(), u"Referrable");
  ASSERT_EQ(commons.getPackage()->dataTypes().size(), 1U);
  EXPECT_EQ(commons.getPackage()->dataTypes()[0]->name(), u"ArxmlFilePackagingKind");
  EXPECT_EQ(metaPackage("Tarvelon.metamodel.arplatform.port").getPackage()->classes().size(), 79U);
  EXPECT_EQ(metaPackage("Tarvelon.metamodel.arplatform.behavior").getPackage()->dataTypes().size(), 8U);
  EXPECT_TRUE(metaPackage("Tarvelon.metamodel.arplatform.system").getPackage()->dataTypes().empty());
}

TEST(PackageDescription, OfAnUnknownNameIsRefused) {
  EXPECT_NE(refusalOf<K7Q::UnknownName>([] { metaPackage("Tarvelon.metamodel.arplatform.comon"); })
                .find("there is no package 'Tarvelon.metamodel.arplatform.comon' in the metamodel; there are "
                      "Tarvelon"),
            std::string::npos);
}

TEST(PackageDescription, HasClassesThatAreAllWellFormed) {
  for (const char* name : kPackages) {
    for (const auto* cls : metaPackage(name).getPackage()->classes()) {
      std::set<std::string> names;
      for (unsigned id = 0; id <= cls->methods().numberOfProperties(); ++id) {
        const auto* description = cls->methods().descriptor(id);
        EXPECT_TRUE(!description || names.insert(description->name()).second) << id;
      }
    }
  }
}
