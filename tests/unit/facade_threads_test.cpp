// The exported functions: who makes what, and what a release leaves alone.
#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "HLXListenerBase.h"
#include "HLXSystemProxy.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/MainContext.h"
#include "tests/support/TestService.h"

namespace {

class Facade : public testing::Test {
 protected:
  void SetUp() override {
    fake::Reset();
    fake::RemoveSegments();
  }
  void TearDown() override {
    HLX_ReleaseSystemProxy();
    fake::RemoveSegments();
  }
};

class Counter : public HLXPowerListenerBase {
 public:
  void OnAccStateChange(int) override { ++events; }
  void OnPowerPreRadioOffNotify() override { ++others; }

  std::atomic<int> events{0};
  std::atomic<int> others{0};
};

TEST_F(Facade, ReleaseIsSafeBeforeAnyStartAndTwice) {
  HLX_ReleaseSystemProxy();
  HLX_ReleaseSystemProxy();
  EXPECT_TRUE(fake::Get().log.empty());
}

TEST_F(Facade, TheUpdateClientBringsTheInfoClient) {
  EXPECT_NE(HLX_GetSystemUpdateProxy(), nullptr);
  const auto before = fake::Get().log.size();
  EXPECT_NE(HLX_GetSystemInfoProxy(), nullptr);
  EXPECT_EQ(fake::Get().log.size(), before) << "making an info client would have logged";
}

TEST_F(Facade, ThreadsThatAskFirstAtOnceGetOneClient) {
  for (int round = 0; round < 20; ++round) {
    std::vector<std::thread> threads;
    std::vector<IHLXSystemPower*> power(4);
    std::vector<IHLXSystemUpdate*> update(4);
    std::atomic<bool> go{false};
    for (size_t i = 0; i < power.size(); ++i) {
      threads.emplace_back([&, i] {
        while (!go) std::this_thread::yield();
        power[i] = HLX_GetSystemPowerProxy();
        update[i] = HLX_GetSystemUpdateProxy();
      });
    }
    go = true;
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(std::set<IHLXSystemPower*>(power.begin(), power.end()).size(), 1U);
    EXPECT_EQ(std::set<IHLXSystemUpdate*>(update.begin(), update.end()).size(), 1U);
    HLX_ReleaseSystemProxy();
  }
}

TEST_F(Facade, EventsArriveOncePerStartAndAreDroppedWithoutAClient) {
  TestService service;
  ASSERT_TRUE(HLX_StartSystemProxy());
  // Before there is a client: by the time the second signal is through, the first one has been.
  int markers = 0;
  const GLibPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  const guint marker = g_dbus_connection_signal_subscribe(
      bus.get(), nullptr, "com.vorn.linux.system", "SpeakerStateChangeSignal", nullptr, nullptr,
      G_DBUS_SIGNAL_FLAGS_NONE,
      [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant*, gpointer count) {
        ++*static_cast<int*>(count);
      },
      &markers, nullptr);
  service.Emit("AccStateChangeSignal", "(true,)");
  service.Emit("SpeakerStateChangeSignal", "()");
  ASSERT_TRUE(RunUntil([&] { return markers == 1; }));
  g_dbus_connection_signal_unsubscribe(bus.get(), marker);

  Counter counter;
  IHLXSystemPower* const power = HLX_GetSystemPowerProxy();
  EXPECT_EQ(HLX_GetSystemPowerProxy(), power);
  power->AddListener(&counter);
  service.Emit("OnPowerPreRadioOffNotify", "()");
  ASSERT_TRUE(RunUntil([&] { return counter.others == 1; }));
  EXPECT_EQ(counter.events, 0);

  ASSERT_TRUE(HLX_StartSystemProxy());
  service.Emit("NoSuchSignal", "(true,)");
  service.Emit("AccStateChangeSignal", "(true,)");
  ASSERT_TRUE(RunUntil([&] { return counter.events == 2; })) << counter.events;
}

TEST_F(Facade, TheLastCallErrorIsPerThread) {
  TestService service;
  service.SetAnswer(TestService::Answer::kError);
  ASSERT_TRUE(HLX_StartSystemProxy());
  std::thread([] {
    EXPECT_EQ(HLX_GetLastCallError(), nullptr);
    HLX_GetSystemPowerProxy()->Reset();
    EXPECT_STREQ(HLX_GetLastCallError(), "GDBus.Error:com.vorn.linux.Error.Refused: not today");
  }).join();
  EXPECT_EQ(HLX_GetLastCallError(), nullptr);
}

TEST_F(Facade, ReleaseWhileSignalsPourInOnAnotherThread) {
  TestService service;
  for (int round = 0; round < 5; ++round) {
    Counter counter;
    std::atomic<bool> started{false};
    std::atomic<bool> stop{false};
    std::thread events([&] {
      const GLibPtr<GMainContext> context(g_main_context_new());
      g_main_context_push_thread_default(context.get());
      HLX_GetSystemPowerProxy()->AddListener(&counter);
      started = HLX_StartSystemProxy();
      while (!stop) g_main_context_iteration(context.get(), FALSE);
      while (g_main_context_iteration(context.get(), FALSE)) continue;  // what the release left to be freed here
      g_main_context_pop_thread_default(context.get());
    });
    std::thread pour([&] {
      while (!stop) {
        service.Emit("AccStateChangeSignal", "(true,)");
        std::this_thread::sleep_for(std::chrono::microseconds(200));  // about what the bus can carry
      }
    });
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (counter.events < 50 && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
    HLX_ReleaseSystemProxy();
    const int at_release = counter.events;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_TRUE(started);
    EXPECT_GE(at_release, 50);
    EXPECT_EQ(counter.events, at_release) << "an event after the release";
    stop = true;
    events.join();
    pour.join();
  }
}

TEST_F(Facade, ReleaseWaitsForACallbackOnAnotherThread) {
  TestService service;
  class Slow : public Counter {
   public:
    void OnAccStateChange(int) override {
      ++events;
      std::this_thread::sleep_for(std::chrono::milliseconds(300));
      finished = HLX_GetSystemPowerProxy() != nullptr;  // by then the release is waiting
    }
    std::atomic<bool> finished{false};
  } slow;
  std::atomic<bool> stop{false};
  std::thread events([&] {
    const GLibPtr<GMainContext> context(g_main_context_new());
    g_main_context_push_thread_default(context.get());
    HLX_GetSystemPowerProxy()->AddListener(&slow);
    EXPECT_TRUE(HLX_StartSystemProxy());
    service.Emit("AccStateChangeSignal", "(true,)");
    while (!stop) g_main_context_iteration(context.get(), FALSE);
    while (g_main_context_iteration(context.get(), FALSE)) continue;  // what the release left to be freed here
    g_main_context_pop_thread_default(context.get());
  });
  while (slow.events == 0) std::this_thread::yield();
  HLX_ReleaseSystemProxy();
  EXPECT_TRUE(slow.finished);
  stop = true;
  events.join();
}

}  // namespace
