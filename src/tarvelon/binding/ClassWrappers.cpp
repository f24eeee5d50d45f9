#include "tarvelon/binding/ClassWrappers.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "tarvelon/binding/Properties.h"

namespace binding {

namespace {

using ruvo::factory::kHiddenMethod;
using ruvo::factory::kOverridesAllSignatures;

/// All classes share this function, because the native object itself knows its class.
K7Q::ImmutableType getMetaType(const K7Q::ImmutableObject& self) {
  self.requireValid();
  return self.getInterface()->getMetaType(self.getDeviant());
}
K7Q::ImmutableType getMetaTypeOfMutable(const K7Q::Object& self) { return getMetaType(self); }

MetaPropertyDummy newMetaProperty() { return {::operator new(1)}; }

InternedName metaPropertyName(const ClassName& name) {
  return named((std::string(name.name) + "MetaProperty").c_str());
}

void addMetaAccess(MethodTable& table, const ClassBinding& binding, std::uint32_t attributes) {
  table.add({"MetaClass", attributes, "", named("K7Q.ImmutableClass"), {}}, {}, binding.metaClass);
  table.add({"MetaProperty", attributes, "", metaPropertyName(binding.name()), {}}, {}, &newMetaProperty);
}

/// Runs the callbacks of other modules, which are registered under the name of the mutable class.
void runExtensions(const ClassBinding& binding, ruvo::RVOClass* cls, const ruvo::RVOClient* client) {
  K7Q::mi::RuvoExtensionsRegistry::instance().executeNonConstCallbacks(binding.name().name, cls, client);
}

}  // namespace

ImmutableClassWrapper::ImmutableClassWrapper(const ClassBinding& binding)
    : ClassMetaData(binding.name().shortImmutable(), ""), mBinding(binding) {}

void ImmutableClassWrapper::defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* client) {
  for (const ClassName* base : mBinding.table.bases) cls->addSuperClass(named(base->immutable), 1, 0, 1);
  ruvo::factory::detail::initStringDataTypes();
  MethodTable table(*cls);
  if (mBinding.ownViews) mBinding.ownViews->addImmutableValidity(table, mBinding);
  addMetaAccess(table, mBinding, 0);
  const auto anyObject = named("K7Q.ImmutableObject");
  table.add({"getMetaType", kHiddenMethod, "", named("K7Q.ImmutableType"), anyObject}, {}, &getMetaType);
  addProperties(*cls, mBinding);
  runExtensions(mBinding, cls, client);
  if (mBinding.ownViews) mBinding.ownViews->addImmutableViews(table, mBinding);
  table.add({"cast", 0, "other", anyObject, {}}, {anyObject}, mBinding.castImmutable);
  table.add({"cast", 0, "other", anyObject, {}}, {named("K7Q.Object")}, mBinding.castMutableToImmutable);
}

ClassWrapper::ClassWrapper(const ClassBinding& binding)
    : ClassMetaData(binding.name().shortName(), ""), mBinding(binding) {}

void ClassWrapper::defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* /*client*/) {
  cls->addSuperClass(named(mBinding.name().immutable), 1, 0, 1);
  for (const ClassName* base : mBinding.table.bases) cls->addSuperClass(named(base->name), 1, 0, 1);
  ruvo::factory::detail::initStringDataTypes();
  MethodTable table(*cls);
  mBinding.addConstructors(table);
  if (mBinding.ownViews) mBinding.ownViews->addMutableValidity(table, mBinding);
  addMetaAccess(table, mBinding, kOverridesAllSignatures);
  mBinding.addReads(table);
  if (mBinding.ownViews) mBinding.ownViews->addMutableLifetime(table, mBinding);
  const auto anyObject = named("K7Q.Object");
  table.add({"getMetaType", kHiddenMethod, "", named("K7Q.ImmutableType"), anyObject}, {},
            &getMetaTypeOfMutable);
  table.add({"cast", 0, "other", anyObject, {}}, {anyObject}, mBinding.castMutable);
  if (mBinding.ownViews) mBinding.ownViews->addMutableViews(table, mBinding);
}

MetaPropertyWrapper::MetaPropertyWrapper(const ClassBinding& binding)
    : MetaPropertyMetaData(metaPropertyName(binding.name()).c_str() + binding.name().prefix,
                           kMetaPropertyDescription),
      mBinding(binding) {}

void MetaPropertyWrapper::defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* /*client*/) {
  ruvo::factory::detail::initStringDataTypes();
  const auto& methods = mBinding.methods();
  K7Q::mi::K7qmiPropertyFactory factory(cls, metaPropertyName(mBinding.name()), &methods);
  for (const auto& entry : metaPropertyList(methods)) {
    factory.addMetaProperty(entry.name, &lookUpMetaProperty, *entry.owner, entry.id);
  }
}

K7Q::ImmutableProperty lookUpMetaProperty(const K7Q::IntrospectiveMethods& owner, unsigned id) {
  K7Q::LocalAsserter(__builtin_FILE(), __builtin_LINE()) =
      K7Q::Asserter(id <= owner.numberOfProperties()).Make("invalid meta property id");
  return {owner.descriptor(id), owner.metaClass().getDeviant()};
}

// NOLINTNEXTLINE(misc-no-recursion): as deep as classes have bases
std::vector<MetaPropertyListEntry> metaPropertyList(const K7Q::IntrospectiveMethods& methods) {
  std::vector<MetaPropertyListEntry> list;
  std::vector<std::string_view> left;
  for (unsigned id = 1; id <= methods.numberOfProperties(); ++id) {
    const auto* property = methods.descriptor(id);
    if (!property) continue;
    list.push_back({property->name(), &methods, id});
    if (property->hiddenName()) left.emplace_back(property->hiddenName());
  }
  for (const auto* base : methods.bases()) {
    for (const auto& entry : metaPropertyList(*base)) {
      const std::string_view name(entry.name);
      const bool stands =
          std::any_of(list.begin(), list.end(), [&](const auto& own) { return name == own.name; });
      if (!stands && std::find(left.begin(), left.end(), name) == left.end()) list.push_back(entry);
    }
  }
  return list;
}

}  // namespace binding
