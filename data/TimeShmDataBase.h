#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "HLXTimeTypes.h"
#include "data/SystemShmDataBase.h"

namespace HLXSystemData {

/// The time record. Its layout is the contract between the service and every client.
struct TimeShmData {
  int32_t _time_24_mode;
  int32_t _auto_sync_mode;
  int32_t auto_adjust_dst_mode;
  int32_t is_cur_zone_dst_active;
  SystemTime::DateInfo cur_date;
  SystemTime::TimeInfo cur_time;
  SystemTime::ZoneList zones;
  int32_t _cur_zone;                    ///< SystemTime::TimeZone
  SystemTime::DateTime sync_date_time;  ///< last UTC from GPS or CarPlay
  uint32_t initialised;                 ///< non-zero once the defaults are in
  int32_t _is_time_reset_need;          ///< the clock must be set to a default
  SystemTime::DateTime ext_mcu_can_date_time;
  int32_t ext_mcu_can_time_24_mode;
  uint8_t ext_mcu_can_time_zone;
};

static_assert(sizeof(SystemTime::DateInfo) == 16 && sizeof(SystemTime::TimeInfo) == 12, "record layout");
static_assert(sizeof(SystemTime::DateTime) == 28 && sizeof(SystemTime::ZoneInfo) == 132, "record layout");
static_assert(offsetof(SystemTime::ZoneInfo, zone_name) == 4, "record layout");
static_assert(offsetof(SystemTime::ZoneList, zone_table) == 4, "record layout");
static_assert(sizeof(TimeShmData) == 10552, "record size");
static_assert(offsetof(TimeShmData, _time_24_mode) == 0, "record layout");
static_assert(offsetof(TimeShmData, _auto_sync_mode) == 4, "record layout");
static_assert(offsetof(TimeShmData, auto_adjust_dst_mode) == 8, "record layout");
static_assert(offsetof(TimeShmData, is_cur_zone_dst_active) == 12, "record layout");
static_assert(offsetof(TimeShmData, cur_date) == 16, "record layout");
static_assert(offsetof(TimeShmData, cur_time) == 32, "record layout");
static_assert(offsetof(TimeShmData, zones) == 44, "record layout");
static_assert(offsetof(TimeShmData, _cur_zone) == 10476, "record layout");
static_assert(offsetof(TimeShmData, sync_date_time) == 10480, "record layout");
static_assert(offsetof(TimeShmData, initialised) == 10508, "record layout");
static_assert(offsetof(TimeShmData, _is_time_reset_need) == 10512, "record layout");
static_assert(offsetof(TimeShmData, ext_mcu_can_date_time) == 10516, "record layout");
static_assert(offsetof(TimeShmData, ext_mcu_can_time_24_mode) == 10544, "record layout");
static_assert(offsetof(TimeShmData, ext_mcu_can_time_zone) == 10548, "record layout");

}  // namespace HLXSystemData

/// The time segment, the first filling of its record, and the zones.
class TimeShmDataBase : public SystemShmDataBase {
 public:
  struct ZoneInfoNode {
    std::string zone_name;  ///< as it is shown
    std::string zone_path;  ///< zoneinfo file
  };

  using SystemShmDataBase::SystemShmDataBase;

  /// Fills a record that nobody has initialised from saved settings and configuration; registers the zones in any case.
  void InitTimeShmData(HLXSystemData::TimeShmData* data);

  /// Fills this process's zone map, and the record's zone table from it.
  void RegisterZoneInfo(HLXSystemData::TimeShmData* data);

 protected:
  std::map<SystemTime::TimeZone, ZoneInfoNode> zone_map;
};
