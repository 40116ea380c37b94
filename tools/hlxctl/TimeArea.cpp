#include <cstdio>

#include "data/SharedField.h"
#include "data/TimeShmDataBase.h"
#include "tools/hlxctl/Area.h"
#include "tools/hlxctl/Monitor.h"
#include "tools/hlxctl/Records.h"
#include "tools/hlxctl/TimeArea.h"
#include "tools/hlxctl/Zones.h"

using namespace SystemTime;
using HLXSystemData::Load;
using HLXSystemData::TimeShmData;
using T = IHLXSystemTime;

namespace {

constexpr Record kRecord{"time", HLXSystemData::SHM_TIME_DATA_KEY_ID, sizeof(TimeShmData)};
constexpr Word kWeek[] = {{0, "Sunday"},   {1, "Monday"}, {2, "Tuesday"}, {3, "Wednesday"},
                          {4, "Thursday"}, {5, "Friday"}, {6, "Saturday"}};

Value DateValue(const DateInfo& date) {
  char text[64];
  std::snprintf(text, sizeof(text), "%04d-%02d-%02d", Load(date.year), Load(date.month), Load(date.day));
  return {text, std::string(text) + " " + InWords(kWeek, Load(date.week)), ""};
}

Value ClockValue(const TimeInfo& time) {
  char text[64];
  std::snprintf(text, sizeof(text), "%02d:%02d:%02d", Load(time.hour), Load(time.minute), Load(time.second));
  return {text, text, ""};
}

/// A moment that nobody has told yet is absent.
Value MomentValue(const DateTime& moment) {
  if (Load(moment.date.month) == 0) return {nullptr, "", ""};
  const Value date = DateValue(moment.date);
  const Value time = ClockValue(moment.time);
  return {date.text.substr(0, date.text.find(' ')) + "T" + time.text, date.text + " " + time.text, ""};
}

/// Daylight saving: C's tm_isdst.
struct Dst {
  Value operator()(int dst) const { return {dst, dst < 0 ? "not known" : dst != 0 ? "on" : "off", ""}; }
};

class TimeEvents : public IHLXSystemTimeListener {
 public:
  explicit TimeEvents(EventLog& log) : log_(log) {}

  void OnDateInfoChange(DateTime& now) override { Moment(__func__, now); }
  void On24TimeModeChange(int on) override { Write(__func__, {{"24_hour", kOnOff(on)}}); }
  void OnDstStatusChange(int dst) override { Write(__func__, {{"dst", Dst{}(dst)}}); }
  void OnExternalMcuTimeChange(DateTime& vehicle) override { Moment(__func__, vehicle); }
  void OnExternalMcu24TimeModeChange(int on) override { Write(__func__, {{"24_hour", kOnOff(on)}}); }
  void OnExternalMcuTimeZoneChange(unsigned char zone) override { Write(__func__, {{"zone", Number{}(zone)}}); }

 private:
  void Write(const char* event, const EventLog::Values& values) { log_.Write("time", event, values); }
  void Moment(const char* event, const DateTime& moment) {
    Write(event, {{"date", DateValue(moment.date)}, {"time", ClockValue(moment.time)}});
  }

  EventLog& log_;
};

const TimeShmData& TimeRecord() {
  static const auto& record = *static_cast<const TimeShmData*>(MapForReading(kRecord));
  return record;
}

template <class Member, class Format>
std::function<Value()> Read(Member TimeShmData::*member, Format format) {
  return [=] { return format(TimeRecord().*member); };
}

template <class Format>
auto Loaded(Format format) {
  return [format](const auto& field) { return format(Load(field)); };
}

std::vector<Field> Fields() {
  using R = TimeShmData;
  return {
      {"date", "Date", Read(&R::cur_date, DateValue)},
      {"time", "Time", Read(&R::cur_time, ClockValue)},
      {"zone", "Time zone", Read(&R::_cur_zone, Loaded(ZoneValue))},
      {"dst", "Daylight saving", Read(&R::is_cur_zone_dst_active, Loaded(Dst{}))},
      {"24_hour", "24-hour display", Read(&R::_time_24_mode, Loaded(kOnOff))},
      {"auto_sync", "Automatic time", Read(&R::_auto_sync_mode, Loaded(kOnOff))},
      {"auto_dst", "Automatic daylight saving", Read(&R::auto_adjust_dst_mode, Loaded(kOnOff))},
      {"zones", "Zones to choose from", [] { return Number{}(Load(TimeRecord().zones.zone_count)); }},
      {"sync_time", "Last time from GPS or CarPlay (UTC)", Read(&R::sync_date_time, MomentValue)},
      {"vehicle_time", "Vehicle's date and time", Read(&R::ext_mcu_can_date_time, MomentValue)},
      {"vehicle_24_hour", "Vehicle's 24-hour display", Read(&R::ext_mcu_can_time_24_mode, Loaded(kOnOff))},
      {"vehicle_zone", "Vehicle's zone (its own number)", Read(&R::ext_mcu_can_time_zone, Loaded(Number{}))},
  };
}

bool SetGpsTime(const ArgumentValues& values) {
  DateTime utc{As<DateInfo>(values.at(0)), As<TimeInfo>(values.at(1))};
  return Proxy<T>().SetGpsUTCTimeSync(utc, As<int>(values.at(2)));
}

bool SetCarPlayTime(const ArgumentValues& values) {
  CarplayTime time{As<int>(values.at(0))};
  return Proxy<T>().SetCarplayTimeSync(time);
}

std::vector<Command> Commands() {
  Argument notify = Switch("send");
  notify.otherwise = "on";
  return {
      {"24-hour", "24-hour display", {Switch()}, Call(&T::SetTime24Mode)},
      {"auto-sync", "Automatic time", {Switch()}, Call(&T::SetAutoSyncMode)},
      {"auto-dst", "Automatic daylight saving", {Switch()}, Call(&T::SetAutoAdjustDstMode)},
      {"date", "The date", {DateArgument()}, Call(&T::SetCurDate)},
      {"time", "The time of day", {TimeArgument()}, Call(&T::SetCurTime)},
      {"zone", "The time zone", {ZoneArgument()}, Call(&T::SetTimeZone)},
      {"gps", "UTC from GPS; with \"off\" only into the record", {DateArgument(), TimeArgument(), notify}, SetGpsTime},
      {"carplay", "UTC from CarPlay, in seconds since 1970", {Whole<int>("seconds")}, SetCarPlayTime},
  };
}

}  // namespace

std::optional<int> CurrentZone() {
  try {
    return Load(TimeRecord()._cur_zone);
  } catch (const Failure&) {
    return {};
  }
}

Area TimeArea() {
  return {
      "time",
      "clock, zones, daylight saving",
      {kRecord},
      Fields(),
      Commands(),
      Listen<T, TimeEvents>,
      "Showing changes nothing. Commands and listening make the library's time client, which makes the unit's zone\n"
      "the system's: it links /etc/localtime, saves the zone and rewrites date, time and daylight saving in the\n"
      "record."};
}
