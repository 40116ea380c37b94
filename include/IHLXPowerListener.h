#ifndef I_HLX_POWER_LISTENER_H
#define I_HLX_POWER_LISTENER_H

#include "HLXExport.h"
#include "HLXPowerTypes.h"

/// @addtogroup power
/// @{

/// Implemented by applications that want to hear of power changes; register it with IHLXSystemPower::AddListener().
///
/// Callbacks run on the thread that iterates the main context of HLX_StartSystemProxy(), one at a time, with the
/// client's listener mutex held: they must not add or remove listeners, release the library, iterate a main context,
/// throw or block for long. A repeated event is delivered again; compare for yourself if that matters. All values come
/// from the service's signals, unchecked. The application owns the listener. The order of the virtual functions is part
/// of the binary interface.
class HLX_API IHLXPowerListener {
 public:
  virtual ~IHLXPowerListener() = default;

  /// The screen was switched on or off. @param on non-zero: it is on
  virtual void OnScreenStateChange(int on) = 0;
  /// The radio was switched on or off. @param state the radio's new power state
  virtual void OnRadioStateChange(HLXPower::RadioState state) = 0;
  /// The ignition's accessory line (ACC) was switched on or off. @param on non-zero: it is on
  virtual void OnAccStateChange(int on) = 0;
  /// Tells how this power-up began. @param isColdBoot non-zero: a cold boot, the battery had been disconnected
  virtual void OnBatteryBootStateChange(int isColdBoot) = 0;
  /// The delay between ACC off and power-off was set. @param time seconds, 0 to 255
  virtual void OnPowerOffDelayTimeChange(unsigned char time) = 0;
  /// Tells what woke the unit. @param type cause of the wake-up
  virtual void OnPowerWakeupType(HLXPower::PowerWakeupType type) = 0;
  /// The supply voltage is out of range for audio, or in range again. @param param as the MCU reports it, 0 to 255
  virtual void OnAbnormalPowerAudioNotify(unsigned char param) = 0;
  /// The supply of the USB ports is out of range, or in range again. @param param as the MCU reports it, 0 to 255
  virtual void OnAbnormalPowerUsbNotify(unsigned char param) = 0;
  /// The radio is about to be switched off; answer with IHLXSystemPower::ConfirmPreRadioOffState().
  virtual void OnPowerPreRadioOffNotify() = 0;
  /// A stored level of the screen brightness was set.
  /// @param type LIGHT_TYPE_DAY for the day level; every other value means the night level
  /// @param level 0 (darkest) to 255
  virtual void OnScreenLightLevelChanged(HLXPower::LightType type, unsigned char level) = 0;
  /// The screen changed between its two levels. @param type the level that it shows now
  virtual void OnScreenLightTypeChanged(HLXPower::LightType type) = 0;
  /// A stored level of the button brightness was set.
  /// @param type LIGHT_TYPE_DAY for the day level; every other value means the night level
  /// @param level 0 (darkest) to 255
  virtual void OnButtonLightLevelChanged(HLXPower::LightType type, unsigned char level) = 0;
  /// The buttons changed between their two levels. @param type the level that they show now
  virtual void OnButtonLightTypeChanged(HLXPower::LightType type) = 0;
  /// The colour of the button LEDs was set. @param color the new colour
  virtual void OnButtonColorChanged(HLXPower::ColorType color) = 0;
  /// The MCU reported why it started the main processor. @param reason the MCU's reason
  virtual void OnMcuBootTypeNotify(HLXPower::BootReason reason) = 0;
  /// The MCU asks the user interface to show something. @param action what to show
  virtual void OnMcuRequestDisplayUiAction(HLXPower::McuReqDisplayUi action) = 0;
  /// The vehicle's head lights were switched on or off. @param on non-zero: they are on
  virtual void OnHeadLightStateChange(int on) = 0;
};

/// @}

#endif
