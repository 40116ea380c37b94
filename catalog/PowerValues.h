/// The values of the power client.
#pragma once

#include "catalog/Rows.h"

namespace catalog::rows {
namespace power {

using namespace HLXPower;
using namespace words;
using I = IHLXSystemPower;
using When = Announcement::When;

inline constexpr const char kState[] = "State";
inline constexpr const char kScreen[] = "Screen";
inline constexpr const char kButtons[] = "Buttons";
inline constexpr const char kBootGroup[] = "Boot and power-off";

inline constexpr Reading kSwitch = Flag(kOnOff);
inline constexpr Reading kLevel = Count().In(0, 255);
inline constexpr Reading kGamma = Count().In(0, 1000);

/// The factory default level: the first of the two that the getter gives, or the second.
template <int Which>
Scalar DefaultLevel(const Clients& clients) {
  unsigned char levels[2] = {};
  In<I>(clients).GetDefaultScreenLightLevel(levels[0], levels[1]);
  return int64_t{levels[Which]};
}

template <class... A>
constexpr Value Row(const char* group, A... arguments) {
  return Make(Area::kPower, group, arguments...);
}
#define FIELD(member) HLX_FIELD_OF(kPower, PowerShmData, member)
#define GET(function) HLX_ASK(I, function)
#define GET_WITH(function, fixed) HLX_ASK_WITH(I, function, fixed)

// clang-format off
inline constexpr Value kValues[] = {
    Row(kState, FIELD(is_acc_on), GET(IsAccOnState), "acc", "ACC", kSwitch, By("AccStateChangeSignal")),
    Row(kState, FIELD(is_screen_on), GET(IsScreenOnState), "screen", "Screen", kSwitch, By("ScreenStateChangeSignal")),
    Row(kState, FIELD(radio_on_state), GET(GetRadioOnState), "radio", "Radio", Named(kRadio), By("RadioStateChangeSignal")),
    Row(kState, FIELD(head_light_state), GET(GetHeadLightState), "head_lights", "Head lights", kSwitch, By("OnHeadLightStateChange")),

    Row(kScreen, FIELD(cur_screen_light_type), GET(GetCurScreenLightType), "screen_light", "Screen shows the level for", Named(kLight), By("ScreenLightTypeChangedSignal")),
    Row(kScreen, FIELD(_screen_day_level), GET_WITH(GetScreenLightLevel, LIGHT_TYPE_DAY), "brightness_day", "Screen brightness by day", kLevel, By("ScreenLightLevelChangedSignal", 1, When::kFirstIsZero)),
    Row(kScreen, FIELD(_screen_night_level), GET_WITH(GetScreenLightLevel, LIGHT_TYPE_NIGHT), "brightness_night", "Screen brightness by night", kLevel, By("ScreenLightLevelChangedSignal", 1, When::kFirstIsNot)),
    Row(kScreen, FIELD(default_screen_day_level), HLX_ASK_SPECIAL(I, GetDefaultScreenLightLevel, "day", &DefaultLevel<0>), "default_brightness_day", "Default brightness by day", kLevel),
    Row(kScreen, FIELD(default_screen_night_level), HLX_ASK_SPECIAL(I, GetDefaultScreenLightLevel, "night", &DefaultLevel<1>), "default_brightness_night", "Default brightness by night", kLevel),
    Row(kScreen, FIELD(screen_gamma_level), GET(GetScreenGammaLevel), "gamma", "Screen gamma", kGamma),
    Row(kScreen, FIELD(default_screen_gamma_level), GET(GetDefaultScreenGammaLevel), "default_gamma", "Default gamma", kGamma),
    Row(kScreen, FIELD(is_light_auto_detect), GET(IsLightAutoDetectStyle), "light_auto_detect", "Brightness follows the sensor", kSwitch),
    Row(kScreen, FIELD(is_light_day_fix), GET(IsLightDayFixStyle), "light_fixed_day", "Brightness fixed to day", kSwitch),

    Row(kButtons, FIELD(button_light_type), GET(GetButtonLightType), "button_light", "Buttons show the level for", Named(kLight), By("ButtonLightTypeChangedSignal")),
    Row(kButtons, FIELD(button_day_level), GET_WITH(GetCurButtonLightLevel, LIGHT_TYPE_DAY), "button_brightness_day", "Button brightness by day", kLevel, By("ButtonLightLevelChangedSignal", 1, When::kFirstIsZero)),
    Row(kButtons, FIELD(button_night_level), GET_WITH(GetCurButtonLightLevel, LIGHT_TYPE_NIGHT), "button_brightness_night", "Button brightness by night", kLevel, By("ButtonLightLevelChangedSignal", 1, When::kFirstIsNot)),
    Row(kButtons, FIELD(color_type), GET(GetColorType), "button_color", "Button colour", Named(kColor), By("ButtonColorChangedSignal")),
    Row(kButtons, FIELD(led_animation), GET(GetLedAnimation), "led_animation", "Button animation", kSwitch),

    Row(kBootGroup, FIELD(is_cold_boot), GET(IsColdBootState), "cold_boot", "Cold boot", Flag(kYesNo), By("BatteryBootStateChangeSignal")),
    Row(kBootGroup, FIELD(power_wakeup_type), GET(GetPowerWakeupType), "wakeup", "Woken by", Named(kWakeup), By("OnPowerWakeupTypeSignal")),
    Row(kBootGroup, FIELD(mcu_boot_type), GET(GetMcuBootType), "boot_reason", "Boot reason (MCU)", Named(kBoot), By("OnMcuBootTypeNotifySignal")),
    Row(kBootGroup, FIELD(_power_delay_time), GET(GetPowerOffDelayTime), "power_off_delay", "Power-off delay", Number("s").In(0, 255), By("PowerOffDelayTimeChangeSignal")),
    Row(kBootGroup, FIELD(_power_retain_acc_sec), GET(GetRetainACCSec), "retain_acc", "Stays on after ACC off", Number("s").In(0, 255)),

    // Known from events alone.
    Row(kState, Field{}, Getter{}, "abnormal_audio", "Supply of the audio", Count().In(0, 255), By("AbnormalPowerAudioNotifySignal")),
    Row(kState, Field{}, Getter{}, "abnormal_usb", "Supply of the USB ports", Count().In(0, 255), By("AbnormalPowerUsbNotifySignal")),
    Row(kState, Field{}, Getter{}, "display_request", "Picture that the MCU asks for", Named(kDisplay), By("OnMcuRequestDisplayUiActionSignal")),
};
// clang-format on
#undef FIELD
#undef GET
#undef GET_WITH

}  // namespace power
}  // namespace catalog::rows
