#ifndef I_HLX_SYSTEM_MISC_H
#define I_HLX_SYSTEM_MISC_H

#include <map>
#include <string>

#include "HLXExport.h"
#include "HLXMiscTypes.h"
#include "IHLXListener.h"
#include "IHLXSystemMiscListener.h"

/// Vehicle data as the CAN box reports it, and miscellaneous switches of the unit.
///
/// Getters read one field of the shared misc record, without a lock and without a call; they cannot fail, and work
/// before HLX_StartSystemProxy(). Speeds, distances and consumption are as the CAN box counts them.
///
/// Commands are blocking D-Bus calls on the caller's thread, see IHLXSystemPower. All functions may be called from any
/// thread, but for the registration of listeners: see IHLXListener. The order of the virtual functions is part of the
/// binary interface.
class HLX_API IHLXSystemMisc : public IHLXListener<IHLXSystemMiscListener> {
 public:
  /// Sets the entries of speakers 1 to 4 in `states`; other entries are left alone.
  virtual void GetSpeakerState(std::map<SystemMisc::Speaker, SystemMisc::SpeakerState>& states) = 0;
  /// Starts the detection of open and shorted speakers; the result comes as OnSpeakerStateChange().
  virtual void SpeakerDetectStart() = 0;
  virtual void SpeakerDetectStop() = 0;
  /// @return vehicle speed in whole units
  virtual unsigned int GetCarSpeed() = 0;
  /// @return vehicle speed with two decimals
  virtual double GetCarFloatSpeed() = 0;
  /// @return non-zero when parking
  virtual int GetParkingState() = 0;
  /// @return non-zero when the hand-brake check is on
  virtual int IsHandBrakeTestOn() = 0;
  /// @return non-zero when the GPS antenna check is on
  virtual int IsGPSAntennaCheckingOn() = 0;
  virtual SystemMisc::AntState GetRadioAntState() = 0;
  virtual SystemMisc::AntState GetGpsAntState() = 0;
  virtual SystemMisc::AntState GetDABAntState() = 0;
  virtual SystemMisc::AntState GetMicConnectState() = 0;
  /// @param isDelayOff non-zero keeps the rear-view camera picture for a moment
  virtual void SetRvcOffDelaySwitch(int isDelayOff) = 0;
  /// @return non-zero when the rear-view camera picture is kept for a moment
  virtual int GetRvcOffDelayState() = 0;
  /// @param isLeft non-zero: the driver sits on the left
  virtual void SetDrivePosition(int isLeft) = 0;
  /// Tells the vehicle's displays what plays. These return false when the call failed, and true otherwise, also before
  /// the start; see IHLXSystemPower about commands. Texts are UTF-8: any other is refused.
  virtual bool SetOnSourceChange(int source) = 0;
  virtual bool SetOnTimeChange(std::string text) = 0;
  virtual bool SetOnRadioChange(std::string text) = 0;
  virtual bool SetOnTouchInfo(std::string text) = 0;
  virtual bool SetOnPSChange(std::string text) = 0;
  virtual bool SetOnMediaInfoChange(std::string text) = 0;
  virtual bool SetOnVolChange(int volume) = 0;
  virtual bool SetOnPhoneInfoChange(std::string text) = 0;
  /// @return non-zero when the driver sits on the left
  virtual int IsDrivePositionLeft() = 0;
  /// @param isChecked non-zero switches the hand-brake check on
  virtual void SetHandbrakeCheckingSwitch(int isChecked) = 0;
  /// @param isChecked non-zero switches the GPS antenna check on
  virtual void SetGPSAntennaCheckingSwitch(int isChecked) = 0;
  /// Puts the unit back to its factory state.
  virtual void ResetFactoryMode() = 0;
  /// @return 1 when the climate switch is on, else 0, also for a bit number outside 0 to 7
  virtual int GetAcState(SystemMisc::ACState state) = 0;
  virtual SystemMisc::AirBlowMode GetAirBlowMode() = 0;
  /// @return fan level
  virtual int GetAirBlowLevel() = 0;
  /// @return set temperature of the driver's side in degrees
  virtual double GetDriverPositionTemperature() = 0;
  /// @return set temperature of the passenger's side in degrees
  virtual double GetCopilotPositionTemperature() = 0;
  /// @return degrees outside
  virtual double GetEnvironmentTemperature() = 0;
  /// @return 1 when the door is open, else 0, also for a bit number outside 0 to 7
  virtual int GetDoorState(SystemMisc::DoorState door) = 0;
  /// @return speed as the CAN box counts it
  virtual int GetCurrentCarSpeed() = 0;
  virtual int GetAverageCarSpeed() = 0;
  /// @return odometer
  virtual unsigned int GetTotalMile() = 0;
  /// @return remaining range
  virtual int GetEnduranceMile() = 0;
  virtual unsigned int GetStage_A_Mile() = 0;
  virtual unsigned int GetStage_B_Mile() = 0;
  /// @return consumption as the CAN box counts it
  virtual int GetCurrentFuel() = 0;
  virtual int GetAverageFuel() = 0;
  /// @return engine speed in revolutions per minute
  virtual int GetEngineRotateSpeed() = 0;
  /// @return address of the CAN box's version text in shared memory; it stays valid until the process ends, and the
  ///   text may change at any time. The text is 32 bytes at most and not terminated when it fills them: bound every
  ///   read, as in std::string(text, strnlen(text, 32))
  virtual const char* GetCanVersion() = 0;
  /// @return whole degrees outside, -128 to 127
  virtual int GetSimpleEnvironmentTemperature() = 0;
  /// @param enable non-zero enables the CAN-box module
  virtual void EnableCanBoxModule(int enable) = 0;
  /// @return non-zero when the CAN-box module is enabled
  virtual int GetCanBoxEnableStatus() = 0;
  /// @param enable non-zero lets screenshots be taken
  virtual void EnableScreenShotControl(int enable) = 0;
  virtual int GetScreenShotStatus() = 0;
  /// Takes a screenshot.
  virtual void SetScreenshot() = 0;
  /// Chooses the start-up logo.
  virtual bool SetLogo(unsigned int logo) = 0;
  virtual void SetLogo(SystemMisc::LogoInfo& logo) = 0;
  /// @return non-zero when the reverse gear is engaged
  virtual int GetSimpleRVCSignalActived() = 0;
  /// @return non-zero when active
  virtual int GetFrontCameraActiveStatus() = 0;
  virtual int GetRearCameraActiveStatus() = 0;
  /// @return temperature of the unit in degrees
  virtual int GetSystemTemperature() = 0;
  /// @return temperature of the display panel in degrees, 0 to 255
  virtual unsigned int GetTFTTemperature() = 0;
  /// Starts the unit's self test.
  virtual void StartAutoTest() = 0;
  virtual SystemMisc::Language GetSystemLanguage() = 0;
  /// @return non-zero when all sound must be off
  virtual int GetUrgentMuteState() = 0;
  virtual SystemMisc::Radio_Region_Ford GetRadioRegion() = 0;
  /// @return number of speakers, 0 to 255
  virtual unsigned int GetSpeakersAmount() = 0;
  /// Calls OnSteelMateRadarInfoChange() of every listener with the stored radar values, on the calling thread. Must not
  /// be called from a callback.
  virtual void GetSteelMateRadarInfo() {}
};

#endif
