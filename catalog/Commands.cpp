#include <limits>
#include <string_view>

#include "catalog/Command.h"
#include "catalog/SignalRows.h"

namespace catalog {

namespace {

using namespace rows;
using namespace words;
using Arguments = std::vector<Scalar>;

template <class T>
T As(const Scalar& scalar) {
  if constexpr (std::is_same_v<T, std::string>) {
    return std::get<std::string>(scalar);
  } else if constexpr (std::is_same_v<T, SystemTime::DateInfo>) {
    T date{};
    ReadDate(std::get<std::string>(scalar), &date);
    return date;
  } else if constexpr (std::is_same_v<T, SystemTime::TimeInfo>) {
    T time{};
    ReadTime(std::get<std::string>(scalar), &time);
    return time;
  } else {
    return static_cast<T>(std::get<int64_t>(scalar));
  }
}

/// Passes the arguments on as they are.
template <auto Function>
struct Send;
template <class Client, class Result, class... Params, Result (Client::*Function)(Params...)>
struct Send<Function> {
  template <std::size_t... I>
  static bool Call(const Clients& clients, [[maybe_unused]] const Arguments& arguments, std::index_sequence<I...>) {
    std::tuple<std::decay_t<Params>...> values{As<std::decay_t<Params>>(arguments.at(I))...};
    if constexpr (std::is_void_v<Result>) {
      (In<Client>(clients).*Function)(std::get<I>(values)...);
      return true;
    } else {
      return static_cast<bool>((In<Client>(clients).*Function)(std::get<I>(values)...));
    }
  }
  static bool Run(const Clients& clients, const Arguments& arguments) {
    return Call(clients, arguments, std::index_sequence_for<Params...>());
  }
};

bool SendLogoNumber(const Clients& clients, const Arguments& arguments) {
  return clients.misc->SetLogo(As<unsigned int>(arguments.at(0)));
}

bool SendLogoInfo(const Clients& clients, const Arguments& arguments) {
  const auto word = [&arguments](std::size_t i) { return As<unsigned int>(arguments.at(i)); };
  LogoInfo logo{word(0), word(1), word(2), word(3), word(4)};
  clients.misc->SetLogo(logo);
  return true;
}

bool SendGpsTime(const Clients& clients, const Arguments& arguments) {
  SystemTime::DateTime utc{As<SystemTime::DateInfo>(arguments.at(0)), As<SystemTime::TimeInfo>(arguments.at(1))};
  return clients.time->SetGpsUTCTimeSync(utc, As<int>(arguments.at(2)));
}

bool SendCarplayTime(const Clients& clients, const Arguments& arguments) {
  SystemTime::CarplayTime time{As<int>(arguments.at(0))};
  return clients.time->SetCarplayTimeSync(time);
}

constexpr Reading kAnyInt = Count().In(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
constexpr Reading kAnyUnsigned = Count().In(0, std::numeric_limits<unsigned int>::max());
constexpr Parameter kOn{"on", Flag(kOnOff)};
constexpr Parameter kLightParameter{"light", Named(kLight)};
constexpr Parameter kLevel{"level", Count().In(0, 255)};
constexpr Parameter kText{"text", Plain(Reading::Kind::kText)};
constexpr Parameter kDateParameter{"date", Plain(Reading::Kind::kDate)};
constexpr Parameter kTimeParameter{"time", Plain(Reading::Kind::kClock)};
constexpr Parameter kZone{"zone", Plain(Reading::Kind::kZone).In(0, SystemTime::kTimeZoneCount - 1)};
constexpr Parameter kWhole(const char* name) { return {name, kAnyUnsigned}; }
constexpr bool kAsk = true;
constexpr bool kNoQuestion = false;

// A misspelt function does not compile; a misspelt value or signal stops at the assertion below. Behind the D-Bus
// method: the values that change, and the signals that follow.
#define POWER(name, help, parameters, function, method, changes, follows, asks)                                     \
  {                                                                                                                 \
    Area::kPower, asks, name, help, parameters, #function, method, &Send<&IHLXSystemPower::function>::Run, changes, \
        follows                                                                                                     \
  }
#define MISC(name, help, parameters, function, method, changes, follows, asks)                                    \
  {                                                                                                               \
    Area::kMisc, asks, name, help, parameters, #function, method, &Send<&IHLXSystemMisc::function>::Run, changes, \
        follows                                                                                                   \
  }
#define TIME(name, help, parameters, function, method, changes, follows, asks)                                    \
  {                                                                                                               \
    Area::kTime, asks, name, help, parameters, #function, method, &Send<&IHLXSystemTime::function>::Run, changes, \
        follows                                                                                                   \
  }
#define UPDATE(name, help, parameters, function, method, changes, follows, asks)                                      \
  {                                                                                                                   \
    Area::kUpdate, asks, name, help, parameters, #function, method, &Send<&IHLXSystemUpdate::function>::Run, changes, \
        follows                                                                                                       \
  }
#define P(...) \
  { __VA_ARGS__ }

// clang-format off
constexpr Command kCommands[] = {
    POWER("shutdown", "Shut the unit down", P(), ShutDown, "ShutDown", P("screen", "radio"), P("ScreenStateChangeSignal", "RadioStateChangeSignal"), kAsk),
    POWER("reset", "Restart the unit", P(), Reset, "Reset", P("boot_reason", "cold_boot", "screen", "radio"), P("OnMcuBootTypeNotifySignal", "BatteryBootStateChangeSignal", "ScreenStateChangeSignal", "RadioStateChangeSignal"), kAsk),
    POWER("screen", "Screen on or off", P(kOn), SetScreenLightOn, "SetScreenLightOn", P("screen"), P("ScreenStateChangeSignal"), kNoQuestion),
    POWER("brightness", "Screen brightness", P(kLightParameter, kLevel), SetScreenLightLevel, "SetScreenLightLevel", P("brightness_day", "brightness_night"), P("ScreenLightLevelChangedSignal"), kNoQuestion),
    POWER("reset-brightness", "Screen brightness back to the defaults", P(), ResetScreenBackLight, "ResetScreenBackLight", P("brightness_day", "brightness_night"), P("ScreenLightLevelChangedSignal"), kNoQuestion),
    POWER("full-brightness", "Full brightness until off", P(kOn), SetTempMaxScreenLightLevel, "SetTempMaxScreenLightLevel", P(), P(), kNoQuestion),
    POWER("light-auto-detect", "Brightness follows the light sensor", P(kOn), SetLightDetectStyle, "SetLightDetectStyle", P("light_auto_detect", "screen_light", "button_light"), P("ScreenLightTypeChangedSignal", "ButtonLightTypeChangedSignal"), kNoQuestion),
    POWER("light-fixed-day", "Brightness fixed to the day level", P(kOn), SetLightFixDayStyle, "SetLightFixDayStyle", P("light_fixed_day", "screen_light", "button_light"), P("ScreenLightTypeChangedSignal", "ButtonLightTypeChangedSignal"), kNoQuestion),
    POWER("gamma", "Screen gamma", P(Parameter{"value", kAnyInt}), SetGammaValue, "SetGammaValue", P("gamma"), P(), kNoQuestion),
    POWER("button-light", "Button light on or off", P(kOn), SetButtonLightState, "SetButtonLightState", P(), P(), kNoQuestion),
    POWER("button-brightness", "Button brightness", P(kLightParameter, kLevel), SetButtonLightValue, "SetButtonLightValue", P("button_brightness_day", "button_brightness_night"), P("ButtonLightLevelChangedSignal"), kNoQuestion),
    POWER("reset-button-brightness", "Button brightness back to the defaults", P(), ResetButtonBackLight, "ResetButtonBackLight", P("button_brightness_day", "button_brightness_night"), P("ButtonLightLevelChangedSignal"), kNoQuestion),
    POWER("button-color", "Colour of the button LEDs", P(Parameter{"color", Named(kColor)}), SetColorType, "SetColorType", P("button_color"), P("ButtonColorChangedSignal"), kNoQuestion),
    POWER("led-animation", "Animation of the button LEDs", P(kOn), SetLedAnimation, "SetLedAnimation", P("led_animation"), P(), kNoQuestion),
    POWER("power-off", "As the power key does", P(Parameter{"press", Flag(kKeyPress)}), RequestPowerOffState, "RequestPowerOffState", P("radio", "screen"), P("OnPowerPreRadioOffNotify", "RadioStateChangeSignal", "ScreenStateChangeSignal"), kNoQuestion),
    POWER("confirm-radio-off", "Answer OnPowerPreRadioOffNotify", P(Parameter{"param", kAnyInt}), ConfirmPreRadioOffState, "ConfirmPreRadioOffState", P("radio", "screen"), P("RadioStateChangeSignal", "ScreenStateChangeSignal"), kNoQuestion),
    POWER("power-off-delay", "Seconds from ACC off to power-off", P(Parameter{"seconds", Number("s").In(0, 255)}), SetPowerOffDelayTime, "SetPowerOffDelayTime", P("power_off_delay"), P("PowerOffDelayTimeChangeSignal"), kNoQuestion),
    POWER("retain-acc", "Seconds on after ACC off", P(Parameter{"seconds", Number("s").In(0, std::numeric_limits<int>::max())}), SetRetainACCSec, "SetRetainACCSec", P("retain_acc"), P(), kNoQuestion),
    POWER("bt-call", "State of the Bluetooth call", P(Parameter{"state", Named(kCall)}), SetBtCallState, "SetBtCallState", P(), P(), kNoQuestion),
    POWER("carplay-call", "State of the CarPlay call", P(Parameter{"state", Named(kCarPlayCall)}), SetCarPlayPhoneState, "SetCarPlayPhoneState", P(), P(), kNoQuestion),
    POWER("rear-view", "Whether the rear-view camera is shown", P(kOn), SetPowerRvcStatus, "SetRvcStatus", P(), P(), kNoQuestion),

    MISC("speaker-detect-start", "Look for open and shorted speakers", P(), SpeakerDetectStart, "SpeakerDetectStart", P("speaker_front_left", "speaker_front_right", "speaker_rear_left", "speaker_rear_right"), P("SpeakerStateChangeSignal"), kNoQuestion),
    MISC("speaker-detect-stop", "Stop looking at the speakers", P(), SpeakerDetectStop, "SpeakerDetectStop", P(), P(), kNoQuestion),
    MISC("factory-reset", "Put the unit back to its factory state", P(), ResetFactoryMode, "ResetFactoryMode", P(), P("OnFactoryResetModeSignal"), kAsk),
    MISC("screenshot", "Take a screenshot", P(), SetScreenshot, "SetScreenshot", P(), P(), kNoQuestion),
    MISC("screenshots", "Whether screenshots may be taken", P(kOn), EnableScreenShotControl, "EnableScreenShotControl", P("screenshots"), P(), kNoQuestion),
    MISC("auto-test", "Start the unit's self test", P(), StartAutoTest, "StartAutoTest", P(), P(), kNoQuestion),
    MISC("rear-view-delay", "Keep the rear view for a moment", P(kOn), SetRvcOffDelaySwitch, "SetRvcOffDelaySwitch", P("rear_view_delay"), P(), kNoQuestion),
    MISC("drive-position", "The driver's side", P(Parameter{"side", Flag(kSide)}), SetDrivePosition, "SetDrivePosition", P("drive_position"), P(), kNoQuestion),
    MISC("handbrake-check", "Hand-brake check", P(kOn), SetHandbrakeCheckingSwitch, "SetHandbrakeCheckingSwitch", P("handbrake_check"), P(), kNoQuestion),
    MISC("gps-antenna-check", "GPS antenna check", P(kOn), SetGPSAntennaCheckingSwitch, "SetGPSAntennaCheckingSwitch", P("gps_antenna_check", "gps_antenna"), P("GpsAntStateChangeSignal"), kNoQuestion),
    MISC("can-box", "CAN-box module", P(kOn), EnableCanBoxModule, "EnableCanBoxModule", P("can_box"), P(), kNoQuestion),
    MISC("source", "Tell the vehicle the source that plays", P(Parameter{"source", kAnyInt}), SetOnSourceChange, "SetOnSourceChange", P(), P(), kNoQuestion),
    MISC("play-time", "Tell the vehicle the playing time", P(kText), SetOnTimeChange, "SetOnTimeChange", P(), P(), kNoQuestion),
    MISC("radio", "Tell the vehicle the station", P(kText), SetOnRadioChange, "SetOnRadioChange", P(), P(), kNoQuestion),
    MISC("touch", "Tell the vehicle a touch", P(kText), SetOnTouchInfo, "SetOnTouchInfo", P(), P(), kNoQuestion),
    MISC("station-name", "Tell the vehicle the station's name", P(kText), SetOnPSChange, "SetOnPSChange", P(), P(), kNoQuestion),
    MISC("media", "Tell the vehicle the title", P(kText), SetOnMediaInfoChange, "SetOnMediaInfoChange", P(), P(), kNoQuestion),
    MISC("volume", "Tell the vehicle the volume", P(Parameter{"volume", kAnyInt}), SetOnVolChange, "SetOnVolChange", P(), P(), kNoQuestion),
    MISC("phone", "Tell the vehicle the phone call", P(kText), SetOnPhoneInfoChange, "SetOnPhoneInfoChange", P(), P(), kNoQuestion),
    {Area::kMisc, false, "logo", "Choose the start-up logo", {kWhole("number")}, "SetLogo", "SetLogo", &SendLogoNumber, {}, {}},
    {Area::kMisc, false, "logo-info", "Describe the start-up logo", {kWhole("id"), kWhole("width"), kWhole("height"), kWhole("format"), kWhole("size")}, "SetLogo", "SetLogoInfo", &SendLogoInfo, {}, {}},

    TIME("24-hour", "24-hour display", P(kOn), SetTime24Mode, "SetTime24Mode", P("24_hour"), P("On24TimeModeChangeSignal"), kNoQuestion),
    TIME("auto-sync", "Automatic time", P(kOn), SetAutoSyncMode, "SetAutoSyncMode", P("auto_sync"), P(), kNoQuestion),
    TIME("auto-dst", "Automatic daylight saving", P(kOn), SetAutoAdjustDstMode, "SetAutoAdjustDstMode", P("auto_dst", "dst"), P("OnDstStatusChangeSignal"), kNoQuestion),
    TIME("date", "The date", P(kDateParameter), SetCurDate, "SetCurDate", P("date", "weekday"), P("OnDateInfoChangeSignal"), kNoQuestion),
    TIME("time", "The time of day", P(kTimeParameter), SetCurTime, "SetCurTime", P("time"), P("OnDateInfoChangeSignal"), kNoQuestion),
    TIME("zone", "The time zone", P(kZone), SetTimeZone, "SetTimeZone", P("zone", "date", "time", "dst"), P("OnDateInfoChangeSignal", "OnDstStatusChangeSignal"), kNoQuestion),
    {Area::kTime, false, "gps", "UTC from GPS; with \"off\" only into the record", {kDateParameter, kTimeParameter, {"send", Flag(kOnOff), "on"}}, "SetGpsUTCTimeSync", "SetGpsUTCTimeSync", &SendGpsTime, {"sync_time", "date", "time"}, {"OnDateInfoChangeSignal"}},
    {Area::kTime, false, "carplay", "UTC from CarPlay, in seconds since 1970", {{"seconds", kAnyInt}}, "SetCarplayTimeSync", "SetGpsUTCTimeSync", &SendCarplayTime, {"sync_time", "date", "time"}, {"OnDateInfoChangeSignal"}},

    UPDATE("apply-all", "Update everything", P(), ApplyUpdateAll, "ApplyUpdateAll", P("request_result", "mpu_state", "mcu_state", "mcu_progress"), P("UpdateRequestResultInformSignal", "OnMpuUpdateStateNotify", "OnMcuUpdateStateNotify", "OnMcuUpdateProgressNotify"), kAsk),
    UPDATE("apply-mpu", "Update the main processor", P(), ApplyMpuUpdate, "ApplyMpuUpdate", P("request_result", "mpu_state"), P("UpdateRequestResultInformSignal", "OnMpuUpdateStateNotify"), kAsk),
    UPDATE("apply-mcu", "Update the external MCU", P(), ApplyExternalMcuUpdate, "ApplyExternalMcuUpdate", P("request_result", "mcu_state", "mcu_progress"), P("UpdateRequestResultInformSignal", "OnMcuUpdateStateNotify", "OnMcuUpdateProgressNotify"), kAsk),
    UPDATE("apply", "Update one part, or all", P(Parameter{"type", Named(kUpdateType)}), ApplyUpdate, "ApplyUpdate", P("request_result", "mpu_state", "mcu_state", "mcu_progress"), P("UpdateRequestResultInformSignal", "OnMpuUpdateStateNotify", "OnMcuUpdateStateNotify", "OnMcuUpdateProgressNotify"), kAsk),
    UPDATE("can", "Update of the CAN box", P(Parameter{"value", kAnyInt}), SetCanUpdata, "CanUpdate", P("request_result", "can_progress"), P("UpdateRequestResultInformSignal", "UpdateCanProcess"), kAsk),
};
// clang-format on
#undef POWER
#undef MISC
#undef TIME
#undef UPDATE
#undef P

constexpr bool AreNamesRight() {
  for (const Command& command : kCommands) {
    for (const char* const value : command.changes) {
      if (value != nullptr && IndexOf(command.area, value) >= kAllValues.size()) return false;
    }
    for (const char* const signal : command.follows) {
      if (signal != nullptr && ArgumentsOf(signal) < 0) return false;
    }
  }
  return true;
}
static_assert(AreNamesRight(), "a command changes a value, or is followed by a signal, that there is not");

}  // namespace

View<Parameter> Command::Parameters() const {
  const Parameter* end = parameters;
  while (end != std::end(parameters) && *end->name != '\0') ++end;
  return {parameters, end};
}

View<Command> Commands() { return kCommands; }

}  // namespace catalog
