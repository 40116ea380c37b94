/// What the measured programs share: clocks, the process's own figures, and lines "row TAB subject TAB metric TAB
/// value".
#pragma once

#include <sys/resource.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

namespace bench {

constexpr char kServiceName[] = "com.vorn.linux.systemservice";
constexpr char kServicePath[] = "/com/vorn/linux/systemservice";
constexpr char kControlInterface[] = "com.vorn.linux.bench";

/// Where Launch leaves its clocks for the program that it becomes.
constexpr char kStartedAt[] = "HLX_BENCH_STARTED_NS";
constexpr char kStartedCpu[] = "HLX_BENCH_STARTED_CPU_NS";

inline int64_t Nanoseconds(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return now.tv_sec * INT64_C(1'000'000'000) + now.tv_nsec;
}

inline int64_t Now() { return Nanoseconds(CLOCK_MONOTONIC); }

/// Of the whole process, GLib's worker included.
inline int64_t Cpu() { return Nanoseconds(CLOCK_PROCESS_CPUTIME_ID); }

[[noreturn]] inline void Fail(const std::string& what) {
  std::fprintf(stderr, "bench: %s\n", what.c_str());
  std::exit(1);
}

inline void Report(const std::string& row, const std::string& subject, const char* metric, double value) {
  std::printf("%s\t%s\t%s\t%.4f\n", row.c_str(), subject.c_str(), metric, value);
}

/// The sum of a line "KEY: N kB" of one of the process's files in /proc/self.
inline long KiB(const char* file, const char* key) {
  std::FILE* const status = std::fopen(file, "r");
  if (status == nullptr) Fail(std::string("cannot read ") + file);
  long kib = 0;
  char line[256];
  while (std::fgets(line, sizeof line, status) != nullptr) {
    if (std::strncmp(line, key, std::strlen(key)) == 0) kib = std::atol(line + std::strlen(key));
  }
  std::fclose(status);
  return kib;
}

inline int64_t Stamp(const char* variable) {
  const char* const text = std::getenv(variable);
  if (text == nullptr) Fail("a start is measured through bench_launch");
  return std::atoll(text);
}

/// Counts what arrives. The i-th signal carries the low two bytes of i, so that a subject which drops, doubles or
/// misreads one does not pass.
class Counter {
 public:
  void Expect(uint32_t count) { *this = Counter{count}; }

  /// @return true for the last one
  bool Hit(unsigned char low, unsigned char high) {
    sum_ += low + high;
    return ++got_ == want_;
  }

  void Verify() const {
    uint64_t expected = 0;
    for (uint32_t i = 0; i < want_; ++i) expected += (i & 0xff) + ((i >> 8) & 0xff);
    if (got_ != want_ || sum_ != expected) Fail("signals were lost, doubled or misread");
  }

  explicit Counter(uint32_t count = 0) : want_(count) {}

 private:
  uint32_t want_;
  uint32_t got_ = 0;
  uint64_t sum_ = 0;
};

/// Median time and mean CPU time of `count` calls of `call(i)`.
template <class Call>
void TimeCalls(const std::string& row, const std::string& subject, int count, Call call) {
  for (int i = 0; i < 300; ++i) call(i);
  std::vector<int64_t> took(static_cast<std::size_t>(count));
  const int64_t cpu = Cpu();
  for (int i = 0; i < count; ++i) {
    const int64_t start = Now();
    call(i);
    took[static_cast<std::size_t>(i)] = Now() - start;
  }
  const double cpu_each = static_cast<double>(Cpu() - cpu) / count;
  std::nth_element(took.begin(), took.begin() + count / 2, took.end());
  Report(row, subject, "p50_us", static_cast<double>(took[static_cast<std::size_t>(count / 2)]) / 1e3);
  Report(row, subject, "cpu_us", cpu_each / 1e3);
}

}  // namespace bench
