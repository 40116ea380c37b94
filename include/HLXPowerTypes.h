#ifndef HLX_POWER_TYPES_H
#define HLX_POWER_TYPES_H

/// Values of the power client. All are 32-bit in this interface and one byte on D-Bus: only the low 8 bits of a value
/// travel. The service may send values without a name here; they are passed on unchanged.
namespace HLXPower {

/// Which of the two stored levels is meant. Every value but LIGHT_TYPE_DAY selects the night level.
enum LightType : int {
  LIGHT_TYPE_DAY = 0,
  LIGHT_TYPE_NIGHT = 1,
};

/// Colour of the button LEDs.
enum ColorType : int {
  COLOR_TYPE_RED = 0,
  COLOR_TYPE_YELLOW = 1,
  COLOR_TYPE_GREEN = 2,
  COLOR_TYPE_BLUE = 3,
  COLOR_TYPE_PURPLE = 4,
  COLOR_TYPE_WHITE = 5,
  COLOR_TYPE_CUSTOM = 9,
};

/// State of the Bluetooth hands-free call.
enum CallState : int {
  CALL_STATE_IDLE = 0,
  CALL_STATE_INCOMING = 1,
  CALL_STATE_OUTGOING = 2,
  CALL_STATE_ACTIVE = 3,
};

/// State of the phone call that Apple CarPlay holds.
enum CpPhoneStateType : int {
  CP_PHONE_STATE_IDLE = 0,
  CP_PHONE_STATE_CALLING = 1,
  CP_PHONE_STATE_ACTIVE = 2,
};

/// Power state of the radio: it is what remains on when the driver switches the unit "off" with the ACC on.
enum RadioState : int {
  RADIO_STATE_OFF = 0,
  RADIO_STATE_ON = 16,  ///< what a fresh record holds
};

/// Cause of the unit's last wake-up.
enum PowerWakeupType : int {
  POWER_WAKEUP_UNKNOWN = 0,
  POWER_WAKEUP_ACC = 1,
  POWER_WAKEUP_KEY = 2,
  POWER_WAKEUP_CAN = 3,
};

/// Why the MCU started the main processor.
enum BootReason : int {
  BOOT_REASON_COLD = 0,
  BOOT_REASON_ACC = 1,
  BOOT_REASON_KEY = 2,
  BOOT_REASON_RESET = 3,
  BOOT_REASON_UPDATE = 4,
  BOOT_REASON_UNKNOWN = 20,  ///< the answer of an implementation that does not know
};

/// What the MCU asks the user interface to show.
enum McuReqDisplayUi : int {
  MCU_REQ_DISPLAY_NONE = 0,
  MCU_REQ_DISPLAY_HOME = 1,
  MCU_REQ_DISPLAY_REVERSE = 2,
  MCU_REQ_DISPLAY_STANDBY = 3,
};

}  // namespace HLXPower

#endif
