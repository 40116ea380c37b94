#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "HLXMiscTypes.h"
#include "HLXPowerTypes.h"
#include "HLXTimeTypes.h"
#include "HLXUpdateTypes.h"
#include "dbus/GLibPtr.h"
#include "dbus_system.h"

/// The process's one connection to the system service: makes the proxies and forwards commands.
///
/// Commands may come from any thread. What the proxies tell arrives in the main context that was the thread-default one
/// where Init() ran, through the gate of this adapter.
class ClientIpcAdapter {
 public:
  ClientIpcAdapter();
  ClientIpcAdapter(const ClientIpcAdapter&) = delete;
  ClientIpcAdapter& operator=(const ClientIpcAdapter&) = delete;
  /// Disconnects every handler and drops every proxy.
  virtual ~ClientIpcAdapter();

  bool Init() { return InitDBusConnect(); }
  bool InitDBusConnect();

  /// Lets no more callbacks in, and waits for those on other threads: the clients may be deleted afterwards. Safe to
  /// repeat. @return false when it must not wait, see DispatchGate::Refused()
  bool StopDispatch();

  /// For the commands of the whole process, from the next one on. @param milliseconds -1: what the bus has
  /// @return false, with nothing changed, for anything else below 1
  static bool SetCallTimeout(int milliseconds);

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

 private:
  struct CallSite;
  using Proxy = GLibPtr<ComVornLinuxSystem>;

  virtual void ConnectDBusSignal(ComVornLinuxSystem* /*proxy*/) {}

  void UseProxy(ComVornLinuxSystem* proxy);
  Proxy ForCommand();

  template <class Function, class... Args>
  bool Call(const CallSite& site, Function function, Args... args);
  template <class Function>
  bool CallText(const CallSite& site, Function function, const std::string& text);

  std::mutex mutex_;               ///< guards what follows
  Proxy newest_;                   ///< null before the first start, and when the last attempt found no bus
  std::vector<Proxy> connected_;   ///< with handlers: they stay
  std::vector<Proxy> last_start_;  ///< all that the last start made: the next one drops what has no handlers
  GLibPtr<GDBusConnection> bus_;
};
