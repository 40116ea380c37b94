#include "client/dispatch/SignalTable.h"

#include <type_traits>

#include "client/DispatchGate.h"
#include "client/dispatch/SignalDispatch.h"
#include "client/misc/HLXMiscClient.h"
#include "client/power/HLXPowerClient.h"
#include "client/time/HLXTimeClient.h"
#include "client/update/HLXUpdateClient.h"

namespace {

/// The C type in which an argument of a client's method arrives: enumerations are bytes on the bus, but for the update
/// states.
template <auto Method, class T>
struct WireType {
  using type = std::conditional_t<std::is_enum_v<T>, guchar, T>;
};
template <auto Method>
struct WireType<Method, HLXUpdate::UpdateState> {
  using type = gint;
};
template <auto Method>
struct WireType<Method, HLXUpdate::UpdatePackageState> {
  using type = gint;
};
template <>
struct WireType<&HLXMiscClient::OnEnduranceMileChange_Raise, unsigned int> {
  using type = gint;  // passed on bit for bit
};

template <class T>
constexpr char Signature() {
  if constexpr (std::is_same_v<T, guchar>) return 'y';
  if constexpr (std::is_same_v<T, gint>) return 'i';
  if constexpr (std::is_same_v<T, guint>) return 'u';
  if constexpr (std::is_same_v<T, gdouble>) return 'd';
  return '\0';
}

/// From a signal of the proxy to the method of the client that owns the state; without that client it is dropped.
template <auto Method>
struct Relay;
template <class Client, class... A, void (Client::*Method)(A...)>
struct Relay<Method> {
  static_assert(((Signature<typename WireType<Method, A>::type>() != '\0') && ...), "a type that no signal carries");

  static gboolean Run(ComVornLinuxSystem* /*proxy*/, typename WireType<Method, A>::type... args, gpointer adapter) {
    const DispatchGate::Pass pass(adapter);
    if (!pass) return TRUE;
    if (Client* const client = SignalDispatch::From(adapter)->Get<Client>()) {
      (client->*Method)(static_cast<A>(args)...);
    }
    return TRUE;
  }

  static SignalRow Row(const char* name) {
    return {name, G_CALLBACK(Run), {Signature<typename WireType<Method, A>::type>()..., '\0'}};
  }
};

template <auto Method>
SignalRow Row(const char* name) {
  return Relay<Method>::Row(name);
}

}  // namespace

const std::array<SignalRow, 76>& SignalTable() {
  // clang-format off
  static const std::array rows = {
    Row<&HLXUpdateClient::OnAsyncDetectValidUpdateFileNotify>("detect-valid-update-file-notify-signal"),
    Row<&HLXUpdateClient::OnUpdateRequestResultInform>("update-request-result-inform-signal"),
    Row<&HLXUpdateClient::OnUpdateCanProcess>("update-can-process"),
    Row<&HLXUpdateClient::OnMcuUpdateStateNotify>("on-mcu-update-state-notify"),
    Row<&HLXUpdateClient::OnMpuUpdateStateNotify>("on-mpu-update-state-notify"),
    Row<&HLXUpdateClient::OnMcuUpdateProgressNotify>("on-mcu-update-progress-notify"),
    Row<&HLXUpdateClient::OnPackageStateChangeNotify>("on-package-state-change-notify"),
    Row<&HLXPowerClient::OnScreenStateChange>("screen-state-change-signal"),
    Row<&HLXPowerClient::OnRadioStateChange>("radio-state-change-signal"),
    Row<&HLXPowerClient::OnAccStateChange>("acc-state-change-signal"),
    Row<&HLXPowerClient::OnPowerOffDelayTimeChange>("power-off-delay-time-change-signal"),
    Row<&HLXPowerClient::OnScreenLightLevelChanged>("screen-light-level-changed-signal"),
    Row<&HLXPowerClient::OnScreenLightTypeChanged>("screen-light-type-changed-signal"),
    Row<&HLXPowerClient::OnButtonLightLevelChanged>("button-light-level-changed-signal"),
    Row<&HLXPowerClient::OnButtonColorChanged>("button-color-changed-signal"),
    Row<&HLXPowerClient::OnButtonLightTypeChanged>("button-light-type-changed-signal"),
    Row<&HLXMiscClient::OnSpeakerStateChange>("speaker-state-change-signal"),
    Row<&HLXMiscClient::OnCarSpeedChange>("car-speed-change-signal"),
    Row<&HLXMiscClient::OnCarFloatSpeedChange>("car-float-speed-change-signal"),
    Row<&HLXMiscClient::OnParkingStateChange>("parking-state-change-signal"),
    Row<&HLXMiscClient::OnRadioAntStateChange>("radio-ant-state-change-signal"),
    Row<&HLXMiscClient::OnGpsAntStateChange>("gps-ant-state-change-signal"),
    Row<&HLXMiscClient::OnDABAntStateChange>("dabant-state-change-signal"),
    Row<&HLXMiscClient::OnMicConnectStateChange>("mic-connect-state-change-signal"),
    Row<&HLXTimeClient::OnDateInfoChange>("on-date-info-change-signal"),
    Row<&HLXTimeClient::OnExternalMcuTimeChange>("on-external-mcu-time-change-signal"),
    Row<&HLXTimeClient::On24TimeModeChange>("on24-time-mode-change-signal"),
    Row<&HLXPowerClient::OnBatteryBootStateChange>("battery-boot-state-change-signal"),
    Row<&HLXTimeClient::OnDstStatusChange>("on-dst-status-change-signal"),
    Row<&HLXMiscClient::OnFactoryResetMode>("on-factory-reset-mode-signal"),
    Row<&HLXPowerClient::OnPowerWakeupType>("on-power-wakeup-type-signal"),
    Row<&HLXPowerClient::OnAbnormalPowerAudioNotify>("abnormal-power-audio-notify-signal"),
    Row<&HLXPowerClient::OnAbnormalPowerUsbNotify>("abnormal-power-usb-notify-signal"),
    Row<&HLXPowerClient::OnPowerPreRadioOffNotify>("on-power-pre-radio-off-notify"),
    Row<&HLXPowerClient::OnMcuBootTypeNotify>("on-mcu-boot-type-notify-signal"),
    Row<&HLXPowerClient::OnMcuRequestDisplayUiAction>("on-mcu-request-display-ui-action-signal"),
    Row<&HLXPowerClient::OnHeadLightStateChange>("on-head-light-state-change"),
    Row<&HLXMiscClient::OnAcStateChange>("ac-state-change-signal"),
    Row<&HLXMiscClient::OnAirBlowModeChange>("air-blow-mode-change-signal"),
    Row<&HLXMiscClient::OnAirLevelChange>("air-level-change-signal"),
    Row<&HLXMiscClient::OnTempDriverChange>("temp-driver-change-signal"),
    Row<&HLXMiscClient::OnTempCopilotChange>("temp-copilot-change-signal"),
    Row<&HLXMiscClient::OnTempEnvironmentChange>("temp-env-change-signal"),
    Row<&HLXMiscClient::OnDoorStateChange>("door-state-change-signal"),
    Row<&HLXMiscClient::OnKeyStateChange>("key-state-change-signal"),
    Row<&HLXMiscClient::OnCurrentSpeedChange>("cur-speed-change-signal"),
    Row<&HLXMiscClient::OnCurrentSpeedChange_Raise>("cur-speed-change-signal-raise"),
    Row<&HLXMiscClient::OnAverageSpeedChange>("avr-speed-change-signal"),
    Row<&HLXMiscClient::OnTotalMileChange>("mile-total-change-signal"),
    Row<&HLXMiscClient::OnEnduranceMileChange>("mile-endurance-change-signal"),
    Row<&HLXMiscClient::OnTotalMileChange_Raise>("mile-total-change-signal-raise"),
    Row<&HLXMiscClient::OnEnduranceMileChange_Raise>("mile-endurance-change-signal-raise"),
    Row<&HLXMiscClient::OnStage_A_MileChange>("mile-stage-achange-signal"),
    Row<&HLXMiscClient::OnStage_B_MileChange>("mile-stage-bchange-signal"),
    Row<&HLXMiscClient::OnCurrentFuelChange>("cur-fuel-change-signal"),
    Row<&HLXMiscClient::OnAverageFuelChange>("avr-fuel-change-signal"),
    Row<&HLXMiscClient::OnRotateSpeedChange>("rotate-speed-change-signal"),
    Row<&HLXMiscClient::OnRadarInfoChange>("on-radar-info-changed-signal"),
    Row<&HLXMiscClient::OnSimpleRVCSignalChange>("on-simple-rvcsignal"),
    Row<&HLXMiscClient::OnSimpleAirModeChange>("simple-air-mode-change-signal"),
    Row<&HLXMiscClient::OnRaiseGacAcStateChange>("raise-gac-ac-state-change-signal"),
    Row<&HLXMiscClient::OnRaiseGacRadarInfoChange>("on-raise-gac-radar-info-changed-signal"),
    Row<&HLXMiscClient::OnRaiseVWSteeringWheelAngelChange>("raise-vwsteering-wheel-angel-change-signal"),
    Row<&HLXMiscClient::OnGeneralAcStateChange>("on-general-ac-state-change-signal"),
    Row<&HLXMiscClient::OnGeneralAirLevelChange>("on-general-air-level-change-signal"),
    Row<&HLXMiscClient::OnGeneralLeftTempChange>("on-general-left-temp-change-signal"),
    Row<&HLXMiscClient::OnGeneralRightTempChange>("on-general-right-temp-change-signal"),
    Row<&HLXMiscClient::OnCameraStateChange>("on-camera-state-change-signal"),
    Row<&HLXMiscClient::OnSystemTempChange>("on-system-temp-change"),
    Row<&HLXMiscClient::OnTFTTempChange>("on-tfttemp-change"),
    Row<&HLXMiscClient::OnSystemLanguageChange>("on-system-language-change-signal"),
    Row<&HLXMiscClient::OnUrgentMuteStateChange>("on-urgent-mute-state-change-signal"),
    Row<&HLXMiscClient::OnRadioRegionChange>("on-radio-region-change-signal"),
    Row<&HLXMiscClient::OnRadioPresetChange>("on-radio-preset-change-signal"),
    Row<&HLXMiscClient::OnSpeakerAmountChange>("on-speaker-amount-change-signal"),
    Row<&HLXMiscClient::OnSteelMateRadarInfoChange>("on_steel_mate_radar_info_changed_signal"),
  };
  // clang-format on
  return rows;
}
