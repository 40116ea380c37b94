/// The rows of the signals, and the check that every announcement and every command names one of them.
#pragma once

#include <string_view>

#include "catalog/AllValues.h"
#include "catalog/Signal.h"

namespace catalog::rows {

// A misspelt callback does not compile.
#define HLX_CALLBACK(listener, name) (static_cast<void>(&listener::name), #name)
#define POWER_CALLBACK(name) HLX_CALLBACK(IHLXPowerListener, name)
#define MISC_CALLBACK(name) HLX_CALLBACK(IHLXSystemMiscListener, name)
#define TIME_CALLBACK(name) HLX_CALLBACK(IHLXSystemTimeListener, name)
#define UPDATE_CALLBACK(name) HLX_CALLBACK(IHLXUpdateListener, name)

// clang-format off
inline constexpr Signal kSignals[] = {
    {Area::kUpdate, "DetectValidUpdateFileNotifySignal", "y", {UPDATE_CALLBACK(OnDetectValidUpdateFileNotify)}},
    {Area::kUpdate, "UpdateRequestResultInformSignal", "y", {UPDATE_CALLBACK(OnUpdateRequestResultInform)}},
    {Area::kUpdate, "UpdateCanProcess", "i", {UPDATE_CALLBACK(OnUpdateCanProcess)}},
    {Area::kUpdate, "OnMcuUpdateStateNotify", "i", {UPDATE_CALLBACK(OnMcuUpdateStateNotify)}},
    {Area::kUpdate, "OnMpuUpdateStateNotify", "i", {UPDATE_CALLBACK(OnMpuUpdateStateNotify)}},
    {Area::kUpdate, "OnMcuUpdateProgressNotify", "u", {UPDATE_CALLBACK(OnMcuUpdateProgressNotify)}},
    {Area::kUpdate, "OnPackageStateChangeNotify", "i", {UPDATE_CALLBACK(OnPackageStateChangeNotify)}},
    {Area::kPower, "ScreenStateChangeSignal", "b", {POWER_CALLBACK(OnScreenStateChange)}},
    {Area::kPower, "RadioStateChangeSignal", "y", {POWER_CALLBACK(OnRadioStateChange)}},
    {Area::kPower, "AccStateChangeSignal", "b", {POWER_CALLBACK(OnAccStateChange)}},
    {Area::kPower, "PowerOffDelayTimeChangeSignal", "y", {POWER_CALLBACK(OnPowerOffDelayTimeChange)}},
    {Area::kPower, "ScreenLightLevelChangedSignal", "yy", {POWER_CALLBACK(OnScreenLightLevelChanged)}},
    {Area::kPower, "ScreenLightTypeChangedSignal", "y", {POWER_CALLBACK(OnScreenLightTypeChanged)}},
    {Area::kPower, "ButtonLightLevelChangedSignal", "yy", {POWER_CALLBACK(OnButtonLightLevelChanged)}},
    {Area::kPower, "ButtonColorChangedSignal", "y", {POWER_CALLBACK(OnButtonColorChanged)}},
    {Area::kPower, "ButtonLightTypeChangedSignal", "y", {POWER_CALLBACK(OnButtonLightTypeChanged)}},
    {Area::kPower, "BatteryBootStateChangeSignal", "b", {POWER_CALLBACK(OnBatteryBootStateChange)}},
    {Area::kPower, "AbnormalPowerAudioNotifySignal", "y", {POWER_CALLBACK(OnAbnormalPowerAudioNotify)}},
    {Area::kPower, "AbnormalPowerUsbNotifySignal", "y", {POWER_CALLBACK(OnAbnormalPowerUsbNotify)}},
    {Area::kPower, "OnPowerPreRadioOffNotify", "", {POWER_CALLBACK(OnPowerPreRadioOffNotify)}},
    {Area::kPower, "OnMcuBootTypeNotifySignal", "y", {POWER_CALLBACK(OnMcuBootTypeNotify)}},
    {Area::kPower, "OnMcuRequestDisplayUiActionSignal", "y", {POWER_CALLBACK(OnMcuRequestDisplayUiAction)}},
    {Area::kPower, "OnHeadLightStateChange", "b", {POWER_CALLBACK(OnHeadLightStateChange)}},
    {Area::kMisc, "SpeakerStateChangeSignal", "", {MISC_CALLBACK(OnSpeakerStateChange)}},
    {Area::kMisc, "CarSpeedChangeSignal", "u", {MISC_CALLBACK(OnCarSpeedChange)}},
    {Area::kMisc, "CarFloatSpeedChangeSignal", "d", {MISC_CALLBACK(OnCarFloatSpeedChange)}},
    {Area::kMisc, "ParkingStateChangeSignal", "b", {MISC_CALLBACK(OnParkingStateChange)}},
    {Area::kMisc, "RadioAntStateChangeSignal", "y", {MISC_CALLBACK(OnRadioAntStateChange)}},
    {Area::kMisc, "GpsAntStateChangeSignal", "y", {MISC_CALLBACK(OnGpsAntStateChange)}},
    {Area::kMisc, "DABAntStateChangeSignal", "y", {MISC_CALLBACK(OnDABAntStateChange)}},
    {Area::kMisc, "MicConnectStateChangeSignal", "y", {MISC_CALLBACK(OnMicConnectStateChange)}},
    {Area::kMisc, "OnFactoryResetModeSignal", "", {MISC_CALLBACK(OnFactoryResetMode)}},
    {Area::kMisc, "AcStateChangeSignal", "y", {MISC_CALLBACK(OnAcStateChange), MISC_CALLBACK(OnRaiseRenaultAcStateChange)}},
    {Area::kMisc, "AirBlowModeChangeSignal", "y", {MISC_CALLBACK(OnAirBlowModeChange)}},
    {Area::kMisc, "AirLevelChangeSignal", "i", {MISC_CALLBACK(OnAirLevelChange)}},
    {Area::kMisc, "TempDriverChangeSignal", "d", {MISC_CALLBACK(OnTempDriverChange)}},
    {Area::kMisc, "TempCopilotChangeSignal", "d", {MISC_CALLBACK(OnTempCopilotChange)}},
    {Area::kMisc, "TempEnvChangeSignal", "d", {MISC_CALLBACK(OnTempEnvironmentChange)}},
    {Area::kMisc, "DoorStateChangeSignal", "y", {MISC_CALLBACK(OnDoorStateChange)}},
    {Area::kMisc, "KeyStateChangeSignal", "yy", {MISC_CALLBACK(OnKeyStateChange), MISC_CALLBACK(OnRaiseGacKnobKeyChange), MISC_CALLBACK(OnRaiseGacPanelKeyChange)}},
    {Area::kMisc, "CurSpeedChangeSignal", "i", {MISC_CALLBACK(OnCurrentSpeedChange)}},
    {Area::kMisc, "CurSpeedChangeSignalRaise", "i", {MISC_CALLBACK(OnCurrentSpeedChange_Raise)}},
    {Area::kMisc, "AvrSpeedChangeSignal", "i", {MISC_CALLBACK(OnAverageSpeedChange)}},
    {Area::kMisc, "MileTotalChangeSignal", "u", {MISC_CALLBACK(OnTotalMileChange)}},
    {Area::kMisc, "MileEnduranceChangeSignal", "i", {MISC_CALLBACK(OnEnduranceMileChange)}},
    {Area::kMisc, "MileTotalChangeSignalRaise", "u", {MISC_CALLBACK(OnTotalMileChange_Raise)}},
    {Area::kMisc, "MileEnduranceChangeSignalRaise", "i", {MISC_CALLBACK(OnEnduranceMileChange_Raise)}},
    {Area::kMisc, "MileStageAChangeSignal", "u", {MISC_CALLBACK(OnStage_A_MileChange)}},
    {Area::kMisc, "MileStageBChangeSignal", "u", {MISC_CALLBACK(OnStage_B_MileChange)}},
    {Area::kMisc, "CurFuelChangeSignal", "i", {MISC_CALLBACK(OnCurrentFuelChange)}},
    {Area::kMisc, "AvrFuelChangeSignal", "i", {MISC_CALLBACK(OnAverageFuelChange)}},
    {Area::kMisc, "RotateSpeedChangeSignal", "i", {MISC_CALLBACK(OnRotateSpeedChange)}},
    {Area::kMisc, "SimpleAirModeChangeSignal", "y", {MISC_CALLBACK(OnSimpleAirModeChange)}},
    {Area::kMisc, "OnCameraStateChangeSignal", "bb", {MISC_CALLBACK(OnCameraStateChange)}},
    {Area::kMisc, "OnSystemTempChange", "i", {MISC_CALLBACK(OnSystemTempChange)}},
    {Area::kMisc, "OnTFTTempChange", "i", {MISC_CALLBACK(OnTFTTempChange)}},
    {Area::kMisc, "OnSystemLanguageChangeSignal", "y", {MISC_CALLBACK(OnSystemLanguageChange)}},
    {Area::kMisc, "OnUrgentMuteStateChangeSignal", "b", {MISC_CALLBACK(OnUrgentMuteStateChange)}},
    {Area::kMisc, "OnRadioRegionChangeSignal", "y", {MISC_CALLBACK(OnRadioRegionChange)}},
    {Area::kMisc, "OnRadioPresetChangeSignal", "yuy", {MISC_CALLBACK(OnRadioPresetChange)}},
    {Area::kMisc, "OnSpeakerAmountChangeSignal", "y", {MISC_CALLBACK(OnSpeakerAmountChange)}},
    {Area::kTime, "OnDateInfoChangeSignal", "y", {TIME_CALLBACK(OnDateInfoChange)}},
    {Area::kTime, "OnExternalMcuTimeChangeSignal", "y", {TIME_CALLBACK(OnExternalMcuTimeChange), TIME_CALLBACK(OnExternalMcu24TimeModeChange), TIME_CALLBACK(OnExternalMcuTimeZoneChange)}},
    {Area::kTime, "On24TimeModeChangeSignal", "b", {TIME_CALLBACK(On24TimeModeChange)}},
    {Area::kTime, "OnDstStatusChangeSignal", "b", {TIME_CALLBACK(OnDstStatusChange)}},
    {Area::kPower, "OnPowerWakeupTypeSignal", "y", {POWER_CALLBACK(OnPowerWakeupType)}},
    {Area::kMisc, "OnRadarInfoChangedSignal", "yyyy", {MISC_CALLBACK(OnRadarInfoChange)}},
    {Area::kMisc, "OnSimpleRVCSignal", "b", {MISC_CALLBACK(OnSimpleRVCSignalChange)}},
    {Area::kMisc, "RaiseGacAcStateChangeSignal", "yy", {MISC_CALLBACK(OnRaiseGacAcStateChange)}},
    {Area::kMisc, "OnRaiseGacRadarInfoChangedSignal", "yyyyy", {MISC_CALLBACK(OnRaiseGacRadarInfoChange)}},
    {Area::kMisc, "RaiseVWSteeringWheelAngelChangeSignal", "yy", {MISC_CALLBACK(OnRaiseVWSteeringWheelAngelChange)}},
    {Area::kMisc, "OnGeneralAcStateChangeSignal", "yy", {MISC_CALLBACK(OnGeneralAcStateChange)}},
    {Area::kMisc, "OnGeneralAirLevelChangeSignal", "yi", {MISC_CALLBACK(OnGeneralAirLevelChange)}},
    {Area::kMisc, "OnGeneralLeftTempChangeSignal", "yd", {MISC_CALLBACK(OnGeneralLeftTempChange)}},
    {Area::kMisc, "OnGeneralRightTempChangeSignal", "yd", {MISC_CALLBACK(OnGeneralRightTempChange)}},
    {Area::kMisc, "OnSteelMateRadarInfoChangedSignal", "yyyy", {MISC_CALLBACK(OnSteelMateRadarInfoChange)}},
};
// clang-format on
#undef HLX_CALLBACK
#undef POWER_CALLBACK
#undef MISC_CALLBACK
#undef TIME_CALLBACK
#undef UPDATE_CALLBACK

constexpr const Signal* SignalNamed(std::string_view name) {
  for (const Signal& signal : kSignals) {
    if (name == signal.name) return &signal;
  }
  return nullptr;
}

/// -1: there is no such signal. A number, since g++ compares no pointers in constants under UndefinedBehaviorSanitizer.
constexpr int ArgumentsOf(std::string_view name) {
  for (const Signal& signal : kSignals) {
    if (name == signal.name) return static_cast<int>(std::string_view(signal.arguments).size());
  }
  return -1;
}

/// Whether the signal that announces `value` is there and has the argument that tells it.
constexpr bool IsAnnounced(const Value& value) {
  const std::string_view name = value.announced.signal;
  return name.empty() || value.announced.argument < ArgumentsOf(name);
}

constexpr bool AreAllAnnounced() {
  for (const Value& value : kAllValues) {
    if (!IsAnnounced(value)) return false;
  }
  return true;
}
static_assert(AreAllAnnounced(), "a value is announced by a signal that there is not, or by an argument too many");

}  // namespace catalog::rows
