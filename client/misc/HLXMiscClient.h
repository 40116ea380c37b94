#pragma once

#include <atomic>
#include <map>
#include <memory>
#include <string>

#include "IHLXSystemMisc.h"
#include "data/MiscShmDataBase.h"

class ClientIpcAdapter;

/// Getters from the misc record, commands through the adapter, events to the listeners. The bytes of the CAN box are
/// decoded here, by the protocol that is configured at the time of the event.
class HLXMiscClient : public IHLXSystemMisc, public MiscShmDataBase {
 public:
  /// Maps and, if need be, fills the misc record; ends the process with status 2 when it cannot be mapped.
  explicit HLXMiscClient(std::shared_ptr<ClientIpcAdapter> adapter);

  void GetSpeakerState(std::map<SystemMisc::Speaker, SystemMisc::SpeakerState>& states) override;
  void SpeakerDetectStart() override;
  void SpeakerDetectStop() override;
  unsigned int GetCarSpeed() override;
  double GetCarFloatSpeed() override;
  int GetParkingState() override;
  int IsHandBrakeTestOn() override;
  int IsGPSAntennaCheckingOn() override;
  SystemMisc::AntState GetRadioAntState() override;
  SystemMisc::AntState GetGpsAntState() override;
  SystemMisc::AntState GetDABAntState() override;
  SystemMisc::AntState GetMicConnectState() override;
  void SetRvcOffDelaySwitch(int isDelayOff) override;
  int GetRvcOffDelayState() override;
  void SetDrivePosition(int isLeft) override;
  bool SetOnSourceChange(int source) override;
  bool SetOnTimeChange(std::string text) override;
  bool SetOnRadioChange(std::string text) override;
  bool SetOnTouchInfo(std::string text) override;
  bool SetOnPSChange(std::string text) override;
  bool SetOnMediaInfoChange(std::string text) override;
  bool SetOnVolChange(int volume) override;
  bool SetOnPhoneInfoChange(std::string text) override;
  int IsDrivePositionLeft() override;
  void SetHandbrakeCheckingSwitch(int isChecked) override;
  void SetGPSAntennaCheckingSwitch(int isChecked) override;
  void ResetFactoryMode() override;
  int GetAcState(SystemMisc::ACState state) override;
  SystemMisc::AirBlowMode GetAirBlowMode() override;
  int GetAirBlowLevel() override;
  double GetDriverPositionTemperature() override;
  double GetCopilotPositionTemperature() override;
  double GetEnvironmentTemperature() override;
  int GetDoorState(SystemMisc::DoorState door) override;
  int GetCurrentCarSpeed() override;
  int GetAverageCarSpeed() override;
  unsigned int GetTotalMile() override;
  int GetEnduranceMile() override;
  unsigned int GetStage_A_Mile() override;
  unsigned int GetStage_B_Mile() override;
  int GetCurrentFuel() override;
  int GetAverageFuel() override;
  int GetEngineRotateSpeed() override;
  const char* GetCanVersion() override;
  int GetSimpleEnvironmentTemperature() override;
  void EnableCanBoxModule(int enable) override;
  int GetCanBoxEnableStatus() override;
  void EnableScreenShotControl(int enable) override;
  int GetScreenShotStatus() override;
  void SetScreenshot() override;
  bool SetLogo(unsigned int logo) override;
  void SetLogo(SystemMisc::LogoInfo& logo) override;
  int GetSimpleRVCSignalActived() override;
  int GetFrontCameraActiveStatus() override;
  int GetRearCameraActiveStatus() override;
  int GetSystemTemperature() override;
  unsigned int GetTFTTemperature() override;
  void StartAutoTest() override;
  SystemMisc::Language GetSystemLanguage() override;
  int GetUrgentMuteState() override;
  SystemMisc::Radio_Region_Ford GetRadioRegion() override;
  unsigned int GetSpeakersAmount() override;
  void GetSteelMateRadarInfo() override;

  // Events, called by the adapter. These call the listener callback of the same name with the same arguments.
  void OnCarSpeedChange(unsigned int speed);
  void OnCarFloatSpeedChange(double speed);
  void OnParkingStateChange(int isParking);
  void OnRadioAntStateChange(SystemMisc::AntState state);
  void OnGpsAntStateChange(SystemMisc::AntState state);
  void OnDABAntStateChange(SystemMisc::AntState state);
  void OnMicConnectStateChange(SystemMisc::AntState state);
  void OnFactoryResetMode();
  void OnAirBlowModeChange(SystemMisc::AirBlowMode mode);
  void OnAirLevelChange(int level);
  void OnTempDriverChange(double value);
  void OnTempCopilotChange(double value);
  void OnTempEnvironmentChange(double value);
  void OnCurrentSpeedChange(int value);
  void OnCurrentSpeedChange_Raise(int value);
  void OnAverageSpeedChange(int value);
  void OnTotalMileChange(unsigned int value);
  void OnEnduranceMileChange(int value);
  void OnStage_A_MileChange(unsigned int value);
  void OnStage_B_MileChange(unsigned int value);
  void OnCurrentFuelChange(int value);
  void OnAverageFuelChange(int value);
  void OnRotateSpeedChange(int value);
  void OnRadarInfoChange(unsigned char rearLeft, unsigned char rearMiddleLeft, unsigned char rearMiddleRight,
                         unsigned char rearRight);
  void OnSimpleRVCSignalChange(int on);
  void OnRaiseGacRadarInfoChange(unsigned char displayType, unsigned char rearLeft, unsigned char rearMiddleLeft,
                                 unsigned char rearMiddleRight, unsigned char rearRight);
  void OnGeneralAirLevelChange(SystemMisc::SEAT_TYPE seat, int level);
  void OnGeneralLeftTempChange(SystemMisc::SEAT_TYPE seat, double value);
  void OnGeneralRightTempChange(SystemMisc::SEAT_TYPE seat, double value);
  void OnCameraStateChange(int frontCamera, int rearCamera);
  void OnSystemTempChange(int value);
  void OnTFTTempChange(int value);
  void OnSystemLanguageChange(SystemMisc::Language language);
  void OnUrgentMuteStateChange(int mute);
  void OnRadioRegionChange(SystemMisc::Radio_Region_Ford region);
  void OnRadioPresetChange(SystemMisc::Radio_Band_Ford band, unsigned int frequency, unsigned char preset);
  void OnSpeakerAmountChange(unsigned char amount);
  void OnSteelMateRadarInfoChange(unsigned char left, unsigned char midLeft, unsigned char midRight,
                                  unsigned char right);

  // These decode first (HLXMiscClientEvents.cpp, HLXMiscClientClimate.cpp).
  void OnSpeakerStateChange();
  void OnDoorStateChange(unsigned char state);
  void OnKeyStateChange(unsigned char key, unsigned char state);
  void OnRaiseVWSteeringWheelAngelChange(unsigned char low, unsigned char high);
  void OnTotalMileChange_Raise(unsigned int value);
  void OnEnduranceMileChange_Raise(unsigned int value);
  void OnAcStateChange(unsigned char state);
  void OnRaiseGacAcStateChange(unsigned char one, unsigned char two);
  void OnSimpleAirModeChange(unsigned char mode);
  void OnGeneralAcStateChange(SystemMisc::AC_State_Data group, unsigned char value);
  void OnToyotaAcStateChange(SystemMisc::AC_State_Data group, unsigned char value);
  void OnFordAcStateChange(SystemMisc::AC_State_Data group, unsigned char value);

 private:
  using SpeakerStates = std::map<SystemMisc::Speaker, SystemMisc::SpeakerState>;
  void ReadSpeakers(SpeakerStates& states) const;

  std::shared_ptr<ClientIpcAdapter> adapter_;
  HLXSystemData::MiscShmData* data_;
  // What the last event of each kind said, to tell what changed. After two starts events may come on two threads.
  std::atomic<unsigned char> last_ac_{0};
  std::atomic<unsigned char> last_door_{0};
  std::atomic<unsigned char> last_air_mode_{0};
};
