#ifndef HLX_POWER_TYPES_H
#define HLX_POWER_TYPES_H

/// @addtogroup power
/// @{

/// Values of the power client. All are 32-bit in this interface and one byte on D-Bus: only the low 8 bits of a value
/// travel. The service may send values without a name here; they are passed on unchanged.
namespace HLXPower {

/// Which of the two stored levels is meant. Every value but LIGHT_TYPE_DAY selects the night level.
enum LightType : int {
  LIGHT_TYPE_DAY = 0,    ///< the day level
  LIGHT_TYPE_NIGHT = 1,  ///< the night level
};

/// Colour of the button LEDs.
enum ColorType : int {
  COLOR_TYPE_RED = 0,     ///< red
  COLOR_TYPE_YELLOW = 1,  ///< yellow
  COLOR_TYPE_GREEN = 2,   ///< green
  COLOR_TYPE_BLUE = 3,    ///< blue
  COLOR_TYPE_PURPLE = 4,  ///< purple
  COLOR_TYPE_WHITE = 5,   ///< white
  COLOR_TYPE_CUSTOM = 9,  ///< a colour of the maker's or the user's choice
};

/// State of the Bluetooth hands-free call.
enum CallState : int {
  CALL_STATE_IDLE = 0,      ///< no call
  CALL_STATE_INCOMING = 1,  ///< it rings
  CALL_STATE_OUTGOING = 2,  ///< the other side rings
  CALL_STATE_ACTIVE = 3,    ///< the call is on
};

/// State of the phone call that Apple CarPlay holds.
enum CpPhoneStateType : int {
  CP_PHONE_STATE_IDLE = 0,     ///< no call
  CP_PHONE_STATE_CALLING = 1,  ///< it rings here or on the other side
  CP_PHONE_STATE_ACTIVE = 2,   ///< the call is on
};

/// Power state of the radio: it is what remains on when the driver switches the unit "off" with the ACC on.
enum RadioState : int {
  RADIO_STATE_OFF = 0,  ///< off
  RADIO_STATE_ON = 16,  ///< on; what a fresh record holds
};

/// Cause of the unit's last wake-up.
enum PowerWakeupType : int {
  POWER_WAKEUP_UNKNOWN = 0,  ///< not reported
  POWER_WAKEUP_ACC = 1,      ///< ACC was switched on
  POWER_WAKEUP_KEY = 2,      ///< the power key was pressed
  POWER_WAKEUP_CAN = 3,      ///< the vehicle's bus woke it
};

/// Why the MCU started the main processor.
enum BootReason : int {
  BOOT_REASON_COLD = 0,      ///< the battery was connected
  BOOT_REASON_ACC = 1,       ///< ACC was switched on
  BOOT_REASON_KEY = 2,       ///< the power key was pressed
  BOOT_REASON_RESET = 3,     ///< a restart was asked for
  BOOT_REASON_UPDATE = 4,    ///< an update has ended
  BOOT_REASON_UNKNOWN = 20,  ///< the answer of an implementation that does not know
};

/// What the MCU asks the user interface to show.
enum McuReqDisplayUi : int {
  MCU_REQ_DISPLAY_NONE = 0,     ///< nothing in particular
  MCU_REQ_DISPLAY_HOME = 1,     ///< the home screen
  MCU_REQ_DISPLAY_REVERSE = 2,  ///< the rear-view picture
  MCU_REQ_DISPLAY_STANDBY = 3,  ///< the standby screen
};

}  // namespace HLXPower

/// @}

#endif
