// Builds, reads and changes a model with native handles. The compiler checks classes, constructors and
// properties against the metamodel's tables.
#include <iostream>
#include <string>
#include <tarvelon/boundary/k7q/Object.h>
#include <tarvelon/platform/model/api/Metamodel.h>

using namespace Tarvelon::metamodel::arplatform;
namespace foundation = Tarvelon::metamodel::foundation;

namespace {

std::string utf8(const K7Q::String& text) { return K7Q::String::to_string(text); }

/// A revision with one change, described in one language.
documentation::DocRevision revision(const K7Q::Model& model, const char16_t* date, const char16_t* language,
                                    const char16_t* change) {
  auto text = documentation::LOverviewParagraph::create(model);
  text.set<"language">(language);
  text.set<"Body">(change);
  auto paragraph = documentation::MultiLanguageOverviewParagraph::create(model);
  paragraph.get<"L2">().add(text);
  auto result = documentation::DocRevision::create(model, date);
  result.get<"modification">().add(documentation::Modification::create(model, paragraph));
  return result;
}

void print(const foundation::Package& package, int depth) {
  std::cout << std::string(static_cast<std::size_t>(2 * depth), ' ') << utf8(package.get<"Name">()) << '\n';
  for (const auto& element : package.get<"PackagedElement">()) {
    const auto nested = foundation::Package::cast(element);
    if (!nested.isNull()) {
      print(nested, depth + 1);
    } else {
      std::cout << std::string(static_cast<std::size_t>(2 * depth + 2), ' ') << utf8(element.get<"Name">())
                << '\n';
    }
  }
}

}  // namespace

int main() {
  const auto model = K7Q::Model::create();

  auto root = common::AUTOSAR::create(model);
  root.set<"Name">(u"Vehicle");
  auto brakes = common::Package::create(model, u"Brakes");
  root.get<"PackagedElement">().add(brakes);
  brakes.get<"ReferenceBase">().add(common::ReferenceBase::create(model, true, u"default", brakes));

  auto wheels = variant::SystemConst::create(model, u"NumberOfWheels");
  brakes.get<"PackagedElement">().add(wheels);
  auto values = variant::SystemConstValueSet::create(model, u"PassengerCar");
  values.get<"SysConstValue">().add(variant::SystemConstValue::create(model, 4.0, wheels));
  brakes.get<"PackagedElement">().add(values);

  auto history = common::AdminData::create(model);
  history.get<"docRevision">().add(revision(model, u"2026-11-21", u"EN", u"First issue"));
  brakes.set<"adminData">(history);

  brakes.set<"category">(u"STANDARD");
  brakes.unset<"category">();
  print(root, 0);

  try {
    values.get<"SysConstValue">()[0].asView(model.frozen()).set<"Value">(6.0);
  } catch (const K7Q::Exception& refused) {
    std::cout << refused.what() << '\n';
  }
  std::cout << "wheels: " << values.get<"SysConstValue">()[0].get<"Value">() << '\n';

  wheels.destroy();
  std::cout << "elements left: " << brakes.get<"PackagedElement">().size() << '\n';
  return 0;
}
