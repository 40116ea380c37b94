// The order of every virtual function of the public interfaces is binary interface: units in the field were compiled
// against it.
#include <gtest/gtest.h>

#include "HLXSystemProxy.h"
#include "tests/support/VtableSlot.h"

namespace {

struct Slot {
  const char* name;
  int slot;
};

void ExpectInOrder(std::initializer_list<Slot> slots) {
  int expected = 0;
  for (const Slot& slot : slots) EXPECT_EQ(slot.slot, ++expected) << slot.name;
}

#define SLOT(function) \
  Slot { #function, SlotOf(&function) }

TEST(Slots, HLXSystemPower) {
  ExpectInOrder({
      SLOT(IHLXSystemPower::AddListener),
      SLOT(IHLXSystemPower::RemoveListener),
      SLOT(IHLXSystemPower::GetListeners),
      SLOT(IHLXSystemPower::GetListenerCount),
      SLOT(IHLXSystemPower::LockListener),
      SLOT(IHLXSystemPower::UnlockListener),
      SLOT(IHLXSystemPower::OnListenerAdded),
      SLOT(IHLXSystemPower::OnListenerRemoved),
      SLOT(IHLXSystemPower::ShutDown),
      SLOT(IHLXSystemPower::Reset),
      SLOT(IHLXSystemPower::RequestPowerOffState),
      SLOT(IHLXSystemPower::GetRadioOnState),
      SLOT(IHLXSystemPower::IsScreenOnState),
      SLOT(IHLXSystemPower::IsAccOnState),
      SLOT(IHLXSystemPower::IsColdBootState),
      SLOT(IHLXSystemPower::SetPowerOffDelayTime),
      SLOT(IHLXSystemPower::GetPowerOffDelayTime),
      SLOT(IHLXSystemPower::GetRetainACCSec),
      SLOT(IHLXSystemPower::SetRetainACCSec),
      SLOT(IHLXSystemPower::SetBtCallState),
      SLOT(IHLXSystemPower::SetCarPlayPhoneState),
      SLOT(IHLXSystemPower::GetPowerWakeupType),
      SLOT(IHLXSystemPower::SetScreenLightOn),
      SLOT(IHLXSystemPower::SetScreenLightLevel),
      SLOT(IHLXSystemPower::SetColorType),
      SLOT(IHLXSystemPower::SetLedAnimation),
      SLOT(IHLXSystemPower::GetColorType),
      SLOT(IHLXSystemPower::GetLedAnimation),
      SLOT(IHLXSystemPower::ResetScreenBackLight),
      SLOT(IHLXSystemPower::GetCurScreenLightType),
      SLOT(IHLXSystemPower::GetScreenLightLevel),
      SLOT(IHLXSystemPower::GetScreenGammaLevel),
      SLOT(IHLXSystemPower::SetTempMaxScreenLightLevel),
      SLOT(IHLXSystemPower::GetDefaultScreenLightLevel),
      SLOT(IHLXSystemPower::GetDefaultScreenGammaLevel),
      SLOT(IHLXSystemPower::SetLightDetectStyle),
      SLOT(IHLXSystemPower::SetLightFixDayStyle),
      SLOT(IHLXSystemPower::IsLightAutoDetectStyle),
      SLOT(IHLXSystemPower::IsLightDayFixStyle),
      SLOT(IHLXSystemPower::SetButtonLightState),
      SLOT(IHLXSystemPower::SetButtonLightValue),
      SLOT(IHLXSystemPower::SetGammaValue),
      SLOT(IHLXSystemPower::ResetButtonBackLight),
      SLOT(IHLXSystemPower::GetButtonLightType),
      SLOT(IHLXSystemPower::GetCurButtonLightLevel),
      SLOT(IHLXSystemPower::SetPowerRvcStatus),
      SLOT(IHLXSystemPower::ConfirmPreRadioOffState),
      SLOT(IHLXSystemPower::GetMcuBootType),
      SLOT(IHLXSystemPower::GetHeadLightState),
  });
}

TEST(Slots, HLXPowerListener) {
  ExpectInOrder({
      SLOT(IHLXPowerListener::OnScreenStateChange),
      SLOT(IHLXPowerListener::OnRadioStateChange),
      SLOT(IHLXPowerListener::OnAccStateChange),
      SLOT(IHLXPowerListener::OnBatteryBootStateChange),
      SLOT(IHLXPowerListener::OnPowerOffDelayTimeChange),
      SLOT(IHLXPowerListener::OnPowerWakeupType),
      SLOT(IHLXPowerListener::OnAbnormalPowerAudioNotify),
      SLOT(IHLXPowerListener::OnAbnormalPowerUsbNotify),
      SLOT(IHLXPowerListener::OnPowerPreRadioOffNotify),
      SLOT(IHLXPowerListener::OnScreenLightLevelChanged),
      SLOT(IHLXPowerListener::OnScreenLightTypeChanged),
      SLOT(IHLXPowerListener::OnButtonLightLevelChanged),
      SLOT(IHLXPowerListener::OnButtonLightTypeChanged),
      SLOT(IHLXPowerListener::OnButtonColorChanged),
      SLOT(IHLXPowerListener::OnMcuBootTypeNotify),
      SLOT(IHLXPowerListener::OnMcuRequestDisplayUiAction),
      SLOT(IHLXPowerListener::OnHeadLightStateChange),
  });
}

TEST(Slots, HLXSystemMisc) {
  ExpectInOrder({
      SLOT(IHLXSystemMisc::AddListener),
      SLOT(IHLXSystemMisc::RemoveListener),
      SLOT(IHLXSystemMisc::GetListeners),
      SLOT(IHLXSystemMisc::GetListenerCount),
      SLOT(IHLXSystemMisc::LockListener),
      SLOT(IHLXSystemMisc::UnlockListener),
      SLOT(IHLXSystemMisc::OnListenerAdded),
      SLOT(IHLXSystemMisc::OnListenerRemoved),
      SLOT(IHLXSystemMisc::GetSpeakerState),
      SLOT(IHLXSystemMisc::SpeakerDetectStart),
      SLOT(IHLXSystemMisc::SpeakerDetectStop),
      SLOT(IHLXSystemMisc::GetCarSpeed),
      SLOT(IHLXSystemMisc::GetCarFloatSpeed),
      SLOT(IHLXSystemMisc::GetParkingState),
      SLOT(IHLXSystemMisc::IsHandBrakeTestOn),
      SLOT(IHLXSystemMisc::IsGPSAntennaCheckingOn),
      SLOT(IHLXSystemMisc::GetRadioAntState),
      SLOT(IHLXSystemMisc::GetGpsAntState),
      SLOT(IHLXSystemMisc::GetDABAntState),
      SLOT(IHLXSystemMisc::GetMicConnectState),
      SLOT(IHLXSystemMisc::SetRvcOffDelaySwitch),
      SLOT(IHLXSystemMisc::GetRvcOffDelayState),
      SLOT(IHLXSystemMisc::SetDrivePosition),
      SLOT(IHLXSystemMisc::SetOnSourceChange),
      SLOT(IHLXSystemMisc::SetOnTimeChange),
      SLOT(IHLXSystemMisc::SetOnRadioChange),
      SLOT(IHLXSystemMisc::SetOnTouchInfo),
      SLOT(IHLXSystemMisc::SetOnPSChange),
      SLOT(IHLXSystemMisc::SetOnMediaInfoChange),
      SLOT(IHLXSystemMisc::SetOnVolChange),
      SLOT(IHLXSystemMisc::SetOnPhoneInfoChange),
      SLOT(IHLXSystemMisc::IsDrivePositionLeft),
      SLOT(IHLXSystemMisc::SetHandbrakeCheckingSwitch),
      SLOT(IHLXSystemMisc::SetGPSAntennaCheckingSwitch),
      SLOT(IHLXSystemMisc::ResetFactoryMode),
      SLOT(IHLXSystemMisc::GetAcState),
      SLOT(IHLXSystemMisc::GetAirBlowMode),
      SLOT(IHLXSystemMisc::GetAirBlowLevel),
      SLOT(IHLXSystemMisc::GetDriverPositionTemperature),
      SLOT(IHLXSystemMisc::GetCopilotPositionTemperature),
      SLOT(IHLXSystemMisc::GetEnvironmentTemperature),
      SLOT(IHLXSystemMisc::GetDoorState),
      SLOT(IHLXSystemMisc::GetCurrentCarSpeed),
      SLOT(IHLXSystemMisc::GetAverageCarSpeed),
      SLOT(IHLXSystemMisc::GetTotalMile),
      SLOT(IHLXSystemMisc::GetEnduranceMile),
      SLOT(IHLXSystemMisc::GetStage_A_Mile),
      SLOT(IHLXSystemMisc::GetStage_B_Mile),
      SLOT(IHLXSystemMisc::GetCurrentFuel),
      SLOT(IHLXSystemMisc::GetAverageFuel),
      SLOT(IHLXSystemMisc::GetEngineRotateSpeed),
      SLOT(IHLXSystemMisc::GetCanVersion),
      SLOT(IHLXSystemMisc::GetSimpleEnvironmentTemperature),
      SLOT(IHLXSystemMisc::EnableCanBoxModule),
      SLOT(IHLXSystemMisc::GetCanBoxEnableStatus),
      SLOT(IHLXSystemMisc::EnableScreenShotControl),
      SLOT(IHLXSystemMisc::GetScreenShotStatus),
      SLOT(IHLXSystemMisc::SetScreenshot),
      {"SetLogo(unsigned int)", SlotOf(static_cast<bool (IHLXSystemMisc::*)(unsigned int)>(&IHLXSystemMisc::SetLogo))},
      {"SetLogo(SystemMisc::LogoInfo&)",
       SlotOf(static_cast<void (IHLXSystemMisc::*)(SystemMisc::LogoInfo&)>(&IHLXSystemMisc::SetLogo))},
      SLOT(IHLXSystemMisc::GetSimpleRVCSignalActived),
      SLOT(IHLXSystemMisc::GetFrontCameraActiveStatus),
      SLOT(IHLXSystemMisc::GetRearCameraActiveStatus),
      SLOT(IHLXSystemMisc::GetSystemTemperature),
      SLOT(IHLXSystemMisc::GetTFTTemperature),
      SLOT(IHLXSystemMisc::StartAutoTest),
      SLOT(IHLXSystemMisc::GetSystemLanguage),
      SLOT(IHLXSystemMisc::GetUrgentMuteState),
      SLOT(IHLXSystemMisc::GetRadioRegion),
      SLOT(IHLXSystemMisc::GetSpeakersAmount),
      SLOT(IHLXSystemMisc::GetSteelMateRadarInfo),
  });
}

TEST(Slots, HLXSystemMiscListener) {
  ExpectInOrder({
      SLOT(IHLXSystemMiscListener::OnSpeakerStateChange),
      SLOT(IHLXSystemMiscListener::OnCarSpeedChange),
      SLOT(IHLXSystemMiscListener::OnCarFloatSpeedChange),
      SLOT(IHLXSystemMiscListener::OnParkingStateChange),
      SLOT(IHLXSystemMiscListener::OnRadioAntStateChange),
      SLOT(IHLXSystemMiscListener::OnGpsAntStateChange),
      SLOT(IHLXSystemMiscListener::OnDABAntStateChange),
      SLOT(IHLXSystemMiscListener::OnMicConnectStateChange),
      SLOT(IHLXSystemMiscListener::OnFactoryResetMode),
      SLOT(IHLXSystemMiscListener::OnAcStateChange),
      SLOT(IHLXSystemMiscListener::OnAirBlowModeChange),
      SLOT(IHLXSystemMiscListener::OnAirLevelChange),
      SLOT(IHLXSystemMiscListener::OnTempDriverChange),
      SLOT(IHLXSystemMiscListener::OnTempCopilotChange),
      SLOT(IHLXSystemMiscListener::OnTempEnvironmentChange),
      SLOT(IHLXSystemMiscListener::OnDoorStateChange),
      SLOT(IHLXSystemMiscListener::OnCurrentSpeedChange),
      SLOT(IHLXSystemMiscListener::OnCurrentSpeedChange_Raise),
      SLOT(IHLXSystemMiscListener::OnAverageSpeedChange),
      SLOT(IHLXSystemMiscListener::OnTotalMileChange),
      SLOT(IHLXSystemMiscListener::OnEnduranceMileChange),
      SLOT(IHLXSystemMiscListener::OnTotalMileChange_Raise),
      SLOT(IHLXSystemMiscListener::OnEnduranceMileChange_Raise),
      SLOT(IHLXSystemMiscListener::OnStage_A_MileChange),
      SLOT(IHLXSystemMiscListener::OnStage_B_MileChange),
      SLOT(IHLXSystemMiscListener::OnCurrentFuelChange),
      SLOT(IHLXSystemMiscListener::OnAverageFuelChange),
      SLOT(IHLXSystemMiscListener::OnRotateSpeedChange),
      SLOT(IHLXSystemMiscListener::OnKeyStateChange),
      SLOT(IHLXSystemMiscListener::OnRaiseGacKnobKeyChange),
      SLOT(IHLXSystemMiscListener::OnRaiseGacPanelKeyChange),
      SLOT(IHLXSystemMiscListener::OnRadarInfoChange),
      SLOT(IHLXSystemMiscListener::OnSimpleRVCSignalChange),
      SLOT(IHLXSystemMiscListener::OnSimpleAirModeChange),
      SLOT(IHLXSystemMiscListener::OnRaiseGacAcStateChange),
      SLOT(IHLXSystemMiscListener::OnRaiseGacRadarInfoChange),
      SLOT(IHLXSystemMiscListener::OnRaiseVWSteeringWheelAngelChange),
      SLOT(IHLXSystemMiscListener::OnRaiseRenaultAcStateChange),
      SLOT(IHLXSystemMiscListener::OnGeneralAcStateChange),
      SLOT(IHLXSystemMiscListener::OnGeneralAirLevelChange),
      SLOT(IHLXSystemMiscListener::OnGeneralLeftTempChange),
      SLOT(IHLXSystemMiscListener::OnGeneralRightTempChange),
      SLOT(IHLXSystemMiscListener::OnCameraStateChange),
      SLOT(IHLXSystemMiscListener::OnSystemTempChange),
      SLOT(IHLXSystemMiscListener::OnTFTTempChange),
      SLOT(IHLXSystemMiscListener::OnSystemLanguageChange),
      SLOT(IHLXSystemMiscListener::OnUrgentMuteStateChange),
      SLOT(IHLXSystemMiscListener::OnRadioRegionChange),
      SLOT(IHLXSystemMiscListener::OnRadioPresetChange),
      SLOT(IHLXSystemMiscListener::OnSpeakerAmountChange),
      SLOT(IHLXSystemMiscListener::OnSteelMateRadarInfoChange),
  });
}

TEST(Slots, HLXSystemTime) {
  ExpectInOrder({
      SLOT(IHLXSystemTime::AddListener),          SLOT(IHLXSystemTime::RemoveListener),
      SLOT(IHLXSystemTime::GetListeners),         SLOT(IHLXSystemTime::GetListenerCount),
      SLOT(IHLXSystemTime::LockListener),         SLOT(IHLXSystemTime::UnlockListener),
      SLOT(IHLXSystemTime::OnListenerAdded),      SLOT(IHLXSystemTime::OnListenerRemoved),
      SLOT(IHLXSystemTime::GetTime24Mode),        SLOT(IHLXSystemTime::SetTime24Mode),
      SLOT(IHLXSystemTime::GetAutoSyncMode),      SLOT(IHLXSystemTime::SetAutoSyncMode),
      SLOT(IHLXSystemTime::GetAutoAdjustDstMode), SLOT(IHLXSystemTime::SetAutoAdjustDstMode),
      SLOT(IHLXSystemTime::GetCurDateInfo),       SLOT(IHLXSystemTime::SetCurDate),
      SLOT(IHLXSystemTime::GetCurTimeInfo),       SLOT(IHLXSystemTime::SetCurTime),
      SLOT(IHLXSystemTime::GetAllZoneInfo),       SLOT(IHLXSystemTime::GetZoneNode),
      SLOT(IHLXSystemTime::SetTimeZone),          SLOT(IHLXSystemTime::GetCurTimeZone),
      SLOT(IHLXSystemTime::IsCurZoneDstActive),   SLOT(IHLXSystemTime::SetGpsUTCTimeSync),
      SLOT(IHLXSystemTime::SetCarplayTimeSync),   SLOT(IHLXSystemTime::GetExtMcuCanTime24Mode),
      SLOT(IHLXSystemTime::GetExtMcuCanTimeZone), SLOT(IHLXSystemTime::GetExtMcuCanDateTimeInfo),
  });
}

TEST(Slots, HLXSystemTimeListener) {
  ExpectInOrder({
      SLOT(IHLXSystemTimeListener::OnDateInfoChange),
      SLOT(IHLXSystemTimeListener::On24TimeModeChange),
      SLOT(IHLXSystemTimeListener::OnDstStatusChange),
      SLOT(IHLXSystemTimeListener::OnExternalMcuTimeChange),
      SLOT(IHLXSystemTimeListener::OnExternalMcu24TimeModeChange),
      SLOT(IHLXSystemTimeListener::OnExternalMcuTimeZoneChange),
  });
}

TEST(Slots, HLXSystemInfo) {
  ExpectInOrder({
      SLOT(IHLXSystemInfo::GetModelInfo),
      SLOT(IHLXSystemInfo::GetDriveType),
      SLOT(IHLXSystemInfo::GetFuelType),
      SLOT(IHLXSystemInfo::GetEngineType),
      SLOT(IHLXSystemInfo::GetMfiPPID),
      SLOT(IHLXSystemInfo::GetLocalVersionInfo),
      SLOT(IHLXSystemInfo::GetScreenPixels),
      SLOT(IHLXSystemInfo::GetScreenPhysical),
      SLOT(IHLXSystemInfo::GetScreenInfo),
      SLOT(IHLXSystemInfo::GetMcuVersion),
      SLOT(IHLXSystemInfo::GetEmmcId),
  });
}

TEST(Slots, HLXSystemUpdate) {
  ExpectInOrder({
      SLOT(IHLXSystemUpdate::AddListener),
      SLOT(IHLXSystemUpdate::RemoveListener),
      SLOT(IHLXSystemUpdate::GetListeners),
      SLOT(IHLXSystemUpdate::GetListenerCount),
      SLOT(IHLXSystemUpdate::LockListener),
      SLOT(IHLXSystemUpdate::UnlockListener),
      SLOT(IHLXSystemUpdate::OnListenerAdded),
      SLOT(IHLXSystemUpdate::OnListenerRemoved),
      SLOT(IHLXSystemUpdate::ApplyUpdate),
      SLOT(IHLXSystemUpdate::SetCanUpdata),
      SLOT(IHLXSystemUpdate::GetUpdateVersionInfo),
      SLOT(IHLXSystemUpdate::ApplyExternalMcuUpdate),
      SLOT(IHLXSystemUpdate::ApplyMpuUpdate),
      SLOT(IHLXSystemUpdate::ApplyUpdateAll),
  });
}

TEST(Slots, HLXUpdateListener) {
  ExpectInOrder({
      SLOT(IHLXUpdateListener::OnDetectValidUpdateFileNotify),
      SLOT(IHLXUpdateListener::OnUpdateRequestResultInform),
      SLOT(IHLXUpdateListener::OnUpdateCanProcess),
      SLOT(IHLXUpdateListener::OnMcuUpdateStateNotify),
      SLOT(IHLXUpdateListener::OnMpuUpdateStateNotify),
      SLOT(IHLXUpdateListener::OnMcuUpdateProgressNotify),
      SLOT(IHLXUpdateListener::OnPackageStateChangeNotify),
  });
}

}  // namespace
