#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tarvelon/arplatform/Tables.h"
#include "tarvelon/foundation/Table.h"

/// The model for benchmarks. A behavior has a hundred runnables. A runnable has four data accesses, each with
/// an instance reference, and two timing events. All names have 24 UTF-16 units.
namespace bench {

inline constexpr int kRunnables = 100;
inline constexpr int kAccesses = 4;
inline constexpr int kEvents = 2;
inline constexpr int kObjectsOfABehavior = 1 + kRunnables * (1 + 2 * kAccesses + kEvents);
inline constexpr std::size_t kUnits = 24;
/// The number of texts of a behavior: names, and the symbols of runnables.
inline constexpr int kTextsOfABehavior = 1 + kRunnables * (2 + kAccesses + kEvents);

/// A text of 24 UTF-16 units: a word and a number.
std::u16string name(std::string_view word, int number);

/// The targets of all instance references.
struct Shared {
  Tarvelon::metamodel::arplatform::interface::FlowData data;
  Tarvelon::metamodel::arplatform::port::DataReceiverPort port;
};
Shared makeShared(const K7Q::Model& model);

Tarvelon::metamodel::arplatform::behavior::ApplicationComponentBehavior makeBehavior(const K7Q::Model& model,
                                                                                     const Shared& shared,
                                                                                     int number);

/// Creates that many components without an owner, each with a behavior.
std::vector<Tarvelon::metamodel::arplatform::component::AtomicComponent> makeComponents(
    const K7Q::Model& model, int count);

/// Adds the components to one package and destroys the package. Returns the seconds for destroying.
double destroyByRoot(const K7Q::Model& model,
                     std::vector<Tarvelon::metamodel::arplatform::component::AtomicComponent>& components);

/// The allocated bytes, as counted by the allocator.
double bytesInUse();

/// The seconds of processor time of the action; they do not include other programs on the machine.
double secondsOf(const std::function<void()>& action);

/// Runs the action in a process of its own, so that it has no effect on this one. Returns false if that
/// fails.
bool inProcess(const std::function<void()>& action);

}  // namespace bench
