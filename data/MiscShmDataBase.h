#pragma once

#include <cstddef>
#include <cstdint>

#include "data/SystemShmDataBase.h"

namespace HLXSystemData {

/// The misc record. Its layout is the contract between the service and every client.
struct MiscShmData {
  uint32_t car_speed;
  uint32_t car_float_speed_raw;  ///< hundredths of a unit
  uint32_t parking_state;
  uint32_t is_handbrake_test_on;
  uint32_t radio_ant_state;    ///< SystemMisc::AntState
  uint32_t gps_ant_state;      ///< SystemMisc::AntState
  uint32_t dab_ant_state;      ///< SystemMisc::AntState
  uint32_t mic_connect_state;  ///< SystemMisc::AntState
  uint32_t reserved_32;
  uint32_t speaker_states[4];  ///< SystemMisc::SpeakerState of speakers 1 to 4
  uint32_t _is_rvc_delay;
  uint32_t _is_left_position;
  uint32_t initialised;  ///< non-zero once the defaults are in
  uint32_t is_gps_ant_checking_on;
  uint8_t tft_temperature;
  uint8_t ac_state_bits;   ///< bit n for SystemMisc::ACState n
  uint32_t air_blow_mode;  ///< SystemMisc::AirBlowMode
  uint32_t air_blow_level;
  double driver_position_temperature;
  double copilot_position_temperature;
  double environment_temperature;
  uint8_t simple_air_mode_bits;
  int8_t simple_environment_temperature;  ///< whole degrees
  uint8_t door_state_bits;                ///< bit n for SystemMisc::DoorState n
  uint8_t reserved_107;
  uint32_t current_car_speed;
  uint32_t average_car_speed;
  uint32_t raise_current_mile;
  uint32_t total_mile;
  uint32_t endurance_mile;
  uint32_t stage_a_mile;
  uint32_t stage_b_mile;
  uint32_t current_fuel;
  uint32_t average_fuel;
  uint32_t engine_rotate_speed;
  char can_version[32];  ///< not terminated when it fills all 32 bytes
  uint32_t _can_box_enble;
  uint32_t _screen_shot_enble;
  uint8_t reserved_188[4];
  uint32_t simple_rvc_signal_actived;
  uint32_t rear_camera_active;
  uint32_t front_camera_active;
  uint32_t system_temperature;
  uint32_t system_language;  ///< SystemMisc::Language
  uint32_t urgent_mute_state;
  uint32_t radio_region;  ///< SystemMisc::Radio_Region_Ford
  uint8_t speakers_amount;
  uint8_t steel_mate_radar[4];  ///< left, middle left, middle right, right
};

static_assert(sizeof(MiscShmData) == 232, "record size");
static_assert(offsetof(MiscShmData, reserved_32) == 32, "record layout");
static_assert(offsetof(MiscShmData, reserved_107) == 107, "record layout");
static_assert(offsetof(MiscShmData, reserved_188) == 188, "record layout");
static_assert(offsetof(MiscShmData, car_speed) == 0, "record layout");
static_assert(offsetof(MiscShmData, car_float_speed_raw) == 4, "record layout");
static_assert(offsetof(MiscShmData, parking_state) == 8, "record layout");
static_assert(offsetof(MiscShmData, is_handbrake_test_on) == 12, "record layout");
static_assert(offsetof(MiscShmData, radio_ant_state) == 16, "record layout");
static_assert(offsetof(MiscShmData, gps_ant_state) == 20, "record layout");
static_assert(offsetof(MiscShmData, dab_ant_state) == 24, "record layout");
static_assert(offsetof(MiscShmData, mic_connect_state) == 28, "record layout");
static_assert(offsetof(MiscShmData, reserved_32) == 32, "record layout");
static_assert(offsetof(MiscShmData, speaker_states) == 36, "record layout");
static_assert(offsetof(MiscShmData, _is_rvc_delay) == 52, "record layout");
static_assert(offsetof(MiscShmData, _is_left_position) == 56, "record layout");
static_assert(offsetof(MiscShmData, initialised) == 60, "record layout");
static_assert(offsetof(MiscShmData, is_gps_ant_checking_on) == 64, "record layout");
static_assert(offsetof(MiscShmData, tft_temperature) == 68, "record layout");
static_assert(offsetof(MiscShmData, ac_state_bits) == 69, "record layout");
static_assert(offsetof(MiscShmData, air_blow_mode) == 72, "record layout");
static_assert(offsetof(MiscShmData, air_blow_level) == 76, "record layout");
static_assert(offsetof(MiscShmData, driver_position_temperature) == 80, "record layout");
static_assert(offsetof(MiscShmData, copilot_position_temperature) == 88, "record layout");
static_assert(offsetof(MiscShmData, environment_temperature) == 96, "record layout");
static_assert(offsetof(MiscShmData, simple_air_mode_bits) == 104, "record layout");
static_assert(offsetof(MiscShmData, simple_environment_temperature) == 105, "record layout");
static_assert(offsetof(MiscShmData, door_state_bits) == 106, "record layout");
static_assert(offsetof(MiscShmData, reserved_107) == 107, "record layout");
static_assert(offsetof(MiscShmData, current_car_speed) == 108, "record layout");
static_assert(offsetof(MiscShmData, average_car_speed) == 112, "record layout");
static_assert(offsetof(MiscShmData, raise_current_mile) == 116, "record layout");
static_assert(offsetof(MiscShmData, total_mile) == 120, "record layout");
static_assert(offsetof(MiscShmData, endurance_mile) == 124, "record layout");
static_assert(offsetof(MiscShmData, stage_a_mile) == 128, "record layout");
static_assert(offsetof(MiscShmData, stage_b_mile) == 132, "record layout");
static_assert(offsetof(MiscShmData, current_fuel) == 136, "record layout");
static_assert(offsetof(MiscShmData, average_fuel) == 140, "record layout");
static_assert(offsetof(MiscShmData, engine_rotate_speed) == 144, "record layout");
static_assert(offsetof(MiscShmData, can_version) == 148, "record layout");
static_assert(offsetof(MiscShmData, _can_box_enble) == 180, "record layout");
static_assert(offsetof(MiscShmData, _screen_shot_enble) == 184, "record layout");
static_assert(offsetof(MiscShmData, reserved_188) == 188, "record layout");
static_assert(offsetof(MiscShmData, simple_rvc_signal_actived) == 192, "record layout");
static_assert(offsetof(MiscShmData, rear_camera_active) == 196, "record layout");
static_assert(offsetof(MiscShmData, front_camera_active) == 200, "record layout");
static_assert(offsetof(MiscShmData, system_temperature) == 204, "record layout");
static_assert(offsetof(MiscShmData, system_language) == 208, "record layout");
static_assert(offsetof(MiscShmData, urgent_mute_state) == 212, "record layout");
static_assert(offsetof(MiscShmData, radio_region) == 216, "record layout");
static_assert(offsetof(MiscShmData, speakers_amount) == 220, "record layout");
static_assert(offsetof(MiscShmData, steel_mate_radar) == 221, "record layout");

}  // namespace HLXSystemData

/// The misc segment and the first filling of its record.
class MiscShmDataBase : public SystemShmDataBase {
 public:
  using SystemShmDataBase::SystemShmDataBase;

  /// Fills a record that nobody has initialised from saved settings and configuration; leaves any other untouched.
  void InitMiscShmData(HLXSystemData::MiscShmData* data);
};
