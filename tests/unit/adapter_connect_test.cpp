// The connection rule, with the making of the proxy in the test's hands (linked with --wrap).
#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "client/ipc/ClientIpcAdapter.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/TestService.h"

using testing::ElementsAre;

namespace {

/// Whether attempt n (from 0) succeeds.
std::function<bool(int)> succeeds;
int attempts;

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
    return __real_com_vorn_linux_system_proxy_new_for_bus_sync(bus, flags, name, path, cancellable, error);
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
