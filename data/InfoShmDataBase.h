#pragma once

#include <cstddef>
#include <cstdint>

#include "data/SystemShmDataBase.h"

namespace HLXSystemData {

/// The info record. Its layout is the contract between the service and every client.
struct InfoShmData {
  char mcu_version[256];  ///< terminated, unless it fills all 256 bytes; empty until the service writes it
  uint32_t initialised;
};

static_assert(sizeof(InfoShmData) == 260, "record size");
static_assert(offsetof(InfoShmData, mcu_version) == 0, "record layout");
static_assert(offsetof(InfoShmData, initialised) == 256, "record layout");

}  // namespace HLXSystemData

/// The info segment and the first filling of its record.
class InfoShmDataBase : public SystemShmDataBase {
 public:
  using SystemShmDataBase::SystemShmDataBase;

  /// Empties a record that nobody has initialised; leaves any other untouched.
  void InitInfoShmData(HLXSystemData::InfoShmData* data);
};
