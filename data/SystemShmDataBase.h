#pragma once

#include <memory>
#include <string>

#include "data/HLXSystemRecords.h"
#include "data/SystemDefaultData.h"

namespace HLXSystemData {

/// Who is expected to make a segment. Both modes make one that is missing; they differ in its permission bits.
enum Shm_Op_Mode : int {
  SHM_OP_ATTACH = 0,  ///< the service owns it: HLX_SHM_ATTACH_BITS
  SHM_OP_CREATE = 1,  ///< anybody may own it: HLX_SHM_CREATE_BITS
};

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
