#include "data/PowerShmDataBase.h"

#include "data/HLXPersist.h"
#include "data/SharedField.h"
#include "platform/HLXLog.h"
#include "platform/LibConfigs.h"

HLX_LOG_SOURCE("data/HLXSystemData");

using namespace HLXSystemData;

namespace {

constexpr SavedSettings kSaved{"InitPowerShmData"};

struct LedColour {
  const char* text;
  unsigned char color_type;
};

/// The names that "/system/default_led_colour" may hold.
constexpr LedColour kLedColours[] = {
    {"white", 5}, {"blue", 3}, {"red", 0}, {"yellow", 1}, {"green", 2}, {"purple", 4}, {"custom", 9},
};

void UseConfiguredColour(unsigned char* color_type) {
  const std::string name = GetLibConfigs()->GetString("/system/default_led_colour");
  for (const LedColour& colour : kLedColours) {
    if (name == colour.text) *color_type = colour.color_type;
  }
}

/// Reads `item`; a setting that was never saved starts with `fallback()`, which is saved at once.
template <class Fallback>
void ReadOrSave(const PersistItem& item, unsigned int* field, Fallback fallback) {
  if (kSaved.Read(item, field)) return;
  *field = fallback();
  HLX_GetQ4PersistService()->WriteInt(item.module, item.id, static_cast<int>(*field), 1, 1, 0);
}

}  // namespace

void PowerShmDataBase::InitPowerShmData(PowerShmData* data) {
  if (Load(data->initialised) != 0) return;
  HLX_LOG_INFO("%s()", "InitPowerShmData");
  Store(data->initialised, uint32_t{1});

  if (!kSaved.Read(PERSIST_ID_POWER_SERVICE_DELAY_TIME, &data->_power_delay_time)) {
    data->_power_delay_time = GetLibConfigs()->GetBool("/setting/default_acc_off_delay") ? 20 : 0;
  }
  HLX_LOG_DEBUG("_power_delay_time:%d", data->_power_delay_time);
  if (!kSaved.Read(PERSIST_ID_RETAIN_ACC_SEC, &data->_power_retain_acc_sec)) data->_power_retain_acc_sec = 0;
  HLX_LOG_DEBUG("_power_retain_acc_sec:%d", data->_power_retain_acc_sec);

  InitScreenAndButtons(data);
  HLX_LOG_DEBUG("_screen_day_level(%d),_screen_night_level(%d).", data->_screen_day_level, data->_screen_night_level);

  data->radio_on_state = 16;
  data->is_acc_on = 1;
  data->is_screen_on = 1;
  data->default_screen_day_level = default_data->default_screen_day_level;
  data->default_screen_night_level = default_data->default_screen_night_level;

  InitLedAndStyle(data);
}

void PowerShmDataBase::InitScreenAndButtons(PowerShmData* data) {
  const auto level = [](const PersistItem& item, unsigned char* field, unsigned char fallback) {
    if (!kSaved.Read(item, field)) *field = fallback;
  };
  level(PERSIST_ID_SCREEN_DAY_LEVEL, &data->_screen_day_level, default_data->default_screen_day_level);
  level(PERSIST_ID_SCREEN_NIGHT_LEVEL, &data->_screen_night_level, default_data->default_screen_night_level);
  data->default_screen_gamma_level = default_data->default_gamma;
  data->screen_gamma_level = default_data->default_gamma;
  if (GetLibConfigs()->GetBool("/system/enable_led_setting")) {
    level(PERSIST_ID_BUTTON_DAY_LEVEL, &data->button_day_level, default_data->default_led_day_level);
    level(PERSIST_ID_BUTTON_NIGHT_LEVEL, &data->button_night_level, default_data->default_led_night_level);
  }
}

void PowerShmDataBase::InitLedAndStyle(PowerShmData* data) {
  const auto configured = [](const char* key) { return [key] { return GetLibConfigs()->GetBool(key) ? 1U : 0U; }; };
  if (!kSaved.Read(PERSIST_ID_BUTTON_LED_TYPE, &data->color_type)) UseConfiguredColour(&data->color_type);
  ReadOrSave(PERSIST_ID_BUTTON_LED_ANIMATION, &data->led_animation, [] { return 1U; });
  ReadOrSave(PERSIST_ID_LIGHT_AUTO_DETECT, &data->is_light_auto_detect,
             configured("/q4system/enable_light_auto_detect"));
  ReadOrSave(PERSIST_ID_FIX_LIGHT_DAY, &data->is_light_day_fix, configured("/q4system/default_day_light_mode"));
}
