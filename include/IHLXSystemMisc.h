#ifndef I_HLX_SYSTEM_MISC_H
#define I_HLX_SYSTEM_MISC_H

#include <map>
#include <string>

#include "HLXExport.h"
#include "HLXMiscTypes.h"
#include "IHLXListener.h"
#include "IHLXSystemMiscListener.h"

/// @defgroup misc Vehicle data and switches
/// @{

/// Vehicle data as the CAN box reports it, and miscellaneous switches of the unit.
///
/// Getters read one field of the shared misc record, without a lock and without a call; they cannot fail, and work
/// before HLX_StartSystemProxy(). Speeds, distances, consumption and fan levels are whole units as the CAN box counts
/// them: which unit that is belongs to the vehicle.
///
/// Commands are blocking D-Bus calls on the caller's thread, see IHLXSystemPower, also about "Event". All functions may
/// be called from any thread, but for the registration of listeners: see IHLXListener. The library owns the client. The
/// order of the virtual functions is part of the binary interface.
class HLX_API IHLXSystemMisc : public IHLXListener<IHLXSystemMiscListener> {
 public:
  /// @name Speakers
  /// @{

  /// State of the speaker lines. Event: OnSpeakerStateChange().
  /// @param[in,out] states gets the entries of speakers 1 to 4; other entries are left alone
  virtual void GetSpeakerState(std::map<SystemMisc::Speaker, SystemMisc::SpeakerState>& states) = 0;
  /// Starts the detection of open and shorted speakers. Event: OnSpeakerStateChange(), with each result.
  virtual void SpeakerDetectStart() = 0;
  /// Ends the detection; the states that were found stay. Event: none.
  virtual void SpeakerDetectStop() = 0;

  /// @}
  /// @name Driving, antennas, rear view
  /// @{

  /// @return vehicle speed. Event: OnCarSpeedChange().
  virtual unsigned int GetCarSpeed() = 0;
  /// @return vehicle speed with two decimals. Event: OnCarFloatSpeedChange().
  virtual double GetCarFloatSpeed() = 0;
  /// @return non-zero when parking (1 in a fresh record). Event: OnParkingStateChange().
  virtual int GetParkingState() = 0;
  /// @return non-zero when the hand-brake check is on. Event: none.
  virtual int IsHandBrakeTestOn() = 0;
  /// @return non-zero when the GPS antenna check is on. Event: none.
  virtual int IsGPSAntennaCheckingOn() = 0;
  /// @return state of the radio's antenna. Event: OnRadioAntStateChange().
  virtual SystemMisc::AntState GetRadioAntState() = 0;
  /// @return state of the GPS antenna. Event: OnGpsAntStateChange().
  virtual SystemMisc::AntState GetGpsAntState() = 0;
  /// @return state of the DAB antenna. Event: OnDABAntStateChange().
  virtual SystemMisc::AntState GetDABAntState() = 0;
  /// @return connection of the microphone. Event: OnMicConnectStateChange().
  virtual SystemMisc::AntState GetMicConnectState() = 0;
  /// Chooses whether the rear-view picture stays for a moment after the reverse gear is left. Event: none.
  /// @param isDelayOff non-zero: it stays
  virtual void SetRvcOffDelaySwitch(int isDelayOff) = 0;
  /// @return non-zero when the rear-view picture stays for a moment. Event: none.
  virtual int GetRvcOffDelayState() = 0;
  /// Sets the side of the driver's seat. Event: none.
  /// @param isLeft non-zero: left
  virtual void SetDrivePosition(int isLeft) = 0;

  /// @}
  /// @name What the vehicle's displays show
  /// Texts are UTF-8, in the form that the CAN box expects; any other text is refused, and HLX_GetLastCallError() names
  /// the first wrong byte. All return false when the call failed and true otherwise, also before the start.
  /// @{

  /// Tells which audio source plays. Event: none.
  /// @param source number of the source, as the CAN box counts them
  /// @return false when the call failed
  virtual bool SetOnSourceChange(int source) = 0;
  /// Tells the playing time. Event: none.
  /// @param text UTF-8, in the form that the CAN box expects
  /// @return false when the call failed or the text is not UTF-8
  virtual bool SetOnTimeChange(std::string text) = 0;
  /// Tells what the radio plays. Event: none.
  /// @param text UTF-8, in the form that the CAN box expects
  /// @return as SetOnTimeChange()
  virtual bool SetOnRadioChange(std::string text) = 0;
  /// Tells of a touch on the unit's screen. Event: none.
  /// @param text UTF-8, in the form that the CAN box expects
  /// @return as SetOnTimeChange()
  virtual bool SetOnTouchInfo(std::string text) = 0;
  /// Tells the programme service name (RDS PS) of the tuned station. Event: none.
  /// @param text the name, UTF-8
  /// @return as SetOnTimeChange()
  virtual bool SetOnPSChange(std::string text) = 0;
  /// Tells what the media player plays. Event: none.
  /// @param text UTF-8, in the form that the CAN box expects
  /// @return as SetOnTimeChange()
  virtual bool SetOnMediaInfoChange(std::string text) = 0;
  /// Tells the volume that the unit plays at. Event: none.
  /// @param volume in the steps that the unit's display counts
  /// @return false when the call failed
  virtual bool SetOnVolChange(int volume) = 0;
  /// Tells the state of the phone call. Event: none.
  /// @param text UTF-8, in the form that the CAN box expects
  /// @return as SetOnTimeChange()
  virtual bool SetOnPhoneInfoChange(std::string text) = 0;

  /// @}
  /// @name Switches of the unit
  /// @{

  /// @return non-zero when the driver sits on the left. Event: none.
  virtual int IsDrivePositionLeft() = 0;
  /// Switches the hand-brake check; the choice is not saved. Event: none.
  /// @param isChecked non-zero: on
  virtual void SetHandbrakeCheckingSwitch(int isChecked) = 0;
  /// Switches the GPS antenna check; the choice is not saved. Event: OnGpsAntStateChange() when the antenna's state
  /// changes.
  /// @param isChecked non-zero: on
  virtual void SetGPSAntennaCheckingSwitch(int isChecked) = 0;
  /// Puts the unit back to its factory state. Event: OnFactoryResetMode().
  virtual void ResetFactoryMode() = 0;

  /// @}
  /// @name Climate and doors
  /// @{

  /// @param state number of the switch, 0 to 7
  /// @return 1 when the climate switch is on, else 0, also for a number outside 0 to 7. Event: OnAcStateChange(), with
  ///   a Renault box OnRaiseRenaultAcStateChange().
  virtual int GetAcState(SystemMisc::ACState state) = 0;
  /// @return where the air goes. Event: OnAirBlowModeChange().
  virtual SystemMisc::AirBlowMode GetAirBlowMode() = 0;
  /// @return step of the fan. Event: OnAirLevelChange().
  virtual int GetAirBlowLevel() = 0;
  /// @return temperature set on the driver's side, in degrees. Event: OnTempDriverChange().
  virtual double GetDriverPositionTemperature() = 0;
  /// @return temperature set on the passenger's side, in degrees. Event: OnTempCopilotChange().
  virtual double GetCopilotPositionTemperature() = 0;
  /// @return degrees outside. Event: OnTempEnvironmentChange().
  virtual double GetEnvironmentTemperature() = 0;
  /// @param door number of the door, 0 to 7
  /// @return 1 when the door is open, else 0, also for a number outside 0 to 7. Event: OnDoorStateChange(), which
  ///   tells of doors 2 to 7; a change of 0 or 1 comes with none of them.
  virtual int GetDoorState(SystemMisc::DoorState door) = 0;

  /// @}
  /// @name Trip computer and CAN box
  /// @{

  /// @return speed. Event: OnCurrentSpeedChange().
  virtual int GetCurrentCarSpeed() = 0;
  /// @return average speed. Event: OnAverageSpeedChange().
  virtual int GetAverageCarSpeed() = 0;
  /// @return odometer. Event: OnTotalMileChange().
  virtual unsigned int GetTotalMile() = 0;
  /// @return remaining range. Event: OnEnduranceMileChange().
  virtual int GetEnduranceMile() = 0;
  /// @return trip counter A. Event: OnStage_A_MileChange().
  virtual unsigned int GetStage_A_Mile() = 0;
  /// @return trip counter B. Event: OnStage_B_MileChange().
  virtual unsigned int GetStage_B_Mile() = 0;
  /// @return current consumption. Event: OnCurrentFuelChange().
  virtual int GetCurrentFuel() = 0;
  /// @return average consumption. Event: OnAverageFuelChange().
  virtual int GetAverageFuel() = 0;
  /// @return engine speed in revolutions per minute. Event: OnRotateSpeedChange().
  virtual int GetEngineRotateSpeed() = 0;
  /// @return address of the CAN box's version text in shared memory; it stays valid until the process ends, and the
  ///   text may change at any time. The text is 32 bytes at most and not terminated when it fills them: bound every
  ///   read, as in `std::string(text, strnlen(text, 32))`. Event: none.
  virtual const char* GetCanVersion() = 0;
  /// @return whole degrees outside, -128 to 127. Event: OnTempEnvironmentChange().
  virtual int GetSimpleEnvironmentTemperature() = 0;
  /// Switches the CAN-box module. Event: none.
  /// @param enable non-zero: the CAN box is read
  virtual void EnableCanBoxModule(int enable) = 0;
  /// @return non-zero when the CAN-box module is on. Event: none.
  virtual int GetCanBoxEnableStatus() = 0;

  /// @}
  /// @name Screenshots, logo, cameras, temperatures and the rest
  /// @{

  /// Allows or forbids screenshots. Event: none.
  /// @param enable non-zero: allows them
  virtual void EnableScreenShotControl(int enable) = 0;
  /// @return non-zero when screenshots are allowed. Event: none.
  virtual int GetScreenShotStatus() = 0;
  /// Takes a screenshot. Event: none.
  virtual void SetScreenshot() = 0;
  /// Chooses the start-up logo by number. Event: none.
  /// @param logo number of the logo
  /// @return false when the call failed; true otherwise, also before the start
  virtual bool SetLogo(unsigned int logo) = 0;
  /// Chooses the start-up logo by its description. Event: none.
  /// @param logo sent whole and unchecked; not changed
  virtual void SetLogo(SystemMisc::LogoInfo& logo) = 0;
  /// @return non-zero when the reverse gear is engaged. Event: OnSimpleRVCSignalChange().
  virtual int GetSimpleRVCSignalActived() = 0;
  /// @return non-zero when the front camera is active. Event: OnCameraStateChange().
  virtual int GetFrontCameraActiveStatus() = 0;
  /// @return non-zero when the rear camera is active. Event: OnCameraStateChange().
  virtual int GetRearCameraActiveStatus() = 0;
  /// @return temperature of the unit in whole degrees. Event: OnSystemTempChange().
  virtual int GetSystemTemperature() = 0;
  /// @return temperature of the display panel in whole degrees, 0 to 255. Event: OnTFTTempChange().
  virtual unsigned int GetTFTTemperature() = 0;
  /// Starts the unit's self-test. Event: none.
  virtual void StartAutoTest() = 0;
  /// @return language of the unit. Event: OnSystemLanguageChange().
  virtual SystemMisc::Language GetSystemLanguage() = 0;
  /// @return non-zero when all sound must be off. Event: OnUrgentMuteStateChange().
  virtual int GetUrgentMuteState() = 0;
  /// @return radio region of a Ford box (3 in a fresh record). Event: OnRadioRegionChange().
  virtual SystemMisc::Radio_Region_Ford GetRadioRegion() = 0;
  /// @return number of speakers, 0 to 255 (4 in a fresh record). Event: OnSpeakerAmountChange().
  virtual unsigned int GetSpeakersAmount() = 0;
  /// Calls OnSteelMateRadarInfoChange() of every listener with the stored radar values, on the calling thread. Must not
  /// be called from a callback.
  virtual void GetSteelMateRadarInfo() {}

  /// @}
};

/// @}

#endif
