#include "data/PowerShmDataBase.h"

#include "data/Settings.h"
#include "data/SharedField.h"
#include "platform/HLXLog.h"
#include "platform/LibConfigs.h"

HLX_LOG_SOURCE("data/HLXSystemData");

using namespace HLXSystemData;

namespace {

constexpr char kOperation[] = "InitPowerShmData";

struct LedColour {
  const char* text;
  unsigned char color_type;
};

/// The names that the configuration may hold.
constexpr LedColour kLedColours[] = {
    {"white", 5}, {"blue", 3}, {"red", 0}, {"yellow", 1}, {"green", 2}, {"purple", 4}, {"custom", 9},
};

void UseConfiguredColour(unsigned char* color_type) {
  const std::string name = GetLibConfigs()->GetString(kColourSetting.key);
  for (const LedColour& colour : kLedColours) {
    if (name == colour.text) *color_type = colour.color_type;
  }
}

}  // namespace

void PowerShmDataBase::InitPowerShmData(PowerShmData* data) {
  if (Load(data->initialised) != 0) return;
  HLX_LOG_INFO("%s()", "InitPowerShmData");
  Store(data->initialised, uint32_t{1});

  Fill(kOperation, kPowerOffSettings, data, *default_data);
  Fill(kOperation, kScreenSettings, data, *default_data);
  data->default_screen_gamma_level = default_data->default_gamma;
  data->screen_gamma_level = default_data->default_gamma;
  if (GetLibConfigs()->GetBool("/system/enable_led_setting")) Fill(kOperation, kButtonSettings, data, *default_data);
  HLX_LOG_DEBUG("_screen_day_level(%d),_screen_night_level(%d).", data->_screen_day_level, data->_screen_night_level);

  data->radio_on_state = 16;
  data->is_acc_on = 1;
  data->is_screen_on = 1;
  data->default_screen_day_level = default_data->default_screen_day_level;
  data->default_screen_night_level = default_data->default_screen_night_level;

  if (!SavedSettings{kOperation}.Read(kColourSetting.item, &data->color_type)) UseConfiguredColour(&data->color_type);
  Fill(kOperation, kStyleSettings, data, *default_data);
}
