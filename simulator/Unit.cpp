#include "simulator/Unit.h"

#include <sys/shm.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "dbus_system.h"
#include "simulator/SignalFields.h"

using namespace HLXSystemData;

namespace {

/// Maps a segment's record and has it initialised if nobody has done that.
template <class Segment, class Record>
Record& Map(Segment& segment, void (Segment::*initialise)(Record*), unsigned long long key, const char* name) {
  void* record = nullptr;
  if (!segment.CreateDataShm(&record, sizeof(Record))) {
    // Asked again for the cause alone.
    const char* const cause =
        shmget(static_cast<key_t>(key), sizeof(Record), 0666) < 0 ? std::strerror(errno) : "it cannot be mapped";
    char text[160];
    std::snprintf(text, sizeof(text), "cannot have the %s segment (key 0x%llX, %zu bytes): %s", name, key,
                  sizeof(Record), cause);
    throw std::runtime_error(text);
  }
  (segment.*initialise)(static_cast<Record*>(record));
  return *static_cast<Record*>(record);
}

}  // namespace

Unit::Unit(bool quiet)
    : power_(SHM_POWER_DATA_KEY_ID, SHM_OP_CREATE, "simulator"),
      misc_(SHM_MISC_DATA_KEY_ID, SHM_OP_CREATE, "simulator"),
      time_(SHM_TIME_DATA_KEY_ID, SHM_OP_CREATE, "simulator"),
      info_(SHM_INFO_DATA_KEY_ID, SHM_OP_CREATE, "simulator"),
      records_{Map(power_, &PowerShmDataBase::InitPowerShmData, SHM_POWER_DATA_KEY_ID, "power"),
               Map(misc_, &MiscShmDataBase::InitMiscShmData, SHM_MISC_DATA_KEY_ID, "misc"),
               Map(time_, &TimeShmDataBase::InitTimeShmData, SHM_TIME_DATA_KEY_ID, "time"),
               Map(info_, &InfoShmDataBase::InitInfoShmData, SHM_INFO_DATA_KEY_ID, "info"), update_plan_},
      quiet_(quiet) {}

void Unit::AnnounceValues(const std::string& signal, const std::vector<GLibPtr<GVariant>>& arguments) {
  const GDBusSignalInfo* const info =
      g_dbus_interface_info_lookup_signal(com_vorn_linux_system_interface_info(), signal.c_str());
  const SignalFields* const fields = FindSignal(signal);
  if (info == nullptr || fields == nullptr) throw BadArgument("signal: there is no signal " + signal);
  std::size_t count = 0;
  while (info->args != nullptr && info->args[count] != nullptr) ++count;
  if (arguments.size() != count) {
    throw BadArgument("arguments: " + signal + " takes " + std::to_string(count) + ", not " +
                      std::to_string(arguments.size()));
  }
  std::vector<GVariant*> values;
  std::vector<GLibPtr<GVariant>> owned;
  for (std::size_t i = 0; i < count; ++i) {
    owned.emplace_back(
        g_variant_ref_sink(ConvertTo(info->args[i]->signature, arguments[i].get(), info->args[i]->name)));
    values.push_back(owned.back().get());
  }
  const GLibPtr<GVariant> tuple(g_variant_ref_sink(g_variant_new_tuple(values.data(), count)));
  fields->Store(records_, tuple.get());
  Journal("emit " + Describe(info->name, info->args, tuple.get()));
  g_dbus_connection_emit_signal(connection_, nullptr, kServicePath, com_vorn_linux_system_interface_info()->name,
                                info->name, tuple.get(), nullptr);
}

void Unit::Save(const PersistItem& item, int value) const {
  // A setting that could not be read at the start is written only once it was read: the value is not needed here.
  int saved = 0;
  HLX_GetQ4PersistService()->ReadInt(item.module, item.id, &saved);
  const int failure = HLX_GetQ4PersistService()->WriteInt(item.module, item.id, value, 1, 1, 0);
  if (failure != PERSIST_OK) {
    std::fprintf(stderr, "hlx-simulator: cannot save %s: %s\n", item.name, PersistErrorName(failure));
  }
}

void Unit::Journal(const std::string& line) const {
  if (!quiet_) std::puts(line.c_str());
}
