#ifndef I_HLX_SYSTEM_MISC_LISTENER_H
#define I_HLX_SYSTEM_MISC_LISTENER_H

#include <map>

#include "HLXExport.h"
#include "HLXMiscTypes.h"

/// Implemented by applications that want to hear of vehicle data and the unit's switches; register it with
/// IHLXSystemMisc::AddListener().
///
/// Callbacks run on the thread that iterates the main context of HLX_StartSystemProxy(), one at a time, with the
/// client's listener mutex held: they must not add or remove listeners, release the library, ask for
/// IHLXSystemMisc::GetSteelMateRadarInfo() or block for long. Maps hold 0 or 1 for each key; where changes are meant, a
/// map without entries says that nothing changed. Speeds, distances, consumption and fan levels are as the CAN box
/// counts them. The order of the virtual functions is part of the binary interface.
class HLX_API IHLXSystemMiscListener {
 public:
  virtual ~IHLXSystemMiscListener() = default;

  /// All four speakers, changed or not.
  virtual void OnSpeakerStateChange(std::map<SystemMisc::Speaker, SystemMisc::SpeakerState> states) = 0;
  virtual void OnCarSpeedChange(unsigned int speed) = 0;
  virtual void OnCarFloatSpeedChange(double speed) = 0;
  virtual void OnParkingStateChange(int isParking) = 0;
  virtual void OnRadioAntStateChange(SystemMisc::AntState state) = 0;
  virtual void OnGpsAntStateChange(SystemMisc::AntState state) = 0;
  virtual void OnDABAntStateChange(SystemMisc::AntState state) = 0;
  virtual void OnMicConnectStateChange(SystemMisc::AntState state) = 0;
  /// The service resets the unit to its factory state.
  virtual void OnFactoryResetMode() = 0;
  /// The climate switches that changed, for every CAN box but Renault's.
  virtual void OnAcStateChange(std::map<SystemMisc::ACState, int> changes) = 0;
  virtual void OnAirBlowModeChange(SystemMisc::AirBlowMode mode) = 0;
  virtual void OnAirLevelChange(int level) = 0;
  /// @param value degrees
  virtual void OnTempDriverChange(double value) = 0;
  /// @param value degrees
  virtual void OnTempCopilotChange(double value) = 0;
  /// @param value degrees outside
  virtual void OnTempEnvironmentChange(double value) = 0;
  /// The doors (2 to 7) that changed; 1 is open.
  virtual void OnDoorStateChange(std::map<SystemMisc::DoorState, int> changes) = 0;
  virtual void OnCurrentSpeedChange(int value) = 0;
  virtual void OnCurrentSpeedChange_Raise(int value) = 0;
  virtual void OnAverageSpeedChange(int value) = 0;
  virtual void OnTotalMileChange(unsigned int value) = 0;
  virtual void OnEnduranceMileChange(int value) = 0;
  /// One entry: the mileage that the record holds, and the new total.
  virtual void OnTotalMileChange_Raise(std::map<unsigned int, unsigned int> mile) = 0;
  /// One entry: the mileage that the record holds, and the new remaining range.
  virtual void OnEnduranceMileChange_Raise(std::map<unsigned int, unsigned int> mile) = 0;
  virtual void OnStage_A_MileChange(unsigned int value) = 0;
  virtual void OnStage_B_MileChange(unsigned int value) = 0;
  virtual void OnCurrentFuelChange(int value) = 0;
  virtual void OnAverageFuelChange(int value) = 0;
  virtual void OnRotateSpeedChange(int value) = 0;
  /// Every key but those of the next two. @param event valid during the call only
  virtual void OnKeyStateChange(SystemMisc::KeyEvent& event) = 0;
  /// Keys 0xAE and 0xAF of a GAC box ("raise_gac").
  virtual void OnRaiseGacKnobKeyChange(unsigned char key, unsigned char state) = 0;
  /// Keys 0xA2 and 0xA3 of a GAC box ("raise_gac").
  virtual void OnRaiseGacPanelKeyChange(unsigned char key, unsigned char state) = 0;
  /// Rear parking radar, one distance byte each.
  virtual void OnRadarInfoChange(unsigned char rearLeft, unsigned char rearMiddleLeft, unsigned char rearMiddleRight,
                                 unsigned char rearRight) = 0;
  /// @param on non-zero: the reverse gear is engaged
  virtual void OnSimpleRVCSignalChange(int on) = 0;
  /// The air-mode switches that changed; all of them under "raise_renault".
  virtual void OnSimpleAirModeChange(std::map<SystemMisc::SimpleAirMode, int> modes) = 0;
  /// All climate switches of a GAC or Raise box; empty under any other protocol.
  virtual void OnRaiseGacAcStateChange(std::map<SystemMisc::Raise_GAC_ACState, int> states) = 0;
  /// @param displayType how the picture is to be shown; then rear parking radar, one distance byte each
  virtual void OnRaiseGacRadarInfoChange(unsigned char displayType, unsigned char rearLeft,
                                         unsigned char rearMiddleLeft, unsigned char rearMiddleRight,
                                         unsigned char rearRight) = 0;
  /// @param angle steering-wheel angle in percent of the box's full turn, negative and positive by direction; 0 under a
  ///   protocol that has no angle
  virtual void OnRaiseVWSteeringWheelAngelChange(int angle) = 0;
  /// The climate switches of a Renault box that changed.
  virtual void OnRaiseRenaultAcStateChange(std::map<SystemMisc::Raise_Renault_ACState, int> changes) = 0;
  /// The climate switches of one group of a Toyota or Ford box; empty for a group without switches.
  virtual void OnGeneralAcStateChange(std::map<SystemMisc::AC_State_Type, int> states) = 0;
  virtual void OnGeneralAirLevelChange(SystemMisc::SEAT_TYPE seat, int level) = 0;
  /// @param value degrees on the left side
  virtual void OnGeneralLeftTempChange(SystemMisc::SEAT_TYPE seat, double value) = 0;
  /// @param value degrees on the right side
  virtual void OnGeneralRightTempChange(SystemMisc::SEAT_TYPE seat, double value) = 0;
  /// @param frontCamera, rearCamera non-zero: active
  virtual void OnCameraStateChange(int frontCamera, int rearCamera) = 0;
  /// @param value temperature of the unit in degrees
  virtual void OnSystemTempChange(int value) = 0;
  /// @param value temperature of the display panel in degrees
  virtual void OnTFTTempChange(int value) = 0;
  virtual void OnSystemLanguageChange(SystemMisc::Language language) = 0;
  /// @param mute non-zero: all sound must be off
  virtual void OnUrgentMuteStateChange(int mute) = 0;
  virtual void OnRadioRegionChange(SystemMisc::Radio_Region_Ford region) = 0;
  /// @param frequency in kHz  @param preset number of the station key
  virtual void OnRadioPresetChange(SystemMisc::Radio_Band_Ford band, unsigned int frequency, unsigned char preset) = 0;
  virtual void OnSpeakerAmountChange(unsigned char amount) = 0;
  /// SteelMate radar, one distance byte each; 255 is nothing in range (RADAR_VALUE_NONE). Also called on the thread
  /// that asks for IHLXSystemMisc::GetSteelMateRadarInfo().
  virtual void OnSteelMateRadarInfoChange(unsigned char left, unsigned char midLeft, unsigned char midRight,
                                          unsigned char right) = 0;
};

#endif
