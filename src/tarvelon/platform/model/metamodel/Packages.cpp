#include "tarvelon/boundary/tarvelon/Packages.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "tarvelon/platform/model/metamodel/ClassData.h"
#include "tarvelon/platform/model/metamodel/ClassMethods.h"
#include "tarvelon/platform/model/metamodel/Described.h"
#include "tarvelon/platform/model/metamodel/EnumerationType.h"
#include "tarvelon/platform/model/metamodel/Registry.h"
#include "tarvelon/platform/ruvo/Texts.h"

namespace Tarvelon::metamodel::native {

namespace {

constexpr std::string_view kPlatform = "Tarvelon.metamodel.arplatform";

/// The description of a package that `K7Q.ImmutablePackage` shows.
class PackageDescription final : public K7Q::NSInterface::PackageIntf {
 public:
  /// `row` is null for the root of the platform's packages.
  PackageDescription(std::string_view fullName, const PackageRow* row) : mFullName(fullName), mRow(row) {
    share();
  }

  std::u16string name() const override {
    const std::string_view text = mFullName.view().substr(mFullName.view().rfind('.') + 1);
    return {text.begin(), text.end()};
  }
  const ruvo::InternedName& fullName() const override { return mFullName; }
  std::vector<const K7Q::NSInterface::ClassIntf*> classes() const override {
    std::vector<const K7Q::NSInterface::ClassIntf*> entered;
    if (!mRow) return entered;
    for (const ClassMethods* table : mRow->classes) {
      if (table->rows()) entered.push_back(&table->data().description);
    }
    return entered;
  }
  std::vector<const K7Q::NSInterface::DataTypeIntf*> dataTypes() const override {
    std::vector<const K7Q::NSInterface::DataTypeIntf*> entered;
    if (!mRow) return entered;
    for (const EnumerationName* name : mRow->enumerations) entered.push_back(&EnumerationType::of(*name));
    return entered;
  }
  std::vector<const PackageIntf*> subPackages() const override;
  const ruvo::InternedName& getRuvoName(bool immutable) const override {
    return ruvoNameOf(Described::Package, immutable);
  }
  K7Q::ImmutableType getMetaType(K7Q::Deviant deviant) const override {
    return metaTypeOf(Described::Package, deviant);
  }
  void* cast(K7Q::CooperativeVisitor::TagPair tag) override {
    using namespace K7Q::NSInterface;
    return castAmong<PackageIntf, ObjectIntf, K7Q::ReferenceCountingIntf>(this, tag);
  }

 private:
  ruvo::InternedName mFullName;
  const PackageRow* mRow;
};

using Descriptions = std::vector<std::unique_ptr<PackageDescription>>;

// The root of the platform, then all packages with rows. Never freed: descriptions are used until the process
// ends.
const Descriptions& descriptions() {
  static const Descriptions& made = *[] {
    auto list = std::make_unique<Descriptions>();
    list->push_back(std::make_unique<PackageDescription>(kPlatform, nullptr));
    for (const PackageRow& row : packageRows())
      list->push_back(std::make_unique<PackageDescription>(row.name, &row));
    return list.release();
  }();
  return made;
}

bool isBelow(std::string_view name, std::string_view parent) {
  return name.size() > parent.size() && name.starts_with(parent) && name[parent.size()] == '.';
}

std::vector<const K7Q::NSInterface::PackageIntf*> PackageDescription::subPackages() const {
  std::vector<const PackageIntf*> children;
  for (const auto& other : descriptions()) {
    if (isBelow(other->fullName().view(), mFullName.view())) children.push_back(other.get());
  }
  return children;
}

}  // namespace

K7Q::ImmutablePackage metaPackage(std::string_view dottedName) {
  const auto& all = descriptions();
  const auto found = std::ranges::find_if(
      all, [dottedName](const auto& package) { return package->fullName().view() == dottedName; });
  if (found != all.end()) return {found->get(), K7Q::Deviant{}};
  std::string known;
  for (const auto& package : all) known.append(known.empty() ? "" : ", ").append(package->fullName().view());
  throw K7Q::UnknownName("there is no package " + ruvo::quotedName(dottedName) +
                         " in the metamodel; there are " + known);
}

}  // namespace Tarvelon::metamodel::native
