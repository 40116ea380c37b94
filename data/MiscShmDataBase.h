#pragma once

#include "data/HLXSystemRecords.h"
#include "data/SystemShmDataBase.h"

/// The misc segment and the first filling of its record.
class MiscShmDataBase : public SystemShmDataBase {
 public:
  using SystemShmDataBase::SystemShmDataBase;

  /// Fills a record that nobody has initialised from saved settings and configuration; leaves any other untouched.
  void InitMiscShmData(HLXSystemData::MiscShmData* data);
};
