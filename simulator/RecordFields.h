/// The fields of the four records by name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "data/InfoShmDataBase.h"
#include "data/MiscShmDataBase.h"
#include "data/PowerShmDataBase.h"
#include "data/SharedField.h"
#include "data/TimeShmDataBase.h"
#include "simulator/Values.h"

/// How the next update will go.
struct UpdatePlan {
  uint32_t fails = 0;     ///< non-zero: it breaks off in the middle
  uint32_t duration = 3;  ///< seconds of each of its stages
};

/// All state of the simulated unit that can be seen or set from outside.
struct Records {
  HLXSystemData::PowerShmData& power;
  HLXSystemData::MiscShmData& misc;
  HLXSystemData::TimeShmData& time;
  HLXSystemData::InfoShmData& info;
  UpdatePlan& update;
};

struct RecordField {
  enum class Kind { kUnsigned, kSigned, kDouble, kText };

  std::string_view name;  ///< "power.is_screen_on"
  Kind kind;
  std::size_t size;
  void* (*address)(Records&);

  /// Stores a number as the field's type has it; what does not fit loses its high bits.
  void StoreNumber(Records& records, int64_t value) const;
  void StoreDouble(Records& records, double value) const;

  /// Stores what `text` says. @throws BadArgument when the field cannot hold it
  void StoreText(Records& records, const std::string& text) const;
};

template <class T>
constexpr RecordField::Kind KindOf() {
  using Kind = RecordField::Kind;
  if (std::is_array_v<T>) return Kind::kText;
  if (std::is_floating_point_v<T>) return Kind::kDouble;
  return std::is_signed_v<T> ? Kind::kSigned : Kind::kUnsigned;
}

#define HLX_FIELD(path)                                                                                 \
  RecordField {                                                                                         \
#path, KindOf < std::remove_reference_t < decltype((std::declval <Records&>().path))>>(),           \
        sizeof(std::declval <Records&>().path), [](Records & r) { return static_cast<void*>(&r.path); } \
  }

/// Every field that a signal stands for or that can be set.
inline constexpr RecordField kRecordFields[] = {
    HLX_FIELD(power.cur_screen_light_type),
    HLX_FIELD(power.button_light_type),
    HLX_FIELD(power.is_screen_on),
    HLX_FIELD(power._screen_day_level),
    HLX_FIELD(power._screen_night_level),
    HLX_FIELD(power.screen_gamma_level),
    HLX_FIELD(power.button_day_level),
    HLX_FIELD(power.button_night_level),
    HLX_FIELD(power.is_acc_on),
    HLX_FIELD(power.is_cold_boot),
    HLX_FIELD(power.radio_on_state),
    HLX_FIELD(power._power_delay_time),
    HLX_FIELD(power._power_retain_acc_sec),
    HLX_FIELD(power.default_screen_day_level),
    HLX_FIELD(power.default_screen_night_level),
    HLX_FIELD(power.default_screen_gamma_level),
    HLX_FIELD(power.power_wakeup_type),
    HLX_FIELD(power.is_light_auto_detect),
    HLX_FIELD(power.is_light_day_fix),
    HLX_FIELD(power.color_type),
    HLX_FIELD(power.led_animation),
    HLX_FIELD(power.mcu_boot_type),
    HLX_FIELD(power.head_light_state),
    HLX_FIELD(misc.car_speed),
    HLX_FIELD(misc.car_float_speed_raw),
    HLX_FIELD(misc.parking_state),
    HLX_FIELD(misc.is_handbrake_test_on),
    HLX_FIELD(misc.radio_ant_state),
    HLX_FIELD(misc.gps_ant_state),
    HLX_FIELD(misc.dab_ant_state),
    HLX_FIELD(misc.mic_connect_state),
    HLX_FIELD(misc.speaker_states[0]),
    HLX_FIELD(misc.speaker_states[1]),
    HLX_FIELD(misc.speaker_states[2]),
    HLX_FIELD(misc.speaker_states[3]),
    HLX_FIELD(misc._is_rvc_delay),
    HLX_FIELD(misc._is_left_position),
    HLX_FIELD(misc.is_gps_ant_checking_on),
    HLX_FIELD(misc.tft_temperature),
    HLX_FIELD(misc.ac_state_bits),
    HLX_FIELD(misc.air_blow_mode),
    HLX_FIELD(misc.air_blow_level),
    HLX_FIELD(misc.driver_position_temperature),
    HLX_FIELD(misc.copilot_position_temperature),
    HLX_FIELD(misc.environment_temperature),
    HLX_FIELD(misc.simple_air_mode_bits),
    HLX_FIELD(misc.simple_environment_temperature),
    HLX_FIELD(misc.door_state_bits),
    HLX_FIELD(misc.current_car_speed),
    HLX_FIELD(misc.average_car_speed),
    HLX_FIELD(misc.raise_current_mile),
    HLX_FIELD(misc.total_mile),
    HLX_FIELD(misc.endurance_mile),
    HLX_FIELD(misc.stage_a_mile),
    HLX_FIELD(misc.stage_b_mile),
    HLX_FIELD(misc.current_fuel),
    HLX_FIELD(misc.average_fuel),
    HLX_FIELD(misc.engine_rotate_speed),
    HLX_FIELD(misc.can_version),
    HLX_FIELD(misc._can_box_enble),
    HLX_FIELD(misc._screen_shot_enble),
    HLX_FIELD(misc.simple_rvc_signal_actived),
    HLX_FIELD(misc.rear_camera_active),
    HLX_FIELD(misc.front_camera_active),
    HLX_FIELD(misc.system_temperature),
    HLX_FIELD(misc.system_language),
    HLX_FIELD(misc.urgent_mute_state),
    HLX_FIELD(misc.radio_region),
    HLX_FIELD(misc.speakers_amount),
    HLX_FIELD(misc.steel_mate_radar[0]),
    HLX_FIELD(misc.steel_mate_radar[1]),
    HLX_FIELD(misc.steel_mate_radar[2]),
    HLX_FIELD(misc.steel_mate_radar[3]),
    HLX_FIELD(time._time_24_mode),
    HLX_FIELD(time._auto_sync_mode),
    HLX_FIELD(time.auto_adjust_dst_mode),
    HLX_FIELD(time.is_cur_zone_dst_active),
    HLX_FIELD(time._is_time_reset_need),
    HLX_FIELD(time.ext_mcu_can_date_time.date.year),
    HLX_FIELD(time.ext_mcu_can_date_time.date.month),
    HLX_FIELD(time.ext_mcu_can_date_time.date.day),
    HLX_FIELD(time.ext_mcu_can_date_time.date.week),
    HLX_FIELD(time.ext_mcu_can_date_time.time.hour),
    HLX_FIELD(time.ext_mcu_can_date_time.time.minute),
    HLX_FIELD(time.ext_mcu_can_date_time.time.second),
    HLX_FIELD(time.ext_mcu_can_time_24_mode),
    HLX_FIELD(time.ext_mcu_can_time_zone),
    HLX_FIELD(info.mcu_version),
    HLX_FIELD(update.fails),
    HLX_FIELD(update.duration),
};
#undef HLX_FIELD

/// @throws BadArgument when there is no such field
constexpr const RecordField& FieldNamed(std::string_view name) {
  for (const RecordField& field : kRecordFields) {
    if (field.name == name) return field;
  }
  throw BadArgument("field: there is no field " + std::string(name));
}
