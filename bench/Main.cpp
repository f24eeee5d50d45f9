// Runs the benchmarks and prints each time with its ratio to the baseline of its group, measured in the same
// run. A benchmark is named "group/variant"; the variant of the baseline is "plain struct". Options measure
// one part only: --publishing the registration of everything, --curve models of several sizes, --large
// operations on a large model, --files saving and loading, --arxml the same of ARXML files.
#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/Arxml.h"
#include "bench/BigModel.h"
#include "bench/Curve.h"
#include "bench/Files.h"
#include "bench/Memory.h"
#include "bench/Model.h"
#include "bench/Publishing.h"
#include "bench/Validation.h"

namespace {

class RatioReporter final : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const auto& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      const auto& name = run.run_name.function_name;
      const auto slash = name.find('/');
      note(mGroups[name.substr(0, slash)], name.substr(slash + 1), run.GetAdjustedCPUTime());
    }
  }
  bool ReportContext(const Context& context) override {
    std::printf("%d cores at %.0f MHz; the fastest of the repetitions, nanoseconds of CPU time\n",
                context.cpu_info.num_cpus, context.cpu_info.cycles_per_second / 1e6);
    return true;
  }
  void Finalize() override {
    for (const auto& [group, figures] : mGroups) {
      double baseline = 0;
      for (const auto& figure : figures) {
        if (figure.variant == "plain struct") baseline = figure.time;
      }
      std::printf("%s\n", group.c_str());
      for (const auto& figure : figures) {
        std::printf("  %-24s %9.1f ns", figure.variant.c_str(), figure.time);
        if (baseline > 0) std::printf("  x %.2f", figure.time / baseline);
        std::printf("\n");
      }
    }
  }

 private:
  struct Figure {
    std::string variant;
    double time;
  };
  // Other programs on the machine can only add time, so the fastest repetition is the most accurate.
  static void note(std::vector<Figure>& figures, const std::string& variant, double time) {
    for (Figure& figure : figures) {
      if (figure.variant != variant) continue;
      figure.time = std::min(figure.time, time);
      return;
    }
    figures.push_back({variant, time});
  }
  std::map<std::string, std::vector<Figure>> mGroups;
};

/// A part that can be measured alone.
struct Part {
  const char* option;
  void (*report)();
};
constexpr Part kParts[] = {{"--publishing", bench::reportPublishing},
                           {"--curve", bench::reportCurve},
                           {"--large", bench::reportModel},
                           {"--files", bench::reportFiles},
                           {"--arxml", bench::reportArxml}};

/// Runs a part in a new process, because the memory count is only exact if nothing has been freed before.
void apart(const char* option) {
  bench::inProcess([option] { ::execl("/proc/self/exe", "tarvelon_bench", option, nullptr); });
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view only = argc == 2 ? argv[1] : "";
  if (only == bench::kPublishingRound) return bench::publishingRound();
  for (const Part& part : kParts) {
    if (only != part.option) continue;
    part.report();
    return 0;
  }
  std::vector<char*> arguments(argv, argv + argc);
  std::string repetitions = "--benchmark_repetitions=7";
  std::string warmUp = "--benchmark_min_warmup_time=0.05";
  std::string minimum = "--benchmark_min_time=0.1";
  std::string interleaving = "--benchmark_enable_random_interleaving=true";
  for (auto* extra : {&repetitions, &warmUp, &minimum, &interleaving}) {
    arguments.insert(arguments.begin() + 1, extra->data());
  }
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  const bool isSelection = std::any_of(argv, argv + argc, [](const char* argument) {
    return std::string_view(argument).starts_with("--benchmark_filter");
  });
  if (!isSelection) {
    bench::reportMemory();
    apart("--large");
    apart("--curve");
    bench::reportPublishing();
    bench::reportValidation();
    apart("--files");
    apart("--arxml");
  }
  return 0;
}
