#include <cstring>

#include "HLXListenerBase.h"
#include "data/MiscShmDataBase.h"
#include "platform/LibConfigs.h"
#include "tools/hlxctl/Area.h"
#include "tools/hlxctl/MiscEvents.h"
#include "tools/hlxctl/MiscWords.h"

using namespace misc_words;
using M = IHLXSystemMisc;

namespace {

constexpr Word kDrivePosition[] = {{1, "left"}, {0, "right"}};

/// The CAN-box protocol that the unit is configured for. The library does not tell, so the configuration is asked.
Value Protocol() {
  constexpr const char* kKnown[] = {"raise", "raise_gac", "raise_renault", "raise_vw", "raise_toyota", "raise_ford"};
  const std::string protocol = GetLibConfigs()->GetString("/system/using_can_protocol");
  Value value = Text{}(protocol);
  for (const char* const known : kKnown) {
    if (protocol == known) return value;
  }
  value.text += " (unknown protocol)";
  return value;
}

Value CanVersion() {
  constexpr std::size_t kSize = sizeof(HLXSystemData::MiscShmData::can_version);
  char text[kSize];
  std::memcpy(text, Proxy<M>().GetCanVersion(), kSize);  // the service may be writing it
  return Text{}(std::string(text, strnlen(text, kSize)));
}

std::function<Value()> SpeakerOf(Speaker speaker) {
  return [speaker] {
    std::map<Speaker, SpeakerState> states;
    Proxy<M>().GetSpeakerState(states);
    return Named{kSpeakerState}(states.at(speaker));
  };
}

/// The stored radar values come only as an event, on the calling thread.
std::function<Value()> RadarOf(int sensor) {
  struct Radar : HLXMiscListenerBase {
    void OnSteelMateRadarInfoChange(unsigned char left, unsigned char mid_left, unsigned char mid_right,
                                    unsigned char right) override {
      values = {left, mid_left, mid_right, right};
    }
    std::vector<unsigned char> values;
  };
  return [sensor] {
    Radar radar;
    Proxy<M>().AddListener(&radar);
    Proxy<M>().GetSteelMateRadarInfo();
    Proxy<M>().RemoveListener(&radar);
    return Distance{}(radar.values.at(static_cast<std::size_t>(sensor)));
  };
}

std::vector<Field> Fields() {
  const Named antenna{kAntenna};
  const Number degrees{"°"};
  return {
      {"protocol", "CAN-box protocol", Protocol},
      {"can_version", "CAN-box version", CanVersion},
      {"can_box", "CAN-box module", Get(&M::GetCanBoxEnableStatus, kOnOff)},
      {"car_speed", "Car speed", Get(&M::GetCarSpeed, kCount)},
      {"car_float_speed", "Car speed, exact", Get(&M::GetCarFloatSpeed, Decimal{"", 2})},
      {"current_speed", "Current speed (CAN box)", Get(&M::GetCurrentCarSpeed, kCount)},
      {"average_speed", "Average speed", Get(&M::GetAverageCarSpeed, kCount)},
      {"engine_speed", "Engine speed", Get(&M::GetEngineRotateSpeed, kEngineSpeed)},
      {"total_mile", "Odometer", Get(&M::GetTotalMile, kCount)},
      {"endurance_mile", "Remaining range", Get(&M::GetEnduranceMile, kCount)},
      {"stage_a_mile", "Trip A", Get(&M::GetStage_A_Mile, kCount)},
      {"stage_b_mile", "Trip B", Get(&M::GetStage_B_Mile, kCount)},
      {"current_fuel", "Current consumption", Get(&M::GetCurrentFuel, kCount)},
      {"average_fuel", "Average consumption", Get(&M::GetAverageFuel, kCount)},
      {"parking", "Parking", Get(&M::GetParkingState, kYesNo)},
      {"reverse", "Reverse gear", Get(&M::GetSimpleRVCSignalActived, kOnOff)},
      {"front_camera", "Front camera", Get(&M::GetFrontCameraActiveStatus, kOnOff)},
      {"rear_camera", "Rear camera", Get(&M::GetRearCameraActiveStatus, kOnOff)},
      {"rear_view_delay", "Rear view stays for a moment", Get(&M::GetRvcOffDelayState, kOnOff)},
      {"drive_position", "Driver's seat", Get(&M::IsDrivePositionLeft, kLeft)},
      {"handbrake_check", "Hand-brake check", Get(&M::IsHandBrakeTestOn, kOnOff)},
      {"gps_antenna_check", "GPS antenna check", Get(&M::IsGPSAntennaCheckingOn, kOnOff)},
      {"radio_antenna", "Radio antenna", Get(&M::GetRadioAntState, antenna)},
      {"gps_antenna", "GPS antenna", Get(&M::GetGpsAntState, antenna)},
      {"dab_antenna", "DAB antenna", Get(&M::GetDABAntState, antenna)},
      {"microphone", "Microphone", Get(&M::GetMicConnectState, antenna)},
      {"speakers", "Speakers", Get(&M::GetSpeakersAmount, kCount)},
      {"speaker_front_left", "Speaker, front left", SpeakerOf(SPEAKER_FRONT_LEFT)},
      {"speaker_front_right", "Speaker, front right", SpeakerOf(SPEAKER_FRONT_RIGHT)},
      {"speaker_rear_left", "Speaker, rear left", SpeakerOf(SPEAKER_REAR_LEFT)},
      {"speaker_rear_right", "Speaker, rear right", SpeakerOf(SPEAKER_REAR_RIGHT)},
      {"door_front_left", "Door, front left", Get(&M::GetDoorState, kOpen, DOOR_FRONT_LEFT)},
      {"door_front_right", "Door, front right", Get(&M::GetDoorState, kOpen, DOOR_FRONT_RIGHT)},
      {"door_rear_left", "Door, rear left", Get(&M::GetDoorState, kOpen, DOOR_REAR_LEFT)},
      {"door_rear_right", "Door, rear right", Get(&M::GetDoorState, kOpen, DOOR_REAR_RIGHT)},
      {"door_trunk", "Trunk", Get(&M::GetDoorState, kOpen, DOOR_TRUNK)},
      {"door_hood", "Hood", Get(&M::GetDoorState, kOpen, DOOR_HOOD)},
      {"door_reserved_0", "Door bit 0 (reserved)", Get(&M::GetDoorState, kOpen, DOOR_RESERVED_0)},
      {"door_reserved_1", "Door bit 1 (reserved)", Get(&M::GetDoorState, kOpen, DOOR_RESERVED_1)},
      {"ac_power", "Climate", Get(&M::GetAcState, kOnOff, AC_STATE_POWER)},
      {"ac_compressor", "Climate, compressor", Get(&M::GetAcState, kOnOff, AC_STATE_COMPRESSOR)},
      {"ac_recirculation", "Climate, recirculation", Get(&M::GetAcState, kOnOff, AC_STATE_RECIRCULATION)},
      {"ac_auto", "Climate, automatic", Get(&M::GetAcState, kOnOff, AC_STATE_AUTO)},
      {"ac_dual", "Climate, dual", Get(&M::GetAcState, kOnOff, AC_STATE_DUAL)},
      {"ac_max_front", "Climate, front at full", Get(&M::GetAcState, kOnOff, AC_STATE_MAX_FRONT)},
      {"ac_rear_defrost", "Climate, rear defrost", Get(&M::GetAcState, kOnOff, AC_STATE_REAR_DEFROST)},
      {"ac_display", "Climate, display", Get(&M::GetAcState, kOnOff, AC_STATE_DISPLAY)},
      {"air_blow_mode", "Air goes to", Get(&M::GetAirBlowMode, Named{kAirBlow})},
      {"air_level", "Fan level", Get(&M::GetAirBlowLevel, kCount)},
      {"driver_temperature", "Temperature set, driver", Get(&M::GetDriverPositionTemperature, kDegrees)},
      {"copilot_temperature", "Temperature set, passenger", Get(&M::GetCopilotPositionTemperature, kDegrees)},
      {"outside_temperature", "Temperature outside", Get(&M::GetEnvironmentTemperature, kDegrees)},
      {"outside_degrees", "Temperature outside, whole", Get(&M::GetSimpleEnvironmentTemperature, degrees)},
      {"system_temperature", "Temperature of the unit", Get(&M::GetSystemTemperature, degrees)},
      {"tft_temperature", "Temperature of the display", Get(&M::GetTFTTemperature, degrees)},
      {"radar_left", "SteelMate radar, left", RadarOf(0)},
      {"radar_middle_left", "SteelMate radar, middle left", RadarOf(1)},
      {"radar_middle_right", "SteelMate radar, middle right", RadarOf(2)},
      {"radar_right", "SteelMate radar, right", RadarOf(3)},
      {"language", "Language", Get(&M::GetSystemLanguage, Named{kLanguage})},
      {"radio_region", "Radio region", Get(&M::GetRadioRegion, Named{kRadioRegion})},
      {"urgent_mute", "Urgent mute", Get(&M::GetUrgentMuteState, kOnOff)},
      {"screenshots", "Screenshots allowed", Get(&M::GetScreenShotStatus, kYesNo)},
  };
}

bool SetLogoRecord(const ArgumentValues& values) {
  const auto word = [&values](std::size_t i) { return As<unsigned int>(values.at(i)); };
  LogoInfo logo{word(0), word(1), word(2), word(3), word(4)};
  Proxy<M>().SetLogo(logo);
  return true;
}

std::vector<Command> Commands() {
  const Argument text = TextArgument("text");
  const auto word = [](const char* name) { return Whole<unsigned int>(name); };
  return {
      {"speaker-detect-start", "Look for open and shorted speakers", {}, Call(&M::SpeakerDetectStart)},
      {"speaker-detect-stop", "Stop looking at the speakers", {}, Call(&M::SpeakerDetectStop)},
      {"factory-reset", "Put the unit back to its factory state", {}, Call(&M::ResetFactoryMode)},
      {"screenshot", "Take a screenshot", {}, Call(&M::SetScreenshot)},
      {"auto-test", "Start the unit's self test", {}, Call(&M::StartAutoTest)},
      {"rear-view-delay", "Keep the rear view for a moment", {Switch()}, Call(&M::SetRvcOffDelaySwitch)},
      {"drive-position", "The driver's side", {Choice("side", kDrivePosition, 1)}, Call(&M::SetDrivePosition)},
      {"handbrake-check", "Hand-brake check", {Switch()}, Call(&M::SetHandbrakeCheckingSwitch)},
      {"gps-antenna-check", "GPS antenna check", {Switch()}, Call(&M::SetGPSAntennaCheckingSwitch)},
      {"can-box", "CAN-box module", {Switch()}, Call(&M::EnableCanBoxModule)},
      {"screenshots", "Whether screenshots may be taken", {Switch()}, Call(&M::EnableScreenShotControl)},
      {"source", "Tell the vehicle the source that plays", {Whole<int>("source")}, Call(&M::SetOnSourceChange)},
      {"play-time", "Tell the vehicle the playing time", {text}, Call(&M::SetOnTimeChange)},
      {"radio", "Tell the vehicle the station", {text}, Call(&M::SetOnRadioChange)},
      {"touch", "Tell the vehicle a touch", {text}, Call(&M::SetOnTouchInfo)},
      {"station-name", "Tell the vehicle the station's name", {text}, Call(&M::SetOnPSChange)},
      {"media", "Tell the vehicle the title", {text}, Call(&M::SetOnMediaInfoChange)},
      {"volume", "Tell the vehicle the volume", {Whole<int>("volume")}, Call(&M::SetOnVolChange)},
      {"phone", "Tell the vehicle the phone call", {text}, Call(&M::SetOnPhoneInfoChange)},
      {"logo", "Choose the start-up logo", {word("number")}, Call<M, bool, unsigned int>(&M::SetLogo)},
      {"logo-info",
       "Describe the start-up logo",
       {word("id"), word("width"), word("height"), word("format"), word("size")},
       SetLogoRecord},
  };
}

}  // namespace

Area MiscArea() {
  return {"misc",
          "vehicle data, climate, doors, keys, switches of the unit",
          {{"misc", HLXSystemData::SHM_MISC_DATA_KEY_ID, sizeof(HLXSystemData::MiscShmData)}},
          Fields(),
          Commands(),
          ListenToMisc};
}
