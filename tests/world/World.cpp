#include "tests/world/World.h"

#include <cstdio>

#include "tarvelon/boundary/k7q/Exception.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/hx/Blocks.h"
#include "tests/support/FailingNew.h"
#include "tests/world/Fault.h"

namespace world {

World::World(const Options& options) : mOptions(options) { addModel(K7Q::Model::create()); }

World::~World() {
  mPlaces.clear();
  mHeld.clear();
  for (const auto& each : mModels) {
    each->open.clear();
    if (each->native.isValid()) each->native.close();
  }
}

void World::say(const std::string& what) const {
  if (mOptions.isVerbose) std::fprintf(stderr, "    %s\n", what.c_str());
}

std::shared_ptr<Mirror> World::addModel(K7Q::Model model) {
  if (mModels.size() == kMostModels) {
    const std::size_t other = mCurrent == 0 ? 1 : 0;
    mModels[other]->native.close();
    forgetModel(other);
  }
  mModels.push_back(std::make_shared<Mirror>(std::move(model), mNumbers++));
  return mModels.back();
}

void World::forgetModel(std::size_t index) {
  Mirror& gone = *mModels[index];
  gone.isClosed = true;
  gone.open.clear();
  gone.followers.clear();
  mModels.erase(mModels.begin() + static_cast<std::ptrdiff_t>(index));
  if (mModels.empty()) addModel(K7Q::Model::create());
  mCurrent = mCurrent > index ? mCurrent - 1 : mCurrent;
  mCurrent %= mModels.size();
}

void World::arm() {
  if (mFailing == 0) return;
  if (mFailsHost) {
    utFailAllocation(mFailing);
  } else {
    failing::gCountdown = mFailing;
  }
}

bool World::disarm() {
  if (mFailing == 0) return false;
  const bool hasFailed = mFailsHost ? hx::tThread.allocationsUntilFailure == 0 : failing::gCountdown == 0;
  utFailAllocation(0);
  failing::gCountdown = 0;
  mFailing = 0;
  return hasFailed;
}

bool World::attempt(Expect expected, const std::function<void()>& call) {
  arm();
  try {
    call();
  } catch (const std::bad_alloc&) {
    if (!disarm()) throw Fault("memory ran out by itself");
    ++mirror().touches;
    say("  memory ran out");
    return false;
  } catch (const K7Q::Exception& refusal) {
    disarm();
    say("  refused: " + std::string(refusal.what()));
    if (expected == Expect::Ok) throw Fault("refused: " + std::string(refusal.what()));
    if (refusal.what()[0] == '\0') throw Fault("a refusal without a text");
    return false;
  } catch (...) {
    disarm();
    throw;
  }
  disarm();
  if (expected == Expect::Refused) throw Fault("was not refused");
  return true;
}

void World::newModel() {
  say("model " + std::to_string(mNumbers) + " = Model.create()");
  addModel(K7Q::Model::create());
  mCurrent = mModels.size() - 1;
}

void World::closeModel() {
  say("model " + std::to_string(mirror().number) + ".close()");
  mirror().native.close();
  forgetModel(mCurrent);
}

void World::make(const Step& step) {
  Operands operands(step);
  mIn = &operands;
  mHosts.clear();
  mTexts.clear();
  if (mOptions.isVerbose) std::fprintf(stderr, "  %s\n", textOf(step).c_str());
  // The first decision selects the model. Usually it is the model of the step before.
  if (mIn->oneIn(4)) mCurrent = below(mModels.size());
  dispatch(step.operation);
  for (const auto& each : mModels) each->hear();
  ++mSteps;
  if (mSteps % mOptions.checkEvery == 0) check(false);
}

void World::check(bool isThorough) {
  for (const auto& each : mModels) each->check(isThorough);
  for (const HeldObject& held : mHeld) {
    const bool isThere = !held.mirror->isClosed && held.mirror->now.objects.contains(held.id);
    if (held.handle.isValid() != isThere)
      throw Fault("a held handle is valid, or not, against what it stands for");
  }
}

void World::dispatch(Operation operation) {
  using Act = void (World::*)();
  static constexpr Act kActs[] = {&World::create,  &World::grow,    &World::set,    &World::unset,
                                  &World::add,     &World::replace, &World::erase,  &World::assign,
                                  &World::destroy, &World::begin,   &World::commit, &World::rollBack,
                                  &World::limit};
  const auto index = static_cast<std::size_t>(operation);
  if (index < std::size(kActs)) return (this->*kActs[index])();
  switch (operation) {
    case Operation::Undo:
      return undo(false);
    case Operation::Redo:
      return undo(true);
    case Operation::Listen:
      return listen();
    case Operation::Unlisten:
      return unlisten();
    case Operation::Save:
      return save();
    case Operation::Load:
      return load(false);
    case Operation::LoadBroken:
      return load(true);
    case Operation::Clone:
      return clone();
    case Operation::CloneModel:
      return cloneModel();
    case Operation::NewModel:
      return newModel();
    case Operation::Close:
      return closeModel();
    default:
      break;
  }
  dispatchRest(operation);
}

void World::dispatchRest(Operation operation) {
  switch (operation) {
    case Operation::Hold:
      return hold();
    case Operation::UseHeld:
      return useHeld();
    case Operation::Drop:
      return drop();
    case Operation::HoldPlace:
      return holdPlace();
    case Operation::UsePlace:
      return usePlace();
    case Operation::Search:
      return search();
    case Operation::Validate:
      return validate();
    case Operation::Compare:
      return compare();
    case Operation::Wrong:
      return wrong();
    case Operation::Typed:
      return typed();
    case Operation::Undertake:
      return undertake();
    case Operation::Fail:
      mFailing = mOptions.letsFail ? 1 + static_cast<unsigned>(below(24)) : 0;
      mFailsHost = mIn->oneIn(4);
      say("allocation " + std::to_string(mFailing) + " of the next call fails");
      return;
    default:
      return;
  }
}

void run(const Program& program, const Options& options) {
  World world(options);
  for (const Step& step : program) world.make(step);
  world.check(true);
}

}  // namespace world
