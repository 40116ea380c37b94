/// Getters of each client beside a bare virtual function that reads the same memory.
#include <HLXSystemProxy.h>
#include <benchmark/benchmark.h>
#include <sys/shm.h>

#include "data/MiscShmDataBase.h"
#include "data/PowerShmDataBase.h"
#include "data/TimeShmDataBase.h"

using namespace HLXSystemData;

namespace {

template <class Record>
const Record& Attach(unsigned long long key) {
  void* const record = shmat(shmget(static_cast<key_t>(key), 0, 0), nullptr, SHM_RDONLY);
  return *static_cast<const Record*>(record);
}

/// What one would write by hand: an interface, and behind it one load of the field.
struct State {
  virtual ~State() = default;
  virtual int Get() const = 0;
};

template <auto Field>
struct FieldState;
template <class Record, class T, T Record::*Field>
struct FieldState<Field> final : State {
  explicit FieldState(unsigned long long key) : record(Attach<Record>(key)) {}
  int Get() const override { return static_cast<int>(__atomic_load_n(&(record.*Field), __ATOMIC_RELAXED)); }
  const Record& record;
};

template <class Client>
void Library(benchmark::State& state, Client* client, int (Client::*getter)()) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(client);
    benchmark::DoNotOptimize((client->*getter)());
  }
}

void Bare(benchmark::State& state, const State* object) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(object);
    benchmark::DoNotOptimize(object->Get());
  }
}

template <class Client>
void Pair(const std::string& area, Client* client, int (Client::*getter)(), const State* object) {
  const auto both = [&](const char* subject, auto run) {
    benchmark::RegisterBenchmark(("getter, " + area + "/" + subject).c_str(), run);
  };
  both("bare", [=](benchmark::State& state) { Bare(state, object); });
  both("bare again", [=](benchmark::State& state) { Bare(state, object); });
  both("library", [=](benchmark::State& state) { Library(state, client, getter); });
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  IHLXSystemPower* const power = HLX_GetSystemPowerProxy();  // these make the segments that the bare ones attach to
  IHLXSystemMisc* const misc = HLX_GetSystemMiscProxy();
  IHLXSystemTime* const time = HLX_GetSystemTimeProxy();
  Pair("power", power, &IHLXSystemPower::IsScreenOnState,
       new FieldState<&PowerShmData::is_screen_on>(SHM_POWER_DATA_KEY_ID));
  Pair("misc", misc, &IHLXSystemMisc::GetCurrentCarSpeed,
       new FieldState<&MiscShmData::current_car_speed>(SHM_MISC_DATA_KEY_ID));
  Pair("time", time, &IHLXSystemTime::GetTime24Mode, new FieldState<&TimeShmData::_time_24_mode>(SHM_TIME_DATA_KEY_ID));
  Pair("info", HLX_GetSystemInfoProxy(), &IHLXSystemInfo::GetDriveType,
       new FieldState<&MiscShmData::_is_left_position>(SHM_MISC_DATA_KEY_ID));
  benchmark::RunSpecifiedBenchmarks();
}
