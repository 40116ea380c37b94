#include "simulator/model/PowerModel.h"

#include "HLXPowerTypes.h"
#include "data/SharedField.h"
#include "data/SystemDefaultData.h"

using namespace HLXSystemData;

namespace {

constexpr std::chrono::seconds kFullBrightnessTime{10};
constexpr unsigned char kFull = 255;

}  // namespace

PowerModel::PowerModel(Unit& unit) : unit_(unit) {
  unit_.Follow([this](const void* field) { Follow(field); });
}

void PowerModel::Follow(const void* field) {
  const PowerShmData& power = unit_.power();
  if (field == &power.head_light_state || field == &power.is_light_auto_detect || field == &power.is_light_day_fix) {
    ShowLightType();
  }
}

void PowerModel::ShowLightType() {
  const PowerShmData& power = unit_.power();
  const bool night =
      Load(power.is_light_auto_detect) != 0 ? Load(power.head_light_state) != 0 : Load(power.is_light_day_fix) == 0;
  const uint32_t type = night ? HLXPower::LIGHT_TYPE_NIGHT : HLXPower::LIGHT_TYPE_DAY;
  if (Load(power.cur_screen_light_type) != type) unit_.Change(power.cur_screen_light_type, type);
  if (Load(power.button_light_type) != type) unit_.Change(power.button_light_type, type);
}

uint8_t& PowerModel::ScreenLevel(unsigned char type) {
  PowerShmData& power = unit_.power();
  return type == HLXPower::LIGHT_TYPE_DAY ? power._screen_day_level : power._screen_night_level;
}

void PowerModel::SetScreenLightOn(bool bLightOn) { unit_.Change(unit_.power().is_screen_on, bLightOn); }

void PowerModel::SetScreenLightLevel(unsigned char type, unsigned char level) {
  if (full_brightness_.IsRunning() && ScreenLevel(type) == ScreenLevel(full_type_)) {
    full_brightness_.Stop();  // what is asked for now stays
    unit_.Keep(Own::kFullBrightness, int64_t{0});
  }
  unit_.Change(ScreenLevel(type), level);
}

void PowerModel::ResetScreenBackLight() {
  const PowerShmData& power = unit_.power();
  SetScreenLightLevel(HLXPower::LIGHT_TYPE_DAY, Load(power.default_screen_day_level));
  SetScreenLightLevel(HLXPower::LIGHT_TYPE_NIGHT, Load(power.default_screen_night_level));
}

void PowerModel::SetTempMaxScreenLightLevel(bool isActive) {
  if (isActive == full_brightness_.IsRunning()) return;
  unit_.Keep(Own::kFullBrightness, int64_t{isActive});
  if (!isActive) {
    full_brightness_.Stop();
    return unit_.Write(ScreenLevel(full_type_), level_before_);
  }
  full_type_ = static_cast<unsigned char>(Load(unit_.power().cur_screen_light_type));
  level_before_ = Load(ScreenLevel(full_type_));
  unit_.Write(ScreenLevel(full_type_), kFull);
  full_brightness_.Start(kFullBrightnessTime, [this] {
    unit_.Keep(Own::kFullBrightness, int64_t{0});
    unit_.Write(ScreenLevel(full_type_), level_before_);
  });
}

void PowerModel::SetGammaValue(int value) { unit_.Change(unit_.power().screen_gamma_level, value); }

void PowerModel::SetLightDetectStyle(unsigned char bAutomatic) {
  unit_.Change(unit_.power().is_light_auto_detect, bAutomatic);
}

void PowerModel::SetLightFixDayStyle(unsigned char bDayLight) {
  unit_.Change(unit_.power().is_light_day_fix, bDayLight);
}

void PowerModel::SetButtonLightValue(unsigned char type, unsigned char level) {
  const PowerShmData& power = unit_.power();
  unit_.Change(type == HLXPower::LIGHT_TYPE_DAY ? power.button_day_level : power.button_night_level, level);
}

void PowerModel::ResetButtonBackLight() {
  const SystemDefaultData defaults;
  SetButtonLightValue(HLXPower::LIGHT_TYPE_DAY, defaults.default_led_day_level);
  SetButtonLightValue(HLXPower::LIGHT_TYPE_NIGHT, defaults.default_led_night_level);
}

void PowerModel::SetColorType(unsigned char type) { unit_.Change(unit_.power().color_type, type); }
void PowerModel::SetLedAnimation(unsigned char Animation) { unit_.Change(unit_.power().led_animation, Animation); }
