#include "tools/hlxctl/Records.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

void* Map(const Record& record, int flags) {
  const int id = shmget(static_cast<key_t>(record.key), record.size, 0);
  void* const address = id == -1 ? nullptr : shmat(id, nullptr, flags);
  if (address != nullptr && reinterpret_cast<intptr_t>(address) != -1) return address;
  const int error = errno;
  char message[200];
  std::snprintf(message, sizeof(message), "the %s record (shared memory 0x%llX, %zu bytes) %s", record.name, record.key,
                record.size,
                error == ENOENT   ? "is not there: no service has made it"
                : error == EINVAL ? "is smaller than that: another version of the service has made it"
                                  : std::strerror(error));
  throw Failure(kExitNoService, message);
}

}  // namespace

const void* MapForReading(const Record& record) { return Map(record, SHM_RDONLY); }

void RequireRecords(const std::vector<Record>& records) {
  for (const Record& record : records) shmdt(Map(record, 0));
}
