/// The values of the misc client.
#pragma once

#include <cstring>

#include "HLXListenerBase.h"
#include "catalog/Rows.h"

namespace catalog::rows {
namespace misc {

using namespace SystemMisc;
using namespace words;
using I = IHLXSystemMisc;
using When = Announcement::When;

inline constexpr const char kVehicle[] = "Vehicle";
inline constexpr const char kDoors[] = "Doors";
inline constexpr const char kClimate[] = "Climate";
inline constexpr const char kAir[] = "Air distribution";
inline constexpr const char kTemperatures[] = "Temperatures";
inline constexpr const char kRadar[] = "Radar";
inline constexpr const char kLines[] = "Antennas and microphone";
inline constexpr const char kSpeakers[] = "Speakers";
inline constexpr const char kCanBox[] = "CAN box";
inline constexpr const char kUnit[] = "Unit";
inline constexpr const char kKeys[] = "Keys and steering";

inline constexpr Reading kSwitch = Flag(kOnOff);
inline constexpr Reading kSpeed = Count().In(0, 400);
inline constexpr Reading kDistanceRun = Count().In(0, 9999999);
inline constexpr Reading kFuelRate = Count().In(0, 1000);
inline constexpr Reading kAntennaState = Named(kAntenna);
inline constexpr Reading kDegrees = Decimal("°", 1).In(-50, 100);
inline constexpr Reading kWholeDegrees = Number("°").In(-50, 100);
inline constexpr Reading kRadarDistance = Count(kDistance).In(0, 255);
inline constexpr Reading kBits = Plain(Reading::Kind::kBits).In(0, 255);

/// The text is in the record, where the service may be writing it.
inline Scalar CanVersion(const Clients& clients) {
  char text[sizeof(HLXSystemData::MiscShmData::can_version)];
  std::memcpy(text, In<I>(clients).GetCanVersion(), sizeof text);
  return ToScalar(std::string(text, strnlen(text, sizeof text)));
}

template <Speaker Which>
Scalar SpeakerStateOf(const Clients& clients) {
  std::map<Speaker, SpeakerState> states;
  In<I>(clients).GetSpeakerState(states);
  return ToScalar(states[Which]);
}

/// The getter answers with an event to all listeners, on the calling thread.
template <int Sensor>
Scalar RadarOf(const Clients& clients) {
  struct Listener : HLXMiscListenerBase {
    void OnSteelMateRadarInfoChange(unsigned char left, unsigned char middle_left, unsigned char middle_right,
                                    unsigned char right) override {
      const unsigned char all[] = {left, middle_left, middle_right, right};
      value = all[Sensor];
    }
    int64_t value = 0;
  } listener;
  I& client = In<I>(clients);
  client.LockListener();
  client.AddListener(&listener);
  client.UnlockListener();
  client.GetSteelMateRadarInfo();
  client.LockListener();
  client.RemoveListener(&listener);
  client.UnlockListener();
  return listener.value;
}

template <class... A>
constexpr Value Row(const char* group, A... arguments) {
  return Make(Area::kMisc, group, arguments...);
}
constexpr Value Event(const char* group, const char* name, const char* label, Reading reading, Announcement by) {
  return Make(Area::kMisc, group, Field{}, Getter{}, name, label, reading, by);
}
#define FIELD(member) HLX_FIELD_OF(kMisc, MiscShmData, member)
#define GET(function) HLX_ASK(I, function)
#define SPEAKER(which) HLX_ASK_SPECIAL(I, GetSpeakerState, #which, &SpeakerStateOf<which>)
#define RADAR(sensor) HLX_ASK_SPECIAL(I, GetSteelMateRadarInfo, #sensor, &RadarOf<sensor>)
#define DOOR(which) HLX_BIT_OF(kMisc, MiscShmData, door_state_bits, which), HLX_ASK_WITH(I, GetDoorState, which)
#define AC(which) HLX_BIT_OF(kMisc, MiscShmData, ac_state_bits, which), HLX_ASK_WITH(I, GetAcState, which)
#define AIR(which) \
  HLX_BIT_OF(kMisc, MiscShmData, simple_air_mode_bits, which), Getter {}

// clang-format off
inline constexpr Value kValues[] = {
    Row(kVehicle, FIELD(car_speed), GET(GetCarSpeed), "car_speed", "Car speed", kSpeed, By("CarSpeedChangeSignal")),
    Row(kVehicle, FIELD(car_float_speed_raw), GET(GetCarFloatSpeed), "car_float_speed", "Car speed, exact", Decimal("", 2, 100).In(0, 400), By("CarFloatSpeedChangeSignal")),
    Row(kVehicle, FIELD(current_car_speed), GET(GetCurrentCarSpeed), "current_speed", "Current speed (CAN box)", kSpeed, By("CurSpeedChangeSignal")),
    Event(kVehicle, "raise_speed", "Current speed (Raise box)", kSpeed, By("CurSpeedChangeSignalRaise")),
    Row(kVehicle, FIELD(average_car_speed), GET(GetAverageCarSpeed), "average_speed", "Average speed", kSpeed, By("AvrSpeedChangeSignal")),
    Row(kVehicle, FIELD(engine_rotate_speed), GET(GetEngineRotateSpeed), "engine_speed", "Engine speed", Number("1/min").In(0, 10000), By("RotateSpeedChangeSignal")),
    Row(kVehicle, FIELD(total_mile), GET(GetTotalMile), "total_mile", "Odometer", kDistanceRun, By("MileTotalChangeSignal")),
    Row(kVehicle, FIELD(endurance_mile), GET(GetEnduranceMile), "endurance_mile", "Remaining range", kDistanceRun, By("MileEnduranceChangeSignal")),
    Row(kVehicle, FIELD(stage_a_mile), GET(GetStage_A_Mile), "stage_a_mile", "Trip A", kDistanceRun, By("MileStageAChangeSignal")),
    Row(kVehicle, FIELD(stage_b_mile), GET(GetStage_B_Mile), "stage_b_mile", "Trip B", kDistanceRun, By("MileStageBChangeSignal")),
    Row(kVehicle, FIELD(raise_current_mile), Getter{}, "raise_current_mile", "Mileage (Raise box)", kDistanceRun),
    Event(kVehicle, "raise_total_mile", "Odometer (Raise box)", kDistanceRun, By("MileTotalChangeSignalRaise")),
    Event(kVehicle, "raise_endurance_mile", "Remaining range (Raise box)", kDistanceRun, By("MileEnduranceChangeSignalRaise")),
    Row(kVehicle, FIELD(current_fuel), GET(GetCurrentFuel), "current_fuel", "Current consumption", kFuelRate, By("CurFuelChangeSignal")),
    Row(kVehicle, FIELD(average_fuel), GET(GetAverageFuel), "average_fuel", "Average consumption", kFuelRate, By("AvrFuelChangeSignal")),
    Row(kVehicle, FIELD(parking_state), GET(GetParkingState), "parking", "Parking", Flag(kYesNo), By("ParkingStateChangeSignal")),
    Row(kVehicle, FIELD(simple_rvc_signal_actived), GET(GetSimpleRVCSignalActived), "reverse", "Reverse gear", kSwitch, By("OnSimpleRVCSignal")),
    Row(kVehicle, FIELD(front_camera_active), GET(GetFrontCameraActiveStatus), "front_camera", "Front camera", kSwitch, By("OnCameraStateChangeSignal", 0)),
    Row(kVehicle, FIELD(rear_camera_active), GET(GetRearCameraActiveStatus), "rear_camera", "Rear camera", kSwitch, By("OnCameraStateChangeSignal", 1)),
    Row(kVehicle, FIELD(_is_left_position), GET(IsDrivePositionLeft), "drive_position", "Driver's seat", Flag(kSide)),

    Row(kKeys, Field{}, Getter{}, "key", "Key", Plain(Reading::Kind::kCode).In(0, 255), By("KeyStateChangeSignal", 0)),
    Row(kKeys, Field{}, Getter{}, "key_state", "State of the key", Count().In(0, 255), By("KeyStateChangeSignal", 1)),
    Event(kKeys, "steering_angle", "Steering-wheel angle", Number("%"), Told("RaiseVWSteeringWheelAngelChangeSignal")),

    Row(kDoors, FIELD(door_state_bits), Getter{}, "doors", "Doors, as one byte", kBits, By("DoorStateChangeSignal")),
    Row(kDoors, DOOR(DOOR_FRONT_LEFT), "door_front_left", "Door, front left", Flag(kOpen), By("DoorStateChangeSignal")),
    Row(kDoors, DOOR(DOOR_FRONT_RIGHT), "door_front_right", "Door, front right", Flag(kOpen), By("DoorStateChangeSignal")),
    Row(kDoors, DOOR(DOOR_REAR_LEFT), "door_rear_left", "Door, rear left", Flag(kOpen), By("DoorStateChangeSignal")),
    Row(kDoors, DOOR(DOOR_REAR_RIGHT), "door_rear_right", "Door, rear right", Flag(kOpen), By("DoorStateChangeSignal")),
    Row(kDoors, DOOR(DOOR_TRUNK), "door_trunk", "Trunk", Flag(kOpen), By("DoorStateChangeSignal")),
    Row(kDoors, DOOR(DOOR_HOOD), "door_hood", "Hood", Flag(kOpen), By("DoorStateChangeSignal")),
    Row(kDoors, DOOR(DOOR_RESERVED_0), "door_reserved_0", "Door bit 0 (reserved)", Flag(kOpen), By("DoorStateChangeSignal")),
    Row(kDoors, DOOR(DOOR_RESERVED_1), "door_reserved_1", "Door bit 1 (reserved)", Flag(kOpen), By("DoorStateChangeSignal")),

    // The byte and its bits as every box but Renault's has them: that one has a front defrost at bit 5.
    Row(kClimate, FIELD(ac_state_bits), Getter{}, "ac_switches", "Climate switches, as one byte", kBits, By("AcStateChangeSignal")),
    Row(kClimate, AC(AC_STATE_POWER), "ac_power", "Climate", kSwitch, By("AcStateChangeSignal")),
    Row(kClimate, AC(AC_STATE_COMPRESSOR), "ac_compressor", "Compressor", kSwitch, By("AcStateChangeSignal")),
    Row(kClimate, AC(AC_STATE_RECIRCULATION), "ac_recirculation", "Recirculation", kSwitch, By("AcStateChangeSignal")),
    Row(kClimate, AC(AC_STATE_AUTO), "ac_auto", "Automatic", kSwitch, By("AcStateChangeSignal")),
    Row(kClimate, AC(AC_STATE_DUAL), "ac_dual", "Dual", kSwitch, By("AcStateChangeSignal")),
    Row(kClimate, AC(AC_STATE_MAX_FRONT), "ac_max_front", "Front at full", kSwitch, By("AcStateChangeSignal")),
    Row(kClimate, AC(AC_STATE_REAR_DEFROST), "ac_rear_defrost", "Rear defrost", kSwitch, By("AcStateChangeSignal")),
    Row(kClimate, AC(AC_STATE_DISPLAY), "ac_display", "Climate display", kSwitch, By("AcStateChangeSignal")),
    Event(kClimate, "ac_front_defrost", "Front defrost", kSwitch, Told("RaiseGacAcStateChangeSignal")),
    Event(kClimate, "ac_blow_window", "Air to the window", kSwitch, Told("RaiseGacAcStateChangeSignal")),
    Event(kClimate, "ac_blow_face", "Air to the face", kSwitch, Told("RaiseGacAcStateChangeSignal")),
    Event(kClimate, "ac_blow_feet", "Air to the feet", kSwitch, Told("RaiseGacAcStateChangeSignal")),
    Event(kClimate, "ac_rear_lock", "Rear controls locked", kSwitch, Told("RaiseGacAcStateChangeSignal")),
    Event(kClimate, "ac_max", "At full", kSwitch, Told("RaiseGacAcStateChangeSignal")),
    Event(kClimate, "ac_eco", "Economy", kSwitch, Told("RaiseGacAcStateChangeSignal")),
    Event(kClimate, "ac_auto_high", "Automatic, high", kSwitch, Told("OnGeneralAcStateChangeSignal")),
    Event(kClimate, "ac_auto_low", "Automatic, low", kSwitch, Told("OnGeneralAcStateChangeSignal")),
    Event(kClimate, "ac_rear_power", "Rear climate", kSwitch, Told("OnGeneralAcStateChangeSignal")),
    Event(kClimate, "ac_rear_auto", "Rear automatic", kSwitch, Told("OnGeneralAcStateChangeSignal")),
    Event(kClimate, "ac_rear_blow_window", "Rear air to the window", kSwitch, Told("OnGeneralAcStateChangeSignal")),
    Event(kClimate, "ac_rear_blow_face", "Rear air to the face", kSwitch, Told("OnGeneralAcStateChangeSignal")),
    Event(kClimate, "ac_rear_blow_feet", "Rear air to the feet", kSwitch, Told("OnGeneralAcStateChangeSignal")),
    Event(kClimate, "ac_left_seat_heat", "Left seat heating", kSwitch, Told("OnGeneralAcStateChangeSignal")),
    Event(kClimate, "ac_right_seat_heat", "Right seat heating", kSwitch, Told("OnGeneralAcStateChangeSignal")),
    Event(kClimate, "ac_left_seat_cool", "Left seat cooling", kSwitch, Told("OnGeneralAcStateChangeSignal")),
    Event(kClimate, "ac_right_seat_cool", "Right seat cooling", kSwitch, Told("OnGeneralAcStateChangeSignal")),
    Event(kClimate, "ac_max_cooling", "Cooling at full", kSwitch, Told("OnGeneralAcStateChangeSignal")),

    Row(kAir, FIELD(air_blow_mode), GET(GetAirBlowMode), "air_blow_mode", "Air goes to", Named(kAirBlow), By("AirBlowModeChangeSignal")),
    Row(kAir, FIELD(air_blow_level), GET(GetAirBlowLevel), "air_level", "Fan level", Count().In(0, 15), By("AirLevelChangeSignal")),
    Event(kAir, "front_air_level", "Fan level, front seats", Count().In(0, 15), By("OnGeneralAirLevelChangeSignal", 1, When::kFirstIsZero)),
    Event(kAir, "rear_air_level", "Fan level, rear seats", Count().In(0, 15), By("OnGeneralAirLevelChangeSignal", 1, When::kFirstIsNot)),
    // Bits 4 to 7 as every box but Renault's has them.
    Row(kAir, FIELD(simple_air_mode_bits), Getter{}, "air_mode", "Air mode, as one byte", kBits, By("SimpleAirModeChangeSignal")),
    Row(kAir, AIR(SIMPLE_AIR_AUTO), "air_mode_auto", "Air mode, automatic", kSwitch, By("SimpleAirModeChangeSignal")),
    Row(kAir, AIR(SIMPLE_AIR_WINDOW), "air_mode_window", "Air mode, window", kSwitch, By("SimpleAirModeChangeSignal")),
    Row(kAir, AIR(SIMPLE_AIR_FACE), "air_mode_face", "Air mode, face", kSwitch, By("SimpleAirModeChangeSignal")),
    Row(kAir, AIR(SIMPLE_AIR_FEET), "air_mode_feet", "Air mode, feet", kSwitch, By("SimpleAirModeChangeSignal")),
    Event(kAir, "air_mode_available", "Air mode, available", kSwitch, Told("SimpleAirModeChangeSignal")),
    Event(kAir, "air_mode_soft", "Air mode, soft", kSwitch, Told("SimpleAirModeChangeSignal")),
    Event(kAir, "air_mode_normal", "Air mode, normal", kSwitch, Told("SimpleAirModeChangeSignal")),
    Event(kAir, "air_mode_fast", "Air mode, fast", kSwitch, Told("SimpleAirModeChangeSignal")),

    Row(kTemperatures, FIELD(driver_position_temperature), GET(GetDriverPositionTemperature), "driver_temperature", "Temperature set, driver", kDegrees, By("TempDriverChangeSignal")),
    Row(kTemperatures, FIELD(copilot_position_temperature), GET(GetCopilotPositionTemperature), "copilot_temperature", "Temperature set, passenger", kDegrees, By("TempCopilotChangeSignal")),
    Row(kTemperatures, FIELD(environment_temperature), GET(GetEnvironmentTemperature), "outside_temperature", "Temperature outside", kDegrees, By("TempEnvChangeSignal")),
    Row(kTemperatures, FIELD(simple_environment_temperature), GET(GetSimpleEnvironmentTemperature), "outside_degrees", "Temperature outside, whole", kWholeDegrees, By("TempEnvChangeSignal")),
    Event(kTemperatures, "front_left_temperature", "Temperature set, front left", kDegrees, By("OnGeneralLeftTempChangeSignal", 1, When::kFirstIsZero)),
    Event(kTemperatures, "front_right_temperature", "Temperature set, front right", kDegrees, By("OnGeneralRightTempChangeSignal", 1, When::kFirstIsZero)),
    Event(kTemperatures, "rear_left_temperature", "Temperature set, rear left", kDegrees, By("OnGeneralLeftTempChangeSignal", 1, When::kFirstIsNot)),
    Event(kTemperatures, "rear_right_temperature", "Temperature set, rear right", kDegrees, By("OnGeneralRightTempChangeSignal", 1, When::kFirstIsNot)),
    Row(kTemperatures, FIELD(system_temperature), GET(GetSystemTemperature), "system_temperature", "Temperature of the unit", Number("°").In(-50, 150), By("OnSystemTempChange")),
    Row(kTemperatures, FIELD(tft_temperature), GET(GetTFTTemperature), "tft_temperature", "Temperature of the display", Number("°").In(0, 255), By("OnTFTTempChange")),

    Row(kRadar, FIELD(steel_mate_radar[0]), RADAR(0), "radar_left", "SteelMate radar, left", kRadarDistance, By("OnSteelMateRadarInfoChangedSignal", 0)),
    Row(kRadar, FIELD(steel_mate_radar[1]), RADAR(1), "radar_middle_left", "SteelMate radar, middle left", kRadarDistance, By("OnSteelMateRadarInfoChangedSignal", 1)),
    Row(kRadar, FIELD(steel_mate_radar[2]), RADAR(2), "radar_middle_right", "SteelMate radar, middle right", kRadarDistance, By("OnSteelMateRadarInfoChangedSignal", 2)),
    Row(kRadar, FIELD(steel_mate_radar[3]), RADAR(3), "radar_right", "SteelMate radar, right", kRadarDistance, By("OnSteelMateRadarInfoChangedSignal", 3)),
    // Of any box; a GAC box also says how they are to be shown, see kAlsoAnnouncedBy.
    Event(kRadar, "rear_radar_left", "Rear radar, left", kRadarDistance, By("OnRadarInfoChangedSignal", 0)),
    Event(kRadar, "rear_radar_middle_left", "Rear radar, middle left", kRadarDistance, By("OnRadarInfoChangedSignal", 1)),
    Event(kRadar, "rear_radar_middle_right", "Rear radar, middle right", kRadarDistance, By("OnRadarInfoChangedSignal", 2)),
    Event(kRadar, "rear_radar_right", "Rear radar, right", kRadarDistance, By("OnRadarInfoChangedSignal", 3)),
    Event(kRadar, "radar_display", "Radar picture (GAC box)", Count().In(0, 255), By("OnRaiseGacRadarInfoChangedSignal", 0)),

    Row(kLines, FIELD(radio_ant_state), GET(GetRadioAntState), "radio_antenna", "Radio antenna", kAntennaState, By("RadioAntStateChangeSignal")),
    Row(kLines, FIELD(gps_ant_state), GET(GetGpsAntState), "gps_antenna", "GPS antenna", kAntennaState, By("GpsAntStateChangeSignal")),
    Row(kLines, FIELD(dab_ant_state), GET(GetDABAntState), "dab_antenna", "DAB antenna", kAntennaState, By("DABAntStateChangeSignal")),
    Row(kLines, FIELD(mic_connect_state), GET(GetMicConnectState), "microphone", "Microphone", kAntennaState, By("MicConnectStateChangeSignal")),

    Row(kSpeakers, FIELD(speakers_amount), GET(GetSpeakersAmount), "speakers", "Number of speakers", Count().In(0, 255), By("OnSpeakerAmountChangeSignal")),
    Row(kSpeakers, FIELD(speaker_states[0]), SPEAKER(SPEAKER_FRONT_LEFT), "speaker_front_left", "Speaker, front left", Named(kSpeakerState), Told("SpeakerStateChangeSignal")),
    Row(kSpeakers, FIELD(speaker_states[1]), SPEAKER(SPEAKER_FRONT_RIGHT), "speaker_front_right", "Speaker, front right", Named(kSpeakerState), Told("SpeakerStateChangeSignal")),
    Row(kSpeakers, FIELD(speaker_states[2]), SPEAKER(SPEAKER_REAR_LEFT), "speaker_rear_left", "Speaker, rear left", Named(kSpeakerState), Told("SpeakerStateChangeSignal")),
    Row(kSpeakers, FIELD(speaker_states[3]), SPEAKER(SPEAKER_REAR_RIGHT), "speaker_rear_right", "Speaker, rear right", Named(kSpeakerState), Told("SpeakerStateChangeSignal")),

    Row(kCanBox, FIELD(can_version), HLX_ASK_SPECIAL(I, GetCanVersion, "", &CanVersion), "can_version", "CAN-box version", Plain(Reading::Kind::kText)),
    Row(kCanBox, FIELD(_can_box_enble), GET(GetCanBoxEnableStatus), "can_box", "CAN-box module", kSwitch),

    Row(kUnit, FIELD(system_language), GET(GetSystemLanguage), "language", "Language", Named(kLanguage), By("OnSystemLanguageChangeSignal")),
    Row(kUnit, FIELD(urgent_mute_state), GET(GetUrgentMuteState), "urgent_mute", "Urgent mute", kSwitch, By("OnUrgentMuteStateChangeSignal")),
    Row(kUnit, FIELD(radio_region), GET(GetRadioRegion), "radio_region", "Radio region", Named(kRadioRegion), By("OnRadioRegionChangeSignal")),
    Event(kUnit, "radio_band", "Band of the preset", Named(kRadioBand), By("OnRadioPresetChangeSignal", 0)),
    Event(kUnit, "radio_frequency", "Frequency of the preset", Number("kHz").In(0, 0xFFFFFFFF), By("OnRadioPresetChangeSignal", 1)),
    Event(kUnit, "radio_preset", "Preset", Count().In(0, 255), By("OnRadioPresetChangeSignal", 2)),
    Row(kUnit, FIELD(_is_rvc_delay), GET(GetRvcOffDelayState), "rear_view_delay", "Rear view stays for a moment", kSwitch),
    Row(kUnit, FIELD(is_handbrake_test_on), GET(IsHandBrakeTestOn), "handbrake_check", "Hand-brake check", kSwitch),
    Row(kUnit, FIELD(is_gps_ant_checking_on), GET(IsGPSAntennaCheckingOn), "gps_antenna_check", "GPS antenna check", kSwitch),
    Row(kUnit, FIELD(_screen_shot_enble), GET(GetScreenShotStatus), "screenshots", "Screenshots allowed", Flag(kYesNo)),
};
// clang-format on
#undef FIELD
#undef GET
#undef SPEAKER
#undef RADAR
#undef DOOR
#undef AC
#undef AIR

}  // namespace misc
}  // namespace catalog::rows
