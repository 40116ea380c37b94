/// bench_construction AREA: makes one client between two marks, for strace to count, and tells what it looked up.
#include "bench/Harness.h"
#include "client/HLXSystemClient.h"
#include "tests/support/FakePlatform.h"

int main(int argc, char** argv) {
  const std::string area = argc > 1 ? argv[1] : "";
  HLXSystemClient system;
  const int64_t start = bench::Now();
  if (area == "power")
    system.GetPowerClient();
  else if (area == "misc")
    system.GetMiscClient();
  else if (area == "time")
    system.GetTimeClient();
  else if (area == "info")
    system.GetInfoClient();
  else if (area == "update")
    system.GetUpdateClient();
  else
    bench::Fail("usage: bench_construction power|misc|time|info|update");
  const int64_t took = bench::Now() - start;
  const std::string row = "construction, " + area;
  bench::Report(row, "library", "ms", static_cast<double>(took) / 1e6);
  bench::Report(row, "library", "configuration_reads", static_cast<double>(fake::Get().config_reads.size()));
  bench::Report(row, "library", "setting_reads", static_cast<double>(fake::Get().persist_reads.size()));
  bench::Report(row, "library", "setting_writes", static_cast<double>(fake::Get().persist_writes.size()));
}
