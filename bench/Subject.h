/// The measured part of a subject: the same steps for the library and for the bare generated proxy.
///
/// A subject is a class with
///   static constexpr const char* kName;             how it is called in the table
///   Subject(bench::Counter&, bool with_client);     ready: connected, every signal subscribed
///   void Call(unsigned char type, unsigned char level);
/// and calls bench::Quit() when its counter says that the last signal has arrived.
#pragma once

#include <gio/gio.h>

#include "bench/Harness.h"
#include "dbus/GLibPtr.h"

namespace bench {

inline GMainLoop* Loop() {
  static GMainLoop* const loop = g_main_loop_new(nullptr, FALSE);
  return loop;
}

inline void Hit(Counter& counter, unsigned char low, unsigned char high) {
  if (counter.Hit(low, high)) g_main_loop_quit(Loop());
}

/// Has the service emit, and waits for all of it.
inline void Receive(Counter& counter, uint32_t count, uint32_t gap_us) {
  counter.Expect(count);
  const GLibPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  g_dbus_connection_call(bus.get(), kServiceName, kServicePath, kControlInterface, "Emit",
                         g_variant_new("(uu)", count, gap_us), nullptr, G_DBUS_CALL_FLAGS_NONE, G_MAXINT, nullptr,
                         nullptr, nullptr);
  g_main_loop_run(Loop());
  counter.Verify();
}

/// Counts the next `count` signals of an emission that another process asks for.
inline void Listen(Counter& counter, const char* subject, uint32_t count) {
  counter.Expect(count);
  std::puts("listening");
  std::fflush(stdout);
  const int64_t cpu = Cpu();
  g_main_loop_run(Loop());
  const int64_t used = Cpu() - cpu;
  counter.Verify();
  Report("clients", subject, "cpu_us", static_cast<double>(used) / count / 1e3);
}

template <class Subject>
void Signals(const char* row, int count, int gap_us) {
  Counter counter;
  Subject subject(counter, true);
  Receive(counter, 500, 0);
  const int64_t cpu = Cpu();
  Receive(counter, static_cast<uint32_t>(count), static_cast<uint32_t>(gap_us));
  Report(row, Subject::kName, "cpu_us", static_cast<double>(Cpu() - cpu) / count / 1e3);
}

template <class Subject>
void Start(const std::string& row, bool with_client) {
  Counter counter;
  const Subject subject(counter, with_client);
  const int64_t now = Now();
  const int64_t cpu = Cpu();
  Report(row, Subject::kName, "ready_ms", static_cast<double>(now - Stamp(kStartedAt)) / 1e6);
  Report(row, Subject::kName, "cpu_ms", static_cast<double>(cpu - Stamp(kStartedCpu)) / 1e6);
  Report(row, Subject::kName, "peak_resident_kib", static_cast<double>(KiB("/proc/self/status", "VmHWM:")));
  Report(row, Subject::kName, "private_dirty_kib",
         static_cast<double>(KiB("/proc/self/smaps_rollup", "Private_Dirty:")));
}

template <class Subject>
int Run(int argc, char** argv) {
  const std::string what = argc > 1 ? argv[1] : "";
  const int count = argc > 2 ? std::atoi(argv[2]) : 0;
  if (what == "call") {
    Counter counter;
    Subject subject(counter, true);
    TimeCalls("command", Subject::kName, count,
              [&](int i) { subject.Call(static_cast<unsigned char>(i), static_cast<unsigned char>(i >> 8)); });
  } else if (what == "burst") {
    Signals<Subject>("signal, burst", count, 0);
  } else if (what == "paced") {
    Signals<Subject>("signal, paced", count, 1000);
  } else if (what == "listen") {
    Counter counter;
    const Subject subject(counter, true);
    Listen(counter, Subject::kName, static_cast<uint32_t>(count));
  } else if (what == "start") {
    Start<Subject>("start", false);
  } else if (what == "start-client") {
    Start<Subject>("start, with power client", true);
  } else {
    Fail("usage: call N | burst N | paced N | listen N | start | start-client");
  }
  return 0;
}

}  // namespace bench
