#include "data/TimeShmDataBase.h"

#include <algorithm>

#include "data/Settings.h"
#include "data/SharedField.h"
#include "data/ZoneTable.h"
#include "platform/HLXLog.h"
#include "platform/LibConfigs.h"

HLX_LOG_SOURCE("data/HLXSystemData");

using namespace HLXSystemData;

void TimeShmDataBase::InitTimeShmData(TimeShmData* data) {
  if (Load(data->initialised) == 0) {
    HLX_LOG_INFO("%s()", "InitTimeShmData");
    Store(data->initialised, uint32_t{1});

    constexpr SavedSettings kSaved{"InitTimeShmData"};
    // That the flag was saved at all means that the clock has been set once; its value says nothing.
    data->_is_time_reset_need = kSaved.Read(kClockSetting.item, &data->_is_time_reset_need) ? 0 : 1;
    HLX_LOG_DEBUG("_is_time_reset_need:%d", data->_is_time_reset_need);
    Fill(kSaved.operation, kTimeSettings, data, *default_data);
    int zone = 0;
    if (!kSaved.Read(kZoneSetting.item, &zone)) zone = default_data->default_time_zone;
    data->_cur_zone = zone;
    HLX_LOG_DEBUG("_cur_zone:%d", data->_cur_zone);
  }
  RegisterZoneInfo(data);
}

void TimeShmDataBase::RegisterZoneInfo(TimeShmData* data) {
  for (int zone = 0; zone < SystemTime::kTimeZoneCount; ++zone) {
    zone_map[static_cast<SystemTime::TimeZone>(zone)] = {kZones[zone].name, kZones[zone].path};
  }
  if (GetLibConfigs()->GetBool("/setting/default_time_zone_istanbul_p3")) {
    zone_map[static_cast<SystemTime::TimeZone>(kIstanbulZone)].zone_name = kIstanbulPlus3Name;
  }

  data->zones.zone_count = static_cast<unsigned int>(zone_map.size());
  SystemTime::ZoneInfo* entry = data->zones.zone_table;
  SystemTime::ZoneInfo* const end = entry + SystemTime::kTimeZoneCount;
  for (auto node = zone_map.begin(); node != zone_map.end() && entry != end; ++node, ++entry) {
    entry->zone = node->first;
    const std::string& name = node->second.zone_name;
    std::copy_n(name.data(), std::min(name.size(), sizeof entry->zone_name), entry->zone_name);
  }
}
