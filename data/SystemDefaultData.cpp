#include "data/SystemDefaultData.h"

#include "platform/HLXPlatform.h"
#include "platform/LibConfigs.h"

SystemDefaultData::SystemDefaultData() {
  LibConfigs& configs = *GetLibConfigs();
  const auto level = [&configs](const char* key) { return static_cast<unsigned char>(configs.GetInt(key)); };
  default_led_day_level = level(kDefaultLedDayKey);
  default_led_night_level = level(kDefaultLedNightKey);
  default_screen_day_level = level(kDefaultScreenDayKey);
  mwapi_gamma_get(&default_gamma);
  default_screen_night_level = level(kDefaultScreenNightKey);
  project_name = configs.GetString("/project/project_name");
  default_time_zone = configs.GetInt(kDefaultZoneKey);
}
