#pragma once

#include <cstddef>
#include <cstdint>

#include "data/SystemShmDataBase.h"

namespace HLXSystemData {

/// The power record. Its layout is the contract between the service and every client.
struct PowerShmData {
  uint32_t cur_screen_light_type;  ///< HLXPower::LightType
  uint32_t button_light_type;      ///< HLXPower::LightType
  uint32_t is_screen_on;
  uint32_t reserved_12;
  uint8_t _screen_day_level;
  uint8_t _screen_night_level;
  uint32_t screen_gamma_level;
  uint8_t button_day_level;
  uint8_t button_night_level;
  uint32_t is_acc_on;
  uint32_t is_cold_boot;
  uint32_t radio_on_state;        ///< HLXPower::RadioState
  uint8_t _power_delay_time;      ///< seconds
  uint8_t _power_retain_acc_sec;  ///< seconds
  uint32_t initialised;           ///< non-zero once the defaults are in
  uint8_t default_screen_day_level;
  uint8_t default_screen_night_level;
  uint32_t default_screen_gamma_level;
  uint8_t power_wakeup_type;  ///< HLXPower::PowerWakeupType
  uint32_t is_light_auto_detect;
  uint32_t is_light_day_fix;
  uint8_t color_type;  ///< HLXPower::ColorType
  uint32_t led_animation;
  uint32_t mcu_boot_type;  ///< HLXPower::BootReason
  uint8_t reserved_80[8];
  uint32_t head_light_state;
};

static_assert(sizeof(PowerShmData) == 92, "record size");
static_assert(offsetof(PowerShmData, cur_screen_light_type) == 0, "record layout");
static_assert(offsetof(PowerShmData, button_light_type) == 4, "record layout");
static_assert(offsetof(PowerShmData, is_screen_on) == 8, "record layout");
static_assert(offsetof(PowerShmData, _screen_day_level) == 16, "record layout");
static_assert(offsetof(PowerShmData, _screen_night_level) == 17, "record layout");
static_assert(offsetof(PowerShmData, screen_gamma_level) == 20, "record layout");
static_assert(offsetof(PowerShmData, button_day_level) == 24, "record layout");
static_assert(offsetof(PowerShmData, button_night_level) == 25, "record layout");
static_assert(offsetof(PowerShmData, is_acc_on) == 28, "record layout");
static_assert(offsetof(PowerShmData, is_cold_boot) == 32, "record layout");
static_assert(offsetof(PowerShmData, radio_on_state) == 36, "record layout");
static_assert(offsetof(PowerShmData, _power_delay_time) == 40, "record layout");
static_assert(offsetof(PowerShmData, _power_retain_acc_sec) == 41, "record layout");
static_assert(offsetof(PowerShmData, initialised) == 44, "record layout");
static_assert(offsetof(PowerShmData, default_screen_day_level) == 48, "record layout");
static_assert(offsetof(PowerShmData, default_screen_night_level) == 49, "record layout");
static_assert(offsetof(PowerShmData, default_screen_gamma_level) == 52, "record layout");
static_assert(offsetof(PowerShmData, power_wakeup_type) == 56, "record layout");
static_assert(offsetof(PowerShmData, is_light_auto_detect) == 60, "record layout");
static_assert(offsetof(PowerShmData, is_light_day_fix) == 64, "record layout");
static_assert(offsetof(PowerShmData, color_type) == 68, "record layout");
static_assert(offsetof(PowerShmData, led_animation) == 72, "record layout");
static_assert(offsetof(PowerShmData, mcu_boot_type) == 76, "record layout");
static_assert(offsetof(PowerShmData, head_light_state) == 88, "record layout");

}  // namespace HLXSystemData

/// The power segment and the first filling of its record.
class PowerShmDataBase : public SystemShmDataBase {
 public:
  using SystemShmDataBase::SystemShmDataBase;

  /// Fills a record that nobody has initialised from saved settings and configuration; leaves any other untouched.
  void InitPowerShmData(HLXSystemData::PowerShmData* data);

 private:
  void InitScreenAndButtons(HLXSystemData::PowerShmData* data);
  static void InitLedAndStyle(HLXSystemData::PowerShmData* data);
};
