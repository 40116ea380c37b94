#include "simulator/TimeModel.h"

#include <cstdio>
#include <utility>

#include "data/ZoneTable.h"

using namespace HLXSystemData;

namespace {

/// What OnDateInfoChangeSignal carries.
constexpr int kMinutePassed = 0;
constexpr int kClockSet = 1;

/// The whole second that a time in microseconds, also one before 1970, lies in.
gint64 SecondOf(gint64 time) { return time / G_USEC_PER_SEC - (time % G_USEC_PER_SEC < 0 ? 1 : 0); }

}  // namespace

TimeModel::~TimeModel() {
  if (tick_ != 0) g_source_remove(tick_);
}

void TimeModel::Boot() {
  UseZone(Load(time_._cur_zone));
  dst_ = Load(time_.is_cur_zone_dst_active) != 0;
  Publish();
  ScheduleTick();
}

void TimeModel::SetTime24Mode(bool is24Mode) {
  unit_.Save(PERSIST_ID_TIME_24_MODE, is24Mode);
  unit_.Announce("On24TimeModeChangeSignal", is24Mode);
}

void TimeModel::SetAutoSyncMode(bool isAutoSync) {
  unit_.Save(PERSIST_ID_AUTO_SYNC, isAutoSync);
  Store(time_._auto_sync_mode, int32_t{isAutoSync});
}

void TimeModel::SetAutoAdjustDstMode(bool isAutoDst) {
  unit_.Save(PERSIST_ID_ENABLE_DIST, isAutoDst);
  Store(time_.auto_adjust_dst_mode, int32_t{isAutoDst});
}

void TimeModel::SetCurDate(const SystemTime::DateInfo& dateInfo) {
  const Moment now = LocalNow();
  const SystemTime::TimeInfo time{g_date_time_get_hour(now.get()), g_date_time_get_minute(now.get()),
                                  g_date_time_get_second(now.get())};
  SetClock(MakeMoment(zone_.get(), dateInfo, time, "dateInfo"));
}

void TimeModel::SetCurTime(const SystemTime::TimeInfo& timeInfo) {
  const Moment now = LocalNow();
  const SystemTime::DateInfo date{g_date_time_get_year(now.get()), g_date_time_get_month(now.get()),
                                  g_date_time_get_day_of_month(now.get()), 0};
  SetClock(MakeMoment(zone_.get(), date, timeInfo, "timeInfo"));
}

bool TimeModel::SetGpsUTCTimeSync(const SystemTime::DateTime& dateTime) {
  const Zone utc(g_time_zone_new_utc());
  SetClock(MakeMoment(utc.get(), dateTime.date, dateTime.time, "dateTime"));
  return true;
}

void TimeModel::SetTimeZone(unsigned char zone) {
  constexpr int kLast = SystemTime::kTimeZoneCount - 1;
  if (zone > kLast) {
    throw BadArgument("zone: " + std::to_string(zone) + " is not within 0 to " + std::to_string(kLast));
  }
  unit_.Save(PERSIST_ID_ZONE, zone);
  Store(time_._cur_zone, int32_t{zone});
  UseZone(zone);
  Publish();
  unit_.Announce("OnDateInfoChangeSignal", kClockSet);
}

TimeModel::Moment TimeModel::MakeMoment(GTimeZone* zone, const SystemTime::DateInfo& date,
                                        const SystemTime::TimeInfo& time, const char* argument) {
  const int second = time.second == 60 ? 59 : time.second;  // a leap second
  Moment moment(g_date_time_new(zone, date.year, date.month, date.day, time.hour, time.minute, second));
  constexpr int kFirstYear = 1900;
  constexpr int kLastYear = 9000;
  if (moment == nullptr || date.year < kFirstYear || date.year > kLastYear) {
    char text[160];
    std::snprintf(text, sizeof(text), "%s: %d-%d-%d, %d:%d:%d is no date and time of the years %d to %d", argument,
                  date.year, date.month, date.day, time.hour, time.minute, time.second, kFirstYear, kLastYear);
    throw BadArgument(text);
  }
  return moment;
}

TimeModel::Moment TimeModel::LocalNow() const {
  const Moment utc(g_date_time_new_from_unix_utc(SecondOf(Now())));
  return Moment(g_date_time_to_timezone(utc.get(), zone_.get()));
}

void TimeModel::UseZone(int zone) {
  const bool known = zone >= 0 && zone < SystemTime::kTimeZoneCount;  // a saved one may be anything
  zone_.reset(known ? g_time_zone_new_identifier(kZones[zone].path) : nullptr);
  if (zone_ != nullptr) return;
  std::fprintf(stderr, "hlx-simulator: time zone %d: %s; the clock shows UTC\n", zone,
               known ? (std::string("cannot read ") + kZones[zone].path).c_str() : "there is no such zone");
  zone_.reset(g_time_zone_new_utc());
}

void TimeModel::SetClock(const Moment& moment) {
  offset_ = g_date_time_to_unix(moment.get()) * G_USEC_PER_SEC - g_get_real_time();
  if (Load(time_._is_time_reset_need) != 0) {  // a clock that was set once is kept over a restart
    unit_.Save(PERSIST_ID_TIME_RESET_FLAG, 1);
    Store(time_._is_time_reset_need, 0);
  }
  Publish();
  unit_.Announce("OnDateInfoChangeSignal", kClockSet);
  ScheduleTick();
}

void TimeModel::Publish() {
  const Moment now = LocalNow();
  Store(time_.cur_date.year, g_date_time_get_year(now.get()));
  Store(time_.cur_date.month, g_date_time_get_month(now.get()));
  Store(time_.cur_date.day, g_date_time_get_day_of_month(now.get()));
  Store(time_.cur_date.week, g_date_time_get_day_of_week(now.get()) % 7);  // there 7 is Sunday
  Store(time_.cur_time.hour, g_date_time_get_hour(now.get()));
  Store(time_.cur_time.minute, g_date_time_get_minute(now.get()));
  Store(time_.cur_time.second, g_date_time_get_second(now.get()));
  const bool dst = g_date_time_is_daylight_savings(now.get()) != FALSE;
  if (std::exchange(dst_, dst) != dst) unit_.Announce("OnDstStatusChangeSignal", dst);
}

void TimeModel::ScheduleTick() {
  if (tick_ != 0) g_source_remove(tick_);
  const gint64 now = Now();
  const gint64 remaining = (SecondOf(now) + 1) * G_USEC_PER_SEC - now;
  tick_ = g_timeout_add(static_cast<guint>(remaining / 1000 + 1), OnTick, this);
}

gboolean TimeModel::OnTick(gpointer model) {
  auto& self = *static_cast<TimeModel*>(model);
  self.tick_ = 0;
  const int minute = Load(self.time_.cur_time.minute);
  self.Publish();
  if (Load(self.time_.cur_time.minute) != minute) self.unit_.Announce("OnDateInfoChangeSignal", kMinutePassed);
  self.ScheduleTick();
  return G_SOURCE_REMOVE;
}
