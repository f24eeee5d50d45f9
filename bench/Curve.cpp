#include "bench/Curve.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <unistd.h>
#include <vector>

#include "bench/BigModel.h"
#include "tarvelon/platform/files/Files.h"
#include "tarvelon/platform/model/api/Metamodel.h"
#include "tarvelon/platform/model/api/Search.h"

namespace bench {

namespace {

using namespace Tarvelon::metamodel::arplatform;  // NOLINT(google-build-using-namespace)
namespace files = Tarvelon::files;

/// The sizes of the models and the number of rounds. A round with the largest model takes half a minute.
struct Size {
  int behaviors;
  int rounds;
};
constexpr Size kSizes[] = {{9, 9}, {91, 7}, {907, 5}, {4537, 3}};
constexpr int kObjectsOfAComponent = 1 + kObjectsOfABehavior;

enum Column : std::size_t {
  kBuild,
  kBytes,
  kFind,
  kScattered,
  kFirstSave,
  kSave,
  kDestroy,
  kLoad,
  kClose,
  kColumns
};
constexpr const char* kNames[kColumns] = {"build", "bytes",   "find", "scattered", "1st save",
                                          "save",  "destroy", "load", "close"};
/// A step between accesses, for searches whose objects are far apart in memory: a prime number.
constexpr long kNoNeighbour = 7919;
using Figures = std::array<double, kColumns>;

/// The paths of a hundred thousand accesses, `step` apart. A path has four names.
std::vector<std::u16string> paths(int behaviors, long step) {
  const long accesses = long{behaviors} * kRunnables * kAccesses;
  std::vector<std::u16string> result;
  for (long i = 0; i < 100000; ++i) {
    const auto access = static_cast<int>(i * step % accesses);
    const int runnable = access / kAccesses;
    const int number = runnable / kRunnables;
    result.push_back(u"/" + name("Component", number) + u"/" + name("Behavior", number) + u"/" +
                     name("Step", runnable % kRunnables) + u"/" + name("Access", access % kAccesses));
  }
  return result;
}

/// Seconds to find one object, after the index was built.
double findOne(const K7Q::Model& model, int behaviors, long step) {
  const auto wanted = paths(behaviors, step);
  Tarvelon::model::find(model, wanted.front());
  std::size_t found = 0;
  const double seconds = secondsOf([&] {
    for (const auto& path : wanted) found += Tarvelon::model::find(model, path).isNull() ? 0 : 1;
  });
  if (found != wanted.size()) std::printf("  found %zu of %zu paths\n", found, wanted.size());
  return seconds / static_cast<double>(wanted.size());
}

Figures measure(int behaviors, const std::filesystem::path& file) {
  const double objects = static_cast<double>(behaviors) * kObjectsOfAComponent;
  Figures figures{};
  const double before = bytesInUse();
  auto model = K7Q::Model::create();
  std::vector<component::AtomicComponent> components;
  figures[kBuild] = secondsOf([&] { components = makeComponents(model, behaviors); }) / objects;
  const double text = 2.0 * kUnits * (1 + kTextsOfABehavior) * behaviors;
  figures[kBytes] = (bytesInUse() - before - text) / objects / 1e9;
  figures[kFind] = findOne(model, behaviors, 1);
  figures[kScattered] = findOne(model, behaviors, kNoNeighbour);
  // The first save gives the objects their ids.
  for (const Column column : {kFirstSave, kSave})
    figures[column] = secondsOf([&] { files::save(model, file, {nullptr, false}); }) / objects;
  figures[kDestroy] = destroyByRoot(model, components) / objects;
  model.getModelInterface()->close();
  model = {};
  figures[kLoad] = secondsOf([&] { model = files::load(file).model; }) / objects;
  figures[kClose] = secondsOf([&] { model.getModelInterface()->close(); }) / objects;
  return figures;
}

/// Runs one round in a process of its own.
bool measureApart(int behaviors, const std::filesystem::path& file, Figures& figures) {
  int ends[2];
  if (::pipe(ends) != 0) return false;
  const bool isDone = inProcess([&] {
    const Figures measured = measure(behaviors, file);
    if (::write(ends[1], &measured, sizeof measured) != sizeof measured) ::_exit(1);
  });
  ::close(ends[1]);
  const bool isRead = ::read(ends[0], &figures, sizeof figures) == sizeof figures;
  ::close(ends[0]);
  return isDone && isRead;
}

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

void reportSize(const Size& size, const std::filesystem::path& file) {
  std::array<std::vector<double>, kColumns> all;
  for (int round = 0; round < size.rounds; ++round) {
    Figures figures{};
    if (!measureApart(size.behaviors, file, figures)) return;
    for (std::size_t column = 0; column < kColumns; ++column) all[column].push_back(figures[column]);
  }
  std::printf("  %9d %6d", size.behaviors * kObjectsOfAComponent, size.rounds);
  for (std::size_t column = 0; column < kColumns; ++column)
    std::printf(column == kBytes ? " %9.1f" : " %9.0f", 1e9 * median(all[column]));
  std::printf("\n");
  std::fflush(stdout);
}

}  // namespace

void reportCurve() {
  namespace fs = std::filesystem;
  const auto file = fs::temp_directory_path() / ("tarvelon-curve-" + std::to_string(::getpid()) + ".xmi");
  std::printf(
      "models from 10,000 to 5,000,000 objects: nanoseconds of the processor an object and bytes an object "
      "besides\n"
      "the text, medians of the rounds; find: a path of four names, one object after another or scattered\n"
      "  %9s %6s",
      "objects", "rounds");
  for (const char* each : kNames) std::printf(" %9s", each);
  std::printf("\n");
  for (const Size& size : kSizes) {
    // A file needs 150 bytes for each object, and the former file still exists while the new one is written.
    const auto needed = static_cast<std::uintmax_t>(size.behaviors) * kObjectsOfAComponent * 300;
    if (fs::space(file.parent_path()).available < needed) {
      std::printf("  %9d: left out, %s has less than %ju MB of room\n", size.behaviors * kObjectsOfAComponent,
                  file.parent_path().c_str(), needed / 1000000);
      continue;
    }
    reportSize(size, file);
  }
  fs::remove(file);
}

}  // namespace bench
