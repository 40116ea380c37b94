#include "client/time/HLXTimeClient.h"

#include <cstdint>
#include <utility>

#include "client/DispatchGate.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/time/TimeRecord.h"
#include "platform/HLXLog.h"

HLX_LOG_SOURCE("client/time/HLXTimeClient");

using namespace SystemTime;
using HLXSystemData::Load;

HLXTimeClient::HLXTimeClient(std::shared_ptr<ClientIpcAdapter> adapter)
    : TimeShmDataBase(HLXSystemData::SHM_TIME_DATA_KEY_ID, HLXSystemData::SHM_OP_ATTACH, "time_client"),
      ipc_adapter(std::move(adapter)),
      time_data(MapRecord<HLXSystemData::TimeShmData>()) {
  if (time_data == nullptr) {
    HLX_LOG_FATAL("[system-client]CreateDataShm->SHM_TIME_DATA_KEY_ID fail.Exit!!");
    DispatchGate::Exit(2);
  }
  InitTimeShmData(time_data);
  InitSystemTime();
}

int HLXTimeClient::GetTime24Mode() { return Load(time_data->_time_24_mode); }
int HLXTimeClient::GetAutoSyncMode() { return Load(time_data->_auto_sync_mode); }
int HLXTimeClient::GetAutoAdjustDstMode() { return Load(time_data->auto_adjust_dst_mode); }
void HLXTimeClient::GetCurDateInfo(DateInfo& date) { date = LoadDate(time_data->cur_date); }
void HLXTimeClient::GetCurTimeInfo(TimeInfo& time) { time = LoadTime(time_data->cur_time); }
ZoneList* HLXTimeClient::GetAllZoneInfo() { return &time_data->zones; }
ZoneInfo* HLXTimeClient::GetZoneNode(TimeZone zone) {
  // Only the upper end is checked. A negative zone has always given the address before the table; as a number, that is
  // well defined.
  if (zone >= kTimeZoneCount) return nullptr;
  const auto table = reinterpret_cast<std::uintptr_t>(time_data->zones.zone_table);
  const std::uintptr_t entry = table + static_cast<std::uintptr_t>(zone) * sizeof(ZoneInfo);
  return reinterpret_cast<ZoneInfo*>(entry);  // NOLINT(performance-no-int-to-ptr)
}
TimeZone HLXTimeClient::GetCurTimeZone() { return static_cast<TimeZone>(Load(time_data->_cur_zone)); }
int HLXTimeClient::IsCurZoneDstActive() { return Load(time_data->is_cur_zone_dst_active); }
int HLXTimeClient::GetExtMcuCanTime24Mode() { return Load(time_data->ext_mcu_can_time_24_mode); }
unsigned char HLXTimeClient::GetExtMcuCanTimeZone() { return Load(time_data->ext_mcu_can_time_zone); }
void HLXTimeClient::GetExtMcuCanDateTimeInfo(DateTime& vehicle) {
  vehicle = LoadDateTime(time_data->ext_mcu_can_date_time);
}

void HLXTimeClient::SetTime24Mode(int is24Mode) { ipc_adapter->SetTime24Mode(is24Mode); }
void HLXTimeClient::SetAutoSyncMode(int isAutoSync) { ipc_adapter->SetAutoSyncMode(isAutoSync); }
void HLXTimeClient::SetAutoAdjustDstMode(int isAutoDst) { ipc_adapter->SetAutoAdjustDstMode(isAutoDst); }
void HLXTimeClient::SetCurDate(DateInfo& date) { ipc_adapter->SetCurDate(date); }
void HLXTimeClient::SetCurTime(TimeInfo& time) { ipc_adapter->SetCurTime(time); }
void HLXTimeClient::SetTimeZone(TimeZone zone) { ipc_adapter->SetTimeZone(zone); }

void HLXTimeClient::OnDateInfoChange(unsigned char /*type*/) {
  DateTime now = {LoadDate(time_data->cur_date), LoadTime(time_data->cur_time)};
  Notify(&IHLXSystemTimeListener::OnDateInfoChange, now);
}

void HLXTimeClient::On24TimeModeChange(int is24Mode) { Notify(&IHLXSystemTimeListener::On24TimeModeChange, is24Mode); }

void HLXTimeClient::OnDstStatusChange(int isDst) { Notify(&IHLXSystemTimeListener::OnDstStatusChange, isDst); }

void HLXTimeClient::OnExternalMcuTimeChange(unsigned char /*parm*/) {
  DateTime vehicle = LoadDateTime(time_data->ext_mcu_can_date_time);
  Notify(&IHLXSystemTimeListener::OnExternalMcuTimeChange, vehicle);

  const int mode = Load(time_data->ext_mcu_can_time_24_mode);
  if (ext_mcu_time_24_mode_cache.exchange(mode) != mode) {
    Notify(&IHLXSystemTimeListener::OnExternalMcu24TimeModeChange, mode);
  }
  const unsigned char zone = Load(time_data->ext_mcu_can_time_zone);
  if (ext_mcu_time_zone_cache.exchange(zone) != zone) {
    Notify(&IHLXSystemTimeListener::OnExternalMcuTimeZoneChange, zone);
  }
}
