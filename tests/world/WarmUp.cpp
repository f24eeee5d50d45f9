#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/model/api/Copy.h"
#include "tarvelon/platform/model/api/Json.h"
#include "tarvelon/platform/model/api/Search.h"
#include "tarvelon/platform/model/api/Validation.h"
#include "tests/world/World.h"

namespace world {

namespace {

/// Reads all properties of an object by name.
void readByName(ruvo::RVOInterface* object) {
  ruvo::Class& cls = ruvo::classOf(*object);
  for (ruvo::Class* each : cls.linearization()) {
    for (const auto& slot : each->properties()) {
      const ruvo::RVOInterfacePtr value(ruvo::getProperty(object, slot).object());
      if (value) ruvo::classOf(*value).linearization();
    }
  }
}

}  // namespace

void warmUp() {
  const K7Q::Model model = K7Q::Model::create();
  for (const Class* cls : concrete()) cls->methods->create(model, 0, {});
  const auto packages = ruvo::Package::find("Tarvelon.metamodel.arplatform");
  const auto text = Tarvelon::files::saveText(model);
  Tarvelon::files::loadText(text).model.close();
  Tarvelon::metamodel::cloneModel(model).close();
  Tarvelon::metamodel::toJson(model);
  K7Q::validate(model);
  Tarvelon::model::find(model, u"/a");
  Tarvelon::model::instances(model, *concrete()[0]->methods);
  for (const auto& object : Tarvelon::model::objects(model)) Tarvelon::model::referrers(object);
  if (packages) {
    const auto host =
        ruvo::RVOInterfacePtr(ruvo::callStatic(ruvo::Class::get("K7Q.Model"), "create", {}).object());
    const auto argument = ruvo::HostValue::ofObject(host);
    for (const Class* cls : concrete())
      readByName(ruvo::construct(ruvo::Class::get(cls->name()), {&argument, 1}));
    ruvo::call(host, "close", {});
  }
  model.close();
}

}  // namespace world
