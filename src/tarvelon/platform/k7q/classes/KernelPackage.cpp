#include <memory>
#include <string>

#include "tarvelon/boundary/ruvo/Package.h"
#include "tarvelon/platform/k7q/classes/Initialize.h"
#include "tarvelon/platform/k7q/classes/KernelClasses.h"

namespace K7Q::mi {

namespace {

constexpr const char* kPackage = "K7Q";
/// The access value passed for every class.
constexpr int kAccess = 2;

std::string dotted(const char* name) { return std::string(kPackage) + "." + name; }

class KernelClassInfo final : public ClassMetaData {
 public:
  explicit KernelClassInfo(const KernelClass& row) : ClassMetaData(row.name, row.description), mRow(row) {}

  void defineMembers(ruvo::RVOClass* cls, const ruvo::RVOClient* /*client*/) override {
    for (const char* name : mRow.superClasses) {
      if (name) cls->addSuperClass(binding::named(name), 1, 0, 1);
    }
    ruvo::factory::detail::initStringDataTypes();
    binding::addRows(*cls, mRow.methods, {cls->getFullName(), {}, {}});
  }

 private:
  const KernelClass& mRow;
};

void populate(ruvo::RVOPackage* package) {
  for (const KernelClass& row : kernelClasses()) package->addClass(new KernelClassInfo(row), kAccess);
  for (const KernelCompanion& row : kernelCompanions()) {
    const CompanionNames names{dotted(row.name), row.element, row.iterator, {}};
    package->addClass(new CompanionClassInfo(*row.kind, row.name, row.description, names), kAccess);
  }
}

}  // namespace

void initialize() {
  static constinit ruvo::factory::LoadedPackage package(kPackage, &populate);
  ruvo::factory::enterAtLoad(package);
}

namespace {

[[maybe_unused]] const bool kIsInitialized = (initialize(), true);

}  // namespace

}  // namespace K7Q::mi
