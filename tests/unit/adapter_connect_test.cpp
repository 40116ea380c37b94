// The connection rule, with the making of the proxy in the test's hands (linked with --wrap).
#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <future>
#include <list>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "client/ipc/ClientIpcAdapter.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/TestService.h"

using testing::ElementsAre;

namespace {

/// Whether attempt n (from 0) succeeds.
std::function<bool(int)> succeeds;
int attempts;

/// What was made; null once it is gone.
std::list<gpointer> proxies;

int Alive() { return static_cast<int>(proxies.size() - std::count(proxies.begin(), proxies.end(), nullptr)); }

}  // namespace

extern "C" {
ComVornLinuxSystem* __real_com_vorn_linux_system_proxy_new_for_bus_sync(GBusType, GDBusProxyFlags, const gchar*,
                                                                        const gchar*, GCancellable*, GError**);

ComVornLinuxSystem* __wrap_com_vorn_linux_system_proxy_new_for_bus_sync(GBusType bus, GDBusProxyFlags flags,
                                                                        const gchar* name, const gchar* path,
                                                                        GCancellable* cancellable, GError** error) {
  EXPECT_EQ(bus, G_BUS_TYPE_SESSION);
  EXPECT_EQ(flags, G_DBUS_PROXY_FLAGS_NONE);
  EXPECT_STREQ(name, "com.vorn.linux.systemservice");
  EXPECT_STREQ(path, "/com/vorn/linux/systemservice");
  EXPECT_EQ(cancellable, nullptr);
  const int attempt = attempts++;
  if (succeeds(attempt)) {
    proxies.push_back(__real_com_vorn_linux_system_proxy_new_for_bus_sync(bus, flags, name, path, cancellable, error));
    g_object_add_weak_pointer(G_OBJECT(proxies.back()), &proxies.back());
    return COM_VORN_LINUX_SYSTEM(proxies.back());
  }
  g_set_error(error, G_IO_ERROR, G_IO_ERROR_FAILED, "no bus at %d", attempt);
  return nullptr;
}
}

namespace {

struct Outcome {
  bool started;
  int attempts;
  std::vector<std::string> log;
};

Outcome Start(std::function<bool(int)> plan) {
  fake::Reset();
  attempts = 0;
  succeeds = std::move(plan);
  ClientIpcAdapter adapter;
  const bool started = adapter.Init();
  return {started, attempts, fake::Get().LoggedAll()};
}

std::string Failed(int attempt, int retry) {
  return "ERROR InitDBusConnect: Failed to create proxy. Reason: no bus at " + std::to_string(attempt) + ".retry->" +
         std::to_string(retry);
}

TEST(AdapterConnect, SucceedsAtTheFirstAttempt) {
  TestService service;
  const Outcome outcome = Start([](int) { return true; });
  EXPECT_TRUE(outcome.started);
  EXPECT_EQ(outcome.attempts, 1);
  EXPECT_THAT(outcome.log, ElementsAre(testing::StartsWith("INFO system_proxy_get_name_owner Owner Name: :1.")));
}

TEST(AdapterConnect, GivesUpAfterSevenFailures) {
  const Outcome outcome = Start([](int) { return false; });
  EXPECT_FALSE(outcome.started);
  EXPECT_EQ(outcome.attempts, 7);
  EXPECT_THAT(outcome.log, ElementsAre(Failed(0, 0), Failed(1, 1), Failed(2, 2), Failed(3, 3), Failed(4, 4),
                                       Failed(5, 5), Failed(6, 6)));
}

TEST(AdapterConnect, ALaterSuccessOnlyGoesOnUntilTheSeventhFailure) {
  TestService service;
  const Outcome outcome = Start([](int attempt) { return attempt >= 2 && attempt < 6; });
  EXPECT_FALSE(outcome.started);
  EXPECT_EQ(outcome.attempts, 11);
  EXPECT_THAT(outcome.log, ElementsAre(Failed(0, 0), Failed(1, 1), Failed(6, 2), Failed(7, 3), Failed(8, 4),
                                       Failed(9, 5), Failed(10, 6)));
}

TEST(AdapterConnect, NeedsAnOwnerOfTheName) {
  const Outcome outcome = Start([](int) { return true; });
  EXPECT_FALSE(outcome.started);
  EXPECT_EQ(outcome.attempts, 1);
  EXPECT_THAT(outcome.log, ElementsAre("INFO system_proxy_get_name_owner Owner Name is nullptr"));
}

TEST(AdapterConnect, AStartDropsWhatEarlierOnesLeftWithoutHandlers) {
  fake::Reset();
  ClientIpcAdapter adapter;
  const auto start = [&adapter](std::function<bool(int)> plan) {
    attempts = 0;
    succeeds = std::move(plan);
    return adapter.Init();
  };
  const auto always = [](int) { return true; };
  proxies.clear();
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(start(always));
  EXPECT_EQ(Alive(), 1) << "of three starts";
  EXPECT_FALSE(start([](int attempt) { return attempt >= 1 && attempt < 4; }));
  EXPECT_EQ(Alive(), 3) << "all of the last start";

  auto service = std::make_unique<TestService>();
  EXPECT_TRUE(start(always));
  EXPECT_EQ(Alive(), 1);
  EXPECT_TRUE(start(always));
  EXPECT_EQ(Alive(), 2) << "a success stays";
  service.reset();
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(start(always));
  EXPECT_EQ(Alive(), 3);
}

TEST(AdapterConnect, ACommandKeepsTheProxyThatAStartDrops) {
  fake::Reset();
  ClientIpcAdapter adapter;
  succeeds = [](int) { return true; };
  proxies.clear();
  EXPECT_FALSE(adapter.Init());
  TestService service;
  service.SetAnswer(TestService::Answer::kNone);
  auto command = std::async(std::launch::async, [&adapter] { return adapter.SetOnSourceChange(1); });
  while (service.TakeCalls().empty()) std::this_thread::yield();
  EXPECT_TRUE(adapter.Init());
  EXPECT_EQ(Alive(), 2);
  service.AnswerAll();
  EXPECT_TRUE(command.get());
  EXPECT_EQ(Alive(), 1);
}

TEST(AdapterConnect, WithoutALogSystemEachRecordIsOneNoticeOnStandardOutput) {
  fake::Reset();
  fake::SetLogUp(false);
  attempts = 0;
  succeeds = [](int) { return true; };
  testing::internal::CaptureStdout();
  ClientIpcAdapter().Init();
  EXPECT_THAT(testing::internal::GetCapturedStdout(),
              testing::MatchesRegex("\\[[0-9]+\\]\\[file:client/ipc/ClientIpcAdapter\\]\\[func:InitDBusConnect\\]"
                                    "\\[line:[0-9]+\\]Warn:Log system not init.\n"));
  EXPECT_TRUE(fake::Get().log.empty());
}

}  // namespace
