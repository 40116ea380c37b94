#ifndef I_HLX_POWER_LISTENER_H
#define I_HLX_POWER_LISTENER_H

#include "HLXExport.h"
#include "HLXPowerTypes.h"

/// Implemented by applications that want to hear of power changes; register it with IHLXSystemPower::AddListener().
///
/// Callbacks run on the thread that iterates the main context of HLX_StartSystemProxy(), one at a time, with the
/// client's listener mutex held: they must not add or remove listeners, release the library or block for long. A
/// repeated event is delivered again; compare for yourself if that matters. All values come from the service's signals.
/// The order of the virtual functions is part of the binary interface.
class HLX_API IHLXPowerListener {
 public:
  virtual ~IHLXPowerListener() = default;

  /// @param on non-zero: the screen is on
  virtual void OnScreenStateChange(int on) = 0;
  virtual void OnRadioStateChange(HLXPower::RadioState state) = 0;
  /// @param on non-zero: the ignition's accessory line (ACC) is on
  virtual void OnAccStateChange(int on) = 0;
  /// @param isColdBoot non-zero: this power-up is a cold boot, the battery had been disconnected
  virtual void OnBatteryBootStateChange(int isColdBoot) = 0;
  /// @param time delay between ACC off and power-off in seconds, 0 to 255
  virtual void OnPowerOffDelayTimeChange(unsigned char time) = 0;
  virtual void OnPowerWakeupType(HLXPower::PowerWakeupType type) = 0;
  /// The supply voltage is out of range for audio. @param param as the service sent it, 0 to 255
  virtual void OnAbnormalPowerAudioNotify(unsigned char param) = 0;
  /// The supply of the USB ports is out of range. @param param as the service sent it, 0 to 255
  virtual void OnAbnormalPowerUsbNotify(unsigned char param) = 0;
  /// The radio is about to be switched off; answer with IHLXSystemPower::ConfirmPreRadioOffState().
  virtual void OnPowerPreRadioOffNotify() = 0;
  /// @param level new screen brightness for `type`, 0 to 255
  virtual void OnScreenLightLevelChanged(HLXPower::LightType type, unsigned char level) = 0;
  /// @param type the level that the screen now shows
  virtual void OnScreenLightTypeChanged(HLXPower::LightType type) = 0;
  /// @param level new button brightness for `type`, 0 to 255
  virtual void OnButtonLightLevelChanged(HLXPower::LightType type, unsigned char level) = 0;
  /// @param type the level that the buttons now show
  virtual void OnButtonLightTypeChanged(HLXPower::LightType type) = 0;
  virtual void OnButtonColorChanged(HLXPower::ColorType color) = 0;
  virtual void OnMcuBootTypeNotify(HLXPower::BootReason reason) = 0;
  virtual void OnMcuRequestDisplayUiAction(HLXPower::McuReqDisplayUi action) = 0;
  /// @param on non-zero: the vehicle's head lights are on
  virtual void OnHeadLightStateChange(int on) = 0;
};

#endif
