#include "simulator/SignalFields.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "dbus/GLibPtr.h"

namespace {

/// A misspelt name does not compile.
constexpr const RecordField* F(std::string_view name) { return &FieldNamed(name); }

template <class T>
T NearestWhole(double value) {
  if (std::isnan(value)) return 0;
  const double lowest = std::numeric_limits<T>::min();
  const double highest = std::numeric_limits<T>::max();
  return static_cast<T>(std::clamp(std::round(value), lowest, highest));
}

double DoubleArgument(GVariant* arguments) {
  double value = 0;
  g_variant_get(arguments, "(d)", &value);
  return value;
}

/// The level is stored with the light type that the first argument names.
template <uint8_t HLXSystemData::PowerShmData::*Day, uint8_t HLXSystemData::PowerShmData::*Night>
void StoreLevel(Records& records, GVariant* arguments) {
  guchar type = 0;
  guchar level = 0;
  g_variant_get(arguments, "(yy)", &type, &level);
  HLXSystemData::Store(type == 0 ? records.power.*Day : records.power.*Night, level);
}

void StoreFloatSpeed(Records& records, GVariant* arguments) {
  HLXSystemData::Store(records.misc.car_float_speed_raw, NearestWhole<uint32_t>(DoubleArgument(arguments) * 100));
}

void StoreOutsideTemperature(Records& records, GVariant* arguments) {
  const double degrees = DoubleArgument(arguments);
  HLXSystemData::Store(records.misc.environment_temperature, degrees);
  HLXSystemData::Store(records.misc.simple_environment_temperature, NearestWhole<int8_t>(degrees));
}

using Power = HLXSystemData::PowerShmData;

/// All signals of the interface; those without a field are events that leave no state.
constexpr SignalFields kSignals[] = {
    {"DetectValidUpdateFileNotifySignal"},
    {"UpdateRequestResultInformSignal"},
    {"UpdateCanProcess"},
    {"OnMcuUpdateStateNotify"},
    {"OnMpuUpdateStateNotify"},
    {"OnMcuUpdateProgressNotify"},
    {"OnPackageStateChangeNotify"},
    {"ScreenStateChangeSignal", {F("power.is_screen_on")}},
    {"RadioStateChangeSignal", {F("power.radio_on_state")}},
    {"AccStateChangeSignal", {F("power.is_acc_on")}},
    {"PowerOffDelayTimeChangeSignal", {F("power._power_delay_time")}},
    {"ScreenLightLevelChangedSignal", {}, StoreLevel<&Power::_screen_day_level, &Power::_screen_night_level>},
    {"ScreenLightTypeChangedSignal", {F("power.cur_screen_light_type")}},
    {"ButtonLightLevelChangedSignal", {}, StoreLevel<&Power::button_day_level, &Power::button_night_level>},
    {"ButtonColorChangedSignal", {F("power.color_type")}},
    {"ButtonLightTypeChangedSignal", {F("power.button_light_type")}},
    {"BatteryBootStateChangeSignal", {F("power.is_cold_boot")}},
    {"AbnormalPowerAudioNotifySignal"},
    {"AbnormalPowerUsbNotifySignal"},
    {"OnPowerPreRadioOffNotify"},
    {"OnMcuBootTypeNotifySignal", {F("power.mcu_boot_type")}},
    {"OnMcuRequestDisplayUiActionSignal"},
    {"OnHeadLightStateChange", {F("power.head_light_state")}},
    {"SpeakerStateChangeSignal"},
    {"CarSpeedChangeSignal", {F("misc.car_speed")}},
    {"CarFloatSpeedChangeSignal", {}, StoreFloatSpeed},
    {"ParkingStateChangeSignal", {F("misc.parking_state")}},
    {"RadioAntStateChangeSignal", {F("misc.radio_ant_state")}},
    {"GpsAntStateChangeSignal", {F("misc.gps_ant_state")}},
    {"DABAntStateChangeSignal", {F("misc.dab_ant_state")}},
    {"MicConnectStateChangeSignal", {F("misc.mic_connect_state")}},
    {"OnFactoryResetModeSignal"},
    {"AcStateChangeSignal", {F("misc.ac_state_bits")}},
    {"AirBlowModeChangeSignal", {F("misc.air_blow_mode")}},
    {"AirLevelChangeSignal", {F("misc.air_blow_level")}},
    {"TempDriverChangeSignal", {F("misc.driver_position_temperature")}},
    {"TempCopilotChangeSignal", {F("misc.copilot_position_temperature")}},
    {"TempEnvChangeSignal", {}, StoreOutsideTemperature},
    {"DoorStateChangeSignal", {F("misc.door_state_bits")}},
    {"KeyStateChangeSignal"},
    {"CurSpeedChangeSignal", {F("misc.current_car_speed")}},
    {"CurSpeedChangeSignalRaise"},
    {"AvrSpeedChangeSignal", {F("misc.average_car_speed")}},
    {"MileTotalChangeSignal", {F("misc.total_mile")}},
    {"MileEnduranceChangeSignal", {F("misc.endurance_mile")}},
    {"MileTotalChangeSignalRaise"},
    {"MileEnduranceChangeSignalRaise"},
    {"MileStageAChangeSignal", {F("misc.stage_a_mile")}},
    {"MileStageBChangeSignal", {F("misc.stage_b_mile")}},
    {"CurFuelChangeSignal", {F("misc.current_fuel")}},
    {"AvrFuelChangeSignal", {F("misc.average_fuel")}},
    {"RotateSpeedChangeSignal", {F("misc.engine_rotate_speed")}},
    {"SimpleAirModeChangeSignal", {F("misc.simple_air_mode_bits")}},
    {"OnCameraStateChangeSignal", {F("misc.front_camera_active"), F("misc.rear_camera_active")}},
    {"OnSystemTempChange", {F("misc.system_temperature")}},
    {"OnTFTTempChange", {F("misc.tft_temperature")}},
    {"OnSystemLanguageChangeSignal", {F("misc.system_language")}},
    {"OnUrgentMuteStateChangeSignal", {F("misc.urgent_mute_state")}},
    {"OnRadioRegionChangeSignal", {F("misc.radio_region")}},
    {"OnRadioPresetChangeSignal"},
    {"OnSpeakerAmountChangeSignal", {F("misc.speakers_amount")}},
    {"OnDateInfoChangeSignal"},
    {"OnExternalMcuTimeChangeSignal"},
    {"On24TimeModeChangeSignal", {F("time._time_24_mode")}},
    {"OnDstStatusChangeSignal", {F("time.is_cur_zone_dst_active")}},
    {"OnPowerWakeupTypeSignal", {F("power.power_wakeup_type")}},
    {"OnRadarInfoChangedSignal"},
    {"OnSimpleRVCSignal", {F("misc.simple_rvc_signal_actived")}},
    {"RaiseGacAcStateChangeSignal"},
    {"OnRaiseGacRadarInfoChangedSignal"},
    {"RaiseVWSteeringWheelAngelChangeSignal"},
    {"OnGeneralAcStateChangeSignal"},
    {"OnGeneralAirLevelChangeSignal"},
    {"OnGeneralLeftTempChangeSignal"},
    {"OnGeneralRightTempChangeSignal"},
    {"OnSteelMateRadarInfoChangedSignal",
     {F("misc.steel_mate_radar[0]"), F("misc.steel_mate_radar[1]"), F("misc.steel_mate_radar[2]"),
      F("misc.steel_mate_radar[3]")}},
};

int64_t WholeNumber(GVariant* value) {
  switch (g_variant_classify(value)) {
    case G_VARIANT_CLASS_BYTE:
      return g_variant_get_byte(value);
    case G_VARIANT_CLASS_BOOLEAN:
      return g_variant_get_boolean(value);
    case G_VARIANT_CLASS_UINT32:
      return g_variant_get_uint32(value);
    default:
      return g_variant_get_int32(value);
  }
}

}  // namespace

void SignalFields::Store(Records& records, GVariant* arguments) const {
  if (store != nullptr) return store(records, arguments);
  for (gsize i = 0; i < g_variant_n_children(arguments); ++i) {
    if (fields[i] == nullptr) continue;
    const GLibPtr<GVariant> value(g_variant_get_child_value(arguments, i));
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_DOUBLE)) {
      fields[i]->StoreDouble(records, g_variant_get_double(value.get()));
    } else {
      fields[i]->StoreNumber(records, WholeNumber(value.get()));
    }
  }
}

const SignalFields* FindSignal(std::string_view name) {
  const auto* const row = std::find_if(std::begin(kSignals), std::end(kSignals),
                                       [name](const SignalFields& signal) { return signal.signal == name; });
  return row != std::end(kSignals) ? row : nullptr;
}
