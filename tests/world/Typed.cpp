// Steps through the typed handles, which the compiler generates from the rows.

#include "tarvelon/platform/model/api/Metamodel.h"
#include "tests/world/Fault.h"
#include "tests/world/World.h"

namespace world {

namespace {

namespace common = Tarvelon::metamodel::arplatform::common;
namespace variant = Tarvelon::metamodel::arplatform::variant;

template <class X>
unsigned slotOf(std::string_view metaName) {
  const Class& cls = classNamed(X::Interface::kName);
  return cls.slotOf(*cls.find(metaName)->row);
}

}  // namespace

/// Creates a package that contains a constant, in a transaction.
void World::typed() {
  Mirror& model = mirror();
  if (model.now.objects.size() + 2 > kMostObjects) return;
  const int package = static_cast<int>(model.pointers.size());
  const int constant = package + 1;
  State next = model.now;
  next.create(package, classNamed(common::Package::Interface::kName));
  next.set(package, slotOf<common::Package>("Name"), {0, u"P", -1});
  next.set(package, slotOf<common::Package>("Category"), {0, u"c", -1});
  State full = next;
  full.create(constant, classNamed(variant::SystemConst::Interface::kName));
  full.set(constant, slotOf<variant::SystemConst>("Name"), {0, u"C", -1});
  full.append(package, slotOf<common::Package>("PackagedElement"), {0, {}, constant});
  say(told(package) + " = Package::create().add<PackagedElement>(SystemConst::create())");
  common::Package made;
  variant::SystemConst inside;
  // Each call is a change of its own; the transaction makes them one change.
  const bool isMade = attempt(Expect::Ok, [&] {
    api::Transaction transaction(model.native);
    made = common::Package::create(model.native, u"P").set<"category">(u"c");
    inside = variant::SystemConst::create(model.native, u"C");
    made.add<"PackagedElement">(inside);
    transaction.commit();
  });
  if (!isMade) return;
  model.add(made.getClassObject());
  model.add(inside.getClassObject());
  model.commit(std::move(full), true);
  if (made.get<"category">() != K7Q::String(u"c") || made.get<"PackagedElement">().size() != 1)
    throw Fault("a typed handle reads something else");
}

/// Creates an object in an Undertaking. If an exception leaves the scope, the object is removed again;
/// otherwise listeners are told at the end.
void World::undertake() {
  struct Left {};
  Mirror& model = mirror();
  if (model.now.objects.size() >= kMostObjects) return;
  const bool isKept = mIn->oneIn(2);
  say(isKept ? "Package::create() that is told of later" : "Package::create() that is taken back");
  common::Package made;
  try {
    const bool isMade = attempt(Expect::Ok, [&] {
      const api::Undertaking undertaking;
      made = common::Package::create(model.native, u"U");
      if (!isKept) throw Left();
    });
    if (!isMade) return;
  } catch (const Left&) {
    ++model.touches;
    return;
  }
  State next = model.now;
  const int id = model.add(made.getClassObject());
  next.create(id, classNamed(common::Package::Interface::kName));
  next.set(id, slotOf<common::Package>("Name"), {0, u"U", -1});
  model.commit(std::move(next), true);
}

}  // namespace world
