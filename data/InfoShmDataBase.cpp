#include "data/InfoShmDataBase.h"

#include <algorithm>
#include <iterator>

#include "data/SharedField.h"
#include "platform/HLXLog.h"

HLX_LOG_SOURCE("data/HLXSystemData");

void InfoShmDataBase::InitInfoShmData(HLXSystemData::InfoShmData* data) {
  if (HLXSystemData::Load(data->initialised) != 0) return;
  HLX_LOG_INFO("%s()", "InitInfoShmData");
  HLXSystemData::Store(data->initialised, uint32_t{1});
  std::fill(std::begin(data->mcu_version), std::end(data->mcu_version), '\0');
}
