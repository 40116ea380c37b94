#ifndef HLX_LISTENER_BASE_H
#define HLX_LISTENER_BASE_H

#include "IHLXConnectionListener.h"
#include "IHLXPowerListener.h"
#include "IHLXSystemMiscListener.h"
#include "IHLXSystemTimeListener.h"
#include "IHLXUpdateListener.h"

/// @addtogroup listeners
/// @{

/// @name Listeners with an empty body for every callback
/// For applications that care for a few of them: derive from one and override what you need. What each callback means
/// stands with its interface.
/// @{

/// Hears nothing of power until you override something.
class HLX_API HLXPowerListenerBase : public IHLXPowerListener {
 public:
  void OnScreenStateChange(int) override {}
  void OnRadioStateChange(HLXPower::RadioState) override {}
  void OnAccStateChange(int) override {}
  void OnBatteryBootStateChange(int) override {}
  void OnPowerOffDelayTimeChange(unsigned char) override {}
  void OnPowerWakeupType(HLXPower::PowerWakeupType) override {}
  void OnAbnormalPowerAudioNotify(unsigned char) override {}
  void OnAbnormalPowerUsbNotify(unsigned char) override {}
  void OnPowerPreRadioOffNotify() override {}
  void OnScreenLightLevelChanged(HLXPower::LightType, unsigned char) override {}
  void OnScreenLightTypeChanged(HLXPower::LightType) override {}
  void OnButtonLightLevelChanged(HLXPower::LightType, unsigned char) override {}
  void OnButtonLightTypeChanged(HLXPower::LightType) override {}
  void OnButtonColorChanged(HLXPower::ColorType) override {}
  void OnMcuBootTypeNotify(HLXPower::BootReason) override {}
  void OnMcuRequestDisplayUiAction(HLXPower::McuReqDisplayUi) override {}
  void OnHeadLightStateChange(int) override {}
};

/// Hears nothing of vehicle data and switches until you override something.
class HLX_API HLXMiscListenerBase : public IHLXSystemMiscListener {
 public:
  void OnSpeakerStateChange(std::map<SystemMisc::Speaker, SystemMisc::SpeakerState>) override {}
  void OnCarSpeedChange(unsigned int) override {}
  void OnCarFloatSpeedChange(double) override {}
  void OnParkingStateChange(int) override {}
  void OnRadioAntStateChange(SystemMisc::AntState) override {}
  void OnGpsAntStateChange(SystemMisc::AntState) override {}
  void OnDABAntStateChange(SystemMisc::AntState) override {}
  void OnMicConnectStateChange(SystemMisc::AntState) override {}
  void OnFactoryResetMode() override {}
  void OnAcStateChange(std::map<SystemMisc::ACState, int>) override {}
  void OnAirBlowModeChange(SystemMisc::AirBlowMode) override {}
  void OnAirLevelChange(int) override {}
  void OnTempDriverChange(double) override {}
  void OnTempCopilotChange(double) override {}
  void OnTempEnvironmentChange(double) override {}
  void OnDoorStateChange(std::map<SystemMisc::DoorState, int>) override {}
  void OnCurrentSpeedChange(int) override {}
  void OnCurrentSpeedChange_Raise(int) override {}
  void OnAverageSpeedChange(int) override {}
  void OnTotalMileChange(unsigned int) override {}
  void OnEnduranceMileChange(int) override {}
  void OnTotalMileChange_Raise(std::map<unsigned int, unsigned int>) override {}
  void OnEnduranceMileChange_Raise(std::map<unsigned int, unsigned int>) override {}
  void OnStage_A_MileChange(unsigned int) override {}
  void OnStage_B_MileChange(unsigned int) override {}
  void OnCurrentFuelChange(int) override {}
  void OnAverageFuelChange(int) override {}
  void OnRotateSpeedChange(int) override {}
  void OnKeyStateChange(SystemMisc::KeyEvent&) override {}
  void OnRaiseGacKnobKeyChange(unsigned char, unsigned char) override {}
  void OnRaiseGacPanelKeyChange(unsigned char, unsigned char) override {}
  void OnRadarInfoChange(unsigned char, unsigned char, unsigned char, unsigned char) override {}
  void OnSimpleRVCSignalChange(int) override {}
  void OnSimpleAirModeChange(std::map<SystemMisc::SimpleAirMode, int>) override {}
  void OnRaiseGacAcStateChange(std::map<SystemMisc::Raise_GAC_ACState, int>) override {}
  void OnRaiseGacRadarInfoChange(unsigned char, unsigned char, unsigned char, unsigned char, unsigned char) override {}
  void OnRaiseVWSteeringWheelAngelChange(int) override {}
  void OnRaiseRenaultAcStateChange(std::map<SystemMisc::Raise_Renault_ACState, int>) override {}
  void OnGeneralAcStateChange(std::map<SystemMisc::AC_State_Type, int>) override {}
  void OnGeneralAirLevelChange(SystemMisc::SEAT_TYPE, int) override {}
  void OnGeneralLeftTempChange(SystemMisc::SEAT_TYPE, double) override {}
  void OnGeneralRightTempChange(SystemMisc::SEAT_TYPE, double) override {}
  void OnCameraStateChange(int, int) override {}
  void OnSystemTempChange(int) override {}
  void OnTFTTempChange(int) override {}
  void OnSystemLanguageChange(SystemMisc::Language) override {}
  void OnUrgentMuteStateChange(int) override {}
  void OnRadioRegionChange(SystemMisc::Radio_Region_Ford) override {}
  void OnRadioPresetChange(SystemMisc::Radio_Band_Ford, unsigned int, unsigned char) override {}
  void OnSpeakerAmountChange(unsigned char) override {}
  void OnSteelMateRadarInfoChange(unsigned char, unsigned char, unsigned char, unsigned char) override {}
};

/// Hears nothing of the clock until you override something.
class HLX_API HLXTimeListenerBase : public IHLXSystemTimeListener {
 public:
  void OnDateInfoChange(SystemTime::DateTime&) override {}
  void On24TimeModeChange(int) override {}
  void OnDstStatusChange(int) override {}
  void OnExternalMcuTimeChange(SystemTime::DateTime&) override {}
  void OnExternalMcu24TimeModeChange(int) override {}
  void OnExternalMcuTimeZoneChange(unsigned char) override {}
};

/// Hears nothing of updates until you override something.
class HLX_API HLXUpdateListenerBase : public IHLXUpdateListener {
 public:
  void OnDetectValidUpdateFileNotify(HLXUpdate::UpdateNotifyResult) override {}
  void OnUpdateRequestResultInform(HLXUpdate::OpResult) override {}
  void OnUpdateCanProcess(int) override {}
  void OnMcuUpdateStateNotify(HLXUpdate::UpdateState) override {}
  void OnMpuUpdateStateNotify(HLXUpdate::UpdateState) override {}
  void OnMcuUpdateProgressNotify(unsigned int) override {}
  void OnPackageStateChangeNotify(HLXUpdate::UpdatePackageState) override {}
};

/// Hears nothing of the connection until you override something.
class HLX_API HLXConnectionListenerBase : public IHLXConnectionListener {
 public:
  void OnServiceLost() override {}
  void OnServiceBack() override {}
  void OnBusLost() override {}
};

/// @}
/// @}

#endif
