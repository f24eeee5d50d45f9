#include "tests/world/Metamodel.h"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tests/world/Fault.h"

namespace world {

namespace {

using Tarvelon::metamodel::ClassTable;
using Tarvelon::metamodel::Derivation;
using Tarvelon::metamodel::HasRow;

std::string metaNameOf(const PropertyRow& row) {
  std::string name = row.name;
  if (name[0] >= 'a' && name[0] <= 'z') name[0] = static_cast<char>(name[0] - 'a' + 'A');
  return name;
}

template <class X>
void add(std::vector<const ClassTable*>& tables) {
  if constexpr (HasRow<X>) tables.push_back(&Tarvelon::metamodel::kTable<X>);
}

std::vector<const ClassTable*> tables();

class Builder {
 public:
  explicit Builder(std::vector<Class>& classes) : mClasses(classes) {
    for (const ClassTable* table : tables()) {
      mByName.emplace(table->name->name, mClasses.size());
      Class& made = mClasses.emplace_back();
      made.table = table;
      made.methods = Tarvelon::model::findClass(table->name->name);
    }
    for (Class& cls : mClasses) inherit(cls);
    for (Class& cls : mClasses) layOut(cls);
    for (Class& cls : mClasses) addConstructors(cls);
  }

 private:
  Class& at(const Tarvelon::metamodel::ClassName* name) { return mClasses.at(mByName.at(name->name)); }

  // NOLINTNEXTLINE(misc-no-recursion): as deep as classes have bases
  void inherit(Class& cls) {
    if (!cls.ancestors.empty()) return;
    for (const auto* name : cls.table->bases) {
      Class& base = at(name);
      inherit(base);
      cls.bases.push_back(&base);
      for (const Class* above : base.ancestors) {
        if (std::ranges::find(cls.ancestors, above) == cls.ancestors.end()) cls.ancestors.push_back(above);
      }
    }
    cls.ancestors.push_back(&cls);
    // The library has its own copy of the rows, and identifies properties by the addresses of its own rows.
    for (const PropertyRow& row : cls.table->properties) {
      const auto* descriptor = cls.methods->descriptor(row.id);
      cls.own.push_back({&Tarvelon::model::rowOf(*descriptor), descriptor, &cls});
    }
  }

  void layOut(Class& cls) {
    for (const Class* above : cls.ancestors) {
      for (const Property& property : above->own) place(cls, *above, property);
    }
    for (unsigned slot = 0; slot < cls.slots.size(); ++slot) {
      if (std::string_view(cls.slots[slot].all[0].row->name) == "Name") cls.nameSlot = slot;
    }
  }

  void place(Class& cls, const Class& above, const Property& property) {
    if (property.row->derivation != Derivation::None) {
      cls.derived.push_back(property);
      return;
    }
    Slot* slot = property.row->redefined ? &redefined(cls, above, property) : &cls.slots.emplace_back();
    slot->all.push_back(property);
    slot->narrowest = property;
    if (slot->isReference()) slot->type = &at(property.row->type->cls);
  }

  /// The slot of a redefined property, which belongs to a base of the declaring class.
  static Slot& redefined(Class& cls, const Class& above, const Property& property) {
    for (const Class* base : above.bases) {
      const Property* wider = base->find(property.row->redefined);
      if (wider && wider->row->type->kind == property.row->type->kind)
        return cls.slots.at(cls.slotOf(*wider->row));
    }
    throw Fault("a redefinition of nothing: " + std::string(property.row->name));
  }

  static void addConstructors(Class& cls) {
    for (const auto& row : cls.table->constructors) {
      Constructor constructor{&row, {}};
      std::string_view rest = row.parameterNames;
      for (unsigned argument = 0; argument < row.count; ++argument) {
        const auto parameter = rest.substr(0, rest.find(','));
        const Property* filled = cls.find(Tarvelon::metamodel::filledBy(parameter));
        constructor.slots.push_back(cls.slotOf(*filled->row));
        rest.remove_prefix(std::min(parameter.size() + 1, rest.size()));
      }
      cls.constructors.push_back(std::move(constructor));
    }
  }

  std::vector<Class>& mClasses;
  std::unordered_map<std::string_view, std::size_t> mByName;
};

struct All {
  std::vector<Class> classes;
  std::vector<const Class*> concrete;
  std::unordered_map<std::string_view, const Class*> byName;

  All() {
    const Builder build(classes);
    for (const Class& cls : classes) {
      byName.emplace(cls.name(), &cls);
      if (!cls.constructors.empty()) concrete.push_back(&cls);
    }
  }
};

const All& all() {
  static const All& made = *new All;
  return made;
}

}  // namespace

bool Class::isKindOf(const Class& other) const noexcept {
  return std::ranges::find(ancestors, &other) != ancestors.end();
}

unsigned Class::slotOf(const PropertyRow& row) const noexcept {
  for (unsigned slot = 0; slot < slots.size(); ++slot) {
    if (std::ranges::find(slots[slot].all, &row, &Property::row) != slots[slot].all.end()) return slot;
  }
  return kNone;
}

// NOLINTNEXTLINE(misc-no-recursion): as deep as classes have bases
const Property* Class::find(std::string_view metaName) const noexcept {
  for (const Property& property : own) {
    if (metaNameOf(*property.row) == metaName) return &property;
  }
  for (const Class* base : bases) {
    if (const Property* found = base->find(metaName)) return found;
  }
  return nullptr;
}

const std::vector<Class>& classes() { return all().classes; }
const std::vector<const Class*>& concrete() { return all().concrete; }

const Class& classOf(const K7Q::NSInterface::ObjectIntf& object) {
  return *all().byName.at(object.getRuvoName(false).view());
}

const Class& classNamed(const Tarvelon::metamodel::ClassName& name) { return *all().byName.at(name.name); }

int literalsOf(const Tarvelon::metamodel::EnumerationName& enumeration) {
  const std::string_view literals = enumeration.literals;
  return 1 + static_cast<int>(std::ranges::count(literals, ','));
}

}  // namespace world

// The tables of all packages.
#define WORLD_NOTHING(...)
#define WORLD_ADD(X) ::world::add<X>(tables);
#define WORLD_PACKAGE(P, NAMES)                                                                     \
  namespace P {                                                                                     \
  inline void addTables(std::vector<const ClassTable*>& tables) { NAMES(WORLD_ADD, WORLD_NOTHING) } \
  }
#define WORLD_COLLECT(P, NAMES) Tarvelon::metamodel::arplatform::P::addTables(all);

namespace Tarvelon::metamodel {
WORLD_PACKAGE(kernel, TARVELON_KERNEL_NAMES)
WORLD_PACKAGE(foundation, TARVELON_FOUNDATION_NAMES)
WORLD_PACKAGE(types, TARVELON_TYPES_NAMES)
}  // namespace Tarvelon::metamodel

namespace Tarvelon::metamodel::arplatform {
ARPLATFORM_PACKAGES(WORLD_PACKAGE)
}  // namespace Tarvelon::metamodel::arplatform

namespace world {

namespace {

std::vector<const ClassTable*> tables() {
  std::vector<const ClassTable*> all;
  Tarvelon::metamodel::kernel::addTables(all);
  Tarvelon::metamodel::foundation::addTables(all);
  Tarvelon::metamodel::types::addTables(all);
  ARPLATFORM_PACKAGES(WORLD_COLLECT)
  return all;
}

}  // namespace

}  // namespace world
