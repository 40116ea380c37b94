#pragma once

#include <map>
#include <string>

#include "HLXTimeTypes.h"
#include "data/HLXSystemRecords.h"
#include "data/SystemShmDataBase.h"

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
