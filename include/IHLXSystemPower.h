#ifndef I_HLX_SYSTEM_POWER_H
#define I_HLX_SYSTEM_POWER_H

#include "HLXExport.h"
#include "HLXPowerTypes.h"
#include "IHLXListener.h"
#include "IHLXPowerListener.h"

/// @defgroup power Power and backlight
/// @{

/// Power and backlight: ACC, screen, radio, boot state, brightness, button light.
///
/// Getters read one field of the shared power record, without a lock and without a call. They cannot fail, they work
/// before HLX_StartSystemProxy(), and the service may change a field at any moment. Their values are the service's,
/// passed on unchecked.
///
/// Commands are blocking D-Bus calls on the caller's thread, up to the bus's time-out of about 25 s when the service
/// hangs. They check nothing, change nothing locally, and return before their effect can be seen: the service updates
/// the record and then announces the change. A command that failed is logged; HLX_GetLastCallError() tells why. Pass 0
/// or 1 where a switch is meant.
///
/// "Event" names the IHLXPowerListener callback that tells of the change. "Event: none" means that nothing tells: read
/// the getter again when it matters.
///
/// All functions may be called from any thread, but for the registration of listeners: see IHLXListener. The library
/// owns the client. The order of the virtual functions is part of the binary interface.
class HLX_API IHLXSystemPower : public IHLXListener<IHLXPowerListener> {
 public:
  /// @name Power
  /// @{

  /// Shuts the unit down. Event: OnScreenStateChange() and OnRadioStateChange(), as far as the application lives to
  /// hear them.
  virtual void ShutDown() = 0;
  /// Restarts the unit. Event: OnMcuBootTypeNotify(), OnBatteryBootStateChange(), OnScreenStateChange() and
  /// OnRadioStateChange() when it is up again.
  virtual void Reset() = 0;
  /// Asks for the "off" state that the power key gives. Event: OnPowerPreRadioOffNotify() when the radio is on, and
  /// OnRadioStateChange() and OnScreenStateChange() after ConfirmPreRadioOffState(), or at once when a short press ends
  /// that state.
  /// @param isKeyShortPress non-zero: as by a short press; 0: as by a long one
  virtual void RequestPowerOffState(int isKeyShortPress) = 0;
  /// @return the radio's power state; 16 (RADIO_STATE_ON) in a fresh record. Event: OnRadioStateChange().
  virtual HLXPower::RadioState GetRadioOnState() = 0;
  /// @return non-zero when the screen is on. Event: OnScreenStateChange().
  virtual int IsScreenOnState() = 0;
  /// @return non-zero when the ignition's accessory line (ACC) is on. Event: OnAccStateChange().
  virtual int IsAccOnState() = 0;
  /// @return non-zero when this power-up was a cold boot. Event: OnBatteryBootStateChange().
  virtual int IsColdBootState() = 0;
  /// Sets the delay between ACC off and power-off. Event: OnPowerOffDelayTimeChange().
  /// @param time seconds, 0 to 255
  virtual void SetPowerOffDelayTime(unsigned char time) = 0;
  /// @return delay between ACC off and power-off in seconds, 0 to 255. Event: OnPowerOffDelayTimeChange().
  virtual unsigned int GetPowerOffDelayTime() = 0;
  /// @return seconds that the unit stays on after ACC off, 0 to 255: the record keeps only the low byte of what
  ///   SetRetainACCSec() sent. Event: none.
  virtual unsigned int GetRetainACCSec() = 0;
  /// Sets how long the unit stays on after ACC off. Event: none.
  /// @param sec seconds, sent as a signed 32-bit number; use 0 to 255, since the record keeps the low byte only
  virtual void SetRetainACCSec(unsigned int sec) = 0;
  /// Tells the service the state of the Bluetooth hands-free call. Event: none.
  /// @param state only the low byte travels
  virtual void SetBtCallState(HLXPower::CallState state) = 0;
  /// Tells the service the state of the phone call that Apple CarPlay holds. Event: none.
  /// @param state only the low byte travels
  virtual void SetCarPlayPhoneState(HLXPower::CpPhoneStateType state) = 0;
  /// @return what woke the unit last. Event: OnPowerWakeupType().
  virtual HLXPower::PowerWakeupType GetPowerWakeupType() = 0;

  /// @}
  /// @name Screen, and colour of the buttons
  /// @{

  /// Switches the screen on or off. Event: OnScreenStateChange().
  /// @param on non-zero: on
  virtual void SetScreenLightOn(int on) = 0;
  /// Sets one of the two stored levels of the screen brightness. Event: OnScreenLightLevelChanged().
  /// @param type LIGHT_TYPE_DAY for the day level; every other value means the night level
  /// @param level 0 (darkest) to 255
  virtual void SetScreenLightLevel(HLXPower::LightType type, unsigned char level) = 0;
  /// Sets the colour of the button LEDs. Event: OnButtonColorChanged().
  /// @param type only the low byte travels
  virtual void SetColorType(HLXPower::ColorType type) = 0;
  /// Switches the animation of the button LEDs. Event: none.
  /// @param on 0 off, 1 on; only the low byte travels
  virtual void SetLedAnimation(int on) = 0;
  /// @return colour of the button LEDs. Event: OnButtonColorChanged().
  virtual HLXPower::ColorType GetColorType() = 0;
  /// @return non-zero when the button LEDs are animated. Event: none.
  virtual int GetLedAnimation() = 0;
  /// Puts the screen brightness back to the factory defaults. Event: OnScreenLightLevelChanged(), for day and night.
  virtual void ResetScreenBackLight() = 0;
  /// @return which of the two levels the screen shows now. Event: OnScreenLightTypeChanged().
  virtual HLXPower::LightType GetCurScreenLightType() = 0;
  /// @param type LIGHT_TYPE_DAY for the day level; every other value means the night level
  /// @return stored level of the screen brightness, 0 (darkest) to 255. Event: OnScreenLightLevelChanged().
  virtual unsigned int GetScreenLightLevel(HLXPower::LightType type) = 0;
  /// @return gamma of the display, as its driver counts it. Event: none.
  virtual unsigned int GetScreenGammaLevel() = 0;
  /// Shows full screen brightness; the stored levels stay as they are. Event: none.
  /// @param isActive non-zero: full brightness; 0: back to the stored level
  virtual void SetTempMaxScreenLightLevel(int isActive) = 0;
  /// Factory defaults of the screen brightness, read one after the other and not as a pair. Event: none.
  /// @param[out] day   level by day, 0 (darkest) to 255
  /// @param[out] night level by night, 0 (darkest) to 255
  virtual void GetDefaultScreenLightLevel(unsigned char& day, unsigned char& night) = 0;
  /// @return factory default of the gamma, as the display's driver counts it. Event: none.
  virtual unsigned int GetDefaultScreenGammaLevel() = 0;
  /// Lets the brightness follow the light sensor or keep to the fixed style. Event: OnScreenLightTypeChanged() and
  /// OnButtonLightTypeChanged() when the level that is shown changes.
  /// @param isAutomatic 1 follows the sensor, 0 does not; only the low byte travels
  virtual void SetLightDetectStyle(int isAutomatic) = 0;
  /// Chooses the fixed style, which holds while the light sensor is not followed. Event: OnScreenLightTypeChanged() and
  /// OnButtonLightTypeChanged() when the level that is shown changes.
  /// @param isDay 1 for the day levels, 0 for the night levels; only the low byte travels
  virtual void SetLightFixDayStyle(int isDay) = 0;
  /// @return non-zero when the brightness follows the light sensor. Event: none.
  virtual int IsLightAutoDetectStyle() = 0;
  /// @return non-zero when the fixed style is the day level. Event: none.
  virtual int IsLightDayFixStyle() = 0;

  /// @}
  /// @name Button light
  /// @{

  /// Switches the button light. Event: none.
  /// @param on non-zero: on. Only the low byte is looked at: 256 switches it off
  virtual void SetButtonLightState(int on) = 0;
  /// Sets one of the two stored levels of the button brightness. Event: OnButtonLightLevelChanged().
  /// @param type LIGHT_TYPE_DAY for the day level; every other value means the night level
  /// @param level 0 (darkest) to 255
  virtual void SetButtonLightValue(HLXPower::LightType type, unsigned char level) = 0;
  /// Sets the gamma of the display. Event: none.
  /// @param value as the display's driver counts it; see GetDefaultScreenGammaLevel()
  virtual void SetGammaValue(int value) = 0;
  /// Puts the button brightness back to the factory defaults. Event: OnButtonLightLevelChanged(), for day and night.
  virtual void ResetButtonBackLight() = 0;
  /// @return which of the two levels the buttons show now. Event: OnButtonLightTypeChanged().
  virtual HLXPower::LightType GetButtonLightType() = 0;
  /// @param type LIGHT_TYPE_DAY for the day level; every other value means the night level
  /// @return stored level of the button brightness, 0 (darkest) to 255. Event: OnButtonLightLevelChanged().
  virtual unsigned int GetCurButtonLightLevel(HLXPower::LightType type) = 0;

  /// @}
  /// @name Camera, radio, MCU and head lights
  /// @{

  /// Tells the service whether the picture of the rear-view camera is shown. Event: none.
  /// @param isOn non-zero: shown
  virtual void SetPowerRvcStatus(int isOn) = 0;
  /// Answers IHLXPowerListener::OnPowerPreRadioOffNotify(): the application is ready. Do not call it from the callback
  /// itself if your screen must not stall. Event: OnRadioStateChange() and OnScreenStateChange().
  /// @param param passed to the service unchanged
  virtual void ConfirmPreRadioOffState(int param) = 0;
  /// @return why the MCU started the main processor. Event: OnMcuBootTypeNotify().
  virtual HLXPower::BootReason GetMcuBootType() { return HLXPower::BOOT_REASON_UNKNOWN; }
  /// @return non-zero when the vehicle's head lights are on. Event: OnHeadLightStateChange().
  virtual int GetHeadLightState() = 0;

  /// @}
};

/// @}

#endif
