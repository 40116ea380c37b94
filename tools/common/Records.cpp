#include "tools/common/Records.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "HLXSystemProxy.h"
#include "tools/common/Failure.h"

using catalog::Area;
using catalog::Record;

namespace {

constexpr Record kAllRecords[] = {Record::kNone, Record::kPower, Record::kMisc, Record::kTime, Record::kInfo};
constexpr const char* kWithout = "; without records, \"hlxctl call\" and \"hlxctl listen\" still work";

[[noreturn]] void Missing(const catalog::RecordInfo& record, const std::string& why) {
  char message[200];
  std::snprintf(message, sizeof message, "the %s record (shared memory 0x%llX, %zu bytes) ", record.name, record.key,
                record.size);
  throw Failure(kExitNoService, message + why + kWithout);
}

void* Map(const catalog::RecordInfo& record, int flags) {
  const int id = shmget(static_cast<key_t>(record.key), record.size, 0);
  void* const address = id == -1 ? nullptr : shmat(id, nullptr, flags);
  if (address != nullptr && reinterpret_cast<intptr_t>(address) != -1) return address;
  Missing(record, errno == ENOENT   ? "is not there: no service has made it"
                  : errno == EINVAL ? "is smaller than that: another version of the service has made it"
                                    : std::string("cannot be mapped: ") + std::strerror(errno));
}

/// The info client reads the unit's files and maps two records; the update client is made of it.
catalog::Clients ClientsFor(Area area) {
  RequireRecords(area);
  catalog::Clients clients;
  if (area == Area::kInfo) clients.info = HLX_GetSystemInfoProxy();
  if (area == Area::kUpdate) clients.update = HLX_GetSystemUpdateProxy();
  return clients;
}

}  // namespace

const void* RecordOf(Record record) {
  static const void* mapped[std::size(kAllRecords)] = {};
  const catalog::RecordInfo& info = catalog::InfoOf(record);
  const void*& address = mapped[static_cast<std::size_t>(record)];
  if (address == nullptr) address = Map(info, SHM_RDONLY);
  uint32_t initialised = 0;
  std::memcpy(&initialised, static_cast<const char*>(address) + info.initialised, sizeof initialised);
  if (initialised == 0) Missing(info, "is empty: no service has filled it");
  return address;
}

catalog::View<Record> RecordsOf(Area area) {
  static constexpr Record kPower[] = {Record::kPower};
  static constexpr Record kMisc[] = {Record::kMisc};
  static constexpr Record kTime[] = {Record::kTime};
  static constexpr Record kInfo[] = {Record::kMisc, Record::kInfo};
  switch (area) {
    case Area::kPower:
      return kPower;
    case Area::kMisc:
      return kMisc;
    case Area::kTime:
      return kTime;
    default:
      return kInfo;
  }
}

void RequireRecords(Area area) {
  for (const Record record : RecordsOf(area)) {
    RecordOf(record);
    if (area != Area::kTime) shmdt(Map(catalog::InfoOf(record), 0));  // as the library will
  }
}

catalog::Scalar Read(const catalog::Value& value) {
  if (value.InRecord()) return catalog::ReadField(value, RecordOf(value.field.record));
  if (value.EventOnly())
    throw Failure(kExitUsage, value.FullName() + " is told by events alone: see \"hlxctl monitor\"");
  static catalog::Clients clients[std::size(catalog::kAreas)];
  catalog::Clients& known = clients[static_cast<std::size_t>(value.area)];
  if (known.info == nullptr && known.update == nullptr) known = ClientsFor(value.area);
  return value.getter.get(known);
}

std::optional<catalog::Scalar> ReadUnlessEmpty(const catalog::Value& value) try {
  return Read(value);
} catch (const Failure&) {
  return {};
}
