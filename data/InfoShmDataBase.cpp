#include "data/InfoShmDataBase.h"

#include <algorithm>
#include <iterator>

#include "platform/HLXLog.h"

HLX_LOG_SOURCE("data/HLXSystemData");

void InfoShmDataBase::InitInfoShmData(HLXSystemData::InfoShmData* data) {
  if (data->initialised != 0) return;
  HLX_LOG_INFO("%s()", "InitInfoShmData");
  data->initialised = 1;
  std::fill(std::begin(data->mcu_version), std::end(data->mcu_version), '\0');
}
