// The entry of libFuzzer: each input is a program of calls, and when it is over nothing of it is left.

#include <cstdio>
#include <cstdlib>

#include "tarvelon/boundary/ruvo/BindingRegistry.h"
#include "tarvelon/boundary/ut/Memory.h"
#include "tarvelon/platform/tarvelon/Instance.h"
#include "tests/fuzz/Catalog.h"
#include "tests/fuzz/Program.h"

namespace {

fuzz::Tally gTally;

/// What counts up while things are held.
struct Counts {
  std::size_t bindings = ruvo::factory::basic::BindingRegistry::size();
  std::size_t arrays = hx::hxLiveArrays();
  std::size_t objects = Tarvelon::metamodel::native::liveObjects();
};

void requireNothingLeft(const Counts& before) {
  const Counts after;
  if (after.bindings <= before.bindings && after.arrays <= before.arrays && after.objects <= before.objects) {
    return;
  }
  std::fprintf(stderr,
               "tarvelon_fuzz: left behind: %zu host objects, %zu arrays, %zu model objects (there were %zu, "
               "%zu, %zu)\n",
               after.bindings, after.arrays, after.objects, before.bindings, before.arrays, before.objects);
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
  fuzz::Catalog::instance();
  utSetPrintSink([](const char* /*text*/, std::size_t /*length*/) {});
  std::atexit([] { gTally.print(); });
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Counts before;
  fuzz::Input input({data, size});
  fuzz::run(input, gTally);
  requireNothingLeft(before);
  return 0;
}
