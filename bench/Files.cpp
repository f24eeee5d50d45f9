#include "bench/Files.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "arplatform/Tables.h"
#include "foundation/Table.h"
#include "platform/files/Files.h"

namespace bench {

namespace {

namespace files = Tarvelon::files;
using namespace Tarvelon::metamodel::arplatform;  // NOLINT(google-build-using-namespace)

constexpr int kBehaviors = 1000;
constexpr int kRunnables = 100;
constexpr int kAccesses = 4;
constexpr int kEvents = 2;
constexpr double kObjects = kBehaviors * (1.0 + kRunnables * (1 + 2 * kAccesses + kEvents));

/// 24 units, a number at the end.
std::u16string name(std::string_view kind, int number) {
  std::string text(kind);
  std::string digits = std::to_string(number);
  text.append(24 - text.size() - digits.size(), '_');
  text += digits;
  return {text.begin(), text.end()};
}

void addRunnable(const K7Q::Model& model, const behavior::ApplicationComponentBehavior& owner, int number) {
  const auto runnable = behavior::Runnable::create(model, name("step", number), name("Step", number));
  owner.get<"Runnables">().add(runnable);
  for (int access = 0; access < kAccesses; ++access) {
    const auto reference = instance::FlowDataPortInstanceRef::create(model);
    runnable.get<"dataAccess">().add(behavior::FlowDataAccess::create(
        model, reference, behavior::DataAccessKind::ImplicitRead, name("Access", access)));
  }
  for (int event = 0; event < kEvents; ++event) {
    const auto timing = behavior::TimingEvent::create(model, 0.01, name("Each10ms", event));
    timing.set<"StartOnEvent">(runnable);
    owner.get<"Events">().add(timing);
  }
}

K7Q::Model makeBigModel() {
  const auto model = K7Q::Model::create();
  for (int number = 0; number < kBehaviors; ++number) {
    const auto owner = behavior::ApplicationComponentBehavior::create(
        model, behavior::TerminateAndRestartKind{}, name("Behavior", number));
    for (int runnable = 0; runnable < kRunnables; ++runnable) addRunnable(model, owner, runnable);
  }
  return model;
}

/// The most memory that the process has had since resetPeak(), in bytes.
double peak() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) return std::stod(line.substr(6)) * 1024;
  }
  return 0;
}
void resetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

double inUse() {
  const auto info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd);
}

/// Of the processor: what else runs on the machine is not counted.
template <class Action>
double secondsOf(Action action) {
  const std::clock_t begin = std::clock();
  action();
  return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

void print(const char* what, double seconds, double memory, double model) {
  std::printf("  %-24s %9.0f ns an object  %5.2f times the model's %.0f bytes an object\n", what,
              1e9 * seconds / kObjects, memory / model, model / kObjects);
}

void saving(const std::filesystem::path& path) {
  const double before = inUse();
  resetPeak();
  const double emptyProcess = peak();
  const auto model = makeBigModel();
  const double size = inUse() - before;
  double fastest = 1e9;
  for (int turn = 0; turn < 3; ++turn) {
    // The first turn gives the ids, the others find them.
    const double seconds = secondsOf([&] { files::save(model, path, {nullptr, false}); });
    if (turn == 0) print("saving for the first time", seconds, peak() - emptyProcess, size);
    fastest = std::min(fastest, seconds);
  }
  print("saving", fastest, peak() - emptyProcess, size);
}

void loading(const std::filesystem::path& path) {
  resetPeak();
  const double emptyProcess = peak();
  const double before = inUse();
  K7Q::Model model;
  double fastest = secondsOf([&] { model = files::load(path).model; });
  const double most = peak() - emptyProcess;
  const double size = inUse() - before;
  for (int turn = 0; turn < 2; ++turn) {
    model = {};
    fastest = std::min(fastest, secondsOf([&] { model = files::load(path).model; }));
  }
  print("loading", fastest, most, size);
}

template <class Action>
void inProcess(Action action) {
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
}

}  // namespace

void reportFiles() {
  const auto path = std::filesystem::temp_directory_path() / ("tarvelon-bench-" + std::to_string(::getpid()));
  std::printf("files, %.0f objects, without waiting for the disk\n", kObjects);
  inProcess([&] { saving(path); });
  std::printf("  %-24s %9.1f MB\n", "the file", static_cast<double>(std::filesystem::file_size(path)) / 1e6);
  inProcess([&] { loading(path); });
  std::filesystem::remove(path);
}

}  // namespace bench
