/// The clock.
#pragma once

#include <memory>

#include "simulator/model/Timer.h"
#include "simulator/model/Unit.h"

/// As PowerModel. The clock runs beside the machine's, which is never set: only the distance between the two is kept.
/// Date and time in the record are those of the selected zone; daylight saving counts while its switch is on.
class TimeModel {
 public:
  explicit TimeModel(Unit& unit);

  /// Goes on with the record's zone; `anew`: at the machine's time.
  void Boot(bool anew);
  /// While it is held, the clock neither ticks nor tells anything.
  void Hold(bool held);

  void SetTime24Mode(bool is24Mode) { unit_.Change(unit_.time()._time_24_mode, is24Mode); }
  void SetAutoSyncMode(bool isAutoSync) { unit_.Change(unit_.time()._auto_sync_mode, isAutoSync); }
  void SetAutoAdjustDstMode(bool isAutoDst) { unit_.Change(unit_.time().auto_adjust_dst_mode, isAutoDst); }
  /// The weekday of `dateInfo` is not looked at.
  void SetCurDate(const SystemTime::DateInfo& dateInfo);
  void SetCurTime(const SystemTime::TimeInfo& timeInfo);
  /// Taken, and answered with true, while automatic time is on.
  bool SetGpsUTCTimeSync(const SystemTime::DateTime& dateTime);
  void SetTimeZone(unsigned char zone);

 private:
  struct Unref {
    void operator()(GDateTime* time) const { g_date_time_unref(time); }
    void operator()(GTimeZone* zone) const { g_time_zone_unref(zone); }
  };
  using Moment = std::unique_ptr<GDateTime, Unref>;
  using Zone = std::unique_ptr<GTimeZone, Unref>;

  /// Seconds east of UTC at a moment, and whether daylight saving is part of them.
  struct Offset {
    gint64 seconds;
    bool dst;
  };

  void Follow(const void* field);
  gint64 Now() const { return g_get_real_time() + distance_; }
  Moment LocalNow() const;
  Offset OffsetAt(GTimeType type, gint64 second) const;
  void UseZone(int zone);
  void SetClock(gint64 second);
  void SetLocalClock(const SystemTime::DateInfo& date, const SystemTime::TimeInfo& time, const char* argument);
  void Publish();
  void Tick();

  Unit& unit_;
  Zone zone_;
  gint64 distance_ = 0;  ///< microseconds between the machine's clock and the unit's
  /// What the clock announced last. The record may say otherwise: an event that somebody plays stands until the clock
  /// itself has something to tell.
  bool dst_ = false;
  bool held_ = false;
  Timer tick_;
};
