#include "data/PowerShmDataBase.h"
#include "tools/hlxctl/Area.h"
#include "tools/hlxctl/Monitor.h"

using namespace HLXPower;

namespace {

constexpr Word kLight[] = {{LIGHT_TYPE_DAY, "day"}, {LIGHT_TYPE_NIGHT, "night"}};
constexpr Word kColor[] = {
    {COLOR_TYPE_RED, "red"},       {COLOR_TYPE_YELLOW, "yellow"}, {COLOR_TYPE_GREEN, "green"},
    {COLOR_TYPE_BLUE, "blue"},     {COLOR_TYPE_PURPLE, "purple"}, {COLOR_TYPE_WHITE, "white"},
    {COLOR_TYPE_CUSTOM, "custom"},
};
constexpr Word kCall[] = {{CALL_STATE_IDLE, "idle"},
                          {CALL_STATE_INCOMING, "incoming"},
                          {CALL_STATE_OUTGOING, "outgoing"},
                          {CALL_STATE_ACTIVE, "active"}};
constexpr Word kCarPlayCall[] = {
    {CP_PHONE_STATE_IDLE, "idle"}, {CP_PHONE_STATE_CALLING, "calling"}, {CP_PHONE_STATE_ACTIVE, "active"}};
constexpr Word kRadio[] = {{RADIO_STATE_OFF, "off"}, {RADIO_STATE_ON, "on"}};
constexpr Word kWakeup[] = {
    {POWER_WAKEUP_UNKNOWN, "unknown"}, {POWER_WAKEUP_ACC, "acc"}, {POWER_WAKEUP_KEY, "key"}, {POWER_WAKEUP_CAN, "can"}};
constexpr Word kBoot[] = {{BOOT_REASON_COLD, "cold"},     {BOOT_REASON_ACC, "acc"},
                          {BOOT_REASON_KEY, "key"},       {BOOT_REASON_RESET, "reset"},
                          {BOOT_REASON_UPDATE, "update"}, {BOOT_REASON_UNKNOWN, "unknown"}};
constexpr Word kDisplay[] = {{MCU_REQ_DISPLAY_NONE, "none"},
                             {MCU_REQ_DISPLAY_HOME, "home"},
                             {MCU_REQ_DISPLAY_REVERSE, "reverse"},
                             {MCU_REQ_DISPLAY_STANDBY, "standby"}};
constexpr Word kKeyPress[] = {{1, "short"}, {0, "long"}};

constexpr Number kPlain;
constexpr Number kSeconds{"s"};

class PowerEvents : public IHLXPowerListener {
 public:
  explicit PowerEvents(EventLog& log) : log_(log) {}

  void OnScreenStateChange(int on) override { Write(__func__, {{"screen", kOnOff(on)}}); }
  void OnRadioStateChange(RadioState state) override { Write(__func__, {{"radio", Named{kRadio}(state)}}); }
  void OnAccStateChange(int on) override { Write(__func__, {{"acc", kOnOff(on)}}); }
  void OnBatteryBootStateChange(int cold) override { Write(__func__, {{"cold_boot", kYesNo(cold)}}); }
  void OnPowerOffDelayTimeChange(unsigned char time) override { Write(__func__, {{"delay", kSeconds(time)}}); }
  void OnPowerWakeupType(PowerWakeupType type) override { Write(__func__, {{"wakeup", Named{kWakeup}(type)}}); }
  void OnAbnormalPowerAudioNotify(unsigned char param) override { Write(__func__, {{"param", kPlain(param)}}); }
  void OnAbnormalPowerUsbNotify(unsigned char param) override { Write(__func__, {{"param", kPlain(param)}}); }
  void OnPowerPreRadioOffNotify() override { Write(__func__, {}); }
  void OnScreenLightLevelChanged(LightType type, unsigned char level) override { Level(__func__, type, level); }
  void OnScreenLightTypeChanged(LightType type) override { Write(__func__, {{"light", Named{kLight}(type)}}); }
  void OnButtonLightLevelChanged(LightType type, unsigned char level) override { Level(__func__, type, level); }
  void OnButtonLightTypeChanged(LightType type) override { Write(__func__, {{"light", Named{kLight}(type)}}); }
  void OnButtonColorChanged(ColorType color) override { Write(__func__, {{"color", Named{kColor}(color)}}); }
  void OnMcuBootTypeNotify(BootReason reason) override { Write(__func__, {{"reason", Named{kBoot}(reason)}}); }
  void OnMcuRequestDisplayUiAction(McuReqDisplayUi action) override {
    Write(__func__, {{"action", Named{kDisplay}(action)}});
  }
  void OnHeadLightStateChange(int on) override { Write(__func__, {{"head_lights", kOnOff(on)}}); }

 private:
  void Write(const char* event, const EventLog::Values& values) { log_.Write("power", event, values); }
  void Level(const char* event, LightType type, unsigned char level) {
    Write(event, {{"light", Named{kLight}(type)}, {"level", kPlain(level)}});
  }

  EventLog& log_;
};

template <int Which>
Value DefaultLevel() {
  unsigned char levels[2] = {};
  Proxy<IHLXSystemPower>().GetDefaultScreenLightLevel(levels[0], levels[1]);
  return kPlain(levels[Which]);
}

std::vector<Field> Fields() {
  using P = IHLXSystemPower;
  const Named light{kLight};
  return {
      {"acc", "ACC", Get(&P::IsAccOnState, kOnOff)},
      {"screen", "Screen", Get(&P::IsScreenOnState, kOnOff)},
      {"radio", "Radio", Get(&P::GetRadioOnState, Named{kRadio})},
      {"head_lights", "Head lights", Get(&P::GetHeadLightState, kOnOff)},
      {"cold_boot", "Cold boot", Get(&P::IsColdBootState, kYesNo)},
      {"wakeup", "Woken by", Get(&P::GetPowerWakeupType, Named{kWakeup})},
      {"boot_reason", "Boot reason (MCU)", Get(&P::GetMcuBootType, Named{kBoot})},
      {"power_off_delay", "Power-off delay", Get(&P::GetPowerOffDelayTime, kSeconds)},
      {"retain_acc", "Stays on after ACC off", Get(&P::GetRetainACCSec, kSeconds)},
      {"screen_light", "Screen shows the level for", Get(&P::GetCurScreenLightType, light)},
      {"brightness_day", "Screen brightness by day", Get(&P::GetScreenLightLevel, kPlain, LIGHT_TYPE_DAY)},
      {"brightness_night", "Screen brightness by night", Get(&P::GetScreenLightLevel, kPlain, LIGHT_TYPE_NIGHT)},
      {"default_brightness_day", "Default brightness by day", DefaultLevel<0>},
      {"default_brightness_night", "Default brightness by night", DefaultLevel<1>},
      {"gamma", "Screen gamma", Get(&P::GetScreenGammaLevel, kPlain)},
      {"default_gamma", "Default gamma", Get(&P::GetDefaultScreenGammaLevel, kPlain)},
      {"light_auto_detect", "Brightness follows the sensor", Get(&P::IsLightAutoDetectStyle, kOnOff)},
      {"light_fixed_day", "Brightness fixed to day", Get(&P::IsLightDayFixStyle, kOnOff)},
      {"button_light", "Buttons show the level for", Get(&P::GetButtonLightType, light)},
      {"button_brightness_day", "Button brightness by day", Get(&P::GetCurButtonLightLevel, kPlain, LIGHT_TYPE_DAY)},
      {"button_brightness_night", "Button brightness by night",
       Get(&P::GetCurButtonLightLevel, kPlain, LIGHT_TYPE_NIGHT)},
      {"button_color", "Button colour", Get(&P::GetColorType, Named{kColor})},
      {"led_animation", "Button animation", Get(&P::GetLedAnimation, kOnOff)},
  };
}

std::vector<Command> Commands() {
  using P = IHLXSystemPower;
  const Argument light = Choice("light", kLight);
  const Argument level = Range("level", 0, 255);
  constexpr int64_t kMost = std::numeric_limits<int>::max();  // it travels as a signed number
  return {
      {"shutdown", "Shut the unit down", {}, Call(&P::ShutDown)},
      {"reset", "Restart the unit", {}, Call(&P::Reset)},
      {"reset-brightness", "Screen brightness back to the defaults", {}, Call(&P::ResetScreenBackLight)},
      {"reset-button-brightness", "Button brightness back to the defaults", {}, Call(&P::ResetButtonBackLight)},
      {"screen", "Screen on or off", {Switch()}, Call(&P::SetScreenLightOn)},
      {"brightness", "Screen brightness", {light, level}, Call(&P::SetScreenLightLevel)},
      {"full-brightness", "Full brightness until off", {Switch()}, Call(&P::SetTempMaxScreenLightLevel)},
      {"light-auto-detect", "Brightness follows the light sensor", {Switch()}, Call(&P::SetLightDetectStyle)},
      {"light-fixed-day", "Brightness fixed to the day level", {Switch()}, Call(&P::SetLightFixDayStyle)},
      {"gamma", "Screen gamma", {Whole<int>("value")}, Call(&P::SetGammaValue)},
      {"button-light", "Button light on or off", {Switch()}, Call(&P::SetButtonLightState)},
      {"button-brightness", "Button brightness", {light, level}, Call(&P::SetButtonLightValue)},
      {"button-color", "Colour of the button LEDs", {Choice("color", kColor)}, Call(&P::SetColorType)},
      {"led-animation", "Animation of the button LEDs", {Switch()}, Call(&P::SetLedAnimation)},
      {"power-off", "As the power key does", {Choice("press", kKeyPress, 1)}, Call(&P::RequestPowerOffState)},
      {"confirm-radio-off",
       "Answer OnPowerPreRadioOffNotify",
       {Whole<int>("param")},
       Call(&P::ConfirmPreRadioOffState)},
      {"power-off-delay",
       "Seconds from ACC off to power-off",
       {Range("seconds", 0, 255)},
       Call(&P::SetPowerOffDelayTime)},
      {"retain-acc", "Seconds on after ACC off", {Range("seconds", 0, kMost)}, Call(&P::SetRetainACCSec)},
      {"bt-call", "State of the Bluetooth call", {Choice("state", kCall)}, Call(&P::SetBtCallState)},
      {"carplay-call", "State of the CarPlay call", {Choice("state", kCarPlayCall)}, Call(&P::SetCarPlayPhoneState)},
      {"rear-view", "Whether the rear-view camera is shown", {Switch()}, Call(&P::SetPowerRvcStatus)},
  };
}

}  // namespace

Area PowerArea() {
  return {"power",
          "ACC, screen, brightness, button light, boot",
          {{"power", HLXSystemData::SHM_POWER_DATA_KEY_ID, sizeof(HLXSystemData::PowerShmData)}},
          Fields(),
          Commands(),
          Listen<IHLXSystemPower, PowerEvents>};
}
