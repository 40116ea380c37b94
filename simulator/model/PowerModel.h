/// Screen, buttons and their light.
#pragma once

#include "simulator/model/Timer.h"
#include "simulator/model/Unit.h"

/// Every method that has the name of a D-Bus method does what that asks for. What a command changes goes to the record,
/// to the saved settings where the unit remembers it, and out with the signal that belongs to it.
class PowerModel {
 public:
  explicit PowerModel(Unit& unit);

  void SetPowerOffDelayTime(unsigned char time) { unit_.Change(unit_.power()._power_delay_time, time); }
  void SetRetainACCSec(int sec) { unit_.Change(unit_.power()._power_retain_acc_sec, static_cast<uint8_t>(sec)); }

  void SetScreenLightOn(bool bLightOn);
  void SetScreenLightLevel(unsigned char type, unsigned char level);
  void ResetScreenBackLight();
  /// The screen is as bright as it can be for ten seconds, or until it is switched off; then as bright as before.
  void SetTempMaxScreenLightLevel(bool isActive);
  void SetGammaValue(int value);

  /// Which light counts follows the head lights with automatic detection, the fixed style without.
  void SetLightDetectStyle(unsigned char bAutomatic);
  void SetLightFixDayStyle(unsigned char bDayLight);

  void SetButtonLightValue(unsigned char type, unsigned char level);
  void ResetButtonBackLight();
  void SetColorType(unsigned char type);
  void SetLedAnimation(unsigned char Animation);

 private:
  void Follow(const void* field);
  void ShowLightType();
  uint8_t& ScreenLevel(unsigned char type);

  Unit& unit_;
  Timer full_brightness_;
  unsigned char full_type_ = 0;  ///< the light whose level is at its full for a while
  unsigned char level_before_ = 0;
};
