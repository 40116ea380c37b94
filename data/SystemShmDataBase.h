#pragma once

#include <memory>
#include <string>

#include "data/SystemDefaultData.h"

namespace HLXSystemData {

/// Who is expected to make a segment. Both modes make one that is missing; they differ in its permission bits.
enum Shm_Op_Mode : int {
  SHM_OP_ATTACH = 0,  ///< the service owns it: 0444
  SHM_OP_CREATE = 1,  ///< anybody may own it: 0666
};

/// System V keys of the four records.
constexpr unsigned long long SHM_POWER_DATA_KEY_ID = 0xA8800081;
constexpr unsigned long long SHM_MISC_DATA_KEY_ID = 0xA8800082;
constexpr unsigned long long SHM_TIME_DATA_KEY_ID = 0xA8800083;
constexpr unsigned long long SHM_INFO_DATA_KEY_ID = 0xA8800084;

}  // namespace HLXSystemData

/// Finds or makes one shared-memory segment and maps it. A mapping lasts until the process ends: nothing detaches.
class SystemShmDataBase {
 public:
  /// `name` goes to the log only. Only the low 32 bits of `key` reach the kernel.
  SystemShmDataBase(unsigned long long key, HLXSystemData::Shm_Op_Mode mode, const std::string& name);
  SystemShmDataBase(const SystemShmDataBase&) = delete;
  SystemShmDataBase& operator=(const SystemShmDataBase&) = delete;
  virtual ~SystemShmDataBase() = default;

  /// Maps `size` bytes and stores the address behind `out_addr`. False, with an ERROR record, when the segment cannot
  /// be had (`*out_addr` is untouched) or not mapped (`*out_addr` is then (void*)-1). A segment that already exists
  /// with a smaller size cannot be had.
  bool CreateDataShm(void** out_addr, unsigned int size);

 protected:
  /// Maps the segment as one record; null when CreateDataShm() fails.
  template <class Record>
  Record* MapRecord() {
    void* address = nullptr;
    return CreateDataShm(&address, sizeof(Record)) ? static_cast<Record*>(address) : nullptr;
  }

  std::unique_ptr<SystemDefaultData> default_data;

 private:
  unsigned long long shm_key;
  HLXSystemData::Shm_Op_Mode op_mode;
};
