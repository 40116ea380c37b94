// The exported functions: who makes what, and what a release leaves alone.
#include <gmock/gmock.h>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <zlog.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "HLXListenerBase.h"
#include "HLXSystemProxy.h"
#include "data/SystemShmDataBase.h"
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

/// Events on a thread of their own.
class EventThread {
 public:
  explicit EventThread(IHLXPowerListener* listener) {
    std::promise<void> started;
    thread_ = std::thread([&, listener] {
      const GLibPtr<GMainContext> context(g_main_context_new());
      g_main_context_push_thread_default(context.get());
      HLX_GetSystemPowerProxy()->AddListener(listener);
      EXPECT_TRUE(HLX_StartSystemProxy());
      started.set_value();
      while (!stop_) g_main_context_iteration(context.get(), FALSE);
      while (g_main_context_iteration(context.get(), FALSE)) continue;  // what a release left to be freed here
      g_main_context_pop_thread_default(context.get());
    });
    started.get_future().wait();
  }
  ~EventThread() {
    stop_ = true;
    thread_.join();
  }

 private:
  std::atomic<bool> stop_{false};
  std::thread thread_;
};

TEST_F(Facade, ReleasesWaitForACallbackThatMayAskForClients) {
  TestService service;
  class Slow : public Counter {
   public:
    void OnAccStateChange(int) override {
      ++events;
      go_on.get_future().wait();
      same = HLX_GetSystemPowerProxy() == power;
      HLX_GetSystemUpdateProxy();  // made for the release to delete
      HLX_GetSystemMiscProxy()->SetOnSourceChange(1);
      finished = HLX_GetLastCallError() == nullptr;
    }
    IHLXSystemPower* const power = HLX_GetSystemPowerProxy();
    std::promise<void> go_on;
    bool same = false;
    std::atomic<bool> finished{false};
  } slow;
  const EventThread events(&slow);
  service.Emit("AccStateChangeSignal", "(true,)");
  while (slow.events == 0) std::this_thread::yield();
  auto one = std::async(std::launch::async, HLX_ReleaseSystemProxy);
  auto two = std::async(std::launch::async, HLX_ReleaseSystemProxy);
  EXPECT_EQ(one.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
  EXPECT_EQ(two.wait_for(std::chrono::milliseconds(0)), std::future_status::timeout);
  slow.go_on.set_value();
  one.get();
  EXPECT_TRUE(slow.finished);
  EXPECT_TRUE(slow.same);
  two.get();
}

TEST_F(Facade, AReleaseInsideACallbackDoesNothing) {
  TestService service;
  class Releases : public Counter {
   public:
    void OnAccStateChange(int) override {
      HLX_ReleaseSystemProxy();
      ++events;
    }
  } listener;
  IHLXSystemPower* const power = HLX_GetSystemPowerProxy();
  power->AddListener(&listener);
  ASSERT_TRUE(HLX_StartSystemProxy());
  for (const int count : {1, 2}) {
    service.Emit("AccStateChangeSignal", "(true,)");
    ASSERT_TRUE(RunUntil([&] { return listener.events == count; }));
  }
  EXPECT_THAT(fake::Get().Logged(ZLOG_LEVEL_ERROR),
              testing::ElementsAre(testing::HasSubstr("nothing is released"), testing::_));
  EXPECT_EQ(HLX_GetSystemPowerProxy(), power);
}

/// Ends the process by asking for a client whose segment cannot be had, in a callback or not. An exit handler does what
/// static destructors may do, and waits for a thread that releases meanwhile.
void EndWithoutASegment(bool in_callback) {
  EXPECT_NE(shmget(static_cast<key_t>(HLXSystemData::SHM_MISC_DATA_KEY_ID), 1, IPC_CREAT | 0600), -1);
  static std::thread releases;
  std::atexit([] { std::fputs("to the end", stderr); });
  std::atexit([] {
    HLX_ReleaseSystemProxy();
    HLX_GetSystemPowerProxy();
    if (releases.joinable()) releases.join();
    HLX_GetSystemMiscProxy();  // ends the process once more
  });
  class Ends : public Counter {
   public:
    void OnAccStateChange(int) override {
      releases = std::thread(HLX_ReleaseSystemProxy);
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
      HLX_GetSystemMiscProxy();
    }
  } listener;
  if (in_callback) {
    TestService service;
    HLX_GetSystemPowerProxy()->AddListener(&listener);
    HLX_StartSystemProxy();
    service.Emit("AccStateChangeSignal", "(true,)");
    RunUntil([] { return false; });
  }
  HLX_GetSystemMiscProxy();
}

TEST_F(Facade, AProcessThatEndsWithoutASegmentWaitsForNothing) {
  testing::GTEST_FLAG(death_test_style) = "threadsafe";
  for (const bool in_callback : {false, true}) {
    EXPECT_EXIT(EndWithoutASegment(in_callback), testing::ExitedWithCode(2), "to the end") << in_callback;
  }
}

TEST_F(Facade, TwoContextsMayDeliverTheSameEvents) {
  TestService service;
  class Events : public Counter, public HLXMiscListenerBase, public HLXTimeListenerBase {
   public:
    void OnDoorStateChange(std::map<SystemMisc::DoorState, int>) override { ++events; }
    void OnAcStateChange(std::map<SystemMisc::ACState, int>) override { ++events; }
    void OnSimpleAirModeChange(std::map<SystemMisc::SimpleAirMode, int>) override { ++events; }
    void OnSpeakerStateChange(std::map<SystemMisc::Speaker, SystemMisc::SpeakerState>) override { ++events; }
    void OnExternalMcuTimeChange(SystemTime::DateTime&) override { ++events; }
  } events;
  HLX_GetSystemMiscProxy()->AddListener(&events);
  HLX_GetSystemTimeProxy()->AddListener(&events);
  const EventThread one(&events);
  const EventThread two(&events);
  for (const char* arguments : {"(byte 0x55,)", "(byte 0xaa,)"}) {
    for (const char* signal : {"DoorStateChangeSignal", "AcStateChangeSignal", "SimpleAirModeChangeSignal",
                               "OnExternalMcuTimeChangeSignal"}) {
      service.Emit(signal, arguments);
    }
    service.Emit("SpeakerStateChangeSignal", "()");
  }
  EXPECT_TRUE(RunUntil([&] { return events.events == 20; })) << events.events;
  HLX_ReleaseSystemProxy();  // while there are threads to free what belongs to their contexts
}

}  // namespace
