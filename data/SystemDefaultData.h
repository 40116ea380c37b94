#pragma once

#include <string>

inline constexpr char kDefaultLedDayKey[] = "/setting/default_led_day_brightness";
inline constexpr char kDefaultLedNightKey[] = "/setting/default_led_night_brightness";
inline constexpr char kDefaultScreenDayKey[] = "/setting/default_screen_day_brightness";
inline constexpr char kDefaultScreenNightKey[] = "/setting/default_screen_night_brightness";
inline constexpr char kDefaultZoneKey[] = "/setting/default_time_zone";

/// The factory defaults behind saved settings that cannot be read, as the configuration store and the display driver
/// give them when the object is made. Brightness levels keep their low 8 bits only.
struct SystemDefaultData {
  SystemDefaultData();

  unsigned char default_screen_day_level = 0;
  unsigned char default_screen_night_level = 0;
  unsigned char default_led_day_level = 0;
  unsigned char default_led_night_level = 0;
  std::string project_name;
  unsigned int default_gamma = 0;
  int default_time_zone = 0;  ///< a SystemTime::TimeZone value
};
