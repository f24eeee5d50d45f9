#include "bench/Files.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "bench/BigModel.h"
#include "tarvelon/platform/files/Files.h"

namespace bench {

namespace {

namespace files = Tarvelon::files;

constexpr int kBehaviors = 1000;
constexpr double kObjects = 1.0 * kBehaviors * kObjectsOfABehavior;

K7Q::Model makeBigModel() {
  auto model = K7Q::Model::create();
  const Shared shared = makeShared(model);
  for (int number = 0; number < kBehaviors; ++number) makeBehavior(model, shared, number);
  return model;
}

/// The maximum memory of the process since resetPeak(), in bytes.
double peak() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) return std::stod(line.substr(6)) * 1024;
  }
  return 0;
}
void resetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

void print(const char* what, double seconds, double memory, double model) {
  std::printf("  %-24s %9.0f ns an object  %5.2f times the model's %.0f bytes an object\n", what,
              1e9 * seconds / kObjects, memory / model, model / kObjects);
}

void saving(const std::filesystem::path& path) {
  const double before = bytesInUse();
  resetPeak();
  const double emptyProcess = peak();
  const auto model = makeBigModel();
  const double size = bytesInUse() - before;
  double fastest = 1e9;
  for (int turn = 0; turn < 3; ++turn) {
    // The first save creates the ids of the objects; the other two use them.
    const double seconds = secondsOf([&] { files::save(model, path, {nullptr, false}); });
    if (turn == 0) print("saving for the first time", seconds, peak() - emptyProcess, size);
    fastest = std::min(fastest, seconds);
  }
  print("saving", fastest, peak() - emptyProcess, size);
}

void loading(const std::filesystem::path& path) {
  resetPeak();
  const double emptyProcess = peak();
  const double before = bytesInUse();
  K7Q::Model model;
  double fastest = secondsOf([&] { model = files::load(path).model; });
  const double most = peak() - emptyProcess;
  const double size = bytesInUse() - before;
  for (int turn = 0; turn < 2; ++turn) {
    model = {};
    fastest = std::min(fastest, secondsOf([&] { model = files::load(path).model; }));
  }
  print("loading", fastest, most, size);
}

/// Measures loading a file with that many problems: unknown attributes of the root element, or elements of
/// unknown namespaces.
void refusing(int problems, bool haveNamespaces) {
  std::string text =
      "<?xml version=\"1.0\"?><xmi:XMI xmi:version=\"2.0\" xmlns:xmi=\"http://www.omg.org/XMI\""
      " xmlns:tarvelon=\"urn:tarvelon:file\" tarvelon:format=\"1\"";
  for (int each = 0; each < problems; ++each) {
    text += (haveNamespaces ? " xmlns:n" : " name") + std::to_string(each) + "=\"u\"";
  }
  text += '>';
  for (int each = 0; haveNamespaces && each < problems; ++each) text += "<n" + std::to_string(each) + ":A/>";
  text += "</xmi:XMI>";
  const double seconds = secondsOf([&] {
    try {
      files::loadText(text);
      std::puts("  a file that should be refused was loaded");
    } catch (const files::WrongFile&) {  // NOLINT(bugprone-empty-catch): that is what is measured
    }
  });
  std::printf("  refusing %7d %-12s %9.0f ns a problem\n", problems,
              haveNamespaces ? "namespaces" : "attributes", 1e9 * seconds / problems);
}

}  // namespace

void reportFiles() {
  for (const bool haveNamespaces : {false, true}) {
    for (const int problems : {10000, 200000}) inProcess([=] { refusing(problems, haveNamespaces); });
  }
  const auto path = std::filesystem::temp_directory_path() / ("tarvelon-bench-" + std::to_string(::getpid()));
  std::printf("files, %.0f objects, without waiting for the disk\n", kObjects);
  inProcess([&] { saving(path); });
  std::printf("  %-24s %9.1f MB\n", "the file", static_cast<double>(std::filesystem::file_size(path)) / 1e6);
  inProcess([&] { loading(path); });
  std::filesystem::remove(path);
}

}  // namespace bench
