// Who waits for whom in the library, and who must not.
#include <gmock/gmock.h>
#include <zlog.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <memory>
#include <thread>

#include "client/DispatchGate.h"
#include "tests/support/FakePlatform.h"

namespace {

const int target = 0;
const int other = 0;
constexpr std::chrono::milliseconds kBlocked{50};

/// A callback on a thread of its own, which stays inside until it is let out.
class Callback {
 public:
  Callback() { entered_.get_future().wait(); }
  ~Callback() {
    Leave();
    thread_.join();
  }
  void Leave() {
    if (!left_.exchange(true)) leave_.set_value();
  }

 private:
  std::promise<void> entered_;
  std::promise<void> leave_;
  std::atomic<bool> left_{false};
  std::thread thread_{[this] {
    const DispatchGate::Pass pass(&target);
    EXPECT_TRUE(pass);
    entered_.set_value();
    leave_.get_future().wait();
  }};
};

TEST(Gate, ACallbackIsWaitedForByAllWhoCloseAndNobodyIsLetInAfterwards) {
  DispatchGate::Open(&target);
  Callback callback;
  const auto close = [] { return DispatchGate::Close(&target); };
  auto one = std::async(std::launch::async, close);
  auto two = std::async(std::launch::async, close);
  EXPECT_EQ(one.wait_for(kBlocked), std::future_status::timeout);
  EXPECT_EQ(two.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
  EXPECT_FALSE(DispatchGate::Pass(&target)) << "closed, though not yet empty";
  callback.Leave();
  EXPECT_TRUE(one.get());
  EXPECT_TRUE(two.get());
  EXPECT_FALSE(DispatchGate::Pass(&target));
  EXPECT_TRUE(close()) << "safe to repeat";
}

TEST(Gate, ACallbackThatClosesIsRefusedAndNothingIsClosed) {
  fake::Reset();
  DispatchGate::Open(&target);
  DispatchGate::Open(&other);
  {
    const DispatchGate::Pass outer(&target);
    const DispatchGate::Pass nested(&other);
    EXPECT_FALSE(DispatchGate::Close(&target));
    EXPECT_FALSE(DispatchGate::Close(&other));
    EXPECT_THAT(fake::Get().Logged(ZLOG_LEVEL_ERROR), testing::SizeIs(2));
    EXPECT_TRUE(DispatchGate::Pass(&target));
  }
  EXPECT_TRUE(DispatchGate::Close(&target));
  EXPECT_TRUE(DispatchGate::Close(&other));
}

TEST(Gate, ATurnIsForOneThreadAtATime) {
  auto held = std::make_unique<DispatchGate::Turn>(&target);
  { const DispatchGate::Turn again(&target); }
  auto next = std::async(std::launch::async, [] { const DispatchGate::Turn turn(&target); });
  EXPECT_EQ(next.wait_for(kBlocked), std::future_status::timeout);
  { const DispatchGate::Turn of_something_else(&other); }
  held.reset();
  EXPECT_EQ(next.wait_for(std::chrono::seconds(10)), std::future_status::ready);
}

/// The process ends inside a callback, in a turn. Its exit handler closes, takes the turn, and waits for threads that
/// wait for both.
void EndInsideACallback() {
  DispatchGate::Open(&target);
  const DispatchGate::Pass inside(&target);
  const DispatchGate::Turn held(&target);
  static std::thread waits_for_turn([] { const DispatchGate::Turn turn(&target); });
  static std::thread waits_for_callback([] { EXPECT_FALSE(DispatchGate::Close(&target)); });
  std::this_thread::sleep_for(kBlocked);
  std::atexit([] {
    waits_for_turn.join();
    waits_for_callback.join();
    std::thread([] {
      const DispatchGate::Turn turn(&target);
      const DispatchGate::Pass pass(&other);
      if (!pass && !DispatchGate::Close(&target)) std::fputs("nobody waits", stderr);
    }).join();
  });
  DispatchGate::Open(&other);
  DispatchGate::Exit(2);
}

TEST(Gate, NobodyWaitsWhileTheProcessEnds) {
  testing::GTEST_FLAG(death_test_style) = "threadsafe";
  EXPECT_EXIT(EndInsideACallback(), testing::ExitedWithCode(2), "nobody waits");
}

}  // namespace
