/// The walk from one event to its listeners, beside a bare locked walk over the same kind of set.
#include <HLXListenerBase.h>
#include <IHLXListener.h>
#include <benchmark/benchmark.h>

#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace {

struct Listener final : HLXPowerListenerBase {
  void OnScreenLightLevelChanged(HLXPower::LightType type, unsigned char level) override { sum += type + level; }
  unsigned sum = 0;
};

/// A registry that lets the benchmark notify.
struct Registry : IHLXListener<IHLXPowerListener> {
  using IHLXListener::Notify;
};

std::vector<std::unique_ptr<Listener>> Listeners(benchmark::State& state) {
  std::vector<std::unique_ptr<Listener>> listeners;
  for (int64_t i = 0; i < state.range(0); ++i) listeners.push_back(std::make_unique<Listener>());
  return listeners;
}

void Library(benchmark::State& state) {
  const auto listeners = Listeners(state);
  Registry registry;
  for (const auto& listener : listeners) registry.AddListener(listener.get());
  unsigned char level = 0;
  for (auto _ : state) {
    registry.Notify(&IHLXPowerListener::OnScreenLightLevelChanged, HLXPower::LIGHT_TYPE_NIGHT, ++level);
  }
}

void Bare(benchmark::State& state) {
  const auto listeners = Listeners(state);
  std::mutex mutex;
  std::set<IHLXPowerListener*> set;
  for (const auto& listener : listeners) set.insert(listener.get());
  unsigned char level = 0;
  for (auto _ : state) {
    const std::lock_guard<std::mutex> lock(mutex);
    ++level;
    for (IHLXPowerListener* const listener : set) {
      benchmark::DoNotOptimize(listener);
      listener->OnScreenLightLevelChanged(HLXPower::LIGHT_TYPE_NIGHT, level);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  // As every client of GLib's bus has it: with a single thread, the C library's mutex leaves its atomics out.
  std::mutex held;
  held.lock();
  std::thread second([&held] { held.lock(); });
  for (const auto& [name, run] :
       {std::pair{"fan-out/bare", Bare}, {"fan-out/bare again", Bare}, {"fan-out/library", Library}}) {
    for (const int count : {1, 10, 100, 1000}) benchmark::RegisterBenchmark(name, run)->Arg(count);
  }
  benchmark::RunSpecifiedBenchmarks();
  held.unlock();
  second.join();
}
