#pragma once

#include "data/HLXSystemRecords.h"
#include "data/SystemShmDataBase.h"

/// The power segment and the first filling of its record.
class PowerShmDataBase : public SystemShmDataBase {
 public:
  using SystemShmDataBase::SystemShmDataBase;

  /// Fills a record that nobody has initialised from saved settings and configuration; leaves any other untouched.
  void InitPowerShmData(HLXSystemData::PowerShmData* data);
};
