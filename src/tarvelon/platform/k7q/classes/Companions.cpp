#include "tarvelon/platform/k7q/classes/Companions.h"

#include "tarvelon/boundary/ruvo/Method.h"
#include "tarvelon/platform/k7q/classes/ListMakers.h"

namespace K7Q::mi {

namespace {

/// Base classes of this package are skipped: every model object is a K7Q.ClassObject, but there are no
/// companion classes for K7Q.ClassObject.
constexpr std::string_view kKernelPackage = "K7Q.";

ruvo::InternedName companionName(std::string_view package, const CompanionKind& kind,
                                 std::string_view shortName) {
  std::string name(package);
  name += kind.before;
  name += shortName;
  name += kind.after;
  return ruvo::InternedName(name);
}

/// A copy of the name that lives until the process ends. Usually this is the end of the interned full name.
const char* textOf(const std::string& name, const ruvo::InternedName& fullName) {
  const std::string_view full = fullName.view();
  return full.ends_with(name) ? full.data() + full.size() - name.size() : ruvo::InternedName(name).c_str();
}

}  // namespace

CompanionClassInfo::CompanionClassInfo(const CompanionKind& kind, const std::string& name,
                                       const std::string& description, const CompanionNames& names)
    : CompanionClassInfo(kind, name, description, names, ruvo::InternedName(names.fullName)) {}

CompanionClassInfo::CompanionClassInfo(const CompanionKind& kind, const std::string& name,
                                       const std::string& description, const CompanionNames& names,
                                       const ruvo::InternedName& fullName)
    : ClassMetaData(textOf(name, fullName), ruvo::InternedName(description).c_str()),
      mKind(kind),
      mFullName(fullName),
      mElement(names.element),
      mIterator(names.iterator) {
  if (!kind.followsBases) return;
  mBases = std::make_unique<ruvo::InternedName[]>(names.bases.size());
  for (const std::string& base : names.bases) {
    if (!base.starts_with(kKernelPackage)) mBases[mBaseCount++] = ruvo::InternedName(base);
  }
}

void CompanionClassInfo::defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* /*client*/) {
  addSuperClasses(*cls);
  ruvo::factory::detail::initStringDataTypes();
  binding::addRows(*cls, mKind.rows, {mFullName, mIterator, mElement});
  if (mKind.makes) addListMakers(*cls, mFullName, *mKind.makes, mElement);
}

void CompanionClassInfo::addSuperClasses(ruvo::RVOClass& cls) const {
  const std::string_view full = mFullName.view();
  const std::size_t package = full.rfind('.') + 1;
  if (mKind.super) {
    auto element = full.substr(package + mKind.before.size());
    element.remove_suffix(mKind.after.size());
    cls.addSuperClass(companionName(full.substr(0, package), *mKind.super, element), 1, 0, 1);
  }
  for (const ruvo::InternedName& base : std::span(mBases.get(), mBaseCount)) {
    const std::size_t prefix = base.view().rfind('.') + 1;
    cls.addSuperClass(companionName(base.view().substr(0, prefix), mKind, base.view().substr(prefix)), 1, 0,
                      1);
  }
}

}  // namespace K7Q::mi
