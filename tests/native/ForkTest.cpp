// A process whose threads have used models forks; the child starts its own threads.

#include <barrier>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "tarvelon/platform/model/objects/Instance.h"
#include "tests/native/Support.h"

namespace {

constexpr int kThreads = 20;

void useAModel() {
  const auto model = K7Q::Model::create();
  for (int count = 0; count < 10; ++count) common::Package::create(model, u"P");
}

void useModelsOnThreads() {
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int count = 0; count < kThreads; ++count) threads.emplace_back(useAModel);
  for (std::thread& each : threads) each.join();
}

}  // namespace

TEST(Fork, LeavesTheChildThreadsOfItsOwn) {
  const auto kept = K7Q::Model::create();
  const auto package = common::Package::create(kept, u"P");
  const std::size_t before = Tarvelon::metamodel::native::liveObjects();
  std::barrier<> haveUsed(kThreads + 1);
  std::barrier<> mayEnd(kThreads + 1);
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int count = 0; count < kThreads; ++count) {
    threads.emplace_back([&] {
      useAModel();
      haveUsed.arrive_and_wait();
      mayEnd.arrive_and_wait();
    });
  }
  haveUsed.arrive_and_wait();
  const pid_t child = fork();
  if (child == 0) {
    // Ends the process if it hangs.
    alarm(60);
    for (int round = 0; round < 10; ++round) useModelsOnThreads();
    _exit(Tarvelon::metamodel::native::liveObjects() == before && package.isValid() ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  mayEnd.arrive_and_wait();
  for (std::thread& each : threads) each.join();
  EXPECT_EQ(status, 0);
}
