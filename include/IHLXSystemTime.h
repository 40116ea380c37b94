#ifndef I_HLX_SYSTEM_TIME_H
#define I_HLX_SYSTEM_TIME_H

#include "HLXExport.h"
#include "HLXTimeTypes.h"
#include "IHLXListener.h"
#include "IHLXSystemTimeListener.h"

/// @defgroup time Clock and time zones
/// @{

/// Clock settings: 24-hour display, automatic time and daylight saving, date and time, zones.
///
/// Asking for this client has effects on the system: its construction makes the unit's zone the system's (it replaces
/// /etc/localtime by a link to the zone's file), writes the zone back to the saved settings, and overwrites date, time
/// and daylight saving in the shared record. Every process that asks for the client does so, again after a release.
/// When two start together, one of them may find the link made already; it logs that and goes on. Run such a process
/// without TZ in its environment, which would go before the link.
///
/// Getters read the shared time record without a lock; two read one after the other may come from different updates.
/// Commands are blocking D-Bus calls on the caller's thread, see IHLXSystemPower, also about "Event". All functions may
/// be called from any thread, but for the registration of listeners: see IHLXListener. The library owns the client and
/// what its functions point to. The order of the virtual functions is part of the binary interface.
class HLX_API IHLXSystemTime : public IHLXListener<IHLXSystemTimeListener> {
 public:
  /// @name Settings
  /// @{

  /// @return non-zero for 24-hour display. Event: On24TimeModeChange().
  virtual int GetTime24Mode() = 0;
  /// Chooses between 24-hour and 12-hour display. Event: On24TimeModeChange().
  /// @param is24Mode non-zero: 24 hours
  virtual void SetTime24Mode(int is24Mode) = 0;
  /// @return non-zero when the clock follows GPS and CarPlay. Event: none.
  virtual int GetAutoSyncMode() = 0;
  /// Chooses whether the clock follows GPS and CarPlay. Event: none.
  /// @param isAutoSync non-zero: it follows
  virtual void SetAutoSyncMode(int isAutoSync) = 0;
  /// @return non-zero when daylight saving is adjusted automatically. Event: none.
  virtual int GetAutoAdjustDstMode() = 0;
  /// Chooses whether the clock follows daylight saving. Event: OnDstStatusChange() when the state in force changes.
  /// @param isAutoDst non-zero: it follows
  virtual void SetAutoAdjustDstMode(int isAutoDst) = 0;

  /// @}
  /// @name Date and time
  /// @{

  /// Local date as it was published last. Event: OnDateInfoChange(). @param[out] date the date
  virtual void GetCurDateInfo(SystemTime::DateInfo& date) = 0;
  /// Sets the local date. Event: OnDateInfoChange(). @param date sent whole and unchecked; not changed
  virtual void SetCurDate(SystemTime::DateInfo& date) = 0;
  /// Local time as it was published last. Event: OnDateInfoChange(). @param[out] time the time
  virtual void GetCurTimeInfo(SystemTime::TimeInfo& time) = 0;
  /// Sets the local time of day. Event: OnDateInfoChange(). @param time sent whole and unchecked; not changed
  virtual void SetCurTime(SystemTime::TimeInfo& time) = 0;

  /// @}
  /// @name Zones
  /// @{

  /// @return the zones in shared memory, valid until the process ends, also after a release. Event: none.
  virtual SystemTime::ZoneList* GetAllZoneInfo() = 0;
  /// One zone of GetAllZoneInfo(). Event: none.
  /// @param zone 0 to 78. A negative value is not rejected and yields an address before the table: check it yourself
  /// @return the zone's entry in shared memory, valid until the process ends; null above 78
  virtual SystemTime::ZoneInfo* GetZoneNode(SystemTime::TimeZone zone) = 0;
  /// Sets the unit's zone. /etc/localtime stays as it is until a process makes its time client: the service, or the
  /// next application that starts. Event: OnDateInfoChange(), and OnDstStatusChange() when daylight saving differs
  /// between the two zones.
  /// @param zone 0 to 78; only the low byte travels
  virtual void SetTimeZone(SystemTime::TimeZone zone) = 0;
  /// @return the unit's zone; a saved zone outside 0 to 78 is returned as it is. Event: OnDateInfoChange().
  virtual SystemTime::TimeZone GetCurTimeZone() = 0;
  /// @return non-zero when daylight saving is in force in the current zone. Event: OnDstStatusChange().
  virtual int IsCurZoneDstActive() = 0;

  /// @}
  /// @name Time from outside
  /// @{

  /// Hands over UTC from GPS. It is stored in the record in any case. Event: OnDateInfoChange() when the service sets
  /// its clock by it.
  /// @param utc date and time in UTC, unchecked; not changed
  /// @param notify_service non-zero also sends it to the service
  /// @return the service's answer; false when it cannot be reached; true when it was not asked
  virtual bool SetGpsUTCTimeSync(SystemTime::DateTime& utc, int notify_service) = 0;
  /// Hands over the time of Apple CarPlay, which is stored and sent like GPS time. Event: OnDateInfoChange() when the
  /// service sets its clock by it.
  /// @param time seconds since 1970-01-01 00:00 UTC; not changed
  /// @return true, whatever comes of it; HLX_GetLastCallError() tells whether it arrived
  virtual bool SetCarplayTimeSync(SystemTime::CarplayTime& time) = 0;
  /// @return non-zero when the vehicle shows 24 hours. Event: OnExternalMcu24TimeModeChange().
  virtual int GetExtMcuCanTime24Mode() = 0;
  /// @return the vehicle's zone, in its own numbers, 0 to 255. Event: OnExternalMcuTimeZoneChange().
  virtual unsigned char GetExtMcuCanTimeZone() = 0;
  /// The vehicle's date and time. Event: OnExternalMcuTimeChange(). @param[out] vehicle date and time
  virtual void GetExtMcuCanDateTimeInfo(SystemTime::DateTime& vehicle) = 0;

  /// @}
};

/// @}

#endif
