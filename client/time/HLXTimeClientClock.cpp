// The system's clock and zone.
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "client/ipc/ClientIpcAdapter.h"
#include "client/time/HLXTimeClient.h"
#include "client/time/TimeRecord.h"
#include "data/HLXPersist.h"
#include "platform/HLXLog.h"
#include "platform/HLXPlatform.h"

HLX_LOG_SOURCE("client/time/HLXTimeClient");

using namespace SystemTime;
using HLXSystemData::Load;
using HLXSystemData::Store;

namespace {

constexpr char kLocalTimeFile[] = "/etc/localtime";
constexpr std::size_t kCommandSize = 255;

DateTime FromTm(const tm& broken_down) {
  return {{broken_down.tm_year + 1900, broken_down.tm_mon + 1, broken_down.tm_mday, broken_down.tm_wday},
          {broken_down.tm_hour, broken_down.tm_min, broken_down.tm_sec}};
}

/// Seconds since 1970-01-01 00:00 UTC of a local standard time; -1 with errno when there are none.
time_t ToSeconds(const DateTime& local) {
  if (local.date.year < INT_MIN + 1900 || local.date.month == INT_MIN) {
    errno = EOVERFLOW;
    return -1;
  }
  tm broken_down{};
  broken_down.tm_year = local.date.year - 1900;
  broken_down.tm_mon = local.date.month - 1;
  broken_down.tm_mday = local.date.day;
  broken_down.tm_hour = local.time.hour;
  broken_down.tm_min = local.time.minute;
  broken_down.tm_sec = local.time.second;
  errno = 0;
  return std::mktime(&broken_down);
}

/// The current local time; false when there is none. localtime_r() leaves alone what other threads are told, and only
/// tzset() notices that /etc/localtime was replaced.
bool LocalNow(tm* now) {
  const time_t seconds = std::time(nullptr);
  tzset();
  return localtime_r(&seconds, now) != nullptr;
}

}  // namespace

bool HLXTimeClient::SetGpsUTCTimeSync(DateTime& utc, int notify_service) {
  const DateInfo& date = utc.date;
  const TimeInfo& time = utc.time;
  HLX_LOG_INFO("SetGpsUTCTimeSync:%d-%d-%d,%d:%d:%d", date.year, date.month, date.day, time.hour, time.minute,
               time.second);
  StoreDate(time_data->sync_date_time.date, date);
  StoreTime(time_data->sync_date_time.time, time);
  return notify_service == 0 || ipc_adapter->SetGpsUTCTimeSync(utc);
}

bool HLXTimeClient::SetCarplayTimeSync(CarplayTime& time) {
  const time_t seconds = time.seconds;
  tm broken_down{};
  gmtime_r(&seconds, &broken_down);
  DateTime utc = FromTm(broken_down);
  HLX_LOG_INFO("SetCarplayTimeSync:%d-%d-%d,%d:%d:%d", utc.date.year, utc.date.month, utc.date.day, utc.time.hour,
               utc.time.minute, utc.time.second);
  StoreDate(time_data->sync_date_time.date, utc.date);
  StoreTime(time_data->sync_date_time.time, utc.time);
  ipc_adapter->SetGpsUTCTimeSync(utc);
  return true;
}

int HLXTimeClient::SetLocalTime(DateTime& local) {
  const time_t seconds = ToSeconds(local);
  if (seconds == -1) {
    HLX_LOG_ERROR("mktime failed:%s", std::strerror(errno));
    return 0;
  }
  if (HLX_SetSystemClock(seconds) != 0) HLX_LOG_ERROR("stime error:%s.", std::strerror(errno));
  const int result = HLX_ExecSystemCmd("hwclock -w -u", 1);
  if (result == 0) HLX_LOG_ERROR("exec hwclock -w error.");
  return result;
}

void HLXTimeClient::GetLocalTime() {
  tm now{};
  if (!LocalNow(&now)) return;
  const DateTime local = FromTm(now);
  StoreDate(time_data->cur_date, local.date);
  StoreTime(time_data->cur_time, local.time);
  HLX_LOG_INFO("GetLocalTime(init):%d-%d-%d,%d:%d:%d", local.date.year, local.date.month, local.date.day,
               local.time.hour, local.time.minute, local.time.second);
}

void HLXTimeClient::SetBootCurDstStatus() {
  tm now{};
  if (!LocalNow(&now)) return;
  HLX_LOG_DEBUG("SetBootCurDstStatus:%s.", "");
  Store(time_data->is_cur_zone_dst_active, now.tm_isdst);
  OnDstStatusChange(now.tm_isdst);
}

void HLXTimeClient::SetBootTimeZone(TimeZone zone) {
  HLX_LOG_INFO("SetBootTimeZone:zone(%d).", zone);
  if (zone >= kTimeZoneCount) {
    HLX_LOG_ERROR("SetBootTimeZone:Unavailable zone!");
    sync();
    return;
  }
  Store(time_data->_cur_zone, static_cast<int>(zone));
  if (access(kLocalTimeFile, F_OK) == 0 && HLX_ExecSystemCmd("rm -rf /etc/localtime", 0) == 0) {
    HLX_LOG_ERROR("SetTimeZone:remove %s fail:%s", kLocalTimeFile, std::strerror(errno));
  }

  // A zone that is not in the map, a negative one, gets an empty entry and so a command without a file.
  char command[kCommandSize] = {};
  std::snprintf(command, sizeof command, "ln -s %s %s", zone_map[zone].zone_path.c_str(), kLocalTimeFile);
  HLX_LOG_DEBUG("SetBootTimeZone,cmd:%s", command);
  if (HLX_ExecSystemCmd(command, 1) != 0) {
    SetBootCurDstStatus();
    const HLXSystemData::PersistItem& item = HLXSystemData::PERSIST_ID_ZONE;
    const int result = HLX_GetQ4PersistService()->WriteInt(item.module, item.id, Load(time_data->_cur_zone), 0);
    if (result != PERSIST_OK) {
      HLX_LOG_WARN("Write PERSIST_ID_ZONE fail:%s", HLXSystemData::PersistErrorName(result));
    }
  } else {
    HLX_LOG_ERROR("SetBootTimeZone:Set time zone path fail.");
  }
  sync();
}

void HLXTimeClient::InitSystemTime() {
  HLX_LOG_INFO("Init:_is_time_reset_need(%d),IsSystemColdBoot(%d)", Load(time_data->_is_time_reset_need),
               IsSystemColdBoot());
  SetBootTimeZone(static_cast<TimeZone>(Load(time_data->_cur_zone)));
  GetLocalTime();
}
