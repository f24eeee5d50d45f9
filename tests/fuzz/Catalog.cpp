#include "tests/fuzz/Catalog.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <string>
#include <unordered_map>

namespace fuzz {

namespace {

void openModule() {
  void* library = dlopen(TARVELON_MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
  if (!library) {
    std::fprintf(stderr, "%s\n", dlerror());
    std::abort();
  }
  reinterpret_cast<void (*)()>(dlsym(library, "ZtInitialize_mm_arplatform_mi"))();
}

template <class Item>
void addOnce(std::vector<Item>& items, const Item& item) {
  if (std::find(items.begin(), items.end(), item) == items.end()) items.push_back(item);
}

/// Whether the method returns an enumeration value.
bool givesValue(ruvo::Class& cls, std::string_view method) {
  const ruvo::InternedName& type = cls.findMethods(method)->candidates.front()->getSignature()->result();
  ruvo::Class* result = type.kind() == ruvo::internal::TypeKind::Class ? ruvo::Class::find(type) : nullptr;
  return result && isEnumeration(*result);
}

Kind kindOf(ruvo::Class& cls) {
  if (cls.findMethods("size") && cls.findMethods("at")) {
    return givesValue(cls, "at") ? Kind::ValueSequence : Kind::Sequence;
  }
  if (cls.findMethods("getNext") && cls.findMethods("item")) {
    return givesValue(cls, "item") ? Kind::ValueIterator : Kind::Iterator;
  }
  return Kind::Object;
}

}  // namespace

bool isEnumeration(ruvo::Class& cls) {
  return std::string_view(cls.info().getDescription()) == "An enumeration";
}

Catalog& Catalog::instance() {
  // Never destroyed, like the classes it points to.
  static Catalog& made = *new Catalog;
  return made;
}

Catalog::Catalog() {
  openModule();
  collect(ruvo::Package::get("Tarvelon"));
  collect(ruvo::Package::get("K7Q"));
  for (ruvo::Class* cls : classes) {
    names.push_back(cls->getFullName().view());
    if (cls->constructors()) concrete.push_back(cls);
    if (kindOf(*cls) == Kind::ValueSequence) valueSequences.push_back(cls);
  }
}

void Catalog::collect(ruvo::Package& package) {
  packages.push_back(&package);
  names.push_back(package.getFullName().view());
  const auto own = package.classes();
  classes.insert(classes.end(), own.begin(), own.end());
  for (const std::string_view name : package.packageNames()) collect(*package.findPackage(name));
}

const Members& Catalog::membersOf(ruvo::Class& cls) {
  static auto& known = *new std::unordered_map<ruvo::Class*, Members>;
  const auto found = known.find(&cls);
  if (found != known.end()) return found->second;
  Members members;
  members.kind = kindOf(cls);
  for (ruvo::Class* each : cls.linearization()) {
    for (const auto& slot : each->properties()) members.properties.push_back(&slot);
    for (const auto* record : each->methods()) {
      if (!record->isConstructor()) addOnce(members.methods, record->getName());
    }
  }
  return known.emplace(&cls, std::move(members)).first->second;
}

const std::vector<ruvo::Class*>& Catalog::concreteBelow(ruvo::Class& cls) {
  static auto& known = *new std::unordered_map<ruvo::Class*, std::vector<ruvo::Class*>>;
  const auto found = known.find(&cls);
  if (found != known.end()) return found->second;
  std::vector<ruvo::Class*> below;
  std::copy_if(concrete.begin(), concrete.end(), std::back_inserter(below),
               [&](ruvo::Class* each) { return each->isKindOf(cls); });
  return known.emplace(&cls, std::move(below)).first->second;
}

}  // namespace fuzz
