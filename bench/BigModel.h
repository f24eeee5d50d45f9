#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/arplatform/Tables.h"
#include "tarvelon/foundation/Table.h"

/// The model that benchmarks are made with: behaviors of a hundred runnables each, every runnable with four
/// data accesses that hold an instance reference and two timing events, all names of 24 units.
namespace bench {

inline constexpr int kRunnables = 100;
inline constexpr int kAccesses = 4;
inline constexpr int kEvents = 2;
inline constexpr int kObjectsOfABehavior = 1 + kRunnables * (1 + 2 * kAccesses + kEvents);
inline constexpr std::size_t kUnits = 24;
/// Behaviors, runnables with their symbols, accesses and events have one.
inline constexpr int kTextsOfABehavior = 1 + kRunnables * (2 + kAccesses + kEvents);

/// A text of 24 units: a word and a number.
std::u16string name(std::string_view word, int number);

/// What all instance references lead to.
struct Shared {
  Tarvelon::metamodel::arplatform::interface::FlowData data;
  Tarvelon::metamodel::arplatform::port::DataReceiverPort port;
};
Shared makeShared(const K7Q::Model& model);

Tarvelon::metamodel::arplatform::behavior::ApplicationComponentBehavior makeBehavior(const K7Q::Model& model,
                                                                                     const Shared& shared,
                                                                                     int number);

/// So many components without an owner, each with its behavior.
std::vector<Tarvelon::metamodel::arplatform::component::AtomicComponent> makeComponents(
    const K7Q::Model& model, int count);

/// Puts the components into one package and destroys that. In seconds.
double destroyByRoot(const K7Q::Model& model,
                     std::vector<Tarvelon::metamodel::arplatform::component::AtomicComponent>& components);

/// What the allocator has given out, by its own count.
double bytesInUse();

/// Seconds of the processor: what else runs on the machine is not counted.
double secondsOf(const std::function<void()>& action);

/// Runs the action in a process of its own, which leaves nothing behind. False if that fails.
bool inProcess(const std::function<void()>& action);

}  // namespace bench
