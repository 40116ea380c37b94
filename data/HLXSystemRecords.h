/// The four shared-memory records through which the system service publishes its state. For C99 and C++11; the service
/// and every client compile against this layout, which is asserted below, field by field.
///
/// In C++ the records are HLXSystemData::PowerShmData, MiscShmData, TimeShmData and InfoShmData, in C
/// struct HLXPowerShmData and so on (also as typedef). Numbers are little-endian. Between fields of different size lies
/// padding that nobody reads.
///
/// Making a segment. Each record is a System V segment of its own: shmget() with the key below, sizeof the record, and
/// IPC_CREAT. Whoever comes first makes it, service or client, and with it the permission bits: the library attaches to
/// power, misc and time with 0444 (HLX_SHM_ATTACH_BITS); its info client to misc and info with 0666
/// (HLX_SHM_CREATE_BITS). The library maps for writing, too: a segment of 0444 is open to privileged processes
/// (CAP_IPC_OWNER) only. A service whose applications are not privileged runs before them and makes all four with 0666.
///
/// Filling a record. `initialised` is 0 in a fresh segment. Who finds 0, service or client, sets it to 1 first and then
/// fills in what is saved and configured; who finds another value leaves the record to whom it belongs. The library
/// does this in every client's construction. Its time client goes further: it writes the zone table, zone, date, time
/// and daylight saving each time it is made. The flag says that somebody fills the record, not that the filling is
/// finished: a reader that starts at the same moment may still find zeros.
///
/// Writing a field. The service writes a field and then emits the signal that announces it. Other processes read at any
/// moment, without a lock: write each field in one access of its size, texts from the end to the beginning, and do not
/// expect two fields to change together.
#ifndef HLX_SYSTEM_RECORDS_H
#define HLX_SYSTEM_RECORDS_H

#include <stddef.h> /* NOLINT(modernize-deprecated-headers): also for C */
#include <stdint.h> /* NOLINT(modernize-deprecated-headers) */

/* System V keys. */
#define HLX_SHM_POWER_DATA_KEY 0xA8800081u
#define HLX_SHM_MISC_DATA_KEY 0xA8800082u
#define HLX_SHM_TIME_DATA_KEY 0xA8800083u
#define HLX_SHM_INFO_DATA_KEY 0xA8800084u

/* Permission bits of a new segment. */
#define HLX_SHM_ATTACH_BITS 0444
#define HLX_SHM_CREATE_BITS 0666

#ifdef __cplusplus

#include "HLXTimeTypes.h"

#define HLX_RECORD(name) name
#define HLX_TIME_TYPE(name) SystemTime::name
#define HLX_LAYOUT(condition) static_assert(condition, "record layout")
namespace HLXSystemData {

#else

#define HLX_RECORD(name) HLX##name
#define HLX_TIME_TYPE(name) struct HLX##name
#define HLX_LAYOUT(condition) extern char hlx_record_layout[(condition) ? 1 : -1]

/* The types of HLXTimeTypes.h for C. */
struct HLXDateInfo {
  int32_t year, month, day, week;
};
struct HLXTimeInfo {
  int32_t hour, minute, second;
};
struct HLXDateTime {
  struct HLXDateInfo date;
  struct HLXTimeInfo time;
};
struct HLXZoneInfo {
  int32_t zone;
  char zone_name[128];
};
struct HLXZoneList {
  uint32_t zone_count;
  struct HLXZoneInfo zone_table[79];
};

#endif

#define HLX_FIELD_AT(record, field, offset) HLX_LAYOUT(offsetof(struct HLX_RECORD(record), field) == (offset))
#define HLX_RECORD_SIZE(record, size) HLX_LAYOUT(sizeof(struct HLX_RECORD(record)) == (size))

/** Power, screen and button light. Enumerations: HLXPowerTypes.h. Flags are 0 or 1. */
struct HLX_RECORD(PowerShmData) {
  uint32_t cur_screen_light_type; /**< HLXPower::LightType */
  uint32_t button_light_type;     /**< HLXPower::LightType */
  uint32_t is_screen_on;
  uint32_t reserved_12;
  uint8_t _screen_day_level;
  uint8_t _screen_night_level;
  uint32_t screen_gamma_level;
  uint8_t button_day_level;
  uint8_t button_night_level;
  uint32_t is_acc_on;
  uint32_t is_cold_boot;
  uint32_t radio_on_state;       /**< HLXPower::RadioState */
  uint8_t _power_delay_time;     /**< seconds */
  uint8_t _power_retain_acc_sec; /**< seconds */
  uint32_t initialised;
  uint8_t default_screen_day_level;
  uint8_t default_screen_night_level;
  uint32_t default_screen_gamma_level;
  uint8_t power_wakeup_type; /**< HLXPower::PowerWakeupType */
  uint32_t is_light_auto_detect;
  uint32_t is_light_day_fix;
  uint8_t color_type; /**< HLXPower::ColorType */
  uint32_t led_animation;
  uint32_t mcu_boot_type; /**< HLXPower::BootReason */
  uint8_t reserved_80[8];
  uint32_t head_light_state;
};
HLX_RECORD_SIZE(PowerShmData, 92);
HLX_FIELD_AT(PowerShmData, cur_screen_light_type, 0);
HLX_FIELD_AT(PowerShmData, button_light_type, 4);
HLX_FIELD_AT(PowerShmData, is_screen_on, 8);
HLX_FIELD_AT(PowerShmData, reserved_12, 12);
HLX_FIELD_AT(PowerShmData, _screen_day_level, 16);
HLX_FIELD_AT(PowerShmData, _screen_night_level, 17);
HLX_FIELD_AT(PowerShmData, screen_gamma_level, 20);
HLX_FIELD_AT(PowerShmData, button_day_level, 24);
HLX_FIELD_AT(PowerShmData, button_night_level, 25);
HLX_FIELD_AT(PowerShmData, is_acc_on, 28);
HLX_FIELD_AT(PowerShmData, is_cold_boot, 32);
HLX_FIELD_AT(PowerShmData, radio_on_state, 36);
HLX_FIELD_AT(PowerShmData, _power_delay_time, 40);
HLX_FIELD_AT(PowerShmData, _power_retain_acc_sec, 41);
HLX_FIELD_AT(PowerShmData, initialised, 44);
HLX_FIELD_AT(PowerShmData, default_screen_day_level, 48);
HLX_FIELD_AT(PowerShmData, default_screen_night_level, 49);
HLX_FIELD_AT(PowerShmData, default_screen_gamma_level, 52);
HLX_FIELD_AT(PowerShmData, power_wakeup_type, 56);
HLX_FIELD_AT(PowerShmData, is_light_auto_detect, 60);
HLX_FIELD_AT(PowerShmData, is_light_day_fix, 64);
HLX_FIELD_AT(PowerShmData, color_type, 68);
HLX_FIELD_AT(PowerShmData, led_animation, 72);
HLX_FIELD_AT(PowerShmData, mcu_boot_type, 76);
HLX_FIELD_AT(PowerShmData, reserved_80, 80);
HLX_FIELD_AT(PowerShmData, head_light_state, 88);

/** Vehicle and peripherals. Enumerations: HLXMiscTypes.h. What has no unit here is as the CAN box counts it. */
struct HLX_RECORD(MiscShmData) {
  uint32_t car_speed;
  uint32_t car_float_speed_raw; /**< hundredths of a unit */
  uint32_t parking_state;
  uint32_t is_handbrake_test_on;
  uint32_t radio_ant_state;   /**< SystemMisc::AntState */
  uint32_t gps_ant_state;     /**< SystemMisc::AntState */
  uint32_t dab_ant_state;     /**< SystemMisc::AntState */
  uint32_t mic_connect_state; /**< SystemMisc::AntState */
  uint32_t reserved_32;
  uint32_t speaker_states[4]; /**< SystemMisc::SpeakerState of speakers 1 to 4 */
  uint32_t _is_rvc_delay;
  uint32_t _is_left_position;
  uint32_t initialised;
  uint32_t is_gps_ant_checking_on;
  uint8_t tft_temperature; /**< degrees */
  uint8_t ac_state_bits;   /**< bit n for SystemMisc::ACState n */
  uint32_t air_blow_mode;  /**< SystemMisc::AirBlowMode */
  uint32_t air_blow_level;
  double driver_position_temperature;  /**< degrees */
  double copilot_position_temperature; /**< degrees */
  double environment_temperature;      /**< degrees outside */
  uint8_t simple_air_mode_bits; /**< bits 4 to 7 for SystemMisc::SimpleAirMode; a Renault box has bits of its own */
  int8_t simple_environment_temperature; /**< whole degrees outside */
  uint8_t door_state_bits;               /**< bit n for SystemMisc::DoorState n */
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
  uint32_t engine_rotate_speed; /**< revolutions per minute */
  char can_version[32];         /**< terminated, unless it fills all 32 bytes */
  uint32_t _can_box_enble;
  uint32_t _screen_shot_enble;
  uint8_t reserved_188[4];
  uint32_t simple_rvc_signal_actived;
  uint32_t rear_camera_active;
  uint32_t front_camera_active;
  uint32_t system_temperature; /**< degrees; a signed number */
  uint32_t system_language;    /**< SystemMisc::Language */
  uint32_t urgent_mute_state;
  uint32_t radio_region; /**< SystemMisc::Radio_Region_Ford */
  uint8_t speakers_amount;
  uint8_t steel_mate_radar[4]; /**< left, middle left, middle right, right; 255: nothing in range */
};
HLX_RECORD_SIZE(MiscShmData, 232);
HLX_FIELD_AT(MiscShmData, car_speed, 0);
HLX_FIELD_AT(MiscShmData, car_float_speed_raw, 4);
HLX_FIELD_AT(MiscShmData, parking_state, 8);
HLX_FIELD_AT(MiscShmData, is_handbrake_test_on, 12);
HLX_FIELD_AT(MiscShmData, radio_ant_state, 16);
HLX_FIELD_AT(MiscShmData, gps_ant_state, 20);
HLX_FIELD_AT(MiscShmData, dab_ant_state, 24);
HLX_FIELD_AT(MiscShmData, mic_connect_state, 28);
HLX_FIELD_AT(MiscShmData, reserved_32, 32);
HLX_FIELD_AT(MiscShmData, speaker_states, 36);
HLX_FIELD_AT(MiscShmData, _is_rvc_delay, 52);
HLX_FIELD_AT(MiscShmData, _is_left_position, 56);
HLX_FIELD_AT(MiscShmData, initialised, 60);
HLX_FIELD_AT(MiscShmData, is_gps_ant_checking_on, 64);
HLX_FIELD_AT(MiscShmData, tft_temperature, 68);
HLX_FIELD_AT(MiscShmData, ac_state_bits, 69);
HLX_FIELD_AT(MiscShmData, air_blow_mode, 72);
HLX_FIELD_AT(MiscShmData, air_blow_level, 76);
HLX_FIELD_AT(MiscShmData, driver_position_temperature, 80);
HLX_FIELD_AT(MiscShmData, copilot_position_temperature, 88);
HLX_FIELD_AT(MiscShmData, environment_temperature, 96);
HLX_FIELD_AT(MiscShmData, simple_air_mode_bits, 104);
HLX_FIELD_AT(MiscShmData, simple_environment_temperature, 105);
HLX_FIELD_AT(MiscShmData, door_state_bits, 106);
HLX_FIELD_AT(MiscShmData, reserved_107, 107);
HLX_FIELD_AT(MiscShmData, current_car_speed, 108);
HLX_FIELD_AT(MiscShmData, average_car_speed, 112);
HLX_FIELD_AT(MiscShmData, raise_current_mile, 116);
HLX_FIELD_AT(MiscShmData, total_mile, 120);
HLX_FIELD_AT(MiscShmData, endurance_mile, 124);
HLX_FIELD_AT(MiscShmData, stage_a_mile, 128);
HLX_FIELD_AT(MiscShmData, stage_b_mile, 132);
HLX_FIELD_AT(MiscShmData, current_fuel, 136);
HLX_FIELD_AT(MiscShmData, average_fuel, 140);
HLX_FIELD_AT(MiscShmData, engine_rotate_speed, 144);
HLX_FIELD_AT(MiscShmData, can_version, 148);
HLX_FIELD_AT(MiscShmData, _can_box_enble, 180);
HLX_FIELD_AT(MiscShmData, _screen_shot_enble, 184);
HLX_FIELD_AT(MiscShmData, reserved_188, 188);
HLX_FIELD_AT(MiscShmData, simple_rvc_signal_actived, 192);
HLX_FIELD_AT(MiscShmData, rear_camera_active, 196);
HLX_FIELD_AT(MiscShmData, front_camera_active, 200);
HLX_FIELD_AT(MiscShmData, system_temperature, 204);
HLX_FIELD_AT(MiscShmData, system_language, 208);
HLX_FIELD_AT(MiscShmData, urgent_mute_state, 212);
HLX_FIELD_AT(MiscShmData, radio_region, 216);
HLX_FIELD_AT(MiscShmData, speakers_amount, 220);
HLX_FIELD_AT(MiscShmData, steel_mate_radar, 221);

/** Clock, zones, and what the vehicle says of the time. */
struct HLX_RECORD(TimeShmData) {
  int32_t _time_24_mode;
  int32_t _auto_sync_mode;
  int32_t auto_adjust_dst_mode;
  int32_t is_cur_zone_dst_active; /**< negative: not known */
  HLX_TIME_TYPE(DateInfo) cur_date;
  HLX_TIME_TYPE(TimeInfo) cur_time;
  HLX_TIME_TYPE(ZoneList) zones;
  int32_t _cur_zone;                      /**< SystemTime::TimeZone */
  HLX_TIME_TYPE(DateTime) sync_date_time; /**< last UTC from GPS or CarPlay */
  uint32_t initialised;
  int32_t _is_time_reset_need; /**< the clock must be set to a default */
  HLX_TIME_TYPE(DateTime) ext_mcu_can_date_time;
  int32_t ext_mcu_can_time_24_mode;
  uint8_t ext_mcu_can_time_zone;
};
HLX_LAYOUT(sizeof(HLX_TIME_TYPE(DateInfo)) == 16);
HLX_LAYOUT(sizeof(HLX_TIME_TYPE(TimeInfo)) == 12);
HLX_LAYOUT(sizeof(HLX_TIME_TYPE(DateTime)) == 28);
HLX_LAYOUT(sizeof(HLX_TIME_TYPE(ZoneInfo)) == 132);
HLX_LAYOUT(offsetof(HLX_TIME_TYPE(ZoneInfo), zone_name) == 4);
HLX_LAYOUT(offsetof(HLX_TIME_TYPE(ZoneList), zone_table) == 4);
HLX_RECORD_SIZE(TimeShmData, 10552);
HLX_FIELD_AT(TimeShmData, _time_24_mode, 0);
HLX_FIELD_AT(TimeShmData, _auto_sync_mode, 4);
HLX_FIELD_AT(TimeShmData, auto_adjust_dst_mode, 8);
HLX_FIELD_AT(TimeShmData, is_cur_zone_dst_active, 12);
HLX_FIELD_AT(TimeShmData, cur_date, 16);
HLX_FIELD_AT(TimeShmData, cur_time, 32);
HLX_FIELD_AT(TimeShmData, zones, 44);
HLX_FIELD_AT(TimeShmData, _cur_zone, 10476);
HLX_FIELD_AT(TimeShmData, sync_date_time, 10480);
HLX_FIELD_AT(TimeShmData, initialised, 10508);
HLX_FIELD_AT(TimeShmData, _is_time_reset_need, 10512);
HLX_FIELD_AT(TimeShmData, ext_mcu_can_date_time, 10516);
HLX_FIELD_AT(TimeShmData, ext_mcu_can_time_24_mode, 10544);
HLX_FIELD_AT(TimeShmData, ext_mcu_can_time_zone, 10548);

/** What the service tells of the MCU. */
struct HLX_RECORD(InfoShmData) {
  char mcu_version[256]; /**< terminated, unless it fills all 256 bytes; empty until the service writes it */
  uint32_t initialised;
};
HLX_RECORD_SIZE(InfoShmData, 260);
HLX_FIELD_AT(InfoShmData, mcu_version, 0);
HLX_FIELD_AT(InfoShmData, initialised, 256);

#ifdef __cplusplus

constexpr unsigned long long SHM_POWER_DATA_KEY_ID = HLX_SHM_POWER_DATA_KEY;
constexpr unsigned long long SHM_MISC_DATA_KEY_ID = HLX_SHM_MISC_DATA_KEY;
constexpr unsigned long long SHM_TIME_DATA_KEY_ID = HLX_SHM_TIME_DATA_KEY;
constexpr unsigned long long SHM_INFO_DATA_KEY_ID = HLX_SHM_INFO_DATA_KEY;

}  // namespace HLXSystemData

#else

typedef struct HLXPowerShmData HLXPowerShmData;
typedef struct HLXMiscShmData HLXMiscShmData;
typedef struct HLXTimeShmData HLXTimeShmData;
typedef struct HLXInfoShmData HLXInfoShmData;

#endif

#undef HLX_RECORD
#undef HLX_TIME_TYPE
#undef HLX_LAYOUT
#undef HLX_FIELD_AT
#undef HLX_RECORD_SIZE

#endif
