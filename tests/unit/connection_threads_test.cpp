// What an application hears of the service and the bus, while both come and go.
#include <gmock/gmock.h>
#include <zlog.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <thread>

#include "HLXListenerBase.h"
#include "HLXSystemProxy.h"
#include "HLXVersion.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/MainContext.h"
#include "tests/support/Process.h"
#include "tests/support/TestService.h"

namespace {

class News : public IHLXConnectionListener {
 public:
  ~News() override { HLX_RemoveConnectionListener(this); }
  void OnServiceLost() override { Add('-'); }
  void OnServiceBack() override { Add('+'); }
  void OnBusLost() override { Add('x'); }

  std::string heard;
  std::function<void()> during = [] {};

 private:
  void Add(char what) {
    heard += what;
    during();
  }
};

class Connection : public testing::Test {
 protected:
  void SetUp() override { fake::Reset(); }
  void TearDown() override { HLX_ReleaseSystemProxy(); }

  News news;
};

TEST_F(Connection, AServiceThatComesAndGoes) {
  const auto heard = [this](const char* what) { return [this, what] { return news.heard == what; }; };
  HLX_AddConnectionListener(nullptr);
  HLX_RemoveConnectionListener(nullptr);
  for (int i = 0; i < 2; ++i) HLX_AddConnectionListener(&news);
  EXPECT_FALSE(HLX_IsServiceConnected());
  EXPECT_FALSE(HLX_StartSystemProxy());
  EXPECT_FALSE(HLX_StartSystemProxy());

  // After a false start the service comes: a new start in the callback, whose result is not told again.
  news.during = [] { EXPECT_TRUE(HLX_StartSystemProxy()); };
  auto service = std::make_unique<TestService>();
  ASSERT_TRUE(RunUntil(heard("+")));
  EXPECT_TRUE(HLX_IsServiceConnected());

  news.during = [] { EXPECT_FALSE(HLX_IsServiceConnected()); };
  service.reset();
  ASSERT_TRUE(RunUntil(heard("+-")));
  news.during = [] {};
  service = std::make_unique<TestService>();
  ASSERT_TRUE(RunUntil(heard("+-+")));

  // Two starts are one connection; a release is not told, and the listener stays.
  ASSERT_TRUE(HLX_StartSystemProxy());
  HLX_ReleaseSystemProxy();
  EXPECT_FALSE(HLX_IsServiceConnected());
  ASSERT_TRUE(HLX_StartSystemProxy());
  ASSERT_TRUE(HLX_StartSystemProxy());
  EXPECT_TRUE(HLX_IsServiceConnected());
  service.reset();
  ASSERT_TRUE(RunUntil(heard("+-+-")));

  // Removed in its own callback.
  news.during = [this] { HLX_RemoveConnectionListener(&news); };
  service = std::make_unique<TestService>();
  ASSERT_TRUE(RunUntil(heard("+-+-+")));
  service.reset();
  ASSERT_TRUE(RunUntil([] { return !HLX_IsServiceConnected(); }));
  EXPECT_EQ(news.heard, "+-+-+");
}

TEST_F(Connection, WhoIsRemovedInACallbackIsToldNothingMore) {
  News both[2];
  for (News& each : both) {
    HLX_AddConnectionListener(&each);
    each.during = [&both] {
      for (News& listener : both) HLX_RemoveConnectionListener(&listener);
    };
  }
  HLX_StartSystemProxy();
  TestService service;
  ASSERT_TRUE(RunUntil([] { return HLX_IsServiceConnected(); }));
  EXPECT_EQ(both[0].heard + both[1].heard, "+");
}

TEST_F(Connection, ARemovalAndAReleaseWaitForACallbackOnAnotherThread) {
  HLX_AddConnectionListener(&news);
  std::promise<void> called;
  std::promise<void> go_on;
  news.during = [&] {
    called.set_value();
    go_on.get_future().wait();
    HLX_ReleaseSystemProxy();  // refused
    EXPECT_THAT(fake::Snapshot().Logged(ZLOG_LEVEL_ERROR), testing::SizeIs(1));
  };
  auto others = std::async(std::launch::async, [&called] {
    called.get_future().wait();
    auto removal = std::async(std::launch::async, HLX_RemoveConnectionListener, nullptr);
    auto release = std::async(std::launch::async, HLX_ReleaseSystemProxy);
    EXPECT_EQ(removal.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    EXPECT_EQ(release.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
    return std::make_pair(std::move(removal), std::move(release));
  });
  EXPECT_FALSE(HLX_StartSystemProxy());
  const TestService service;
  auto unblock = std::async(std::launch::async, [&] {
    auto waiting = others.get();
    go_on.set_value();
    waiting.first.get();
    waiting.second.get();
  });
  EXPECT_TRUE(RunUntil([this] { return news.heard == "+"; }));
  unblock.get();
}

/// On a bus of its own, which dies; with or without the end of the process that GIO then brings about.
void LoseTheBus(bool exit_on_close) {
  Process bus({"dbus-daemon", "--session", "--nofork", "--print-address"});
  if (!bus.WaitForLine("unix:")) std::abort();
  const std::string address = bus.Out().substr(0, bus.Out().find('\n'));
  setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
  News news;
  news.during = [] {
    std::fprintf(stderr, "lost; %s", fake::Get().Logged(ZLOG_LEVEL_ERROR).back().c_str());
    if (HLX_IsServiceConnected()) std::abort();
  };
  HLX_AddConnectionListener(&news);
  {
    TestService service;
    if (!HLX_StartSystemProxy() || !HLX_IsServiceConnected()) std::abort();
    const GLibPtr<GDBusConnection> session(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!exit_on_close) g_dbus_connection_set_exit_on_close(session.get(), FALSE);
    bus.Signal(SIGKILL);
    RunUntil([&news] { return news.heard == "x"; });
  }
  std::_Exit(3);
}

TEST_F(Connection, TheEndOfTheBusIsToldBeforeGioEndsTheProcess) {
  testing::GTEST_FLAG(death_test_style) = "threadsafe";
  const char record[] = "lost; the connection to the session bus is lost: ";
  EXPECT_EXIT(LoseTheBus(true), testing::KilledBySignal(SIGTERM), record);
  EXPECT_EXIT(LoseTheBus(false), testing::ExitedWithCode(3), record);
}

TEST(Version, IsThatOfTheHeaders) { EXPECT_STREQ(HLX_GetVersion(), HLX_VERSION_STRING); }

}  // namespace
