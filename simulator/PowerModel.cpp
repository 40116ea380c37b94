#include "simulator/PowerModel.h"

#include "HLXPowerTypes.h"
#include "platform/HLXPlatform.h"

using namespace HLXSystemData;

void PowerModel::Boot() {
  Store(power_.is_cold_boot, IsSystemColdBoot() != 0 ? 1U : 0U);
  Store(power_.power_wakeup_type, static_cast<uint8_t>(HLXPower::POWER_WAKEUP_ACC));
  Store(power_.mcu_boot_type, static_cast<uint32_t>(HLXPower::BOOT_REASON_ACC));
}

void PowerModel::SwitchOn(bool on) {
  unit_.Announce("ScreenStateChangeSignal", on);
  unit_.Announce("RadioStateChangeSignal", on ? HLXPower::RADIO_STATE_ON : HLXPower::RADIO_STATE_OFF);
}

void PowerModel::ShutDown() {
  radio_off_awaited_ = false;
  SwitchOn(false);
}

void PowerModel::Reset() {
  radio_off_awaited_ = false;
  unit_.Announce("OnMcuBootTypeNotifySignal", HLXPower::BOOT_REASON_RESET);
  unit_.Announce("BatteryBootStateChangeSignal", false);
  SwitchOn(true);
}

void PowerModel::RequestPowerOffState(bool isKeyShortPress) {
  if (Load(power_.radio_on_state) != HLXPower::RADIO_STATE_OFF) {
    radio_off_awaited_ = true;
    unit_.Announce("OnPowerPreRadioOffNotify");
  } else if (isKeyShortPress) {
    SwitchOn(true);
  }
}

void PowerModel::ConfirmPreRadioOffState(int /*param*/) {
  if (!radio_off_awaited_) return;
  radio_off_awaited_ = false;
  SwitchOn(false);
}

void PowerModel::SetPowerOffDelayTime(unsigned char time) {
  unit_.Save(PERSIST_ID_POWER_SERVICE_DELAY_TIME, time);
  unit_.Announce("PowerOffDelayTimeChangeSignal", time);
}

void PowerModel::SetRetainACCSec(int sec) {
  const auto kept = static_cast<uint8_t>(sec);
  unit_.Save(PERSIST_ID_RETAIN_ACC_SEC, kept);
  Store(power_._power_retain_acc_sec, kept);
}

void PowerModel::SetScreenLightOn(bool bLightOn) { unit_.Announce("ScreenStateChangeSignal", bLightOn); }

void PowerModel::SetScreenLightLevel(unsigned char type, unsigned char level) {
  unit_.Save(type == HLXPower::LIGHT_TYPE_DAY ? PERSIST_ID_SCREEN_DAY_LEVEL : PERSIST_ID_SCREEN_NIGHT_LEVEL, level);
  unit_.Announce("ScreenLightLevelChangedSignal", type, level);
}

void PowerModel::SetColorType(unsigned char type) {
  unit_.Save(PERSIST_ID_BUTTON_LED_TYPE, type);
  unit_.Announce("ButtonColorChangedSignal", type);
}

void PowerModel::SetLedAnimation(unsigned char Animation) {
  unit_.Save(PERSIST_ID_BUTTON_LED_ANIMATION, Animation);
  Store(power_.led_animation, uint32_t{Animation});
}

void PowerModel::SetLightDetectStyle(unsigned char bAutomatic) {
  unit_.Save(PERSIST_ID_LIGHT_AUTO_DETECT, bAutomatic);
  Store(power_.is_light_auto_detect, uint32_t{bAutomatic});
  ShowLightType();
}

void PowerModel::SetLightFixDayStyle(unsigned char bDayLight) {
  unit_.Save(PERSIST_ID_FIX_LIGHT_DAY, bDayLight);
  Store(power_.is_light_day_fix, uint32_t{bDayLight});
  ShowLightType();
}

void PowerModel::ShowLightType() {
  const bool night =
      Load(power_.is_light_auto_detect) != 0 ? Load(power_.head_light_state) != 0 : Load(power_.is_light_day_fix) == 0;
  const auto type = static_cast<uint32_t>(night ? HLXPower::LIGHT_TYPE_NIGHT : HLXPower::LIGHT_TYPE_DAY);
  if (Load(power_.cur_screen_light_type) != type) unit_.Announce("ScreenLightTypeChangedSignal", type);
  if (Load(power_.button_light_type) != type) unit_.Announce("ButtonLightTypeChangedSignal", type);
}

void PowerModel::ResetScreenBackLight() {
  SetScreenLightLevel(HLXPower::LIGHT_TYPE_DAY, Load(power_.default_screen_day_level));
  SetScreenLightLevel(HLXPower::LIGHT_TYPE_NIGHT, Load(power_.default_screen_night_level));
}

void PowerModel::SetButtonLightValue(unsigned char type, unsigned char level) {
  unit_.Save(type == HLXPower::LIGHT_TYPE_DAY ? PERSIST_ID_BUTTON_DAY_LEVEL : PERSIST_ID_BUTTON_NIGHT_LEVEL, level);
  unit_.Announce("ButtonLightLevelChangedSignal", type, level);
}

void PowerModel::SetGammaValue(int value) { Store(power_.screen_gamma_level, static_cast<uint32_t>(value)); }

void PowerModel::ResetButtonBackLight() {
  const SystemDefaultData defaults;
  SetButtonLightValue(HLXPower::LIGHT_TYPE_DAY, defaults.default_led_day_level);
  SetButtonLightValue(HLXPower::LIGHT_TYPE_NIGHT, defaults.default_led_night_level);
}
