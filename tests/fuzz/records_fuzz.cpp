// Fuzz target over the bytes of the four records: what a getter says is what the catalogue reads, and every value can
// be told in words, with its unit, and read back from what may be set.
#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstring>
#include <map>

#include "catalog/Catalog.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/misc/HLXMiscClient.h"
#include "client/power/HLXPowerClient.h"
#include "client/time/HLXTimeClient.h"
#include "tests/fuzz/Input.h"
#include "tests/support/FakePlatform.h"

using namespace catalog;

namespace {

struct Attached {
  Attached() {
    for (const RecordInfo& info : Records()) {
      const int id = shmget(static_cast<key_t>(info.key), info.size, IPC_CREAT | 0666);
      records[info.record] = static_cast<char*>(shmat(id, nullptr, 0));
    }
  }
  std::map<Record, char*> records;
  const std::shared_ptr<ClientIpcAdapter> adapter = std::make_shared<ClientIpcAdapter>();
  HLXPowerClient power{adapter};
  HLXMiscClient misc{adapter};
  HLXTimeClient time{adapter};
  const Clients clients{&power, &misc, &time, nullptr, nullptr};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  static Attached unit;
  fake::Reset();  // it remembers every look-up
  Input input(data, size);
  for (const RecordInfo& info : Records()) {
    std::string bytes = input.Take(info.size);
    bytes.resize(info.size);
    std::memcpy(unit.records[info.record], bytes.data(), info.size);
  }
  for (const Value& value : Values()) {
    if (!value.InRecord()) continue;
    const Scalar scalar = ReadField(value, unit.records[value.field.record]);
    const std::string words = InWords(value.reading, scalar);
    Require(WithUnit(value.reading, scalar).rfind(words, 0) == 0);
    if (value.getter.get == nullptr || value.area == Area::kInfo) continue;
    Require(InWords(value.reading, value.getter.get(unit.clients)) == words);
  }
  return 0;
}
