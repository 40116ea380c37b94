/// Climate and key events under each protocol of the CAN box: time and allocations of one event with one listener.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <new>
#include <string>

#include "HLXListenerBase.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/misc/HLXMiscClient.h"

namespace {

std::size_t allocations = 0;

using Event = void (*)(HLXMiscClient&, unsigned char);

void Measure(benchmark::State& state, const char* protocol, Event event) {
  std::ofstream(std::getenv("HLX_HOST_CONFIG")) << "[system]\nusing_can_protocol=" << protocol << '\n';
  HLXMiscClient client(std::make_shared<ClientIpcAdapter>());
  HLXMiscListenerBase listener;
  client.AddListener(&listener);
  unsigned char value = 0;
  const std::size_t before = allocations;
  for (auto _ : state) event(client, ++value);
  state.counters["allocations"] =
      benchmark::Counter(static_cast<double>(allocations - before), benchmark::Counter::kAvgIterations);
}

}  // namespace

void* operator new(std::size_t size) {
  ++allocations;
  if (void* const memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  setenv("HLX_HOST_CONFIG", "/tmp/bench.conf", 1);
  const Event climate = [](HLXMiscClient& client, unsigned char value) { client.OnAcStateChange(value); };
  const Event general = [](HLXMiscClient& client, unsigned char value) {
    client.OnGeneralAcStateChange(static_cast<SystemMisc::AC_State_Data>(0), value);
  };
  const Event key = [](HLXMiscClient& client, unsigned char value) { client.OnKeyStateChange(value, value & 1); };
  for (const char* const protocol :
       {"", "raise", "raise_gac", "raise_renault", "raise_vw", "raise_toyota", "raise_ford"}) {
    for (const auto& [name, event] : {std::pair{"climate", climate}, {"climate, general", general}, {"key", key}}) {
      benchmark::RegisterBenchmark((std::string(name) + "/" + (*protocol != '\0' ? protocol : "none")).c_str(),
                                   [=, run = event](benchmark::State& state) { Measure(state, protocol, run); });
    }
  }
  benchmark::RunSpecifiedBenchmarks();
}
