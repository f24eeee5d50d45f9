#include "tests/fuzz/Program.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/platform/model/objects/Instance.h"
#include "tests/fuzz/Arguments.h"
#include "tests/fuzz/Catalog.h"
#include "tests/fuzz/Undefined.h"

namespace fuzz {

namespace {

using ruvo::HostResult;
using ruvo::HostValue;
using ruvo::RVOInterface;
using ruvo::RVOInterfacePtr;
using Tarvelon::metamodel::native::liveObjects;

enum class Outcome { Made, Refused, Left };

[[noreturn]] void fail(const std::string& what) {
  std::fprintf(stderr, "tarvelon_fuzz: %s\n", what.c_str());
  std::abort();
}

/// The value of a property as text: objects by address, sequences by size.
std::string shown(const HostResult& value) {
  if (value.isRaw()) return std::to_string(value.slot().int32());
  if (RVOInterface* object = value.object()) {
    ruvo::Class& cls = ruvo::classOf(*object);
    if (isEnumeration(cls)) return shown(ruvo::call(object, "toString", {}));
    if (cls.findMethods("size")) return shown(ruvo::call(object, "size", {}));
    return std::to_string(reinterpret_cast<std::uintptr_t>(object));
  }
  if (!value.isArray()) return "nothing";
  const std::u16string_view text = hx::hxGetText(value.slot().array());
  std::string result = std::to_string(hx::hxGetNumberOfElements(value.slot().array())) + " elements ";
  for (const char16_t unit : text) result += std::to_string(unit) + ' ';
  return result;
}

/// Runs one program.
class Runner {
 public:
  Runner(Input& input, Tally& tally) : mInput(input), mTally(tally) {}

  void step() {
    constexpr Action kOften[] = {Action::Construct,   Action::Construct, Action::Set,  Action::Set,
                                 Action::Set,         Action::Add,       Action::Add,  Action::Get,
                                 Action::Get,         Action::Call,      Action::Call, Action::Call,
                                 Action::Call,        Action::CallClass, Action::Call, Action::CallClass,
                                 Action::CallPackage, Action::Misspell,  Action::Drop, Action::Destroy};
    const Action action = mInput.pick(kOften);
    auto& row = mTally.rows[static_cast<std::size_t>(action)];
    // The arguments may have created objects, whatever happens to the call.
    mObjects = liveObjects();
    try {
      (act(action) == Outcome::Left ? row.left : row.made) += 1;
    } catch (const K7Q::Exception& refusal) {
      ++row.refused;
      if (refusal.what()[0] == '\0') fail("a refusal without a text");
      if (mIsCalling && liveObjects() > mObjects)
        fail("a refused call made an object: " + std::string(refusal.what()));
    }
    mIsCalling = false;
  }

  /// Reads all properties of all held objects: everything must be readable at the end of a program.
  void sweep();

 private:
  Outcome act(Action action);
  Outcome construct();
  Outcome set();
  Outcome add();
  Outcome get();
  Outcome callObject();
  Outcome callClass();
  Outcome callPackage();
  Outcome makeValues();
  Outcome destroy();
  Outcome misspell();
  Outcome call(ruvo::Class& cls, const ruvo::InternedName& method, RVOInterface* self);

  /// From here on, a refused call must not create an object.
  void begin() noexcept {
    mObjects = liveObjects();
    mIsCalling = true;
  }
  RVOInterfacePtr anyObject() { return mInput.pick(mWorld.held()).object; }
  RVOInterfacePtr anyTarget();
  RVOInterfacePtr anyWithProperties();
  const ruvo::PropertySlot& anyProperty(RVOInterface& object, bool isMany);

  Input& mInput;
  Tally& mTally;
  World mWorld;
  std::size_t mObjects = 0;
  bool mIsCalling = false;
  bool mIsMisspelt = false;
};

void Runner::sweep() {
  const auto held = mWorld.held();
  for (const Held& each : held) {
    try {
      for (const auto* slot : Catalog::instance().membersOf(ruvo::classOf(*each.object)).properties) {
        shown(ruvo::getProperty(each.object, *slot));
      }
    } catch (const K7Q::Exception&) {
      // The object was destroyed, or its model is closed.
    }
  }
}

/// With equal frequency: any object; a sequence or an iterator; a sequence or an iterator of enumeration
/// values.
RVOInterfacePtr Runner::anyTarget() {
  const auto& held = mWorld.held();
  const std::size_t from = mInput.below(held.size());
  const std::uint8_t wanted = mInput.byte() % 3;
  for (std::size_t i = 0; i < held.size() && wanted != 0; ++i) {
    const RVOInterfacePtr& object = held[(from + i) % held.size()].object;
    const Kind kind = Catalog::instance().membersOf(ruvo::classOf(*object)).kind;
    if (wanted == 1 ? kind != Kind::Object : kind >= Kind::ValueSequence) return object;
  }
  if (wanted == 2) makeValues();
  return held.back().object;
}

Outcome Runner::makeValues() {
  ruvo::Class& sequences = *mInput.pick(Catalog::instance().valueSequences);
  const auto* makers = sequences.findMethods(mInput.oneIn(2) ? "makeUnique" : "make");
  return makers ? call(sequences, makers->name, nullptr) : Outcome::Left;
}

/// The first object from a random index on that has properties; otherwise a new object.
RVOInterfacePtr Runner::anyWithProperties() {
  const auto& held = mWorld.held();
  const std::size_t from = mInput.below(held.size());
  for (std::size_t i = 0; i < held.size(); ++i) {
    const RVOInterfacePtr& object = held[(from + i) % held.size()].object;
    if (!Catalog::instance().membersOf(ruvo::classOf(*object)).properties.empty()) return object;
  }
  const HostValue model = HostValue::ofObject(mWorld.openModel());
  const auto made = ruvo::construct(*mInput.pick(Catalog::instance().concrete), {&model, 1});
  mWorld.keep(made, nullptr, mInput);
  return made;
}

/// Prefers a property with many values, or one with a single value, as `isMany` says.
const ruvo::PropertySlot& Runner::anyProperty(RVOInterface& object, bool isMany) {
  const auto& slots = Catalog::instance().membersOf(ruvo::classOf(object)).properties;
  const std::size_t from = mInput.below(slots.size());
  const bool isAny = mInput.oneIn(16);
  for (std::size_t i = 0; i < slots.size() && !isAny; ++i) {
    const ruvo::PropertySlot& slot = *slots[(from + i) % slots.size()];
    if (slot.guard && slot.guard->isMany() == isMany) return slot;
  }
  return *slots[from];
}

Outcome Runner::act(Action action) {
  switch (action) {
    case Action::Construct:
      return construct();
    case Action::Set:
      return set();
    case Action::Add:
      return add();
    case Action::Get:
      return get();
    case Action::Call:
      return callObject();
    case Action::CallClass:
      return callClass();
    case Action::CallPackage:
      return callPackage();
    case Action::Misspell:
      return misspell();
    case Action::Destroy:
      return destroy();
    case Action::Drop:
      mWorld.drop(mInput.below(mWorld.held().size()));
      return Outcome::Made;
  }
  return Outcome::Left;
}

Outcome Runner::construct() {
  // Refusing an abstract class takes long, because all classes are searched. So it is tried rarely.
  auto& classes = mInput.oneIn(64) ? Catalog::instance().classes : Catalog::instance().concrete;
  ruvo::Class& cls = *mInput.pick(classes);
  Arguments arguments(mWorld, mInput);
  if (const auto* constructors = cls.constructors())
    arguments.addFor(*mInput.pick(constructors->candidates), false);
  begin();
  mWorld.keep(ruvo::construct(cls, arguments.span()), nullptr, mInput);
  return Outcome::Made;
}

Outcome Runner::set() {
  const RVOInterfacePtr object = anyWithProperties();
  const ruvo::PropertySlot& slot = anyProperty(*object, false);
  // Keeps the value alive, so that its address is not reused.
  const HostResult before = ruvo::getProperty(object, slot);
  const std::string shownBefore = shown(before);
  Arguments arguments(mWorld, mInput);
  arguments.add(slot.property->getDataType());
  begin();
  try {
    ruvo::setProperty(object, slot, arguments.span()[0]);
  } catch (const K7Q::Exception& refusal) {
    const bool isClosed = !ruvo::call(object, "isvalid", {}).slot().logical();
    if (!isClosed && shownBefore != shown(ruvo::getProperty(object, slot))) {
      fail("a refused set changed the property: " + std::string(refusal.what()));
    }
    throw;
  }
  return Outcome::Made;
}

/// Changes a many-valued property by adding to its sequence.
Outcome Runner::add() {
  const RVOInterfacePtr object = anyWithProperties();
  const ruvo::PropertySlot& slot = anyProperty(*object, true);
  if (!slot.guard || !slot.guard->isMany()) return Outcome::Left;
  const HostResult read = ruvo::getProperty(object, slot);
  const RVOInterfacePtr sequence(read.object());
  if (!sequence) return Outcome::Left;
  mWorld.keep(sequence, object, mInput);
  ruvo::Class& cls = ruvo::classOf(*sequence);
  constexpr std::string_view kMethods[] = {"push_back", "append", "push_front", "insert", "replace"};
  const auto* overloads = cls.findMethods(mInput.pick(kMethods));
  return overloads ? call(cls, overloads->name, sequence) : Outcome::Left;
}

Outcome Runner::get() {
  const RVOInterfacePtr object = anyWithProperties();
  const ruvo::PropertySlot& slot = anyProperty(*object, mInput.oneIn(2));
  begin();
  mWorld.keep(ruvo::getProperty(object, slot).object(), object, mInput);
  return Outcome::Made;
}

Outcome Runner::callObject() {
  const RVOInterfacePtr object = anyTarget();
  ruvo::Class& cls = ruvo::classOf(*object);
  const auto& methods = Catalog::instance().membersOf(cls).methods;
  return methods.empty() ? Outcome::Left : call(cls, mInput.pick(methods), object);
}

Outcome Runner::callClass() {
  Catalog& catalog = Catalog::instance();
  const std::uint8_t choice = mInput.byte() % 4;
  if (choice == 1) return makeValues();
  ruvo::Class& cls = choice == 0 ? *mInput.pick(catalog.classes) : ruvo::classOf(*anyObject());
  const auto& methods = catalog.membersOf(cls).methods;
  return methods.empty() ? Outcome::Left : call(cls, mInput.pick(methods), nullptr);
}

Outcome Runner::call(ruvo::Class& cls, const ruvo::InternedName& method, RVOInterface* self) {
  const auto& overloads = *cls.findMethods(method);
  Arguments arguments(mWorld, mInput);
  arguments.addFor(*mInput.pick(overloads.candidates), self != nullptr);
  if (isUndefined(mWorld, cls, method.view(), self, arguments.span())) return Outcome::Left;
  if (takesElementsOut(cls, method.view())) mWorld.forgetValueIterators();
  begin();
  const HostResult result = ruvo::callOverloads(cls, overloads, self, arguments.span());
  auto* from = self || arguments.span().empty() ? self : arguments.span()[0].object();
  mWorld.keep(result.object(), from, mInput);
  return Outcome::Made;
}

Outcome Runner::callPackage() {
  ruvo::Package& package = *mInput.pick(Catalog::instance().packages);
  const auto functions = package.functions();
  if (functions.empty()) return Outcome::Left;
  const auto& function = *mInput.pick(functions);
  Arguments arguments(mWorld, mInput);
  arguments.addFor(function, false);
  begin();
  const auto result = ruvo::callFunction(package, function.getName().view(), arguments.span());
  mWorld.keep(result.object(), nullptr, mInput);
  return Outcome::Made;
}

/// Destroys an object, and sometimes drops it: references to it must be removed.
Outcome Runner::destroy() {
  const RVOInterfacePtr object = anyWithProperties();
  ruvo::call(object, "destroy", {});
  if (mInput.oneIn(4)) return Outcome::Made;
  std::erase_if(mWorld.held(), [&](const Held& each) { return each.object == object; });
  return Outcome::Made;
}

/// Passes a name with one wrong letter to each function that takes names.
Outcome Runner::misspell() {
  // Finding the most similar name costs as much as a hundred calls.
  if (mIsMisspelt) return Outcome::Left;
  mIsMisspelt = true;
  const RVOInterfacePtr object = anyObject();
  ruvo::Class& cls = ruvo::classOf(*object);
  const auto& methods = Catalog::instance().membersOf(cls).methods;
  const bool isMember = mInput.oneIn(2) && !methods.empty();
  std::string name(isMember ? mInput.pick(methods).view() : mInput.pick(Catalog::instance().names));
  name[mInput.below(name.size())] = static_cast<char>(mInput.byte());
  begin();
  switch (mInput.byte() % 5) {
    case 0:
      ruvo::Class::get(name);
      break;
    case 1:
      ruvo::Package::get(name);
      break;
    case 2:
      ruvo::setProperty(object, name, {});
      break;
    case 3:
      ruvo::getProperty(object, name);
      break;
    default:
      if (!cls.findMethods(name)) ruvo::call(object, name, {});
      break;
  }
  return Outcome::Made;
}

}  // namespace

void Tally::print() const {
  constexpr const char* kNames[] = {"construct",  "set",          "add",      "get",  "call",
                                    "call class", "call package", "misspell", "drop", "destroy"};
  std::fprintf(stderr, "%-14s %12s %12s %12s\n", "", "made", "refused", "left out");
  for (std::size_t i = 0; i < kActions; ++i) {
    std::fprintf(stderr, "%-14s %12" PRIu64 " %12" PRIu64 " %12" PRIu64 "\n", kNames[i], rows[i].made,
                 rows[i].refused, rows[i].left);
  }
}

void run(Input& input, Tally& tally) {
  Runner runner(input, tally);
  while (!input.isEmpty()) runner.step();
  runner.sweep();
}

}  // namespace fuzz
