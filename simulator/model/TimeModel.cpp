#include "simulator/model/TimeModel.h"

#include <cstdio>
#include <string>
#include <utility>

#include "catalog/Catalog.h"
#include "catalog/Moment.h"
#include "data/SharedField.h"
#include "data/ZoneTable.h"

using namespace HLXSystemData;

namespace {

/// What OnDateInfoChangeSignal carries.
constexpr int kMinutePassed = 0;
constexpr int kClockSet = 1;

constexpr int kFirstYear = 1900;
constexpr int kLastYear = 9000;

/// The whole second that a time in microseconds, also one before 1970, lies in.
gint64 SecondOf(gint64 time) { return time / G_USEC_PER_SEC - (time % G_USEC_PER_SEC < 0 ? 1 : 0); }

/// The second of a date and time that are taken for UTC. @throws BadValue that names `argument`
gint64 SecondOf(const SystemTime::DateInfo& date, const SystemTime::TimeInfo& time, const char* argument) {
  GDateTime* const moment =
      date.year < kFirstYear || date.year > kLastYear
          ? nullptr
          : g_date_time_new_utc(date.year, date.month, date.day, time.hour, time.minute, time.second);
  if (moment == nullptr) {
    char text[200];
    std::snprintf(text, sizeof text, "%s: %d-%d-%d, %d:%d:%d is no date and time of the years %d to %d", argument,
                  date.year, date.month, date.day, time.hour, time.minute, time.second, kFirstYear, kLastYear);
    throw catalog::BadValue(text);
  }
  const gint64 second = g_date_time_to_unix(moment);
  g_date_time_unref(moment);
  return second;
}

}  // namespace

TimeModel::TimeModel(Unit& unit) : unit_(unit) {
  unit_.Follow([this](const void* field) { Follow(field); });
}

void TimeModel::Boot(bool anew) {
  if (anew) distance_ = 0;
  UseZone(Load(unit_.time()._cur_zone));
  dst_ = Load(unit_.time().is_cur_zone_dst_active) != 0;
  Publish();
  Tick();
}

void TimeModel::Hold(bool held) {
  held_ = held;
  if (held) {
    tick_.Stop();
  } else {
    Tick();
  }
}

void TimeModel::Follow(const void* field) {
  const TimeShmData& time = unit_.time();
  if (zone_ == nullptr || held_) return;
  if (field == &time._cur_zone) UseZone(Load(time._cur_zone));
  if (field == &time._cur_zone || field == &time.auto_adjust_dst_mode) {
    Publish();
    if (field == &time._cur_zone) unit_.Announce("OnDateInfoChangeSignal", kClockSet);
  }
}

TimeModel::Offset TimeModel::OffsetAt(GTimeType type, gint64 second) const {
  const gint interval = g_time_zone_find_interval(zone_.get(), type, second);
  if (interval < 0) return {0, false};  // a time that the zone leaps over
  const bool dst = g_time_zone_is_dst(zone_.get(), interval) != FALSE;
  if (!dst || Load(unit_.time().auto_adjust_dst_mode) != 0) return {g_time_zone_get_offset(zone_.get(), interval), dst};
  // Daylight saving is switched off: what was before it, or comes behind it, counts.
  const gint other = g_time_zone_is_dst(zone_.get(), interval - 1) == FALSE ? interval - 1 : interval + 1;
  return {g_time_zone_get_offset(zone_.get(), other), false};
}

TimeModel::Moment TimeModel::LocalNow() const {
  const gint64 second = SecondOf(Now());
  return Moment(g_date_time_new_from_unix_utc(second + OffsetAt(G_TIME_TYPE_UNIVERSAL, second).seconds));
}

void TimeModel::UseZone(int zone) {
  const bool known = zone >= 0 && zone < SystemTime::kTimeZoneCount;  // a saved one may be anything
  zone_.reset(known ? g_time_zone_new_identifier(kZones[zone].path) : nullptr);
  if (zone_ != nullptr) return;
  std::fprintf(stderr, "hlx-simulator: time zone %d: %s; the clock shows UTC\n", zone,
               known ? (std::string("cannot read ") + kZones[zone].path).c_str() : "there is no such zone");
  zone_.reset(g_time_zone_new_utc());
}

void TimeModel::SetLocalClock(const SystemTime::DateInfo& date, const SystemTime::TimeInfo& time,
                              const char* argument) {
  const gint64 local = SecondOf(date, time, argument);
  SetClock(local - OffsetAt(G_TIME_TYPE_STANDARD, local).seconds);
}

void TimeModel::SetCurDate(const SystemTime::DateInfo& dateInfo) {
  const Moment now = LocalNow();
  SetLocalClock(dateInfo,
                {g_date_time_get_hour(now.get()), g_date_time_get_minute(now.get()), g_date_time_get_second(now.get())},
                "dateInfo");
}

void TimeModel::SetCurTime(const SystemTime::TimeInfo& timeInfo) {
  const Moment now = LocalNow();
  SetLocalClock(
      {g_date_time_get_year(now.get()), g_date_time_get_month(now.get()), g_date_time_get_day_of_month(now.get()), 0},
      timeInfo, "timeInfo");
}

bool TimeModel::SetGpsUTCTimeSync(const SystemTime::DateTime& dateTime) {
  const gint64 second = SecondOf(dateTime.date, dateTime.time, "dateTime");
  if (Load(unit_.time()._auto_sync_mode) == 0) return false;
  SetClock(second);
  return true;
}

void TimeModel::SetTimeZone(unsigned char zone) {
  constexpr int kLast = SystemTime::kTimeZoneCount - 1;
  if (zone > kLast) {
    throw catalog::BadValue("zone: " + std::to_string(zone) + " is not within 0 to " + std::to_string(kLast));
  }
  unit_.Change(unit_.time()._cur_zone, zone);
}

void TimeModel::SetClock(gint64 second) {
  distance_ = second * G_USEC_PER_SEC - g_get_real_time();
  // A clock that was set once is kept over a restart.
  if (Load(unit_.time()._is_time_reset_need) != 0) unit_.Write(unit_.time()._is_time_reset_need, 0);
  Publish();
  unit_.Announce("OnDateInfoChangeSignal", kClockSet);
  Tick();
}

void TimeModel::Publish() {
  static const catalog::Value& date_value = *catalog::FindValue("time.date");
  static const catalog::Value& time_value = *catalog::FindValue("time.time");
  const Moment now = LocalNow();
  const SystemTime::DateInfo date{g_date_time_get_year(now.get()), g_date_time_get_month(now.get()),
                                  g_date_time_get_day_of_month(now.get()), 0};
  const SystemTime::TimeInfo time{g_date_time_get_hour(now.get()), g_date_time_get_minute(now.get()),
                                  g_date_time_get_second(now.get())};
  unit_.Write(date_value, catalog::TextOf(date));
  unit_.Write(time_value, catalog::TextOf(time));
  const bool dst = OffsetAt(G_TIME_TYPE_UNIVERSAL, SecondOf(Now())).dst;
  if (std::exchange(dst_, dst) != dst) unit_.Change(unit_.time().is_cur_zone_dst_active, dst);
}

void TimeModel::Tick() {
  if (held_) return;
  const int minute = Load(unit_.time().cur_time.minute);
  Publish();
  if (Load(unit_.time().cur_time.minute) != minute) unit_.Announce("OnDateInfoChangeSignal", kMinutePassed);
  const gint64 now = Now();
  tick_.Start(std::chrono::milliseconds(((SecondOf(now) + 1) * G_USEC_PER_SEC - now) / 1000 + 1), [this] { Tick(); });
}
