#include "data/TimeShmDataBase.h"

#include <algorithm>

#include "data/HLXPersist.h"
#include "data/SharedField.h"
#include "data/ZoneTable.h"
#include "platform/HLXLog.h"
#include "platform/LibConfigs.h"

HLX_LOG_SOURCE("data/HLXSystemData");

using namespace HLXSystemData;

namespace {

constexpr SavedSettings kSaved{"InitTimeShmData"};

void ReadOrConfigured(const PersistItem& item, int32_t* field, const char* key) {
  if (!kSaved.Read(item, field)) *field = GetLibConfigs()->GetBool(key) ? 1 : 0;
}

}  // namespace

void TimeShmDataBase::InitTimeShmData(TimeShmData* data) {
  if (Load(data->initialised) == 0) {
    HLX_LOG_INFO("%s()", "InitTimeShmData");
    Store(data->initialised, uint32_t{1});

    // That the flag was saved at all means that the clock has been set once; its value says nothing.
    data->_is_time_reset_need = kSaved.Read(PERSIST_ID_TIME_RESET_FLAG, &data->_is_time_reset_need) ? 0 : 1;
    HLX_LOG_DEBUG("_is_time_reset_need:%d", data->_is_time_reset_need);
    ReadOrConfigured(PERSIST_ID_TIME_24_MODE, &data->_time_24_mode, "/setting/enable_24hour_mode");
    HLX_LOG_DEBUG("_time_24_mode:%d", data->_time_24_mode);
    ReadOrConfigured(PERSIST_ID_AUTO_SYNC, &data->_auto_sync_mode, "/setting/default_time_auto_adjust");
    HLX_LOG_DEBUG("_auto_sync_mode:%d", data->_auto_sync_mode);
    if (!kSaved.Read(PERSIST_ID_ENABLE_DIST, &data->auto_adjust_dst_mode)) data->auto_adjust_dst_mode = 0;
    int zone = 0;
    if (!kSaved.Read(PERSIST_ID_ZONE, &zone)) zone = default_data->default_time_zone;
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
