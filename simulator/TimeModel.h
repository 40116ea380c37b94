/// The clock of the simulated unit.
#pragma once

#include <memory>

#include "simulator/Unit.h"

/// As PowerModel. The clock runs beside the machine's, which is never set: only the distance between the two is kept.
/// Date and time in the record are those of the selected zone, its daylight saving included.
class TimeModel {
 public:
  explicit TimeModel(Unit& unit) : unit_(unit), time_(unit.records().time) {}
  ~TimeModel();
  TimeModel(const TimeModel&) = delete;
  TimeModel& operator=(const TimeModel&) = delete;

  /// Starts the clock at the machine's time, in the record's zone.
  void Boot();

  void SetTime24Mode(bool is24Mode);
  void SetAutoSyncMode(bool isAutoSync);
  void SetAutoAdjustDstMode(bool isAutoDst);
  /// The weekday of `dateInfo` is not looked at.
  void SetCurDate(const SystemTime::DateInfo& dateInfo);
  void SetCurTime(const SystemTime::TimeInfo& timeInfo);
  /// Always taken: whether GPS or CarPlay time is handed on is the application's choice.
  bool SetGpsUTCTimeSync(const SystemTime::DateTime& dateTime);
  void SetTimeZone(unsigned char zone);

 private:
  struct Unref {
    void operator()(GDateTime* time) const { g_date_time_unref(time); }
    void operator()(GTimeZone* zone) const { g_time_zone_unref(zone); }
  };
  using Moment = std::unique_ptr<GDateTime, Unref>;
  using Zone = std::unique_ptr<GTimeZone, Unref>;

  static Moment MakeMoment(GTimeZone* zone, const SystemTime::DateInfo& date, const SystemTime::TimeInfo& time,
                           const char* argument);
  gint64 Now() const { return g_get_real_time() + offset_; }
  Moment LocalNow() const;
  void UseZone(int zone);
  void SetClock(const Moment& moment);
  void Publish();
  void ScheduleTick();
  static gboolean OnTick(gpointer model);

  Unit& unit_;
  HLXSystemData::TimeShmData& time_;
  Zone zone_;
  gint64 offset_ = 0;  ///< microseconds between the machine's clock and the unit's
  /// What the clock announced last. The record may say otherwise: an event that somebody plays stands until the clock
  /// itself has something to tell.
  bool dst_ = false;
  guint tick_ = 0;
};
