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

/// What a property holds, as far as a text can tell: objects by their place in memory, sequences by their
/// size.
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

/// One program under way.
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
    // Made by the arguments, whatever becomes of the call.
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

  /// Reads every property of every object that is held: what the program has left behind must be readable.
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

  /// From here on a refusal must leave no object behind.
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
      // One that was destroyed, or whose model is closed.
    }
  }
}

/// Any object, a sequence or an iterator, or one of those over values of an enumeration, each as often.
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

/// The first at or behind a place in the world that has properties, or a new one.
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

/// Most of the time one that has many values, or none that has.
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
  // What has no constructor is refused after a search through all classes: now and then is enough.
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
  // The value is held, so that no other one takes its place in memory.
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

/// A many-valued property is written by adding to its sequence.
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

/// Ends an object, and lets go of it now and then: what referred to it must not any more.
Outcome Runner::destroy() {
  const RVOInterfacePtr object = anyWithProperties();
  ruvo::call(object, "destroy", {});
  if (mInput.oneIn(4)) return Outcome::Made;
  std::erase_if(mWorld.held(), [&](const Held& each) { return each.object == object; });
  return Outcome::Made;
}

/// A name with one letter wrong, through every door that takes names.
Outcome Runner::misspell() {
  // To look for the nearest name costs as much as a hundred calls.
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
