#include "tarvelon/platform/model/metamodel/Registry.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <unordered_map>

#include "tarvelon/platform/model/metamodel/ClassMethods.h"

namespace Tarvelon::metamodel::native {

const ClassMethods& tableOf(const ClassName& name) {
  using Tables = std::unordered_map<const ClassName*, const ClassMethods*>;
  // Never freed: descriptions are used until the process ends.
  static const Tables& tables = *[] {
    auto made = std::make_unique<Tables>();
    for (const PackageRow& package : packageRows()) {
      for (const ClassMethods* table : package.classes) made->emplace(&table->className(), table);
    }
    return made.release();
  }();
  const auto found = tables.find(&name);
  if (found == tables.end()) {
    throw std::logic_error(std::string("class '") + name.name +
                           "' is not in the list of names of its package; enter it there");
  }
  return *found->second;
}

}  // namespace Tarvelon::metamodel::native
