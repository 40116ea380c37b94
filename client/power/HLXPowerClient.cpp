#include "client/power/HLXPowerClient.h"

#include <utility>

#include "client/DispatchGate.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "data/SharedField.h"
#include "platform/HLXLog.h"

HLX_LOG_SOURCE("client/power/HLXPowerClient");

using namespace HLXPower;
using HLXSystemData::Load;

namespace {

int Int(const uint32_t& field) { return static_cast<int>(Load(field)); }

template <class Enum, class Field>
Enum As(const Field& field) {
  return static_cast<Enum>(Load(field));
}

}  // namespace

HLXPowerClient::HLXPowerClient(std::shared_ptr<ClientIpcAdapter> adapter)
    : PowerShmDataBase(HLXSystemData::SHM_POWER_DATA_KEY_ID, HLXSystemData::SHM_OP_ATTACH, "power_client"),
      adapter_(std::move(adapter)),
      data_(MapRecord<HLXSystemData::PowerShmData>()) {
  if (data_ == nullptr) {
    HLX_LOG_FATAL("[system-client]CreateDataShm->SHM_POWER_DATA_KEY_ID fail.Exit!!");
    DispatchGate::Exit(2);
  }
  InitPowerShmData(data_);
}

void HLXPowerClient::ShutDown() { adapter_->ShutDown(); }
void HLXPowerClient::Reset() { adapter_->Reset(); }
void HLXPowerClient::RequestPowerOffState(int isKeyShortPress) { adapter_->RequestPowerOffState(isKeyShortPress); }
void HLXPowerClient::SetPowerOffDelayTime(unsigned char time) { adapter_->SetPowerOffDelayTime(time); }
void HLXPowerClient::SetRetainACCSec(unsigned int sec) { adapter_->SetRetainACCSec(sec); }
void HLXPowerClient::SetBtCallState(CallState state) { adapter_->SetBtCallState(state); }
void HLXPowerClient::SetCarPlayPhoneState(CpPhoneStateType state) { adapter_->SetCarPlayPhoneState(state); }
void HLXPowerClient::SetScreenLightOn(int on) { adapter_->SetScreenLightOn(on); }
void HLXPowerClient::SetScreenLightLevel(LightType type, unsigned char level) {
  adapter_->SetScreenLightLevel(type, level);
}
void HLXPowerClient::SetColorType(ColorType type) { adapter_->SetColorType(type); }
void HLXPowerClient::SetLedAnimation(int on) { adapter_->SetLedAnimation(on); }
void HLXPowerClient::ResetScreenBackLight() { adapter_->ResetScreenBackLight(); }
void HLXPowerClient::SetTempMaxScreenLightLevel(int isActive) { adapter_->SetTempMaxScreenLightLevel(isActive); }
void HLXPowerClient::SetLightDetectStyle(int isAutomatic) { adapter_->SetLightDetectStyle(isAutomatic); }
void HLXPowerClient::SetLightFixDayStyle(int isDay) { adapter_->SetLightFixDayStyle(isDay); }
void HLXPowerClient::SetButtonLightState(int on) { adapter_->SetButtonLightState(on); }
void HLXPowerClient::SetButtonLightValue(LightType type, unsigned char level) {
  adapter_->SetButtonLightValue(type, level);
}
void HLXPowerClient::SetGammaValue(int value) { adapter_->SetGammaValue(value); }
void HLXPowerClient::ResetButtonBackLight() { adapter_->ResetButtonBackLight(); }
void HLXPowerClient::SetPowerRvcStatus(int isOn) { adapter_->SetPowerRvcStatus(isOn); }
void HLXPowerClient::ConfirmPreRadioOffState(int param) { adapter_->ConfirmPreRadioOffState(param); }

RadioState HLXPowerClient::GetRadioOnState() { return As<RadioState>(data_->radio_on_state); }
int HLXPowerClient::IsScreenOnState() { return Int(data_->is_screen_on); }
int HLXPowerClient::IsAccOnState() { return Int(data_->is_acc_on); }
int HLXPowerClient::IsColdBootState() { return Int(data_->is_cold_boot); }
unsigned int HLXPowerClient::GetPowerOffDelayTime() { return Load(data_->_power_delay_time); }
unsigned int HLXPowerClient::GetRetainACCSec() { return Load(data_->_power_retain_acc_sec); }
PowerWakeupType HLXPowerClient::GetPowerWakeupType() { return As<PowerWakeupType>(data_->power_wakeup_type); }
ColorType HLXPowerClient::GetColorType() { return As<ColorType>(data_->color_type); }
int HLXPowerClient::GetLedAnimation() { return Int(data_->led_animation); }
LightType HLXPowerClient::GetCurScreenLightType() { return As<LightType>(data_->cur_screen_light_type); }
unsigned int HLXPowerClient::GetScreenLightLevel(LightType type) {
  return Load(type == LIGHT_TYPE_DAY ? data_->_screen_day_level : data_->_screen_night_level);
}
unsigned int HLXPowerClient::GetScreenGammaLevel() { return Load(data_->screen_gamma_level); }
void HLXPowerClient::GetDefaultScreenLightLevel(unsigned char& day, unsigned char& night) {
  day = Load(data_->default_screen_day_level);
  night = Load(data_->default_screen_night_level);
}
unsigned int HLXPowerClient::GetDefaultScreenGammaLevel() { return Load(data_->default_screen_gamma_level); }
int HLXPowerClient::IsLightAutoDetectStyle() { return Int(data_->is_light_auto_detect); }
int HLXPowerClient::IsLightDayFixStyle() { return Int(data_->is_light_day_fix); }
LightType HLXPowerClient::GetButtonLightType() { return As<LightType>(data_->button_light_type); }
unsigned int HLXPowerClient::GetCurButtonLightLevel(LightType type) {
  return Load(type == LIGHT_TYPE_DAY ? data_->button_day_level : data_->button_night_level);
}
BootReason HLXPowerClient::GetMcuBootType() { return As<BootReason>(data_->mcu_boot_type); }
int HLXPowerClient::GetHeadLightState() { return Int(data_->head_light_state); }

void HLXPowerClient::OnScreenStateChange(int on) { Notify(&IHLXPowerListener::OnScreenStateChange, on); }
void HLXPowerClient::OnRadioStateChange(RadioState state) { Notify(&IHLXPowerListener::OnRadioStateChange, state); }
void HLXPowerClient::OnAccStateChange(int on) { Notify(&IHLXPowerListener::OnAccStateChange, on); }
void HLXPowerClient::OnBatteryBootStateChange(int isColdBoot) {
  Notify(&IHLXPowerListener::OnBatteryBootStateChange, isColdBoot);
}
void HLXPowerClient::OnPowerOffDelayTimeChange(unsigned char time) {
  Notify(&IHLXPowerListener::OnPowerOffDelayTimeChange, time);
}
void HLXPowerClient::OnPowerWakeupType(PowerWakeupType type) { Notify(&IHLXPowerListener::OnPowerWakeupType, type); }
void HLXPowerClient::OnAbnormalPowerAudioNotify(unsigned char param) {
  Notify(&IHLXPowerListener::OnAbnormalPowerAudioNotify, param);
}
void HLXPowerClient::OnAbnormalPowerUsbNotify(unsigned char param) {
  Notify(&IHLXPowerListener::OnAbnormalPowerUsbNotify, param);
}
void HLXPowerClient::OnPowerPreRadioOffNotify() { Notify(&IHLXPowerListener::OnPowerPreRadioOffNotify); }
void HLXPowerClient::OnScreenLightLevelChanged(LightType type, unsigned char level) {
  Notify(&IHLXPowerListener::OnScreenLightLevelChanged, type, level);
}
void HLXPowerClient::OnScreenLightTypeChanged(LightType type) {
  Notify(&IHLXPowerListener::OnScreenLightTypeChanged, type);
}
void HLXPowerClient::OnButtonLightLevelChanged(LightType type, unsigned char level) {
  Notify(&IHLXPowerListener::OnButtonLightLevelChanged, type, level);
}
void HLXPowerClient::OnButtonLightTypeChanged(LightType type) {
  Notify(&IHLXPowerListener::OnButtonLightTypeChanged, type);
}
void HLXPowerClient::OnButtonColorChanged(ColorType color) { Notify(&IHLXPowerListener::OnButtonColorChanged, color); }
void HLXPowerClient::OnMcuBootTypeNotify(BootReason reason) { Notify(&IHLXPowerListener::OnMcuBootTypeNotify, reason); }
void HLXPowerClient::OnMcuRequestDisplayUiAction(McuReqDisplayUi action) {
  Notify(&IHLXPowerListener::OnMcuRequestDisplayUiAction, action);
}
void HLXPowerClient::OnHeadLightStateChange(int on) { Notify(&IHLXPowerListener::OnHeadLightStateChange, on); }
