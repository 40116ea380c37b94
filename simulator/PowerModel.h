/// Power, screen and button light of the simulated unit.
#pragma once

#include "simulator/Unit.h"

/// Every method answers the D-Bus command of its name. What a command changes goes to the record and, where the unit
/// remembers it over a restart, to the saved settings; the signal that belongs to it announces it.
class PowerModel {
 public:
  explicit PowerModel(Unit& unit) : unit_(unit), power_(unit.records().power) {}

  /// What the MCU reports when the unit comes up.
  void Boot();

  /// Screen and radio go off. ACC stays: it is the driver's key.
  void ShutDown();
  /// Screen and radio are on again, and the MCU tells that a reset was the reason.
  void Reset();

  /// With the radio on: tells the applications, and waits for ConfirmPreRadioOffState. With the radio off: a short
  /// press of the key brings radio and screen back.
  void RequestPowerOffState(bool isKeyShortPress);
  /// Lets the awaited radio-off happen; the screen goes with it. Without one, nothing.
  void ConfirmPreRadioOffState(int param);

  void SetPowerOffDelayTime(unsigned char time);
  void SetRetainACCSec(int sec);
  void SetScreenLightOn(bool bLightOn);
  void SetScreenLightLevel(unsigned char type, unsigned char level);
  void SetColorType(unsigned char type);
  void SetLedAnimation(unsigned char Animation);

  /// The light type that is shown follows the head lights with automatic detection, the fixed style without.
  void SetLightDetectStyle(unsigned char bAutomatic);
  void SetLightFixDayStyle(unsigned char bDayLight);

  void ResetScreenBackLight();
  void SetButtonLightValue(unsigned char type, unsigned char level);
  void SetGammaValue(int value);
  void ResetButtonBackLight();

 private:
  void SwitchOn(bool on);
  void ShowLightType();

  Unit& unit_;
  HLXSystemData::PowerShmData& power_;
  bool radio_off_awaited_ = false;
};
