#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "HLXMiscTypes.h"
#include "HLXPowerTypes.h"
#include "HLXTimeTypes.h"
#include "HLXUpdateTypes.h"
#include "dbus/GLibPtr.h"
#include "dbus_system.h"

class HLXMiscClient;
class HLXPowerClient;
class HLXTimeClient;
class HLXUpdateClient;

/// The process's one connection to the system service: forwards commands, relays signals.
///
/// Commands may come from any thread; signals arrive in the main context that was the thread-default one where Init()
/// ran.
class ClientIpcAdapter {
 public:
  ClientIpcAdapter();
  ClientIpcAdapter(const ClientIpcAdapter&) = delete;
  ClientIpcAdapter& operator=(const ClientIpcAdapter&) = delete;
  ~ClientIpcAdapter();

  bool Init() { return InitDBusConnect(); }
  bool InitDBusConnect();
  void ConnectDBusSignal();

  /// Ends signal delivery: waits for a handler on another thread, disconnects every handler and drops every proxy.
  /// The clients may be deleted afterwards. Safe to repeat.
  void StopDispatch();

  // Where the relays deliver; not owned, null until the client exists.
  void SetClient(HLXUpdateClient* client) { update_client_.store(client); }
  void SetClient(HLXPowerClient* client) { power_client_.store(client); }
  void SetClient(HLXMiscClient* client) { misc_client_.store(client); }
  void SetClient(HLXTimeClient* client) { time_client_.store(client); }

  // Commands: one blocking call of the D-Bus method each. A failure is logged, and kept for LastCallError.
  void ApplyExternalMcuUpdate();
  void ApplyUpdateAll();
  void ApplyMpuUpdate();
  void ApplyUpdate(HLXUpdate::UpdateType type);
  void SetCanUpdata(int canUpdate);
  void ShutDown();
  void Reset();
  void RequestPowerOffState(int isKeyShortPress);
  void SetPowerOffDelayTime(unsigned char time);
  void SetRetainACCSec(unsigned int sec);
  void SetBtCallState(HLXPower::CallState state);
  void SetCarPlayPhoneState(HLXPower::CpPhoneStateType state);
  void SetScreenLightOn(int on);
  void SetScreenLightLevel(HLXPower::LightType type, unsigned char level);
  void SetColorType(HLXPower::ColorType type);
  void SetLedAnimation(int on);
  void SetLightDetectStyle(int isAutomatic);
  void SetLightFixDayStyle(int isDay);
  void ResetScreenBackLight();
  void SetTempMaxScreenLightLevel(int isActive);
  void ConfirmPreRadioOffState(int param);
  void SetButtonLightState(int on);
  void SetButtonLightValue(HLXPower::LightType type, unsigned char level);
  void SetGammaValue(int value);
  void ResetButtonBackLight();
  void SetPowerRvcStatus(int isOn);
  void SpeakerDetectStart();
  void ResetFactoryMode();
  void EnableCanBoxModule(int enable);
  void EnableScreenShotControl(int enable);
  void SetScreenshot();
  void StartAutoTest();
  void SpeakerDetectStop();
  void SetRvcOffDelaySwitch(int isDelayOff);
  void SetDrivePosition(int isLeft);
  bool SetOnSourceChange(int source);
  bool SetLogo(unsigned int logo);
  void SetLogo(SystemMisc::LogoInfo& logo);
  bool SetOnTimeChange(std::string& text);
  bool SetOnRadioChange(std::string& text);
  bool SetOnTouchInfo(std::string& text);
  bool SetOnPSChange(std::string& text);
  bool SetOnMediaInfoChange(std::string& text);
  bool SetOnPhoneInfoChange(std::string& text);
  bool SetOnVolChange(int volume);
  void SetHandbrakeCheckingSwitch(int isChecked);
  void SetGPSAntennaCheckingSwitch(int isChecked);
  void SetTime24Mode(int is24Mode);
  void SetAutoSyncMode(int isAutoSync);
  void SetAutoAdjustDstMode(int isAutoDst);
  void SetCurDate(SystemTime::DateInfo& date);
  void SetCurTime(SystemTime::TimeInfo& time);
  bool SetGpsUTCTimeSync(SystemTime::DateTime& utc);
  void SetTimeZone(SystemTime::TimeZone zone);

  // Relays: each calls the method of the same name of the client that owns the state, if there is one. A search for an
  // update package is the exception: it starts with HLXUpdateClient::OnAsyncDetectValidUpdateFileNotify().
  void OnDetectValidUpdateFileNotify(HLXUpdate::UpdateNotifyResult result);
  void OnUpdateRequestResultInform(HLXUpdate::OpResult result);
  void OnUpdateCanProcess(int canProcess);
  void OnMcuUpdateStateNotify(HLXUpdate::UpdateState state);
  void OnMpuUpdateStateNotify(HLXUpdate::UpdateState state);
  void OnMcuUpdateProgressNotify(unsigned int progress);
  void OnPackageStateChangeNotify(HLXUpdate::UpdatePackageState state);
  void OnScreenStateChange(int isScreenOn);
  void OnRadioStateChange(HLXPower::RadioState state);
  void OnAccStateChange(int isAccOn);
  void OnPowerOffDelayTimeChange(unsigned char time);
  void OnScreenLightLevelChanged(HLXPower::LightType type, unsigned char level);
  void OnScreenLightTypeChanged(HLXPower::LightType type);
  void OnButtonLightLevelChanged(HLXPower::LightType type, unsigned char level);
  void OnButtonColorChanged(HLXPower::ColorType type);
  void OnButtonLightTypeChanged(HLXPower::LightType type);
  void OnSpeakerStateChange();
  void OnCarSpeedChange(unsigned int speed);
  void OnCarFloatSpeedChange(double speed);
  void OnParkingStateChange(int isParking);
  void OnRadioAntStateChange(SystemMisc::AntState state);
  void OnGpsAntStateChange(SystemMisc::AntState state);
  void OnDABAntStateChange(SystemMisc::AntState state);
  void OnMicConnectStateChange(SystemMisc::AntState state);
  void OnDateInfoChange(unsigned char type);
  void OnExternalMcuTimeChange(unsigned char parm);
  void On24TimeModeChange(int is24Mode);
  void OnBatteryBootStateChange(int isColdBoot);
  void OnDstStatusChange(int isDst);
  void OnFactoryResetMode();
  void OnPowerWakeupType(HLXPower::PowerWakeupType type);
  void OnAbnormalPowerAudioNotify(unsigned char param);
  void OnAbnormalPowerUsbNotify(unsigned char param);
  void OnPowerPreRadioOffNotify();
  void OnMcuBootTypeNotify(HLXPower::BootReason reason);
  void OnMcuRequestDisplayUiAction(HLXPower::McuReqDisplayUi uiAction);
  void OnHeadLightStateChange(int on);
  void OnAcStateChange(unsigned char state);
  void OnAirBlowModeChange(SystemMisc::AirBlowMode mode);
  void OnAirLevelChange(int level);
  void OnTempDriverChange(double value);
  void OnTempCopilotChange(double value);
  void OnTempEnvironmentChange(double value);
  void OnDoorStateChange(unsigned char state);
  void OnKeyStateChange(unsigned char key, unsigned char state);
  void OnCurrentSpeedChange(int value);
  void OnCurrentSpeedChange_Raise(int value);
  void OnAverageSpeedChange(int value);
  void OnTotalMileChange(unsigned int value);
  void OnEnduranceMileChange(int value);
  void OnTotalMileChange_Raise(unsigned int value);
  void OnEnduranceMileChange_Raise(int value);
  void OnStage_A_MileChange(unsigned int value);
  void OnStage_B_MileChange(unsigned int value);
  void OnCurrentFuelChange(int value);
  void OnAverageFuelChange(int value);
  void OnRotateSpeedChange(int value);
  void OnRadarInfoChange(unsigned char rearLeft, unsigned char rearMiddleLeft, unsigned char rearMiddleRight,
                         unsigned char rearRight);
  void OnSimpleRVCSignalChange(int on);
  void OnSimpleAirModeChange(unsigned char state);
  void OnRaiseGacAcStateChange(unsigned char stateOne, unsigned char stateTwo);
  void OnRaiseGacRadarInfoChange(unsigned char displayType, unsigned char rearLeft, unsigned char rearMiddleLeft,
                                 unsigned char rearMiddleRight, unsigned char rearRight);
  void OnRaiseVWSteeringWheelAngelChange(unsigned char espOne, unsigned char espTwo);
  void OnGeneralAcStateChange(unsigned char acStateData, unsigned char acStateValue);
  void OnGeneralAirLevelChange(unsigned char type, int level);
  void OnGeneralLeftTempChange(unsigned char type, double value);
  void OnGeneralRightTempChange(unsigned char type, double value);
  void OnCameraStateChange(int fCamera, int rCamera);
  void OnSystemTempChange(int value);
  void OnTFTTempChange(int value);
  void OnSystemLanguageChange(SystemMisc::Language language);
  void OnUrgentMuteStateChange(int mute);
  void OnRadioRegionChange(SystemMisc::Radio_Region_Ford region);
  void OnRadioPresetChange(unsigned char band, unsigned int frequency, unsigned char preset);
  void OnSpeakerAmountChange(unsigned char amount);
  void OnSteelMateRadarInfoChange(unsigned char left, unsigned char midLeft, unsigned char midRight,
                                  unsigned char right);

 private:
  struct CallSite;

  template <class Function, class... Args>
  bool Call(const CallSite& site, Function function, Args... args);
  template <class Function>
  bool CallText(const CallSite& site, Function function, const std::string& text);

  std::atomic<ComVornLinuxSystem*> proxy_{nullptr};  ///< the newest; owned by proxies_
  std::atomic<HLXUpdateClient*> update_client_{nullptr};
  std::atomic<HLXPowerClient*> power_client_{nullptr};
  std::atomic<HLXMiscClient*> misc_client_{nullptr};
  std::atomic<HLXTimeClient*> time_client_{nullptr};

  std::mutex starting_;
  std::mutex proxies_mutex_;
  std::vector<GLibPtr<ComVornLinuxSystem>>
      proxies_;  ///< all that were made, since a command may still use an older one
};
