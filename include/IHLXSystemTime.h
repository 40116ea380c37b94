#ifndef I_HLX_SYSTEM_TIME_H
#define I_HLX_SYSTEM_TIME_H

#include "HLXExport.h"
#include "HLXTimeTypes.h"
#include "IHLXListener.h"
#include "IHLXSystemTimeListener.h"

/// Clock settings: 24-hour display, automatic time and daylight saving, date and time, zones.
///
/// Asking for this client has effects on the system: its construction makes the unit's zone the system's (it replaces
/// /etc/localtime by a link to the zone's file), writes the zone back to the saved settings, and overwrites date, time
/// and daylight saving in the shared record. Every process that asks for the client does so, once. When two start
/// together, one of them may find the link made already; it logs that and goes on.
///
/// Getters read the shared time record without a lock; two read one after the other may come from different updates.
/// Commands are blocking D-Bus calls on the caller's thread, see IHLXSystemPower. All functions may be called from any
/// thread. The order of the virtual functions is part of the binary interface.
class HLX_API IHLXSystemTime : public IHLXListener<IHLXSystemTimeListener> {
 public:
  /// @return non-zero for 24-hour display
  virtual int GetTime24Mode() = 0;
  virtual void SetTime24Mode(int is24Mode) = 0;
  /// @return non-zero when the time is synchronised automatically
  virtual int GetAutoSyncMode() = 0;
  virtual void SetAutoSyncMode(int isAutoSync) = 0;
  /// @return non-zero when daylight saving is adjusted automatically
  virtual int GetAutoAdjustDstMode() = 0;
  virtual void SetAutoAdjustDstMode(int isAutoDst) = 0;
  /// Local date as it was published last.
  virtual void GetCurDateInfo(SystemTime::DateInfo& date) = 0;
  virtual void SetCurDate(SystemTime::DateInfo& date) = 0;
  /// Local time as it was published last.
  virtual void GetCurTimeInfo(SystemTime::TimeInfo& time) = 0;
  virtual void SetCurTime(SystemTime::TimeInfo& time) = 0;
  /// @return the zones in shared memory, valid as long as the process
  virtual SystemTime::ZoneList* GetAllZoneInfo() = 0;
  /// @return the zone's entry in shared memory; null above 78. A negative `zone` is not rejected and yields an address
  ///   before the table: check it yourself
  virtual SystemTime::ZoneInfo* GetZoneNode(SystemTime::TimeZone zone) = 0;
  virtual void SetTimeZone(SystemTime::TimeZone zone) = 0;
  /// @return the zone; a saved zone outside 0 to 78 is returned as it is
  virtual SystemTime::TimeZone GetCurTimeZone() = 0;
  /// @return non-zero when daylight saving is in force in the current zone; negative: not known
  virtual int IsCurZoneDstActive() = 0;
  /// Hands over UTC from GPS. It is stored in the record in any case.
  /// @param notify_service non-zero also sends it to the service
  /// @return the service's answer; false when it cannot be reached; true when it was not asked
  virtual bool SetGpsUTCTimeSync(SystemTime::DateTime& utc, int notify_service) = 0;
  /// Hands over the time of Apple CarPlay, which is stored and sent like GPS time. @return true, whatever comes of it
  virtual bool SetCarplayTimeSync(SystemTime::CarplayTime& time) = 0;
  /// @return the vehicle's 24-hour setting
  virtual int GetExtMcuCanTime24Mode() = 0;
  /// @return the vehicle's zone, in its own numbers
  virtual unsigned char GetExtMcuCanTimeZone() = 0;
  /// The vehicle's date and time.
  virtual void GetExtMcuCanDateTimeInfo(SystemTime::DateTime& vehicle) = 0;
};

#endif
