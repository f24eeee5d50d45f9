#include "bench/Publishing.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <malloc.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <benchmark/benchmark.h>

#include "tarvelon/platform/ruvo/ObjectSystem.h"

namespace bench {

namespace {

constexpr const char* kRoot = "Tarvelon.metamodel.arplatform";
constexpr const char* kOnePackage = "Tarvelon.metamodel.arplatform.variant";
constexpr std::size_t kClasses = 3266;

/// The steps in their order. Each step uses more of the metamodel than the step before.
enum Step { kEmpty, kLoad, kTouchRoot, kTouchOne, kTouchRest, kDefine, kRead, kSteps };

constexpr std::array<const char*, kSteps> kNames{
    "load an empty library",           "load the module and initialise it",
    "touch the root package",          "touch one package of thirteen",
    "touch the other twelve",          "define every class",
    "read every class and its records"};

struct Round {
  std::array<double, kSteps> milliseconds{};
  /// The allocated bytes after each step.
  std::array<std::size_t, kSteps> bytes{};
  std::size_t classes = 0;
  std::size_t classesOfOne = 0;
  std::size_t packagesTouchedByOne = 0;
  std::size_t records = 0;
};

std::size_t bytesInUse() { return mallinfo2().uordblks + mallinfo2().hblkhd; }

/// The processor time in milliseconds; it does not include other programs on the machine.
double timeSpent() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return 1e3 * static_cast<double>(now.tv_sec) + 1e-6 * static_cast<double>(now.tv_nsec);
}

template <class Action>
void measure(Round& round, Step step, Action action) {
  const std::size_t before = bytesInUse();
  const double started = timeSpent();
  action();
  round.milliseconds[step] = timeSpent() - started;
  round.bytes[step] = bytesInUse() - before;
}

void* open(const char* library) {
  void* opened = dlopen(library, RTLD_NOW | RTLD_LOCAL);
  if (opened) return opened;
  std::fprintf(stderr, "cannot open %s: %s\n", library, dlerror());
  std::exit(1);
}

std::vector<ruvo::Package*> packagesBelow(ruvo::Package& root) {
  std::vector<ruvo::Package*> packages{&root};
  for (const auto name : root.packageNames()) packages.push_back(root.findPackage(name));
  return packages;
}

std::size_t readSignature(const ruvo::RVOMethodSignature& signature) {
  std::size_t read = signature.result().view().size() + signature.self().view().size();
  for (const auto& argument : signature.arguments()) read += argument.view().size();
  return read + std::string_view(signature.parameterNames()).size();
}
std::size_t readMethod(const ruvo::RVOMethodInfo& record) {
  return record.getName().view().size() + std::string_view(record.getDescription()).size() +
         std::string_view(record.getDetailedDescription()).size() + record.getFlags() +
         (record.isConstructor() ? 1U : 0U) + readSignature(*record.getSignature());
}
std::size_t readProperty(const ruvo::RVOPropInfo& record) {
  return std::string_view(record.getName()).size() + std::string_view(record.getDescription()).size() +
         record.attributeWord() + record.getDataType().view().size() +
         static_cast<unsigned>(record.getMemberGetAccess() + record.getMemberSetAccess());
}

/// Reads all data of a class and of its records.
void readClass(ruvo::Class& cls, Round& round) {
  std::size_t read = std::string_view(cls.info().getName()).size() +
                     std::string_view(cls.info().getDescription()).size() +
                     (cls.info().isAbstract() ? 1U : 0U);
  for (const auto& super : cls.superClassNames()) read += super.view().size();
  for (const auto* record : cls.methods()) read += readMethod(*record);
  for (const auto& slot : cls.properties()) read += readProperty(*slot.property);
  benchmark::DoNotOptimize(read);
  ++round.classes;
  round.records += cls.methods().size() + cls.properties().size();
}

template <class Action>
void forEachClass(Action action) {
  for (ruvo::Package* package : packagesBelow(ruvo::Package::get(kRoot))) {
    for (ruvo::Class* cls : package->classes()) action(*cls);
  }
}

/// The number of populated packages. It must not ask for their classes, because that would populate them.
std::size_t populated() {
  const auto packages = packagesBelow(ruvo::Package::get(kRoot));
  return static_cast<std::size_t>(std::count_if(packages.begin() + 1, packages.end(),
                                                [](const auto* package) { return package->isPopulated(); }));
}

/// Runs one repetition in a process of its own.
Round runRound() {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) std::perror("pipe"), std::exit(1);
  const pid_t child = fork();
  if (child == 0) {
    dup2(ends[1], STDOUT_FILENO);
    execl("/proc/self/exe", "tarvelon_bench", kPublishingRound, static_cast<char*>(nullptr));
    _exit(127);
  }
  close(ends[1]);
  Round round;
  const bool isWhole = read(ends[0], &round, sizeof(round)) == static_cast<ssize_t>(sizeof(round));
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (isWhole && status == 0) return round;
  std::fprintf(stderr, "a repetition of the publishing benchmark failed\n");
  std::exit(1);
}

struct Spread {
  double least;
  double median;
};
Spread spreadOf(std::vector<double> times) {
  std::sort(times.begin(), times.end());
  return {times.front(), times[times.size() / 2]};
}

void print(const char* name, const Spread& spread) {
  std::printf("  %-36s %8.2f ms %8.2f ms", name, spread.least, spread.median);
}

}  // namespace

int publishingRound() {
  Round round;
  measure(round, kEmpty, [] { open(TARVELON_EMPTY_PATH); });
  measure(round, kLoad, [] {
    reinterpret_cast<void (*)()>(dlsym(open(TARVELON_MODULE_PATH), "ZtInitialize_mm_arplatform_mi"))();
  });
  measure(round, kTouchRoot, [] { ruvo::Package::get(kRoot); });
  measure(round, kTouchOne, [&] { round.classesOfOne = ruvo::Package::get(kOnePackage).classes().size(); });
  round.packagesTouchedByOne = populated();
  measure(round, kTouchRest, [] { forEachClass([](ruvo::Class&) {}); });
  measure(round, kDefine, [] { forEachClass([](ruvo::Class& cls) { cls.define(); }); });
  measure(round, kRead, [&] { forEachClass([&](ruvo::Class& cls) { readClass(cls, round); }); });
  return write(STDOUT_FILENO, &round, sizeof(round)) == static_cast<ssize_t>(sizeof(round)) ? 0 : 1;
}

void reportPublishing() {
  constexpr int kRounds = 25;
  std::vector<Round> rounds;
  for (int i = 0; i < kRounds; ++i) rounds.push_back(runRound());
  const Round& one = rounds.back();
  if (one.classes != kClasses || one.packagesTouchedByOne != 1) {
    std::fprintf(stderr, "publishing: %zu classes, expected %zu; one package touched populated %zu\n",
                 one.classes, kClasses, one.packagesTouchedByOne);
    std::exit(1);
  }

  std::printf("publishing, %d processes: least and median CPU time, bytes that the allocator counts\n",
              kRounds);
  for (std::size_t step = 0; step < kSteps; ++step) {
    std::vector<double> times;
    for (const Round& round : rounds) times.push_back(round.milliseconds[step]);
    print(kNames[step], spreadOf(times));
    std::printf(" %9zu\n", one.bytes[step]);
  }
  std::vector<double> wholes;
  for (const Round& round : rounds) {
    double whole = 0;
    for (std::size_t step = kTouchRoot; step < kSteps; ++step) whole += round.milliseconds[step];
    wholes.push_back(whole);
  }
  print("all of it, once the module is loaded", spreadOf(wholes));
  std::printf("  (aim: 50 ms at most)\n");
  const std::size_t registered = one.bytes[kTouchRoot] + one.bytes[kTouchOne] + one.bytes[kTouchRest];
  const double perClass = static_cast<double>(registered) / static_cast<double>(one.classes);
  const double perRecord = static_cast<double>(one.bytes[kDefine]) / static_cast<double>(one.records);
  std::printf(
      "  %zu classes registered: %.0f bytes each, with info, names and the object system's own entry "
      "(aim: 300 at most)\n",
      one.classes, perClass);
  std::printf("  %zu records defined: %.0f bytes each, with signature, names and lists (aim: 220 at most)\n",
              one.records, perRecord);
}

}  // namespace bench
