/// What saved settings and the configuration fill into the records first: one row each, and the only list of it.
#pragma once

#include <cstddef>
#include <vector>

#include "data/HLXPersist.h"
#include "data/HLXSystemRecords.h"
#include "data/SystemDefaultData.h"

namespace HLXSystemData {

/// A 32-bit number or a byte of a record.
struct Place {
  const char* record;  ///< "power"
  const char* field;
  std::size_t offset;
  std::size_t size;
};

/// A field that is read from the saved setting `item`. A setting that cannot be read has a stand-in: the configuration
/// says which, or it is a number.
struct Setting {
  Place place;
  PersistItem item;                                   ///< without a name: never saved
  const char* key;                                    ///< of the configuration; null: `stand_in` itself
  int stand_in;                                       ///< with the key of a switch: what "true" is; "false" is 0
  unsigned char SystemDefaultData::*level = nullptr;  ///< the key is a level, which was read when the segment was made
  bool is_saved_back = false;                         ///< the stand-in is saved at once
  bool is_logged = false;                             ///< "field:value" at DEBUG

  constexpr Setting SavedBack() const {
    Setting setting = *this;
    setting.is_saved_back = true;
    return setting;
  }
  constexpr Setting Logged() const {
    Setting setting = *this;
    setting.is_logged = true;
    return setting;
  }
};

constexpr PersistItem kNeverSaved{0, 0, nullptr};

constexpr Setting Number(Place place, PersistItem item, int stand_in) { return {place, item, nullptr, stand_in}; }
constexpr Setting Switch(Place place, PersistItem item, const char* key, int yes = 1) {
  return {place, item, key, yes};
}
constexpr Setting Level(Place place, PersistItem item, const char* key, unsigned char SystemDefaultData::*level) {
  return {place, item, key, 0, level};
}

#define POWER(field) \
  Place { "power", #field, offsetof(PowerShmData, field), sizeof(PowerShmData::field) }
#define MISC(field) \
  Place { "misc", #field, offsetof(MiscShmData, field), sizeof(MiscShmData::field) }
#define TIME(field) \
  Place { "time", #field, offsetof(TimeShmData, field), sizeof(TimeShmData::field) }

inline constexpr Setting kPowerOffSettings[] = {
    Switch(POWER(_power_delay_time), PERSIST_ID_POWER_SERVICE_DELAY_TIME, "/setting/default_acc_off_delay", 20)
        .Logged(),
    Number(POWER(_power_retain_acc_sec), PERSIST_ID_RETAIN_ACC_SEC, 0).Logged(),
};
inline constexpr Setting kScreenSettings[] = {
    Level(POWER(_screen_day_level), PERSIST_ID_SCREEN_DAY_LEVEL, kDefaultScreenDayKey,
          &SystemDefaultData::default_screen_day_level),
    Level(POWER(_screen_night_level), PERSIST_ID_SCREEN_NIGHT_LEVEL, kDefaultScreenNightKey,
          &SystemDefaultData::default_screen_night_level),
};
/// Only where "/system/enable_led_setting" is true.
inline constexpr Setting kButtonSettings[] = {
    Level(POWER(button_day_level), PERSIST_ID_BUTTON_DAY_LEVEL, kDefaultLedDayKey,
          &SystemDefaultData::default_led_day_level),
    Level(POWER(button_night_level), PERSIST_ID_BUTTON_NIGHT_LEVEL, kDefaultLedNightKey,
          &SystemDefaultData::default_led_night_level),
};
/// The key is the name of a colour: filled in PowerShmDataBase.cpp.
inline constexpr Setting kColourSetting =
    Switch(POWER(color_type), PERSIST_ID_BUTTON_LED_TYPE, "/system/default_led_colour");
inline constexpr Setting kStyleSettings[] = {
    Number(POWER(led_animation), PERSIST_ID_BUTTON_LED_ANIMATION, 1).SavedBack(),
    Switch(POWER(is_light_auto_detect), PERSIST_ID_LIGHT_AUTO_DETECT, "/q4system/enable_light_auto_detect").SavedBack(),
    Switch(POWER(is_light_day_fix), PERSIST_ID_FIX_LIGHT_DAY, "/q4system/default_day_light_mode").SavedBack(),
};

inline constexpr Setting kVehicleSettings[] = {
    Switch(MISC(_is_rvc_delay), PERSIST_ID_RVC_DELAY, "/setting/default_rearview_camera_delay").Logged(),
    Switch(MISC(_is_left_position), PERSIST_ID_DRIVE_POSITION, "/setting/default_advance_driving_seat_is_left")
        .Logged(),
    Switch(MISC(_can_box_enble), PERSIST_ID_CAN_BOX_ENABLE, "/setting/default_canbox_control").Logged(),
};
inline constexpr Setting kCheckSettings[] = {
    Switch(MISC(is_handbrake_test_on), kNeverSaved, "/setting/handbrake_test_default_on"),
    Switch(MISC(is_gps_ant_checking_on), kNeverSaved, "/setting/gps_ant_checking_default_on"),
};

/// That it was saved at all counts: filled in TimeShmDataBase.cpp.
inline constexpr Setting kClockSetting = Number(TIME(_is_time_reset_need), PERSIST_ID_TIME_RESET_FLAG, 1);
inline constexpr Setting kTimeSettings[] = {
    Switch(TIME(_time_24_mode), PERSIST_ID_TIME_24_MODE, "/setting/enable_24hour_mode").Logged(),
    Switch(TIME(_auto_sync_mode), PERSIST_ID_AUTO_SYNC, "/setting/default_time_auto_adjust").Logged(),
    Number(TIME(auto_adjust_dst_mode), PERSIST_ID_ENABLE_DIST, 0),
};
/// The key is the number of a zone: filled in TimeShmDataBase.cpp.
inline constexpr Setting kZoneSetting = Switch(TIME(_cur_zone), PERSIST_ID_ZONE, kDefaultZoneKey);

#undef POWER
#undef MISC
#undef TIME

/// All of the above.
std::vector<Setting> Settings();

/// Fills the fields of `settings` in `record`, in their order. Values are not range-checked. The records of failures
/// are those of `operation`.
void Fill(const char* operation, const Setting* begin, const Setting* end, void* record,
          const SystemDefaultData& defaults);
template <std::size_t N>
void Fill(const char* operation, const Setting (&settings)[N], void* record, const SystemDefaultData& defaults) {
  Fill(operation, settings, settings + N, record, defaults);
}

}  // namespace HLXSystemData
