#include "client/misc/HLXMiscClient.h"

#include <utility>

#include "client/DispatchGate.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/misc/StateBits.h"
#include "data/SharedField.h"
#include "platform/HLXLog.h"

HLX_LOG_SOURCE("client/misc/HLXMiscClient");

using namespace SystemMisc;
using HLXSystemData::Load;

namespace {

int Int(const uint32_t& field) { return static_cast<int>(Load(field)); }

template <class Enum>
Enum As(const uint32_t& field) {
  return static_cast<Enum>(Load(field));
}

}  // namespace

HLXMiscClient::HLXMiscClient(std::shared_ptr<ClientIpcAdapter> adapter)
    : MiscShmDataBase(HLXSystemData::SHM_MISC_DATA_KEY_ID, HLXSystemData::SHM_OP_ATTACH, "misc_client"),
      adapter_(std::move(adapter)),
      data_(MapRecord<HLXSystemData::MiscShmData>()) {
  if (data_ == nullptr) {
    HLX_LOG_FATAL("[system-client]CreateDataShm->SHM_MISC_DATA_KEY_ID fail.Exit!!");
    DispatchGate::Exit(2);
  }
  InitMiscShmData(data_);
}

void HLXMiscClient::GetSpeakerState(std::map<Speaker, SpeakerState>& states) { ReadSpeakers(states); }
void HLXMiscClient::SpeakerDetectStart() { adapter_->SpeakerDetectStart(); }
void HLXMiscClient::SpeakerDetectStop() { adapter_->SpeakerDetectStop(); }
unsigned int HLXMiscClient::GetCarSpeed() { return Load(data_->car_speed); }
double HLXMiscClient::GetCarFloatSpeed() { return static_cast<double>(Load(data_->car_float_speed_raw)) / 100.0; }
int HLXMiscClient::GetParkingState() { return Int(data_->parking_state); }
int HLXMiscClient::IsHandBrakeTestOn() { return Int(data_->is_handbrake_test_on); }
int HLXMiscClient::IsGPSAntennaCheckingOn() { return Int(data_->is_gps_ant_checking_on); }
AntState HLXMiscClient::GetRadioAntState() { return As<AntState>(data_->radio_ant_state); }
AntState HLXMiscClient::GetGpsAntState() { return As<AntState>(data_->gps_ant_state); }
AntState HLXMiscClient::GetDABAntState() { return As<AntState>(data_->dab_ant_state); }
AntState HLXMiscClient::GetMicConnectState() { return As<AntState>(data_->mic_connect_state); }
void HLXMiscClient::SetRvcOffDelaySwitch(int isDelayOff) { adapter_->SetRvcOffDelaySwitch(isDelayOff); }
int HLXMiscClient::GetRvcOffDelayState() { return Int(data_->_is_rvc_delay); }
void HLXMiscClient::SetDrivePosition(int isLeft) { adapter_->SetDrivePosition(isLeft); }
bool HLXMiscClient::SetOnSourceChange(int source) { return adapter_->SetOnSourceChange(source); }
bool HLXMiscClient::SetOnTimeChange(std::string text) { return adapter_->SetOnTimeChange(text); }
bool HLXMiscClient::SetOnRadioChange(std::string text) { return adapter_->SetOnRadioChange(text); }
bool HLXMiscClient::SetOnTouchInfo(std::string text) { return adapter_->SetOnTouchInfo(text); }
bool HLXMiscClient::SetOnPSChange(std::string text) { return adapter_->SetOnPSChange(text); }
bool HLXMiscClient::SetOnMediaInfoChange(std::string text) { return adapter_->SetOnMediaInfoChange(text); }
bool HLXMiscClient::SetOnVolChange(int volume) { return adapter_->SetOnVolChange(volume); }
bool HLXMiscClient::SetOnPhoneInfoChange(std::string text) { return adapter_->SetOnPhoneInfoChange(text); }
int HLXMiscClient::IsDrivePositionLeft() { return Int(data_->_is_left_position); }
void HLXMiscClient::SetHandbrakeCheckingSwitch(int isChecked) { adapter_->SetHandbrakeCheckingSwitch(isChecked); }
void HLXMiscClient::SetGPSAntennaCheckingSwitch(int isChecked) { adapter_->SetGPSAntennaCheckingSwitch(isChecked); }
void HLXMiscClient::ResetFactoryMode() { adapter_->ResetFactoryMode(); }
int HLXMiscClient::GetAcState(ACState state) { return BitOf(Load(data_->ac_state_bits), state); }
AirBlowMode HLXMiscClient::GetAirBlowMode() { return As<AirBlowMode>(data_->air_blow_mode); }
int HLXMiscClient::GetAirBlowLevel() { return Int(data_->air_blow_level); }
double HLXMiscClient::GetDriverPositionTemperature() { return Load(data_->driver_position_temperature); }
double HLXMiscClient::GetCopilotPositionTemperature() { return Load(data_->copilot_position_temperature); }
double HLXMiscClient::GetEnvironmentTemperature() { return Load(data_->environment_temperature); }
int HLXMiscClient::GetDoorState(DoorState door) { return BitOf(Load(data_->door_state_bits), door); }
int HLXMiscClient::GetCurrentCarSpeed() { return Int(data_->current_car_speed); }
int HLXMiscClient::GetAverageCarSpeed() { return Int(data_->average_car_speed); }
unsigned int HLXMiscClient::GetTotalMile() { return Load(data_->total_mile); }
int HLXMiscClient::GetEnduranceMile() { return Int(data_->endurance_mile); }
unsigned int HLXMiscClient::GetStage_A_Mile() { return Load(data_->stage_a_mile); }
unsigned int HLXMiscClient::GetStage_B_Mile() { return Load(data_->stage_b_mile); }
int HLXMiscClient::GetCurrentFuel() { return Int(data_->current_fuel); }
int HLXMiscClient::GetAverageFuel() { return Int(data_->average_fuel); }
int HLXMiscClient::GetEngineRotateSpeed() { return Int(data_->engine_rotate_speed); }
const char* HLXMiscClient::GetCanVersion() { return data_->can_version; }
int HLXMiscClient::GetSimpleEnvironmentTemperature() { return Load(data_->simple_environment_temperature); }
void HLXMiscClient::EnableCanBoxModule(int enable) { adapter_->EnableCanBoxModule(enable); }
int HLXMiscClient::GetCanBoxEnableStatus() { return Int(data_->_can_box_enble); }
void HLXMiscClient::EnableScreenShotControl(int enable) { adapter_->EnableScreenShotControl(enable); }
int HLXMiscClient::GetScreenShotStatus() { return Int(data_->_screen_shot_enble); }
void HLXMiscClient::SetScreenshot() { adapter_->SetScreenshot(); }
bool HLXMiscClient::SetLogo(unsigned int logo) { return adapter_->SetLogo(logo); }
void HLXMiscClient::SetLogo(LogoInfo& logo) { adapter_->SetLogo(logo); }
int HLXMiscClient::GetSimpleRVCSignalActived() { return Int(data_->simple_rvc_signal_actived); }
int HLXMiscClient::GetFrontCameraActiveStatus() { return Int(data_->front_camera_active); }
int HLXMiscClient::GetRearCameraActiveStatus() { return Int(data_->rear_camera_active); }
int HLXMiscClient::GetSystemTemperature() { return Int(data_->system_temperature); }
unsigned int HLXMiscClient::GetTFTTemperature() { return Load(data_->tft_temperature); }
void HLXMiscClient::StartAutoTest() { adapter_->StartAutoTest(); }
Language HLXMiscClient::GetSystemLanguage() { return As<Language>(data_->system_language); }
int HLXMiscClient::GetUrgentMuteState() { return Int(data_->urgent_mute_state); }
Radio_Region_Ford HLXMiscClient::GetRadioRegion() { return As<Radio_Region_Ford>(data_->radio_region); }
unsigned int HLXMiscClient::GetSpeakersAmount() { return Load(data_->speakers_amount); }
void HLXMiscClient::GetSteelMateRadarInfo() {
  HLX_LOG_DEBUG("HLXMiscClient::GetSteelMateRadarInfo");
  const auto& radar = data_->steel_mate_radar;
  OnSteelMateRadarInfoChange(Load(radar[0]), Load(radar[1]), Load(radar[2]), Load(radar[3]));
}

void HLXMiscClient::OnCarSpeedChange(unsigned int speed) { Notify(&IHLXSystemMiscListener::OnCarSpeedChange, speed); }
void HLXMiscClient::OnCarFloatSpeedChange(double speed) {
  Notify(&IHLXSystemMiscListener::OnCarFloatSpeedChange, speed);
}
void HLXMiscClient::OnParkingStateChange(int isParking) {
  Notify(&IHLXSystemMiscListener::OnParkingStateChange, isParking);
}
void HLXMiscClient::OnRadioAntStateChange(AntState state) {
  Notify(&IHLXSystemMiscListener::OnRadioAntStateChange, state);
}
void HLXMiscClient::OnGpsAntStateChange(AntState state) { Notify(&IHLXSystemMiscListener::OnGpsAntStateChange, state); }
void HLXMiscClient::OnDABAntStateChange(AntState state) { Notify(&IHLXSystemMiscListener::OnDABAntStateChange, state); }
void HLXMiscClient::OnMicConnectStateChange(AntState state) {
  Notify(&IHLXSystemMiscListener::OnMicConnectStateChange, state);
}
void HLXMiscClient::OnFactoryResetMode() { Notify(&IHLXSystemMiscListener::OnFactoryResetMode); }
void HLXMiscClient::OnAirBlowModeChange(AirBlowMode mode) {
  Notify(&IHLXSystemMiscListener::OnAirBlowModeChange, mode);
}
void HLXMiscClient::OnAirLevelChange(int level) { Notify(&IHLXSystemMiscListener::OnAirLevelChange, level); }
void HLXMiscClient::OnTempDriverChange(double value) { Notify(&IHLXSystemMiscListener::OnTempDriverChange, value); }
void HLXMiscClient::OnTempCopilotChange(double value) { Notify(&IHLXSystemMiscListener::OnTempCopilotChange, value); }
void HLXMiscClient::OnTempEnvironmentChange(double value) {
  Notify(&IHLXSystemMiscListener::OnTempEnvironmentChange, value);
}
void HLXMiscClient::OnCurrentSpeedChange(int value) { Notify(&IHLXSystemMiscListener::OnCurrentSpeedChange, value); }
void HLXMiscClient::OnCurrentSpeedChange_Raise(int value) {
  Notify(&IHLXSystemMiscListener::OnCurrentSpeedChange_Raise, value);
}
void HLXMiscClient::OnAverageSpeedChange(int value) { Notify(&IHLXSystemMiscListener::OnAverageSpeedChange, value); }
void HLXMiscClient::OnTotalMileChange(unsigned int value) { Notify(&IHLXSystemMiscListener::OnTotalMileChange, value); }
void HLXMiscClient::OnEnduranceMileChange(int value) { Notify(&IHLXSystemMiscListener::OnEnduranceMileChange, value); }
void HLXMiscClient::OnStage_A_MileChange(unsigned int value) {
  Notify(&IHLXSystemMiscListener::OnStage_A_MileChange, value);
}
void HLXMiscClient::OnStage_B_MileChange(unsigned int value) {
  Notify(&IHLXSystemMiscListener::OnStage_B_MileChange, value);
}
void HLXMiscClient::OnCurrentFuelChange(int value) { Notify(&IHLXSystemMiscListener::OnCurrentFuelChange, value); }
void HLXMiscClient::OnAverageFuelChange(int value) { Notify(&IHLXSystemMiscListener::OnAverageFuelChange, value); }
void HLXMiscClient::OnRotateSpeedChange(int value) { Notify(&IHLXSystemMiscListener::OnRotateSpeedChange, value); }
void HLXMiscClient::OnRadarInfoChange(unsigned char rearLeft, unsigned char rearMiddleLeft,
                                      unsigned char rearMiddleRight, unsigned char rearRight) {
  Notify(&IHLXSystemMiscListener::OnRadarInfoChange, rearLeft, rearMiddleLeft, rearMiddleRight, rearRight);
}
void HLXMiscClient::OnSimpleRVCSignalChange(int on) { Notify(&IHLXSystemMiscListener::OnSimpleRVCSignalChange, on); }
void HLXMiscClient::OnRaiseGacRadarInfoChange(unsigned char displayType, unsigned char rearLeft,
                                              unsigned char rearMiddleLeft, unsigned char rearMiddleRight,
                                              unsigned char rearRight) {
  Notify(&IHLXSystemMiscListener::OnRaiseGacRadarInfoChange, displayType, rearLeft, rearMiddleLeft, rearMiddleRight,
         rearRight);
}
void HLXMiscClient::OnGeneralAirLevelChange(SEAT_TYPE seat, int level) {
  Notify(&IHLXSystemMiscListener::OnGeneralAirLevelChange, seat, level);
}
void HLXMiscClient::OnGeneralLeftTempChange(SEAT_TYPE seat, double value) {
  Notify(&IHLXSystemMiscListener::OnGeneralLeftTempChange, seat, value);
}
void HLXMiscClient::OnGeneralRightTempChange(SEAT_TYPE seat, double value) {
  Notify(&IHLXSystemMiscListener::OnGeneralRightTempChange, seat, value);
}
void HLXMiscClient::OnCameraStateChange(int frontCamera, int rearCamera) {
  Notify(&IHLXSystemMiscListener::OnCameraStateChange, frontCamera, rearCamera);
}
void HLXMiscClient::OnSystemTempChange(int value) { Notify(&IHLXSystemMiscListener::OnSystemTempChange, value); }
void HLXMiscClient::OnTFTTempChange(int value) { Notify(&IHLXSystemMiscListener::OnTFTTempChange, value); }
void HLXMiscClient::OnSystemLanguageChange(Language language) {
  Notify(&IHLXSystemMiscListener::OnSystemLanguageChange, language);
}
void HLXMiscClient::OnUrgentMuteStateChange(int mute) {
  Notify(&IHLXSystemMiscListener::OnUrgentMuteStateChange, mute);
}
void HLXMiscClient::OnRadioRegionChange(Radio_Region_Ford region) {
  Notify(&IHLXSystemMiscListener::OnRadioRegionChange, region);
}
void HLXMiscClient::OnRadioPresetChange(Radio_Band_Ford band, unsigned int frequency, unsigned char preset) {
  Notify(&IHLXSystemMiscListener::OnRadioPresetChange, band, frequency, preset);
}
void HLXMiscClient::OnSpeakerAmountChange(unsigned char amount) {
  Notify(&IHLXSystemMiscListener::OnSpeakerAmountChange, amount);
}
void HLXMiscClient::OnSteelMateRadarInfoChange(unsigned char left, unsigned char midLeft, unsigned char midRight,
                                               unsigned char right) {
  Notify(&IHLXSystemMiscListener::OnSteelMateRadarInfoChange, left, midLeft, midRight, right);
}
