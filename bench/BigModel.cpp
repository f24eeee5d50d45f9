#include "bench/BigModel.h"

#include <cstdio>
#include <ctime>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

using namespace Tarvelon::metamodel::arplatform;  // NOLINT(google-build-using-namespace)

std::u16string name(std::string_view word, int number) {
  const std::string digits = std::to_string(number);
  std::u16string text(word.begin(), word.end());
  text.append(kUnits - word.size() - digits.size(), u'_');
  return text.append(digits.begin(), digits.end());
}

Shared makeShared(const K7Q::Model& model) {
  return {interface::FlowData::create(model), port::DataReceiverPort::create(model)};
}

behavior::ApplicationComponentBehavior makeBehavior(const K7Q::Model& model, const Shared& shared,
                                                    int number) {
  auto result = behavior::ApplicationComponentBehavior::create(model);
  result.set<"Name">(name("Behavior", number));
  for (int i = 0; i < kRunnables; ++i) {
    auto runnable = behavior::Runnable::create(model, name("step", i), name("Step", i));
    result.get<"Runnables">().add(runnable);
    for (int k = 0; k < kAccesses; ++k) {
      auto access = behavior::FlowDataAccess::create(
          model, instance::FlowDataPortInstanceRef::create(model, shared.data, shared.port),
          behavior::DataAccessKind::ImplicitRead, name("Access", k));
      runnable.get<"dataAccess">().add(access);
    }
    for (int k = 0; k < kEvents; ++k) {
      auto event = behavior::TimingEvent::create(model, 0.01, name("Event", kEvents * i + k));
      event.set<"StartOnEvent">(runnable);
      result.get<"Events">().add(event);
    }
  }
  return result;
}

std::vector<component::AtomicComponent> makeComponents(const K7Q::Model& model, int count) {
  const Shared shared = makeShared(model);
  std::vector<component::AtomicComponent> components;
  for (int i = 0; i < count; ++i) {
    auto component = component::AtomicComponent::create(model);
    component.set<"Name">(name("Component", i));
    component.set<"Behavior">(makeBehavior(model, shared, i));
    components.push_back(component);
  }
  return components;
}

double destroyByRoot(const K7Q::Model& model, std::vector<component::AtomicComponent>& components) {
  auto vehicle = common::Package::create(model, u"Vehicle");
  for (const auto& component : components) vehicle.get<"PackagedElement">().add(component);
  components.clear();
  return secondsOf([&] { vehicle.destroy(); });
}

double bytesInUse() {
  const auto info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd);
}

double secondsOf(const std::function<void()>& action) {
  timespec begin{};
  timespec end{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &begin);
  action();
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &end);
  return static_cast<double>(end.tv_sec - begin.tv_sec) +
         1e-9 * static_cast<double>(end.tv_nsec - begin.tv_nsec);
}

bool inProcess(const std::function<void()>& action) {
  std::fflush(stdout);
  const pid_t child = ::fork();
  if (child == 0) {
    action();
    std::fflush(stdout);
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  if (status != 0) std::printf("  the process failed with status %d\n", status);
  return status == 0;
}

}  // namespace bench
