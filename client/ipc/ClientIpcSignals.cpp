#include <type_traits>

#include "client/DispatchGate.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/ipc/SignalTable.h"
#include "client/misc/HLXMiscClient.h"
#include "client/power/HLXPowerClient.h"
#include "client/time/HLXTimeClient.h"
#include "client/update/HLXUpdateClient.h"

namespace {

/// The C type in which a relay's argument arrives: enumerations are bytes on the bus, but for the update states.
template <class T>
struct WireType {
  using type = std::conditional_t<std::is_enum_v<T>, guchar, T>;
};
template <>
struct WireType<HLXUpdate::UpdateState> {
  using type = gint;
};
template <>
struct WireType<HLXUpdate::UpdatePackageState> {
  using type = gint;
};
template <class T>
using Wire = typename WireType<T>::type;

/// The handler that GLib calls for a relay's signal.
template <auto Relay>
struct Handler;
template <class... A, void (ClientIpcAdapter::*Relay)(A...)>
struct Handler<Relay> {
  static gboolean Run(ComVornLinuxSystem* /*proxy*/, Wire<A>... args, gpointer self) {
    const DispatchGate::Pass pass(self);
    if (pass) (static_cast<ClientIpcAdapter*>(self)->*Relay)(static_cast<A>(args)...);
    return TRUE;
  }
};

template <class T>
constexpr char Signature() {
  if constexpr (std::is_same_v<T, guchar>) return 'y';
  if constexpr (std::is_same_v<T, gint>) return 'i';
  if constexpr (std::is_same_v<T, guint>) return 'u';
  if constexpr (std::is_same_v<T, gdouble>) return 'd';
}

template <class... A>
SignalRow MakeRow(const char* name, GCallback handler, void (ClientIpcAdapter::*)(A...)) {
  return {name, handler, {Signature<Wire<A>>()..., '\0'}};
}

template <auto Relay>
SignalRow Row(const char* name) {
  return MakeRow(name, G_CALLBACK(Handler<Relay>::Run), Relay);
}

/// Calls `handler` of the client behind `slot`; without a client the signal is dropped.
template <class Client, class... Params, class... Args>
void Relay(const std::atomic<Client*>& slot, void (Client::*handler)(Params...), Args... args) {
  if (Client* const client = slot.load()) (client->*handler)(static_cast<Params>(args)...);
}

}  // namespace

const std::vector<SignalRow>& SignalTable() {
  // clang-format off
  static const std::vector<SignalRow> rows = {
    Row<&ClientIpcAdapter::OnDetectValidUpdateFileNotify>("detect-valid-update-file-notify-signal"),
    Row<&ClientIpcAdapter::OnUpdateRequestResultInform>("update-request-result-inform-signal"),
    Row<&ClientIpcAdapter::OnUpdateCanProcess>("update-can-process"),
    Row<&ClientIpcAdapter::OnMcuUpdateStateNotify>("on-mcu-update-state-notify"),
    Row<&ClientIpcAdapter::OnMpuUpdateStateNotify>("on-mpu-update-state-notify"),
    Row<&ClientIpcAdapter::OnMcuUpdateProgressNotify>("on-mcu-update-progress-notify"),
    Row<&ClientIpcAdapter::OnPackageStateChangeNotify>("on-package-state-change-notify"),
    Row<&ClientIpcAdapter::OnScreenStateChange>("screen-state-change-signal"),
    Row<&ClientIpcAdapter::OnRadioStateChange>("radio-state-change-signal"),
    Row<&ClientIpcAdapter::OnAccStateChange>("acc-state-change-signal"),
    Row<&ClientIpcAdapter::OnPowerOffDelayTimeChange>("power-off-delay-time-change-signal"),
    Row<&ClientIpcAdapter::OnScreenLightLevelChanged>("screen-light-level-changed-signal"),
    Row<&ClientIpcAdapter::OnScreenLightTypeChanged>("screen-light-type-changed-signal"),
    Row<&ClientIpcAdapter::OnButtonLightLevelChanged>("button-light-level-changed-signal"),
    Row<&ClientIpcAdapter::OnButtonColorChanged>("button-color-changed-signal"),
    Row<&ClientIpcAdapter::OnButtonLightTypeChanged>("button-light-type-changed-signal"),
    Row<&ClientIpcAdapter::OnSpeakerStateChange>("speaker-state-change-signal"),
    Row<&ClientIpcAdapter::OnCarSpeedChange>("car-speed-change-signal"),
    Row<&ClientIpcAdapter::OnCarFloatSpeedChange>("car-float-speed-change-signal"),
    Row<&ClientIpcAdapter::OnParkingStateChange>("parking-state-change-signal"),
    Row<&ClientIpcAdapter::OnRadioAntStateChange>("radio-ant-state-change-signal"),
    Row<&ClientIpcAdapter::OnGpsAntStateChange>("gps-ant-state-change-signal"),
    Row<&ClientIpcAdapter::OnDABAntStateChange>("dabant-state-change-signal"),
    Row<&ClientIpcAdapter::OnMicConnectStateChange>("mic-connect-state-change-signal"),
    Row<&ClientIpcAdapter::OnDateInfoChange>("on-date-info-change-signal"),
    Row<&ClientIpcAdapter::OnExternalMcuTimeChange>("on-external-mcu-time-change-signal"),
    Row<&ClientIpcAdapter::On24TimeModeChange>("on24-time-mode-change-signal"),
    Row<&ClientIpcAdapter::OnBatteryBootStateChange>("battery-boot-state-change-signal"),
    Row<&ClientIpcAdapter::OnDstStatusChange>("on-dst-status-change-signal"),
    Row<&ClientIpcAdapter::OnFactoryResetMode>("on-factory-reset-mode-signal"),
    Row<&ClientIpcAdapter::OnPowerWakeupType>("on-power-wakeup-type-signal"),
    Row<&ClientIpcAdapter::OnAbnormalPowerAudioNotify>("abnormal-power-audio-notify-signal"),
    Row<&ClientIpcAdapter::OnAbnormalPowerUsbNotify>("abnormal-power-usb-notify-signal"),
    Row<&ClientIpcAdapter::OnPowerPreRadioOffNotify>("on-power-pre-radio-off-notify"),
    Row<&ClientIpcAdapter::OnMcuBootTypeNotify>("on-mcu-boot-type-notify-signal"),
    Row<&ClientIpcAdapter::OnMcuRequestDisplayUiAction>("on-mcu-request-display-ui-action-signal"),
    Row<&ClientIpcAdapter::OnHeadLightStateChange>("on-head-light-state-change"),
    Row<&ClientIpcAdapter::OnAcStateChange>("ac-state-change-signal"),
    Row<&ClientIpcAdapter::OnAirBlowModeChange>("air-blow-mode-change-signal"),
    Row<&ClientIpcAdapter::OnAirLevelChange>("air-level-change-signal"),
    Row<&ClientIpcAdapter::OnTempDriverChange>("temp-driver-change-signal"),
    Row<&ClientIpcAdapter::OnTempCopilotChange>("temp-copilot-change-signal"),
    Row<&ClientIpcAdapter::OnTempEnvironmentChange>("temp-env-change-signal"),
    Row<&ClientIpcAdapter::OnDoorStateChange>("door-state-change-signal"),
    Row<&ClientIpcAdapter::OnKeyStateChange>("key-state-change-signal"),
    Row<&ClientIpcAdapter::OnCurrentSpeedChange>("cur-speed-change-signal"),
    Row<&ClientIpcAdapter::OnCurrentSpeedChange_Raise>("cur-speed-change-signal-raise"),
    Row<&ClientIpcAdapter::OnAverageSpeedChange>("avr-speed-change-signal"),
    Row<&ClientIpcAdapter::OnTotalMileChange>("mile-total-change-signal"),
    Row<&ClientIpcAdapter::OnEnduranceMileChange>("mile-endurance-change-signal"),
    Row<&ClientIpcAdapter::OnTotalMileChange_Raise>("mile-total-change-signal-raise"),
    Row<&ClientIpcAdapter::OnEnduranceMileChange_Raise>("mile-endurance-change-signal-raise"),
    Row<&ClientIpcAdapter::OnStage_A_MileChange>("mile-stage-achange-signal"),
    Row<&ClientIpcAdapter::OnStage_B_MileChange>("mile-stage-bchange-signal"),
    Row<&ClientIpcAdapter::OnCurrentFuelChange>("cur-fuel-change-signal"),
    Row<&ClientIpcAdapter::OnAverageFuelChange>("avr-fuel-change-signal"),
    Row<&ClientIpcAdapter::OnRotateSpeedChange>("rotate-speed-change-signal"),
    Row<&ClientIpcAdapter::OnRadarInfoChange>("on-radar-info-changed-signal"),
    Row<&ClientIpcAdapter::OnSimpleRVCSignalChange>("on-simple-rvcsignal"),
    Row<&ClientIpcAdapter::OnSimpleAirModeChange>("simple-air-mode-change-signal"),
    Row<&ClientIpcAdapter::OnRaiseGacAcStateChange>("raise-gac-ac-state-change-signal"),
    Row<&ClientIpcAdapter::OnRaiseGacRadarInfoChange>("on-raise-gac-radar-info-changed-signal"),
    Row<&ClientIpcAdapter::OnRaiseVWSteeringWheelAngelChange>("raise-vwsteering-wheel-angel-change-signal"),
    Row<&ClientIpcAdapter::OnGeneralAcStateChange>("on-general-ac-state-change-signal"),
    Row<&ClientIpcAdapter::OnGeneralAirLevelChange>("on-general-air-level-change-signal"),
    Row<&ClientIpcAdapter::OnGeneralLeftTempChange>("on-general-left-temp-change-signal"),
    Row<&ClientIpcAdapter::OnGeneralRightTempChange>("on-general-right-temp-change-signal"),
    Row<&ClientIpcAdapter::OnCameraStateChange>("on-camera-state-change-signal"),
    Row<&ClientIpcAdapter::OnSystemTempChange>("on-system-temp-change"),
    Row<&ClientIpcAdapter::OnTFTTempChange>("on-tfttemp-change"),
    Row<&ClientIpcAdapter::OnSystemLanguageChange>("on-system-language-change-signal"),
    Row<&ClientIpcAdapter::OnUrgentMuteStateChange>("on-urgent-mute-state-change-signal"),
    Row<&ClientIpcAdapter::OnRadioRegionChange>("on-radio-region-change-signal"),
    Row<&ClientIpcAdapter::OnRadioPresetChange>("on-radio-preset-change-signal"),
    Row<&ClientIpcAdapter::OnSpeakerAmountChange>("on-speaker-amount-change-signal"),
    Row<&ClientIpcAdapter::OnSteelMateRadarInfoChange>("on_steel_mate_radar_info_changed_signal"),
  };
  // clang-format on
  return rows;
}

void ClientIpcAdapter::ConnectDBusSignal() {
  for (const SignalRow& row : SignalTable()) {
    g_signal_connect_data(proxy_.load(), row.name, row.handler, this, nullptr, static_cast<GConnectFlags>(0));
  }
}

void ClientIpcAdapter::OnDetectValidUpdateFileNotify(HLXUpdate::UpdateNotifyResult result) {
  Relay(update_client_, &HLXUpdateClient::OnAsyncDetectValidUpdateFileNotify, result);
}
void ClientIpcAdapter::OnUpdateRequestResultInform(HLXUpdate::OpResult result) {
  Relay(update_client_, &HLXUpdateClient::OnUpdateRequestResultInform, result);
}
void ClientIpcAdapter::OnUpdateCanProcess(int canProcess) {
  Relay(update_client_, &HLXUpdateClient::OnUpdateCanProcess, canProcess);
}
void ClientIpcAdapter::OnMcuUpdateStateNotify(HLXUpdate::UpdateState state) {
  Relay(update_client_, &HLXUpdateClient::OnMcuUpdateStateNotify, state);
}
void ClientIpcAdapter::OnMpuUpdateStateNotify(HLXUpdate::UpdateState state) {
  Relay(update_client_, &HLXUpdateClient::OnMpuUpdateStateNotify, state);
}
void ClientIpcAdapter::OnMcuUpdateProgressNotify(unsigned int progress) {
  Relay(update_client_, &HLXUpdateClient::OnMcuUpdateProgressNotify, progress);
}
void ClientIpcAdapter::OnPackageStateChangeNotify(HLXUpdate::UpdatePackageState state) {
  Relay(update_client_, &HLXUpdateClient::OnPackageStateChangeNotify, state);
}
void ClientIpcAdapter::OnScreenStateChange(int isScreenOn) {
  Relay(power_client_, &HLXPowerClient::OnScreenStateChange, isScreenOn);
}
void ClientIpcAdapter::OnRadioStateChange(HLXPower::RadioState state) {
  Relay(power_client_, &HLXPowerClient::OnRadioStateChange, state);
}
void ClientIpcAdapter::OnAccStateChange(int isAccOn) {
  Relay(power_client_, &HLXPowerClient::OnAccStateChange, isAccOn);
}
void ClientIpcAdapter::OnPowerOffDelayTimeChange(unsigned char time) {
  Relay(power_client_, &HLXPowerClient::OnPowerOffDelayTimeChange, time);
}
void ClientIpcAdapter::OnScreenLightLevelChanged(HLXPower::LightType type, unsigned char level) {
  Relay(power_client_, &HLXPowerClient::OnScreenLightLevelChanged, type, level);
}
void ClientIpcAdapter::OnScreenLightTypeChanged(HLXPower::LightType type) {
  Relay(power_client_, &HLXPowerClient::OnScreenLightTypeChanged, type);
}
void ClientIpcAdapter::OnButtonLightLevelChanged(HLXPower::LightType type, unsigned char level) {
  Relay(power_client_, &HLXPowerClient::OnButtonLightLevelChanged, type, level);
}
void ClientIpcAdapter::OnButtonColorChanged(HLXPower::ColorType type) {
  Relay(power_client_, &HLXPowerClient::OnButtonColorChanged, type);
}
void ClientIpcAdapter::OnButtonLightTypeChanged(HLXPower::LightType type) {
  Relay(power_client_, &HLXPowerClient::OnButtonLightTypeChanged, type);
}
void ClientIpcAdapter::OnSpeakerStateChange() { Relay(misc_client_, &HLXMiscClient::OnSpeakerStateChange); }
void ClientIpcAdapter::OnCarSpeedChange(unsigned int speed) {
  Relay(misc_client_, &HLXMiscClient::OnCarSpeedChange, speed);
}
void ClientIpcAdapter::OnCarFloatSpeedChange(double speed) {
  Relay(misc_client_, &HLXMiscClient::OnCarFloatSpeedChange, speed);
}
void ClientIpcAdapter::OnParkingStateChange(int isParking) {
  Relay(misc_client_, &HLXMiscClient::OnParkingStateChange, isParking);
}
void ClientIpcAdapter::OnRadioAntStateChange(SystemMisc::AntState state) {
  Relay(misc_client_, &HLXMiscClient::OnRadioAntStateChange, state);
}
void ClientIpcAdapter::OnGpsAntStateChange(SystemMisc::AntState state) {
  Relay(misc_client_, &HLXMiscClient::OnGpsAntStateChange, state);
}
void ClientIpcAdapter::OnDABAntStateChange(SystemMisc::AntState state) {
  Relay(misc_client_, &HLXMiscClient::OnDABAntStateChange, state);
}
void ClientIpcAdapter::OnMicConnectStateChange(SystemMisc::AntState state) {
  Relay(misc_client_, &HLXMiscClient::OnMicConnectStateChange, state);
}
void ClientIpcAdapter::OnDateInfoChange(unsigned char type) {
  Relay(time_client_, &HLXTimeClient::OnDateInfoChange, type);
}
void ClientIpcAdapter::OnExternalMcuTimeChange(unsigned char parm) {
  Relay(time_client_, &HLXTimeClient::OnExternalMcuTimeChange, parm);
}
void ClientIpcAdapter::On24TimeModeChange(int is24Mode) {
  Relay(time_client_, &HLXTimeClient::On24TimeModeChange, is24Mode);
}
void ClientIpcAdapter::OnBatteryBootStateChange(int isColdBoot) {
  Relay(power_client_, &HLXPowerClient::OnBatteryBootStateChange, isColdBoot);
}
void ClientIpcAdapter::OnDstStatusChange(int isDst) { Relay(time_client_, &HLXTimeClient::OnDstStatusChange, isDst); }
void ClientIpcAdapter::OnFactoryResetMode() { Relay(misc_client_, &HLXMiscClient::OnFactoryResetMode); }
void ClientIpcAdapter::OnPowerWakeupType(HLXPower::PowerWakeupType type) {
  Relay(power_client_, &HLXPowerClient::OnPowerWakeupType, type);
}
void ClientIpcAdapter::OnAbnormalPowerAudioNotify(unsigned char param) {
  Relay(power_client_, &HLXPowerClient::OnAbnormalPowerAudioNotify, param);
}
void ClientIpcAdapter::OnAbnormalPowerUsbNotify(unsigned char param) {
  Relay(power_client_, &HLXPowerClient::OnAbnormalPowerUsbNotify, param);
}
void ClientIpcAdapter::OnPowerPreRadioOffNotify() { Relay(power_client_, &HLXPowerClient::OnPowerPreRadioOffNotify); }
void ClientIpcAdapter::OnMcuBootTypeNotify(HLXPower::BootReason reason) {
  Relay(power_client_, &HLXPowerClient::OnMcuBootTypeNotify, reason);
}
void ClientIpcAdapter::OnMcuRequestDisplayUiAction(HLXPower::McuReqDisplayUi uiAction) {
  Relay(power_client_, &HLXPowerClient::OnMcuRequestDisplayUiAction, uiAction);
}
void ClientIpcAdapter::OnHeadLightStateChange(int on) {
  Relay(power_client_, &HLXPowerClient::OnHeadLightStateChange, on);
}
void ClientIpcAdapter::OnAcStateChange(unsigned char state) {
  Relay(misc_client_, &HLXMiscClient::OnAcStateChange, state);
}
void ClientIpcAdapter::OnAirBlowModeChange(SystemMisc::AirBlowMode mode) {
  Relay(misc_client_, &HLXMiscClient::OnAirBlowModeChange, mode);
}
void ClientIpcAdapter::OnAirLevelChange(int level) { Relay(misc_client_, &HLXMiscClient::OnAirLevelChange, level); }
void ClientIpcAdapter::OnTempDriverChange(double value) {
  Relay(misc_client_, &HLXMiscClient::OnTempDriverChange, value);
}
void ClientIpcAdapter::OnTempCopilotChange(double value) {
  Relay(misc_client_, &HLXMiscClient::OnTempCopilotChange, value);
}
void ClientIpcAdapter::OnTempEnvironmentChange(double value) {
  Relay(misc_client_, &HLXMiscClient::OnTempEnvironmentChange, value);
}
void ClientIpcAdapter::OnDoorStateChange(unsigned char state) {
  Relay(misc_client_, &HLXMiscClient::OnDoorStateChange, state);
}
void ClientIpcAdapter::OnKeyStateChange(unsigned char key, unsigned char state) {
  Relay(misc_client_, &HLXMiscClient::OnKeyStateChange, key, state);
}
void ClientIpcAdapter::OnCurrentSpeedChange(int value) {
  Relay(misc_client_, &HLXMiscClient::OnCurrentSpeedChange, value);
}
void ClientIpcAdapter::OnCurrentSpeedChange_Raise(int value) {
  Relay(misc_client_, &HLXMiscClient::OnCurrentSpeedChange_Raise, value);
}
void ClientIpcAdapter::OnAverageSpeedChange(int value) {
  Relay(misc_client_, &HLXMiscClient::OnAverageSpeedChange, value);
}
void ClientIpcAdapter::OnTotalMileChange(unsigned int value) {
  Relay(misc_client_, &HLXMiscClient::OnTotalMileChange, value);
}
void ClientIpcAdapter::OnEnduranceMileChange(int value) {
  Relay(misc_client_, &HLXMiscClient::OnEnduranceMileChange, value);
}
void ClientIpcAdapter::OnTotalMileChange_Raise(unsigned int value) {
  Relay(misc_client_, &HLXMiscClient::OnTotalMileChange_Raise, value);
}
void ClientIpcAdapter::OnEnduranceMileChange_Raise(int value) {
  Relay(misc_client_, &HLXMiscClient::OnEnduranceMileChange_Raise, value);
}
void ClientIpcAdapter::OnStage_A_MileChange(unsigned int value) {
  Relay(misc_client_, &HLXMiscClient::OnStage_A_MileChange, value);
}
void ClientIpcAdapter::OnStage_B_MileChange(unsigned int value) {
  Relay(misc_client_, &HLXMiscClient::OnStage_B_MileChange, value);
}
void ClientIpcAdapter::OnCurrentFuelChange(int value) {
  Relay(misc_client_, &HLXMiscClient::OnCurrentFuelChange, value);
}
void ClientIpcAdapter::OnAverageFuelChange(int value) {
  Relay(misc_client_, &HLXMiscClient::OnAverageFuelChange, value);
}
void ClientIpcAdapter::OnRotateSpeedChange(int value) {
  Relay(misc_client_, &HLXMiscClient::OnRotateSpeedChange, value);
}
void ClientIpcAdapter::OnRadarInfoChange(unsigned char rearLeft, unsigned char rearMiddleLeft,
                                         unsigned char rearMiddleRight, unsigned char rearRight) {
  Relay(misc_client_, &HLXMiscClient::OnRadarInfoChange, rearLeft, rearMiddleLeft, rearMiddleRight, rearRight);
}
void ClientIpcAdapter::OnSimpleRVCSignalChange(int on) {
  Relay(misc_client_, &HLXMiscClient::OnSimpleRVCSignalChange, on);
}
void ClientIpcAdapter::OnSimpleAirModeChange(unsigned char state) {
  Relay(misc_client_, &HLXMiscClient::OnSimpleAirModeChange, state);
}
void ClientIpcAdapter::OnRaiseGacAcStateChange(unsigned char stateOne, unsigned char stateTwo) {
  Relay(misc_client_, &HLXMiscClient::OnRaiseGacAcStateChange, stateOne, stateTwo);
}
void ClientIpcAdapter::OnRaiseGacRadarInfoChange(unsigned char displayType, unsigned char rearLeft,
                                                 unsigned char rearMiddleLeft, unsigned char rearMiddleRight,
                                                 unsigned char rearRight) {
  Relay(misc_client_, &HLXMiscClient::OnRaiseGacRadarInfoChange, displayType, rearLeft, rearMiddleLeft, rearMiddleRight,
        rearRight);
}
void ClientIpcAdapter::OnRaiseVWSteeringWheelAngelChange(unsigned char espOne, unsigned char espTwo) {
  Relay(misc_client_, &HLXMiscClient::OnRaiseVWSteeringWheelAngelChange, espOne, espTwo);
}
void ClientIpcAdapter::OnGeneralAcStateChange(unsigned char acStateData, unsigned char acStateValue) {
  Relay(misc_client_, &HLXMiscClient::OnGeneralAcStateChange, acStateData, acStateValue);
}
void ClientIpcAdapter::OnGeneralAirLevelChange(unsigned char type, int level) {
  Relay(misc_client_, &HLXMiscClient::OnGeneralAirLevelChange, type, level);
}
void ClientIpcAdapter::OnGeneralLeftTempChange(unsigned char type, double value) {
  Relay(misc_client_, &HLXMiscClient::OnGeneralLeftTempChange, type, value);
}
void ClientIpcAdapter::OnGeneralRightTempChange(unsigned char type, double value) {
  Relay(misc_client_, &HLXMiscClient::OnGeneralRightTempChange, type, value);
}
void ClientIpcAdapter::OnCameraStateChange(int fCamera, int rCamera) {
  Relay(misc_client_, &HLXMiscClient::OnCameraStateChange, fCamera, rCamera);
}
void ClientIpcAdapter::OnSystemTempChange(int value) { Relay(misc_client_, &HLXMiscClient::OnSystemTempChange, value); }
void ClientIpcAdapter::OnTFTTempChange(int value) { Relay(misc_client_, &HLXMiscClient::OnTFTTempChange, value); }
void ClientIpcAdapter::OnSystemLanguageChange(SystemMisc::Language language) {
  Relay(misc_client_, &HLXMiscClient::OnSystemLanguageChange, language);
}
void ClientIpcAdapter::OnUrgentMuteStateChange(int mute) {
  Relay(misc_client_, &HLXMiscClient::OnUrgentMuteStateChange, mute);
}
void ClientIpcAdapter::OnRadioRegionChange(SystemMisc::Radio_Region_Ford region) {
  Relay(misc_client_, &HLXMiscClient::OnRadioRegionChange, region);
}
void ClientIpcAdapter::OnRadioPresetChange(unsigned char band, unsigned int frequency, unsigned char preset) {
  Relay(misc_client_, &HLXMiscClient::OnRadioPresetChange, band, frequency, preset);
}
void ClientIpcAdapter::OnSpeakerAmountChange(unsigned char amount) {
  Relay(misc_client_, &HLXMiscClient::OnSpeakerAmountChange, amount);
}
void ClientIpcAdapter::OnSteelMateRadarInfoChange(unsigned char left, unsigned char midLeft, unsigned char midRight,
                                                  unsigned char right) {
  Relay(misc_client_, &HLXMiscClient::OnSteelMateRadarInfoChange, left, midLeft, midRight, right);
}
