#pragma once

#include <atomic>
#include <memory>

#include "IHLXSystemTime.h"
#include "data/TimeShmDataBase.h"

class ClientIpcAdapter;

/// Clock settings from the time record, commands through the adapter, events to the listeners; and the work on the
/// local system: zone, clock, daylight saving (HLXTimeClientClock.cpp).
class HLXTimeClient : public IHLXSystemTime, public TimeShmDataBase {
 public:
  /// Maps and, if need be, fills the time record (ends the process with status 2 when it cannot be mapped), then makes
  /// the unit's zone the system's.
  explicit HLXTimeClient(std::shared_ptr<ClientIpcAdapter> adapter);

  int GetTime24Mode() override;
  void SetTime24Mode(int is24Mode) override;
  int GetAutoSyncMode() override;
  void SetAutoSyncMode(int isAutoSync) override;
  int GetAutoAdjustDstMode() override;
  void SetAutoAdjustDstMode(int isAutoDst) override;
  void GetCurDateInfo(SystemTime::DateInfo& date) override;
  void SetCurDate(SystemTime::DateInfo& date) override;
  void GetCurTimeInfo(SystemTime::TimeInfo& time) override;
  void SetCurTime(SystemTime::TimeInfo& time) override;
  SystemTime::ZoneList* GetAllZoneInfo() override;
  SystemTime::ZoneInfo* GetZoneNode(SystemTime::TimeZone zone) override;
  void SetTimeZone(SystemTime::TimeZone zone) override;
  SystemTime::TimeZone GetCurTimeZone() override;
  int IsCurZoneDstActive() override;
  bool SetGpsUTCTimeSync(SystemTime::DateTime& utc, int notify_service) override;
  bool SetCarplayTimeSync(SystemTime::CarplayTime& time) override;
  int GetExtMcuCanTime24Mode() override;
  unsigned char GetExtMcuCanTimeZone() override;
  void GetExtMcuCanDateTimeInfo(SystemTime::DateTime& vehicle) override;

  // Events, called by the adapter.
  void OnDateInfoChange(unsigned char type);
  void On24TimeModeChange(int is24Mode);
  void OnDstStatusChange(int isDst);
  void OnExternalMcuTimeChange(unsigned char parm);

  /// Sets the system clock and, in UTC, the hardware clock from a local standard time.
  /// @return the command runner's result for the hardware clock; 0 when there is no such time
  int SetLocalTime(SystemTime::DateTime& local);
  /// Publishes the local date and time.
  void GetLocalTime();
  /// Publishes and tells whether daylight saving is in force.
  void SetBootCurDstStatus();
  /// Makes `zone` the system's: links /etc/localtime to its file, and saves it.
  void SetBootTimeZone(SystemTime::TimeZone zone);
  void InitSystemTime();

 private:
  std::shared_ptr<ClientIpcAdapter> ipc_adapter;
  HLXSystemData::TimeShmData* time_data;
  // What the last event said. After two starts events may come on two threads.
  std::atomic<int> ext_mcu_time_24_mode_cache{0};
  std::atomic<unsigned char> ext_mcu_time_zone_cache{0};
};
