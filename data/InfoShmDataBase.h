#pragma once

#include "data/HLXSystemRecords.h"
#include "data/SystemShmDataBase.h"

/// The info segment and the first filling of its record.
class InfoShmDataBase : public SystemShmDataBase {
 public:
  using SystemShmDataBase::SystemShmDataBase;

  /// Empties a record that nobody has initialised; leaves any other untouched.
  void InitInfoShmData(HLXSystemData::InfoShmData* data);
};
