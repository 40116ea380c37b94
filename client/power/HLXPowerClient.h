#pragma once

#include <memory>

#include "IHLXSystemPower.h"
#include "data/PowerShmDataBase.h"

class ClientIpcAdapter;

/// Getters from the power record, commands through the adapter, events to the listeners. Keeps no state of its own.
class HLXPowerClient : public IHLXSystemPower, public PowerShmDataBase {
 public:
  /// Maps and, if need be, fills the power record; ends the process with status 2 when it cannot be mapped.
  explicit HLXPowerClient(std::shared_ptr<ClientIpcAdapter> adapter);

  void ShutDown() override;
  void Reset() override;
  void RequestPowerOffState(int isKeyShortPress) override;
  HLXPower::RadioState GetRadioOnState() override;
  int IsScreenOnState() override;
  int IsAccOnState() override;
  int IsColdBootState() override;
  void SetPowerOffDelayTime(unsigned char time) override;
  unsigned int GetPowerOffDelayTime() override;
  unsigned int GetRetainACCSec() override;
  void SetRetainACCSec(unsigned int sec) override;
  void SetBtCallState(HLXPower::CallState state) override;
  void SetCarPlayPhoneState(HLXPower::CpPhoneStateType state) override;
  HLXPower::PowerWakeupType GetPowerWakeupType() override;
  void SetScreenLightOn(int on) override;
  void SetScreenLightLevel(HLXPower::LightType type, unsigned char level) override;
  void SetColorType(HLXPower::ColorType type) override;
  void SetLedAnimation(int on) override;
  HLXPower::ColorType GetColorType() override;
  int GetLedAnimation() override;
  void ResetScreenBackLight() override;
  HLXPower::LightType GetCurScreenLightType() override;
  unsigned int GetScreenLightLevel(HLXPower::LightType type) override;
  unsigned int GetScreenGammaLevel() override;
  void SetTempMaxScreenLightLevel(int isActive) override;
  void GetDefaultScreenLightLevel(unsigned char& day, unsigned char& night) override;
  unsigned int GetDefaultScreenGammaLevel() override;
  void SetLightDetectStyle(int isAutomatic) override;
  void SetLightFixDayStyle(int isDay) override;
  int IsLightAutoDetectStyle() override;
  int IsLightDayFixStyle() override;
  void SetButtonLightState(int on) override;
  void SetButtonLightValue(HLXPower::LightType type, unsigned char level) override;
  void SetGammaValue(int value) override;
  void ResetButtonBackLight() override;
  HLXPower::LightType GetButtonLightType() override;
  unsigned int GetCurButtonLightLevel(HLXPower::LightType type) override;
  void SetPowerRvcStatus(int isOn) override;
  void ConfirmPreRadioOffState(int param) override;
  HLXPower::BootReason GetMcuBootType() override;
  int GetHeadLightState() override;

  // Events, called by the adapter; each calls the listener callback of the same name.
  void OnScreenStateChange(int on);
  void OnRadioStateChange(HLXPower::RadioState state);
  void OnAccStateChange(int on);
  void OnBatteryBootStateChange(int isColdBoot);
  void OnPowerOffDelayTimeChange(unsigned char time);
  void OnPowerWakeupType(HLXPower::PowerWakeupType type);
  void OnAbnormalPowerAudioNotify(unsigned char param);
  void OnAbnormalPowerUsbNotify(unsigned char param);
  void OnPowerPreRadioOffNotify();
  void OnScreenLightLevelChanged(HLXPower::LightType type, unsigned char level);
  void OnScreenLightTypeChanged(HLXPower::LightType type);
  void OnButtonLightLevelChanged(HLXPower::LightType type, unsigned char level);
  void OnButtonLightTypeChanged(HLXPower::LightType type);
  void OnButtonColorChanged(HLXPower::ColorType color);
  void OnMcuBootTypeNotify(HLXPower::BootReason reason);
  void OnMcuRequestDisplayUiAction(HLXPower::McuReqDisplayUi action);
  void OnHeadLightStateChange(int on);

 private:
  std::shared_ptr<ClientIpcAdapter> adapter_;
  HLXSystemData::PowerShmData* data_;
};
