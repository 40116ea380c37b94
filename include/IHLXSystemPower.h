#ifndef I_HLX_SYSTEM_POWER_H
#define I_HLX_SYSTEM_POWER_H

#include "HLXExport.h"
#include "HLXPowerTypes.h"
#include "IHLXListener.h"
#include "IHLXPowerListener.h"

/// Power and backlight: ACC, screen, radio, boot state, brightness, button light.
///
/// Getters read one field of the shared power record, without a lock and without a call; they cannot fail, and work
/// before HLX_StartSystemProxy(). The service may change a field at any moment.
///
/// Commands are blocking D-Bus calls on the caller's thread (up to the bus's time-out, about 25 s, when the service
/// hangs). They check nothing, change nothing locally and return nothing: the service updates the record and the
/// change comes back as an event. A command that failed is logged; HLX_GetLastCallError() tells why. Pass 0 or 1 where
/// a switch is meant: only the low byte of another number counts.
///
/// All functions may be called from any thread. The order of the virtual functions is part of the binary interface.
class HLX_API IHLXSystemPower : public IHLXListener<IHLXPowerListener> {
 public:
  /// Shuts the unit down.
  virtual void ShutDown() = 0;
  /// Restarts the unit.
  virtual void Reset() = 0;
  /// Asks for the "off" state that the power key gives. @param isKeyShortPress non-zero: as by a short press
  virtual void RequestPowerOffState(int isKeyShortPress) = 0;
  virtual HLXPower::RadioState GetRadioOnState() = 0;
  /// @return non-zero when the screen is on
  virtual int IsScreenOnState() = 0;
  /// @return non-zero when the ignition's accessory line (ACC) is on
  virtual int IsAccOnState() = 0;
  /// @return non-zero when this power-up was a cold boot
  virtual int IsColdBootState() = 0;
  /// @param time delay between ACC off and power-off in seconds, 0 to 255
  virtual void SetPowerOffDelayTime(unsigned char time) = 0;
  /// @return delay between ACC off and power-off in seconds, 0 to 255
  virtual unsigned int GetPowerOffDelayTime() = 0;
  /// @return seconds that the unit stays on after ACC off, 0 to 255: the record keeps only the low byte of what
  ///   SetRetainACCSec() sent
  virtual unsigned int GetRetainACCSec() = 0;
  /// @param sec seconds that the unit stays on after ACC off; sent as a signed 32-bit number
  virtual void SetRetainACCSec(unsigned int sec) = 0;
  virtual void SetBtCallState(HLXPower::CallState state) = 0;
  virtual void SetCarPlayPhoneState(HLXPower::CpPhoneStateType state) = 0;
  virtual HLXPower::PowerWakeupType GetPowerWakeupType() = 0;
  /// @param on non-zero switches the screen on
  virtual void SetScreenLightOn(int on) = 0;
  /// @param level screen brightness for `type`, 0 to 255
  virtual void SetScreenLightLevel(HLXPower::LightType type, unsigned char level) = 0;
  /// Sets the colour of the button LEDs.
  virtual void SetColorType(HLXPower::ColorType type) = 0;
  /// @param on non-zero switches the animation of the button LEDs on; only the low byte travels
  virtual void SetLedAnimation(int on) = 0;
  virtual HLXPower::ColorType GetColorType() = 0;
  /// @return non-zero when the button LEDs are animated
  virtual int GetLedAnimation() = 0;
  /// Puts the screen brightness back to the factory defaults.
  virtual void ResetScreenBackLight() = 0;
  /// @return the level that the screen shows now
  virtual HLXPower::LightType GetCurScreenLightType() = 0;
  /// @return screen brightness, 0 to 255: the day level for LIGHT_TYPE_DAY, the night level for every other `type`
  virtual unsigned int GetScreenLightLevel(HLXPower::LightType type) = 0;
  virtual unsigned int GetScreenGammaLevel() = 0;
  /// @param isActive non-zero shows full brightness until it is called with 0
  virtual void SetTempMaxScreenLightLevel(int isActive) = 0;
  /// Factory defaults of the screen brightness, 0 to 255 each. The two are read one after the other, not as a pair.
  virtual void GetDefaultScreenLightLevel(unsigned char& day, unsigned char& night) = 0;
  virtual unsigned int GetDefaultScreenGammaLevel() = 0;
  /// @param isAutomatic non-zero lets the brightness follow the light sensor; only the low byte travels
  virtual void SetLightDetectStyle(int isAutomatic) = 0;
  /// @param isDay non-zero fixes the brightness to the day level; only the low byte travels
  virtual void SetLightFixDayStyle(int isDay) = 0;
  /// @return non-zero when the brightness follows the light sensor
  virtual int IsLightAutoDetectStyle() = 0;
  /// @return non-zero when the brightness is fixed to the day level
  virtual int IsLightDayFixStyle() = 0;
  /// @param on non-zero switches the button light on. Only the low byte is looked at: 256 switches it off
  virtual void SetButtonLightState(int on) = 0;
  /// @param level button brightness for `type`, 0 to 255
  virtual void SetButtonLightValue(HLXPower::LightType type, unsigned char level) = 0;
  virtual void SetGammaValue(int value) = 0;
  /// Puts the button brightness back to the factory defaults.
  virtual void ResetButtonBackLight() = 0;
  /// @return the level that the buttons show now
  virtual HLXPower::LightType GetButtonLightType() = 0;
  /// @return button brightness, 0 to 255: the day level for LIGHT_TYPE_DAY, the night level for every other `type`
  virtual unsigned int GetCurButtonLightLevel(HLXPower::LightType type) = 0;
  /// Tells the service that the rear-view camera picture is shown. @param isOn non-zero: shown
  virtual void SetPowerRvcStatus(int isOn) = 0;
  /// Answers IHLXPowerListener::OnPowerPreRadioOffNotify(). @param param passed to the service unchanged
  virtual void ConfirmPreRadioOffState(int param) = 0;
  /// @return boot reason as the MCU reported it
  virtual HLXPower::BootReason GetMcuBootType() { return HLXPower::BOOT_REASON_UNKNOWN; }
  /// @return non-zero when the vehicle's head lights are on
  virtual int GetHeadLightState() = 0;
};

#endif
