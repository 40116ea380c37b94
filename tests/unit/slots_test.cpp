// The order of every virtual function of the public interfaces is binary interface: units in the field were compiled
// against it.
#include <gtest/gtest.h>

#include <vector>

#include "HLXSystemProxy.h"
#include "tests/support/VtableSlot.h"

namespace {

/// 1, 2, 3 … as many as there are slots.
std::vector<int> InOrder(std::size_t count) {
  std::vector<int> order;
  for (std::size_t i = 0; i < count; ++i) order.push_back(static_cast<int>(i) + 1);
  return order;
}

#define S(function) SlotOf(&I::function)
#define REGISTRY                                                                                               \
  S(AddListener), S(RemoveListener), S(GetListeners), S(GetListenerCount), S(LockListener), S(UnlockListener), \
      S(OnListenerAdded), S(OnListenerRemoved)

TEST(Slots, HLXSystemPower) {
  using I = IHLXSystemPower;
  // clang-format off
  const std::vector<int> slots = {
      REGISTRY, S(ShutDown), S(Reset), S(RequestPowerOffState), S(GetRadioOnState), S(IsScreenOnState),
      S(IsAccOnState), S(IsColdBootState), S(SetPowerOffDelayTime), S(GetPowerOffDelayTime), S(GetRetainACCSec),
      S(SetRetainACCSec), S(SetBtCallState), S(SetCarPlayPhoneState), S(GetPowerWakeupType),
      S(SetScreenLightOn), S(SetScreenLightLevel), S(SetColorType), S(SetLedAnimation), S(GetColorType),
      S(GetLedAnimation), S(ResetScreenBackLight), S(GetCurScreenLightType), S(GetScreenLightLevel),
      S(GetScreenGammaLevel), S(SetTempMaxScreenLightLevel), S(GetDefaultScreenLightLevel),
      S(GetDefaultScreenGammaLevel), S(SetLightDetectStyle), S(SetLightFixDayStyle), S(IsLightAutoDetectStyle),
      S(IsLightDayFixStyle), S(SetButtonLightState), S(SetButtonLightValue), S(SetGammaValue),
      S(ResetButtonBackLight), S(GetButtonLightType), S(GetCurButtonLightLevel), S(SetPowerRvcStatus),
      S(ConfirmPreRadioOffState), S(GetMcuBootType), S(GetHeadLightState)};
  // clang-format on
  EXPECT_EQ(slots, InOrder(49));
}

TEST(Slots, HLXPowerListener) {
  using I = IHLXPowerListener;
  // clang-format off
  const std::vector<int> slots = {
      S(OnScreenStateChange), S(OnRadioStateChange), S(OnAccStateChange), S(OnBatteryBootStateChange),
      S(OnPowerOffDelayTimeChange), S(OnPowerWakeupType), S(OnAbnormalPowerAudioNotify),
      S(OnAbnormalPowerUsbNotify), S(OnPowerPreRadioOffNotify), S(OnScreenLightLevelChanged),
      S(OnScreenLightTypeChanged), S(OnButtonLightLevelChanged), S(OnButtonLightTypeChanged),
      S(OnButtonColorChanged), S(OnMcuBootTypeNotify), S(OnMcuRequestDisplayUiAction), S(OnHeadLightStateChange)};
  // clang-format on
  EXPECT_EQ(slots, InOrder(17));
}

TEST(Slots, HLXSystemMisc) {
  using I = IHLXSystemMisc;
  // clang-format off
  const std::vector<int> slots = {
      REGISTRY, S(GetSpeakerState), S(SpeakerDetectStart), S(SpeakerDetectStop), S(GetCarSpeed),
      S(GetCarFloatSpeed), S(GetParkingState), S(IsHandBrakeTestOn), S(IsGPSAntennaCheckingOn),
      S(GetRadioAntState), S(GetGpsAntState), S(GetDABAntState), S(GetMicConnectState), S(SetRvcOffDelaySwitch),
      S(GetRvcOffDelayState), S(SetDrivePosition), S(SetOnSourceChange), S(SetOnTimeChange),
      S(SetOnRadioChange), S(SetOnTouchInfo), S(SetOnPSChange), S(SetOnMediaInfoChange), S(SetOnVolChange),
      S(SetOnPhoneInfoChange), S(IsDrivePositionLeft), S(SetHandbrakeCheckingSwitch),
      S(SetGPSAntennaCheckingSwitch), S(ResetFactoryMode), S(GetAcState), S(GetAirBlowMode), S(GetAirBlowLevel),
      S(GetDriverPositionTemperature), S(GetCopilotPositionTemperature), S(GetEnvironmentTemperature),
      S(GetDoorState), S(GetCurrentCarSpeed), S(GetAverageCarSpeed), S(GetTotalMile), S(GetEnduranceMile),
      S(GetStage_A_Mile), S(GetStage_B_Mile), S(GetCurrentFuel), S(GetAverageFuel), S(GetEngineRotateSpeed),
      S(GetCanVersion), S(GetSimpleEnvironmentTemperature), S(EnableCanBoxModule), S(GetCanBoxEnableStatus),
      S(EnableScreenShotControl), S(GetScreenShotStatus), S(SetScreenshot), SlotOf(static_cast<bool
      (I::*)(unsigned int)>(&I::SetLogo)), SlotOf(static_cast<void (I::*)(SystemMisc::LogoInfo&)>(&I::SetLogo)),
      S(GetSimpleRVCSignalActived), S(GetFrontCameraActiveStatus), S(GetRearCameraActiveStatus),
      S(GetSystemTemperature), S(GetTFTTemperature), S(StartAutoTest), S(GetSystemLanguage),
      S(GetUrgentMuteState), S(GetRadioRegion), S(GetSpeakersAmount), S(GetSteelMateRadarInfo)};
  // clang-format on
  EXPECT_EQ(slots, InOrder(71));
}

TEST(Slots, HLXSystemMiscListener) {
  using I = IHLXSystemMiscListener;
  // clang-format off
  const std::vector<int> slots = {
      S(OnSpeakerStateChange), S(OnCarSpeedChange), S(OnCarFloatSpeedChange), S(OnParkingStateChange),
      S(OnRadioAntStateChange), S(OnGpsAntStateChange), S(OnDABAntStateChange), S(OnMicConnectStateChange),
      S(OnFactoryResetMode), S(OnAcStateChange), S(OnAirBlowModeChange), S(OnAirLevelChange),
      S(OnTempDriverChange), S(OnTempCopilotChange), S(OnTempEnvironmentChange), S(OnDoorStateChange),
      S(OnCurrentSpeedChange), S(OnCurrentSpeedChange_Raise), S(OnAverageSpeedChange), S(OnTotalMileChange),
      S(OnEnduranceMileChange), S(OnTotalMileChange_Raise), S(OnEnduranceMileChange_Raise),
      S(OnStage_A_MileChange), S(OnStage_B_MileChange), S(OnCurrentFuelChange), S(OnAverageFuelChange),
      S(OnRotateSpeedChange), S(OnKeyStateChange), S(OnRaiseGacKnobKeyChange), S(OnRaiseGacPanelKeyChange),
      S(OnRadarInfoChange), S(OnSimpleRVCSignalChange), S(OnSimpleAirModeChange), S(OnRaiseGacAcStateChange),
      S(OnRaiseGacRadarInfoChange), S(OnRaiseVWSteeringWheelAngelChange), S(OnRaiseRenaultAcStateChange),
      S(OnGeneralAcStateChange), S(OnGeneralAirLevelChange), S(OnGeneralLeftTempChange),
      S(OnGeneralRightTempChange), S(OnCameraStateChange), S(OnSystemTempChange), S(OnTFTTempChange),
      S(OnSystemLanguageChange), S(OnUrgentMuteStateChange), S(OnRadioRegionChange), S(OnRadioPresetChange),
      S(OnSpeakerAmountChange), S(OnSteelMateRadarInfoChange)};
  // clang-format on
  EXPECT_EQ(slots, InOrder(51));
}

TEST(Slots, HLXSystemTime) {
  using I = IHLXSystemTime;
  // clang-format off
  const std::vector<int> slots = {
      REGISTRY, S(GetTime24Mode), S(SetTime24Mode), S(GetAutoSyncMode), S(SetAutoSyncMode),
      S(GetAutoAdjustDstMode), S(SetAutoAdjustDstMode), S(GetCurDateInfo), S(SetCurDate), S(GetCurTimeInfo),
      S(SetCurTime), S(GetAllZoneInfo), S(GetZoneNode), S(SetTimeZone), S(GetCurTimeZone),
      S(IsCurZoneDstActive), S(SetGpsUTCTimeSync), S(SetCarplayTimeSync), S(GetExtMcuCanTime24Mode),
      S(GetExtMcuCanTimeZone), S(GetExtMcuCanDateTimeInfo)};
  // clang-format on
  EXPECT_EQ(slots, InOrder(28));
}

TEST(Slots, HLXSystemTimeListener) {
  using I = IHLXSystemTimeListener;
  // clang-format off
  const std::vector<int> slots = {
      S(OnDateInfoChange), S(On24TimeModeChange), S(OnDstStatusChange), S(OnExternalMcuTimeChange),
      S(OnExternalMcu24TimeModeChange), S(OnExternalMcuTimeZoneChange)};
  // clang-format on
  EXPECT_EQ(slots, InOrder(6));
}

TEST(Slots, HLXSystemInfo) {
  using I = IHLXSystemInfo;
  // clang-format off
  const std::vector<int> slots = {
      S(GetModelInfo), S(GetDriveType), S(GetFuelType), S(GetEngineType), S(GetMfiPPID), S(GetLocalVersionInfo),
      S(GetScreenPixels), S(GetScreenPhysical), S(GetScreenInfo), S(GetMcuVersion), S(GetEmmcId)};
  // clang-format on
  EXPECT_EQ(slots, InOrder(11));
}

TEST(Slots, HLXSystemUpdate) {
  using I = IHLXSystemUpdate;
  // clang-format off
  const std::vector<int> slots = {
      REGISTRY, S(ApplyUpdate), S(SetCanUpdata), S(GetUpdateVersionInfo), S(ApplyExternalMcuUpdate),
      S(ApplyMpuUpdate), S(ApplyUpdateAll)};
  // clang-format on
  EXPECT_EQ(slots, InOrder(14));
}

TEST(Slots, HLXUpdateListener) {
  using I = IHLXUpdateListener;
  // clang-format off
  const std::vector<int> slots = {
      S(OnDetectValidUpdateFileNotify), S(OnUpdateRequestResultInform), S(OnUpdateCanProcess),
      S(OnMcuUpdateStateNotify), S(OnMpuUpdateStateNotify), S(OnMcuUpdateProgressNotify),
      S(OnPackageStateChangeNotify)};
  // clang-format on
  EXPECT_EQ(slots, InOrder(7));
}

TEST(Slots, HLXConnectionListener) {
  using I = IHLXConnectionListener;
  EXPECT_EQ((std::vector<int>{S(OnServiceLost), S(OnServiceBack), S(OnBusLost)}), InOrder(3));
}

}  // namespace
