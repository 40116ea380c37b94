/// bench_launch PROGRAM [ARGUMENT…]: notes the clocks and becomes the program, so that a start counts from exec on.
#include <unistd.h>

#include <cerrno>

#include "bench/Harness.h"

int main(int argc, char** argv) {
  if (argc < 2) bench::Fail("usage: bench_launch PROGRAM [ARGUMENT…]");
  setenv(bench::kStartedCpu, std::to_string(bench::Cpu()).c_str(), 1);
  setenv(bench::kStartedAt, std::to_string(bench::Now()).c_str(), 1);
  execv(argv[1], argv + 1);
  bench::Fail(std::string(argv[1]) + ": " + std::strerror(errno));
}
