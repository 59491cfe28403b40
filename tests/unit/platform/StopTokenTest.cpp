#include "platform/StopToken.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <optional>
#include <thread>

namespace nimbrel {
namespace {

TEST(StopToken, IsNeverStoppedWithoutASource) {
  const StopToken token;
  EXPECT_FALSE(token.stopRequested());
  int called = 0;
  const StopCallback callback(token, [&] { ++called; });
  EXPECT_EQ(called, 0);
}

TEST(StopToken, IsStoppedWithItsSourceAndTheSourcesCopies) {
  StopSource source;
  StopSource copy = source;
  const StopToken token = source.token();
  EXPECT_FALSE(token.stopRequested());
  copy.requestStop();
  EXPECT_TRUE(token.stopRequested());
  EXPECT_TRUE(source.stopRequested());
  EXPECT_TRUE(source.token().stopRequested());
  EXPECT_FALSE(StopSource().stopRequested());
}

TEST(StopToken, OutlivesItsSource) {
  StopToken token;
  {
    StopSource source;
    token = source.token();
    source.requestStop();
  }
  EXPECT_TRUE(token.stopRequested());
}

TEST(StopCallback, IsCalledOnceHoweverOftenAStopIsRequested) {
  StopSource source;
  int called = 0;
  const StopCallback callback(source.token(), [&] { ++called; });
  EXPECT_EQ(called, 0);
  source.requestStop();
  source.requestStop();
  EXPECT_EQ(called, 1);
}

TEST(StopCallback, IsCalledAtOnceWhereTheStopHasBeenRequested) {
  StopSource source;
  source.requestStop();
  int called = 0;
  const StopCallback callback(source.token(), [&] { ++called; });
  EXPECT_EQ(called, 1);
}

TEST(StopCallback, IsNotCalledWhenItHasGone) {
  StopSource source;
  int first = 0;
  int second = 0;
  std::optional<StopCallback> gone(std::in_place, source.token(), [&] { ++first; });
  const StopCallback staying(source.token(), [&] { ++second; });
  gone.reset();
  source.requestStop();
  EXPECT_EQ(first, 0);
  EXPECT_EQ(second, 1);
}

TEST(StopCallback, GoesOnlyWhenItIsNotBeingCalled) {
  StopSource source;
  std::promise<void> entered;
  std::promise<void> leave;
  std::atomic<bool> left = false;
  std::optional<StopCallback> callback(std::in_place, source.token(), [&] {
    entered.set_value();
    leave.get_future().wait();
    left = true;
  });
  std::thread requester([&] { source.requestStop(); });
  entered.get_future().wait();
  std::thread releaser([&] { leave.set_value(); });
  callback.reset();
  EXPECT_TRUE(left);
  requester.join();
  releaser.join();
}

}  // namespace
}  // namespace nimbrel
