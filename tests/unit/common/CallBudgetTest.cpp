#include "platform/common/CallBudget.h"

#include <gmock/gmock.h>

#include "support/Fakes.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class CallBudgetTest : public ::testing::Test {
 protected:
  /// How many of so many calls are admitted.
  int admitted(int calls, const QString& caller) {
    int count = 0;
    for (int i = 0; i < calls; ++i)
      count += budget.admits(caller) ? 1 : 0;
    return count;
  }

  testing::ManualClock clock;
  CallBudget budget{clock};
};

TEST_F(CallBudgetTest, AdmitsABurstAndThenSoManyASecond) {
  EXPECT_EQ(admitted(100, u":1.1"_s), 40);
  clock.advance(500ms);
  EXPECT_EQ(admitted(100, u":1.1"_s), 10);
  clock.advance(1h);
  EXPECT_EQ(admitted(100, u":1.1"_s), 40);
}

TEST_F(CallBudgetTest, OneWhoFloodsDoesNotSilenceOthers) {
  EXPECT_EQ(admitted(100'000, u":1.1"_s), 40);
  EXPECT_EQ(admitted(10, u":1.2"_s), 10);
}

TEST_F(CallBudgetTest, ManyTogetherAreBoundedToo) {
  int count = 0;
  for (int caller = 0; caller < 1000; ++caller)
    count += admitted(1, u":1.%1"_s.arg(caller));
  EXPECT_EQ(count, 200);
}

TEST_F(CallBudgetTest, ForgetsThoseWhoAreQuiet) {
  for (int caller = 0; caller < 100'000; ++caller) {
    static_cast<void>(budget.admits(u":1.%1"_s.arg(caller)));
    clock.advance(20ms);
  }
  EXPECT_LE(budget.callers(), 257);
}

}  // namespace
}  // namespace nimbrel
