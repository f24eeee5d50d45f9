// A program that a debugger stops in look(), to print objects of a model.
#include "tarvelon/platform/model/api/History.h"
#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/changes/Steps.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tarvelon/platform/model/objects/NativeModel.h"
#include "tarvelon/platform/model/words/WordList.h"

namespace {

namespace native = Tarvelon::metamodel::native;
using Tarvelon::metamodel::arplatform::common::Package;
using Tarvelon::metamodel::arplatform::variant::SystemConst;

template <class Handle>
native::Instance& instanceOf(const Handle& handle) {
  return *static_cast<native::Instance*>(handle.getClassObject());
}

/// The slot of a property by its name in the metamodel.
const native::Word& wordOf(const native::Instance& object, std::string_view name) {
  const native::ClassData& cls = object.cls();
  unsigned slot = 0;
  while (cls.slotProperties[slot]->metaName() != name) ++slot;
  return *object.find(slot);
}

[[gnu::noinline]] void look(const native::Instance& package, const native::Instance& nameless,
                            const native::Instance& destroyed, const native::WordList& list,
                            const K7Q::NSInterface::StringIntf& text, const ruvo::InternedName& name,
                            const native::Step& step) {
  asm volatile(""
               :
               : "r"(&package), "r"(&nameless), "r"(&destroyed), "r"(&list), "r"(&text), "r"(&name),
                 "r"(&step)
               : "memory");
}

}  // namespace

int main() {
  const K7Q::Model model = K7Q::Model::create();
  Tarvelon::model::setHistoryLimit(model, 9);
  auto package = Package::create(model);
  package.set<"Name">(u"Brakes \u00e4").set<"category">(u"first");
  const auto nameless = Package::create(model);
  auto constant = SystemConst::create(model);
  constant.set<"Name">(u"C");
  package.add<"PackagedElement">(constant).add<"PackagedElement">(nameless);
  auto destroyed = SystemConst::create(model);
  destroyed.set<"Name">(u"D");
  native::Instance& gone = instanceOf(destroyed);
  destroyed.destroy();
  native::Instance& object = instanceOf(package);
  const native::Step step{&object, {.bits = 1}, {.bits = 2}, 0, 3, native::Step::Kind::Value, false, true};
  look(object, instanceOf(nameless), gone, *wordOf(object, "PackagedElement").list,
       *wordOf(object, "Name").text, object.cls().names[0], step);
  return 0;
}
