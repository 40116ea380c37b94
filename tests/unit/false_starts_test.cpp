// What false starts leave behind: nothing. A minute of them here; an hour of one a second with HLX_FALSE_STARTS=3600,
// and the numbers to look at.
#include <gmock/gmock.h>
#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "HLXSystemProxy.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/MainContext.h"
#include "tests/support/TestService.h"

namespace {

constexpr double kAllowedBytes = 1e6 / 3600;  // a start

void StartInVain(int times) {
  for (int i = 0; i < times; ++i) {
    fake::Reset();
    EXPECT_FALSE(HLX_StartSystemProxy());
    while (g_main_context_iteration(nullptr, FALSE)) continue;
  }
}

/// Processor time that this process needs for a thousand signals, in milliseconds.
double CostOfSignals() {
  TestService service;
  const GLibPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  int seen = 0;
  const guint subscription = g_dbus_connection_signal_subscribe(
      bus.get(), nullptr, "com.vorn.linux.system", "SpeakerStateChangeSignal", nullptr, nullptr,
      G_DBUS_SIGNAL_FLAGS_NONE,
      [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant*, gpointer count) {
        ++*static_cast<int*>(count);
      },
      &seen, nullptr);
  const std::clock_t begin = std::clock();
  for (int i = 0; i < 1000; ++i) service.Emit("SpeakerStateChangeSignal", "()");
  EXPECT_TRUE(RunUntil([&seen] { return seen == 1000; }));
  const std::clock_t end = std::clock();
  g_dbus_connection_signal_unsubscribe(bus.get(), subscription);
  return 1000.0 * static_cast<double>(end - begin) / CLOCKS_PER_SEC;
}

TEST(FalseStarts, LeaveNoMemoryBehind) {
  const char* const wanted = std::getenv("HLX_FALSE_STARTS");
  const int times = wanted != nullptr ? std::atoi(wanted) : 60;
  StartInVain(20);  // what is kept for good is there then
  const double cost_before = CostOfSignals();
  StartInVain(1);
  const auto before = static_cast<double>(mallinfo2().uordblks);
  StartInVain(times);
  const double grown = static_cast<double>(mallinfo2().uordblks) - before;
  const double cost_after = CostOfSignals();
  std::printf("| false starts | %d |  |\n| false starts: more bytes held | %.0f | less than %.0f |\n", times, grown,
              times * kAllowedBytes);
  std::printf("| CPU ms for 1,000 signals before them | %.0f |  |\n| and after them | %.0f |  |\n", cost_before,
              cost_after);
  EXPECT_LT(grown, times * kAllowedBytes);
  HLX_ReleaseSystemProxy();
}

}  // namespace
