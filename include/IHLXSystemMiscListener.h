#ifndef I_HLX_SYSTEM_MISC_LISTENER_H
#define I_HLX_SYSTEM_MISC_LISTENER_H

#include <map>

#include "HLXExport.h"
#include "HLXMiscTypes.h"

/// @addtogroup misc
/// @{

/// Implemented by applications that want to hear of vehicle data and the unit's switches; register it with
/// IHLXSystemMisc::AddListener().
///
/// Callbacks run on the thread that iterates the main context of HLX_StartSystemProxy(), one at a time, with the
/// client's listener mutex held: they must not add or remove listeners, release the library, ask for
/// IHLXSystemMisc::GetSteelMateRadarInfo(), iterate a main context, throw or block for long. Maps hold 0 or 1 for each
/// key; where changes are meant, a map without entries says that nothing changed. Speeds, distances, consumption and
/// fan levels are whole units as the CAN box counts them. A repeated event is delivered again. The application owns the
/// listener. The order of the virtual functions is part of the binary interface.
class HLX_API IHLXSystemMiscListener {
 public:
  virtual ~IHLXSystemMiscListener() = default;

  /// The speaker detection found something. @param states all four speakers, changed or not
  virtual void OnSpeakerStateChange(std::map<SystemMisc::Speaker, SystemMisc::SpeakerState> states) = 0;
  /// The vehicle's speed changed. @param speed whole units
  virtual void OnCarSpeedChange(unsigned int speed) = 0;
  /// The vehicle's speed changed. @param speed with decimals, of which the record keeps two
  virtual void OnCarFloatSpeedChange(double speed) = 0;
  /// The parking state changed. @param isParking non-zero: parking
  virtual void OnParkingStateChange(int isParking) = 0;
  /// The radio's antenna changed. @param state its state
  virtual void OnRadioAntStateChange(SystemMisc::AntState state) = 0;
  /// The GPS antenna changed. @param state its state
  virtual void OnGpsAntStateChange(SystemMisc::AntState state) = 0;
  /// The DAB antenna changed. @param state its state
  virtual void OnDABAntStateChange(SystemMisc::AntState state) = 0;
  /// The connection of the microphone changed. @param state its state
  virtual void OnMicConnectStateChange(SystemMisc::AntState state) = 0;
  /// The unit goes back to its factory state.
  virtual void OnFactoryResetMode() = 0;
  /// Climate switches changed, with every CAN box but Renault's. @param changes the switches that changed
  virtual void OnAcStateChange(std::map<SystemMisc::ACState, int> changes) = 0;
  /// The air distribution changed. @param mode where the air goes
  virtual void OnAirBlowModeChange(SystemMisc::AirBlowMode mode) = 0;
  /// The fan level changed. @param level step of the fan
  virtual void OnAirLevelChange(int level) = 0;
  /// The temperature set on the driver's side changed. @param value degrees
  virtual void OnTempDriverChange(double value) = 0;
  /// The temperature set on the passenger's side changed. @param value degrees
  virtual void OnTempCopilotChange(double value) = 0;
  /// The outside temperature changed. @param value degrees
  virtual void OnTempEnvironmentChange(double value) = 0;
  /// Doors were opened or closed. @param changes the doors, 2 to 7, that changed; 1 is open
  virtual void OnDoorStateChange(std::map<SystemMisc::DoorState, int> changes) = 0;
  /// The speed that the CAN box reports changed. @param value speed
  virtual void OnCurrentSpeedChange(int value) = 0;
  /// The speed that a Raise box reports changed; no getter has it. @param value speed
  virtual void OnCurrentSpeedChange_Raise(int value) = 0;
  /// The average speed changed. @param value speed
  virtual void OnAverageSpeedChange(int value) = 0;
  /// The odometer advanced. @param value total distance
  virtual void OnTotalMileChange(unsigned int value) = 0;
  /// The remaining range changed. @param value distance
  virtual void OnEnduranceMileChange(int value) = 0;
  /// The odometer of a vehicle with a Raise box advanced. @param mile one entry: from the mileage that the record holds
  ///   to the new total
  virtual void OnTotalMileChange_Raise(std::map<unsigned int, unsigned int> mile) = 0;
  /// The remaining range of a vehicle with a Raise box changed. @param mile one entry: from the mileage that the record
  ///   holds to the new range
  virtual void OnEnduranceMileChange_Raise(std::map<unsigned int, unsigned int> mile) = 0;
  /// Trip counter A changed. @param value distance
  virtual void OnStage_A_MileChange(unsigned int value) = 0;
  /// Trip counter B changed. @param value distance
  virtual void OnStage_B_MileChange(unsigned int value) = 0;
  /// The current consumption changed. @param value consumption
  virtual void OnCurrentFuelChange(int value) = 0;
  /// The average consumption changed. @param value consumption
  virtual void OnAverageFuelChange(int value) = 0;
  /// The engine speed changed. @param value revolutions per minute
  virtual void OnRotateSpeedChange(int value) = 0;
  /// A key of the steering wheel or a panel was pressed or released; every key but those of the next two.
  /// @param event key and state; valid during the call only
  virtual void OnKeyStateChange(SystemMisc::KeyEvent& event) = 0;
  /// A knob of a GAC box ("raise_gac") was used. @param key 0xAE or 0xAF @param state as the box sent it, 0 to 255
  virtual void OnRaiseGacKnobKeyChange(unsigned char key, unsigned char state) = 0;
  /// A panel key of a GAC box ("raise_gac") was used. @param key 0xA2 or 0xA3 @param state as the box sent it, 0 to 255
  virtual void OnRaiseGacPanelKeyChange(unsigned char key, unsigned char state) = 0;
  /// The rear parking radar measured; one byte each, as the radar counts.
  /// @param rearLeft left sensor @param rearMiddleLeft middle left sensor
  /// @param rearMiddleRight middle right sensor @param rearRight right sensor
  virtual void OnRadarInfoChange(unsigned char rearLeft, unsigned char rearMiddleLeft, unsigned char rearMiddleRight,
                                 unsigned char rearRight) = 0;
  /// The reverse gear was engaged or left. @param on non-zero: it is engaged
  virtual void OnSimpleRVCSignalChange(int on) = 0;
  /// Air-mode switches changed. @param modes the switches that changed; under "raise_renault" all of them
  virtual void OnSimpleAirModeChange(std::map<SystemMisc::SimpleAirMode, int> modes) = 0;
  /// A GAC or Raise box reported its climate switches. @param states all of them; empty under any other protocol
  virtual void OnRaiseGacAcStateChange(std::map<SystemMisc::Raise_GAC_ACState, int> states) = 0;
  /// The rear parking radar behind a GAC box measured; one byte each, as the radar counts.
  /// @param displayType how the picture is to be shown
  /// @param rearLeft left sensor @param rearMiddleLeft middle left sensor
  /// @param rearMiddleRight middle right sensor @param rearRight right sensor
  virtual void OnRaiseGacRadarInfoChange(unsigned char displayType, unsigned char rearLeft,
                                         unsigned char rearMiddleLeft, unsigned char rearMiddleRight,
                                         unsigned char rearRight) = 0;
  /// The steering wheel was turned.
  /// @param angle percent of the box's full turn, negative and positive by direction, beyond 100 for raw values outside
  ///   the box's range; 0 under a protocol that has no angle
  virtual void OnRaiseVWSteeringWheelAngelChange(int angle) = 0;
  /// Climate switches of a Renault box changed. @param changes the switches that changed
  virtual void OnRaiseRenaultAcStateChange(std::map<SystemMisc::Raise_Renault_ACState, int> changes) = 0;
  /// A Toyota or Ford box reported one group of its climate switches. @param states all switches of the group; empty
  ///   for a group without switches
  virtual void OnGeneralAcStateChange(std::map<SystemMisc::AC_State_Type, int> states) = 0;
  /// The fan level of a seat row changed. @param seat the seats @param level step of the fan
  virtual void OnGeneralAirLevelChange(SystemMisc::SEAT_TYPE seat, int level) = 0;
  /// The temperature set on the left of a seat row changed. @param seat the seats @param value degrees
  virtual void OnGeneralLeftTempChange(SystemMisc::SEAT_TYPE seat, double value) = 0;
  /// The temperature set on the right of a seat row changed. @param seat the seats @param value degrees
  virtual void OnGeneralRightTempChange(SystemMisc::SEAT_TYPE seat, double value) = 0;
  /// A camera was switched on or off.
  /// @param frontCamera non-zero: the front camera is active @param rearCamera non-zero: the rear camera is active
  virtual void OnCameraStateChange(int frontCamera, int rearCamera) = 0;
  /// The temperature of the unit changed. @param value whole degrees
  virtual void OnSystemTempChange(int value) = 0;
  /// The temperature of the display panel changed. @param value whole degrees, of which the record keeps the low byte
  virtual void OnTFTTempChange(int value) = 0;
  /// The language of the unit changed. @param language the new language
  virtual void OnSystemLanguageChange(SystemMisc::Language language) = 0;
  /// The vehicle asks for silence, or ends it. @param mute non-zero: all sound must be off
  virtual void OnUrgentMuteStateChange(int mute) = 0;
  /// A Ford box reported another radio region. @param region the new region
  virtual void OnRadioRegionChange(SystemMisc::Radio_Region_Ford region) = 0;
  /// A Ford box reported a radio preset; no getter has it.
  /// @param band the band @param frequency kHz @param preset number of the station key, 0 to 255
  virtual void OnRadioPresetChange(SystemMisc::Radio_Band_Ford band, unsigned int frequency, unsigned char preset) = 0;
  /// The number of speakers changed. @param amount number of speakers, 0 to 255
  virtual void OnSpeakerAmountChange(unsigned char amount) = 0;
  /// The SteelMate radar measured; one byte each, 255 is nothing in range (RADAR_VALUE_NONE). Also called on the thread
  /// that asks for IHLXSystemMisc::GetSteelMateRadarInfo().
  /// @param left left sensor @param midLeft middle left sensor
  /// @param midRight middle right sensor @param right right sensor
  virtual void OnSteelMateRadarInfoChange(unsigned char left, unsigned char midLeft, unsigned char midRight,
                                          unsigned char right) = 0;
};

/// @}

#endif
