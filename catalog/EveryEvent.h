/// One listener for every callback of the four listener interfaces. It tells each event by the names of values.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "HLXListenerBase.h"
#include "catalog/AllValues.h"
#include "catalog/Switches.h"

namespace catalog {

/// What an event tells of one value.
struct EventArgument {
  std::string name;    ///< the value's, or that of what chooses the value: "light" (kLight), "seats" (kSeat)
  const Value* value;  ///< null for what only chooses, and for a number that has no value
  Reading reading;
  Scalar scalar;
};

struct Event {
  Area area;
  const char* callback;  ///< "OnAccStateChange"
  std::vector<EventArgument> arguments;
};

/// Register the object with each client whose events are wanted; it stands for all four listener interfaces. `sink` is
/// called on the thread of the callback, under the listener's rules; it must not throw.
class EveryEvent : public IHLXPowerListener,
                   public IHLXSystemMiscListener,
                   public IHLXSystemTimeListener,
                   public IHLXUpdateListener {
 public:
  using Sink = std::function<void(const Event&)>;
  explicit EveryEvent(Sink sink) : sink_(std::move(sink)) {}

// The place of a value's row; a misspelt name does not compile.
#define POWER(name) std::integral_constant<std::size_t, rows::IndexOf(Area::kPower, name)>()
#define MISC(name) std::integral_constant<std::size_t, rows::IndexOf(Area::kMisc, name)>()
#define TIME(name) std::integral_constant<std::size_t, rows::IndexOf(Area::kTime, name)>()
#define UPDATE(name) std::integral_constant<std::size_t, rows::IndexOf(Area::kUpdate, name)>()
#define TELL_POWER(...) Tell(Area::kPower, __func__, {__VA_ARGS__})
#define TELL_MISC(...) Tell(Area::kMisc, __func__, {__VA_ARGS__})
#define TELL_TIME(...) Tell(Area::kTime, __func__, {__VA_ARGS__})
#define TELL_UPDATE(...) Tell(Area::kUpdate, __func__, {__VA_ARGS__})

  void OnScreenStateChange(int on) override { TELL_POWER(Of(POWER("screen"), on)); }
  void OnRadioStateChange(HLXPower::RadioState state) override { TELL_POWER(Of(POWER("radio"), state)); }
  void OnAccStateChange(int on) override { TELL_POWER(Of(POWER("acc"), on)); }
  void OnBatteryBootStateChange(int cold) override { TELL_POWER(Of(POWER("cold_boot"), cold)); }
  void OnPowerOffDelayTimeChange(unsigned char time) override { TELL_POWER(Of(POWER("power_off_delay"), time)); }
  void OnPowerWakeupType(HLXPower::PowerWakeupType type) override { TELL_POWER(Of(POWER("wakeup"), type)); }
  void OnAbnormalPowerAudioNotify(unsigned char param) override { TELL_POWER(Of(POWER("abnormal_audio"), param)); }
  void OnAbnormalPowerUsbNotify(unsigned char param) override { TELL_POWER(Of(POWER("abnormal_usb"), param)); }
  void OnPowerPreRadioOffNotify() override { TELL_POWER(); }
  void OnScreenLightLevelChanged(HLXPower::LightType type, unsigned char level) override {
    TELL_POWER(Light(type), type == HLXPower::LIGHT_TYPE_DAY ? Of(POWER("brightness_day"), level)
                                                             : Of(POWER("brightness_night"), level));
  }
  void OnScreenLightTypeChanged(HLXPower::LightType type) override { TELL_POWER(Of(POWER("screen_light"), type)); }
  void OnButtonLightLevelChanged(HLXPower::LightType type, unsigned char level) override {
    TELL_POWER(Light(type), type == HLXPower::LIGHT_TYPE_DAY ? Of(POWER("button_brightness_day"), level)
                                                             : Of(POWER("button_brightness_night"), level));
  }
  void OnButtonLightTypeChanged(HLXPower::LightType type) override { TELL_POWER(Of(POWER("button_light"), type)); }
  void OnButtonColorChanged(HLXPower::ColorType color) override { TELL_POWER(Of(POWER("button_color"), color)); }
  void OnMcuBootTypeNotify(HLXPower::BootReason reason) override { TELL_POWER(Of(POWER("boot_reason"), reason)); }
  void OnMcuRequestDisplayUiAction(HLXPower::McuReqDisplayUi action) override {
    TELL_POWER(Of(POWER("display_request"), action));
  }
  void OnHeadLightStateChange(int on) override { TELL_POWER(Of(POWER("head_lights"), on)); }

  void OnSpeakerStateChange(std::map<SystemMisc::Speaker, SystemMisc::SpeakerState> states) override {
    Tell(Area::kMisc, __func__, ByKey(switches::kSpeakers, states));
  }
  void OnCarSpeedChange(unsigned int speed) override { TELL_MISC(Of(MISC("car_speed"), speed)); }
  void OnCarFloatSpeedChange(double speed) override { TELL_MISC(Of(MISC("car_float_speed"), speed)); }
  void OnParkingStateChange(int parking) override { TELL_MISC(Of(MISC("parking"), parking)); }
  void OnRadioAntStateChange(SystemMisc::AntState state) override { TELL_MISC(Of(MISC("radio_antenna"), state)); }
  void OnGpsAntStateChange(SystemMisc::AntState state) override { TELL_MISC(Of(MISC("gps_antenna"), state)); }
  void OnDABAntStateChange(SystemMisc::AntState state) override { TELL_MISC(Of(MISC("dab_antenna"), state)); }
  void OnMicConnectStateChange(SystemMisc::AntState state) override { TELL_MISC(Of(MISC("microphone"), state)); }
  void OnFactoryResetMode() override { TELL_MISC(); }
  void OnAcStateChange(std::map<SystemMisc::ACState, int> changes) override {
    Tell(Area::kMisc, __func__, ByKey(switches::kAc, changes));
  }
  void OnAirBlowModeChange(SystemMisc::AirBlowMode mode) override { TELL_MISC(Of(MISC("air_blow_mode"), mode)); }
  void OnAirLevelChange(int level) override { TELL_MISC(Of(MISC("air_level"), level)); }
  void OnTempDriverChange(double value) override { TELL_MISC(Of(MISC("driver_temperature"), value)); }
  void OnTempCopilotChange(double value) override { TELL_MISC(Of(MISC("copilot_temperature"), value)); }
  void OnTempEnvironmentChange(double value) override { TELL_MISC(Of(MISC("outside_temperature"), value)); }
  void OnDoorStateChange(std::map<SystemMisc::DoorState, int> changes) override {
    Tell(Area::kMisc, __func__, ByKey(switches::kDoors, changes));
  }
  void OnCurrentSpeedChange(int value) override { TELL_MISC(Of(MISC("current_speed"), value)); }
  void OnCurrentSpeedChange_Raise(int value) override { TELL_MISC(Of(MISC("raise_speed"), value)); }
  void OnAverageSpeedChange(int value) override { TELL_MISC(Of(MISC("average_speed"), value)); }
  void OnTotalMileChange(unsigned int value) override { TELL_MISC(Of(MISC("total_mile"), value)); }
  void OnEnduranceMileChange(int value) override { TELL_MISC(Of(MISC("endurance_mile"), value)); }
  void OnTotalMileChange_Raise(std::map<unsigned int, unsigned int> mile) override {
    for (const auto& [current, total] : mile) {
      TELL_MISC(Of(MISC("raise_current_mile"), current), Of(MISC("raise_total_mile"), total));
    }
  }
  void OnEnduranceMileChange_Raise(std::map<unsigned int, unsigned int> mile) override {
    for (const auto& [current, range] : mile) {
      TELL_MISC(Of(MISC("raise_current_mile"), current), Of(MISC("raise_endurance_mile"), range));
    }
  }
  void OnStage_A_MileChange(unsigned int value) override { TELL_MISC(Of(MISC("stage_a_mile"), value)); }
  void OnStage_B_MileChange(unsigned int value) override { TELL_MISC(Of(MISC("stage_b_mile"), value)); }
  void OnCurrentFuelChange(int value) override { TELL_MISC(Of(MISC("current_fuel"), value)); }
  void OnAverageFuelChange(int value) override { TELL_MISC(Of(MISC("average_fuel"), value)); }
  void OnRotateSpeedChange(int value) override { TELL_MISC(Of(MISC("engine_speed"), value)); }
  void OnKeyStateChange(SystemMisc::KeyEvent& event) override {
    TELL_MISC(Of(MISC("key"), event.key), Of(MISC("key_state"), event.state));
  }
  void OnRaiseGacKnobKeyChange(unsigned char key, unsigned char state) override {
    TELL_MISC(Of(MISC("key"), key), Of(MISC("key_state"), state));
  }
  void OnRaiseGacPanelKeyChange(unsigned char key, unsigned char state) override {
    TELL_MISC(Of(MISC("key"), key), Of(MISC("key_state"), state));
  }
  void OnRadarInfoChange(unsigned char left, unsigned char mid_left, unsigned char mid_right,
                         unsigned char right) override {
    TELL_MISC(Of(MISC("rear_radar_left"), left), Of(MISC("rear_radar_middle_left"), mid_left),
              Of(MISC("rear_radar_middle_right"), mid_right), Of(MISC("rear_radar_right"), right));
  }
  void OnSimpleRVCSignalChange(int on) override { TELL_MISC(Of(MISC("reverse"), on)); }
  void OnSimpleAirModeChange(std::map<SystemMisc::SimpleAirMode, int> modes) override {
    Tell(Area::kMisc, __func__, ByKey(switches::kAirModes, modes));
  }
  void OnRaiseGacAcStateChange(std::map<SystemMisc::Raise_GAC_ACState, int> states) override {
    Tell(Area::kMisc, __func__, ByKey(switches::kGacAc, states));
  }
  void OnRaiseGacRadarInfoChange(unsigned char display, unsigned char left, unsigned char mid_left,
                                 unsigned char mid_right, unsigned char right) override {
    TELL_MISC(Of(MISC("radar_display"), display), Of(MISC("rear_radar_left"), left),
              Of(MISC("rear_radar_middle_left"), mid_left), Of(MISC("rear_radar_middle_right"), mid_right),
              Of(MISC("rear_radar_right"), right));
  }
  void OnRaiseVWSteeringWheelAngelChange(int angle) override { TELL_MISC(Of(MISC("steering_angle"), angle)); }
  void OnRaiseRenaultAcStateChange(std::map<SystemMisc::Raise_Renault_ACState, int> changes) override {
    Tell(Area::kMisc, __func__, ByKey(switches::kRenaultAc, changes));
  }
  void OnGeneralAcStateChange(std::map<SystemMisc::AC_State_Type, int> states) override {
    Tell(Area::kMisc, __func__, ByKey(switches::kGeneralAc, states));
  }
  void OnGeneralAirLevelChange(SystemMisc::SEAT_TYPE seat, int level) override {
    TELL_MISC(Seats(seat), seat == SystemMisc::SEAT_TYPE_FRONT ? Of(MISC("front_air_level"), level)
                                                               : Of(MISC("rear_air_level"), level));
  }
  void OnGeneralLeftTempChange(SystemMisc::SEAT_TYPE seat, double value) override {
    TELL_MISC(Seats(seat), seat == SystemMisc::SEAT_TYPE_FRONT ? Of(MISC("front_left_temperature"), value)
                                                               : Of(MISC("rear_left_temperature"), value));
  }
  void OnGeneralRightTempChange(SystemMisc::SEAT_TYPE seat, double value) override {
    TELL_MISC(Seats(seat), seat == SystemMisc::SEAT_TYPE_FRONT ? Of(MISC("front_right_temperature"), value)
                                                               : Of(MISC("rear_right_temperature"), value));
  }
  void OnCameraStateChange(int front, int rear) override {
    TELL_MISC(Of(MISC("front_camera"), front), Of(MISC("rear_camera"), rear));
  }
  void OnSystemTempChange(int value) override { TELL_MISC(Of(MISC("system_temperature"), value)); }
  void OnTFTTempChange(int value) override { TELL_MISC(Of(MISC("tft_temperature"), value)); }
  void OnSystemLanguageChange(SystemMisc::Language language) override { TELL_MISC(Of(MISC("language"), language)); }
  void OnUrgentMuteStateChange(int mute) override { TELL_MISC(Of(MISC("urgent_mute"), mute)); }
  void OnRadioRegionChange(SystemMisc::Radio_Region_Ford region) override {
    TELL_MISC(Of(MISC("radio_region"), region));
  }
  void OnRadioPresetChange(SystemMisc::Radio_Band_Ford band, unsigned int frequency, unsigned char preset) override {
    TELL_MISC(Of(MISC("radio_band"), band), Of(MISC("radio_frequency"), frequency), Of(MISC("radio_preset"), preset));
  }
  void OnSpeakerAmountChange(unsigned char amount) override { TELL_MISC(Of(MISC("speakers"), amount)); }
  void OnSteelMateRadarInfoChange(unsigned char left, unsigned char mid_left, unsigned char mid_right,
                                  unsigned char right) override {
    TELL_MISC(Of(MISC("radar_left"), left), Of(MISC("radar_middle_left"), mid_left),
              Of(MISC("radar_middle_right"), mid_right), Of(MISC("radar_right"), right));
  }

  void OnDateInfoChange(SystemTime::DateTime& now) override {
    TELL_TIME(Of(TIME("date"), now.date), Of(TIME("weekday"), now.date.week), Of(TIME("time"), now.time));
  }
  void On24TimeModeChange(int on) override { TELL_TIME(Of(TIME("24_hour"), on)); }
  void OnDstStatusChange(int dst) override { TELL_TIME(Of(TIME("dst"), dst)); }
  void OnExternalMcuTimeChange(SystemTime::DateTime& vehicle) override { TELL_TIME(Of(TIME("vehicle_time"), vehicle)); }
  void OnExternalMcu24TimeModeChange(int on) override { TELL_TIME(Of(TIME("vehicle_24_hour"), on)); }
  void OnExternalMcuTimeZoneChange(unsigned char zone) override { TELL_TIME(Of(TIME("vehicle_zone"), zone)); }

  void OnDetectValidUpdateFileNotify(HLXUpdate::UpdateNotifyResult result) override {
    TELL_UPDATE(Of(UPDATE("search_result"), result));
  }
  void OnUpdateRequestResultInform(HLXUpdate::OpResult result) override {
    TELL_UPDATE(Of(UPDATE("request_result"), result));
  }
  void OnUpdateCanProcess(int value) override { TELL_UPDATE(Of(UPDATE("can_progress"), value)); }
  void OnMcuUpdateStateNotify(HLXUpdate::UpdateState state) override { TELL_UPDATE(Of(UPDATE("mcu_state"), state)); }
  void OnMpuUpdateStateNotify(HLXUpdate::UpdateState state) override { TELL_UPDATE(Of(UPDATE("mpu_state"), state)); }
  void OnMcuUpdateProgressNotify(unsigned int progress) override { TELL_UPDATE(Of(UPDATE("mcu_progress"), progress)); }
  void OnPackageStateChangeNotify(HLXUpdate::UpdatePackageState state) override {
    TELL_UPDATE(Of(UPDATE("package"), state));
  }

 private:
  template <class Index, class T>
  static EventArgument Of(Index, const T& told) {
    return Of(rows::kAllValues[Index::value], rows::ToScalar(told));
  }
  static EventArgument Light(HLXPower::LightType type) {
    return {"light", nullptr, Named(words::kLight), rows::ToScalar(type)};
  }
  static EventArgument Seats(SystemMisc::SEAT_TYPE seat) {
    return {"seats", nullptr, Named(words::kSeat), rows::ToScalar(seat)};
  }
  static EventArgument Of(const Value& value, Scalar scalar) {
    return {value.name, &value, value.reading, std::move(scalar)};
  }

  /// One argument for each entry of a map. A key without a value of its own is called by its number.
  template <class Key, class Told>
  static std::vector<EventArgument> ByKey(View<switches::Switch> table, const std::map<Key, Told>& map) {
    std::vector<EventArgument> arguments;
    for (const auto& [key, told] : map) {
      const Value* value = nullptr;
      for (const switches::Switch& row : table) {
        if (row.key == static_cast<int>(key)) value = &rows::kAllValues[row.value];
      }
      if (value != nullptr) {
        arguments.push_back(Of(*value, rows::ToScalar(told)));
      } else {
        arguments.push_back({"switch_" + std::to_string(key), nullptr, Count(), rows::ToScalar(told)});
      }
    }
    return arguments;
  }

  void Tell(Area area, const char* callback, std::vector<EventArgument> arguments) {
    sink_({area, callback, std::move(arguments)});
  }

  Sink sink_;

#undef POWER
#undef MISC
#undef TIME
#undef UPDATE
#undef TELL_POWER
#undef TELL_MISC
#undef TELL_TIME
#undef TELL_UPDATE
};

}  // namespace catalog
