#include "storage/SerialQueue.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <vector>

namespace nimbrel {
namespace {

TEST(SerialQueue, RunsTasksInTheOrderOfTheirPosting) {
  std::vector<int> order;
  {
    const auto queue = std::make_unique<SerialQueue>(QStringLiteral("test"), SerialQueue::Priority::utility);
    for (int i = 0; i < 1000; ++i)
      queue->post([&order, i] { order.push_back(i); });
  }
  ASSERT_EQ(order.size(), 1000U);
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(SerialQueue, WaitsForAResultBehindWhatWasPostedBefore) {
  const auto queue =
      std::make_unique<SerialQueue>(QStringLiteral("test"), SerialQueue::Priority::userInitiated);
  std::atomic<int> done = 0;
  for (int i = 0; i < 50; ++i)
    queue->post([&done] { ++done; });
  EXPECT_EQ(queue->runAndWait([&done] { return done.load(); }), 50);
}

TEST(SerialQueue, RunsAtOnceWhatItWaitsForOnItsOwnThread) {
  const auto queue = std::make_unique<SerialQueue>(QStringLiteral("test"), SerialQueue::Priority::utility);
  EXPECT_EQ(queue->runAndWait([&queue] { return queue->runAndWait([] { return 7; }); }), 7);
}

TEST(SerialQueue, FinishesWhatIsQueuedBeforeItGoes) {
  std::atomic<int> done = 0;
  {
    const auto queue = std::make_unique<SerialQueue>(QStringLiteral("test"), SerialQueue::Priority::utility);
    queue->post([&] {
      for (int i = 0; i < 10; ++i)
        queue->post([&done] { ++done; });
    });
  }
  EXPECT_EQ(done, 10);
}

}  // namespace
}  // namespace nimbrel
