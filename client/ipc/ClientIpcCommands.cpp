#include "client/ipc/ClientIpcAdapter.h"
#include "client/ipc/LastCallError.h"
#include "dbus/VariantRecord.h"
#include "platform/HLXLog.h"

HLX_LOG_SOURCE("client/ipc/ClientIpcAdapter");

namespace {

template <class T>
guchar LowByte(T value) {
  return static_cast<guchar>(value);
}

/// The record's bytes as the argument of a method; the sizes are what the service expects.
template <class T>
GVariant* Record(const T& record) {
  return build_variant_data(&record, sizeof record);
}

/// Frees what an argument of a call that is not made holds.
void Drop(GVariant* record) { g_variant_unref(g_variant_ref_sink(record)); }
template <class T>
void Drop(const T& /*value*/) {}

static_assert(sizeof(SystemMisc::LogoInfo) == 20, "wire size");
static_assert(sizeof(SystemTime::DateInfo) == 16, "wire size");
static_assert(sizeof(SystemTime::TimeInfo) == 12, "wire size");
static_assert(sizeof(SystemTime::DateTime) == 28, "wire size");

}  // namespace

/// What a failed call is logged under: the command's text and its place in the source.
struct ClientIpcAdapter::CallSite {
  // NOLINTNEXTLINE(google-explicit-constructor): made from the text where the command is written
  CallSite(const char* command_text, const char* caller = __builtin_FUNCTION(), int caller_line = __builtin_LINE())
      : command(command_text), function(caller), line(caller_line) {}

  void Report(GError* error) const {
    HLX_LOG_AT(ZLOG_LEVEL_ERROR, function, line, "%s: Failed to call dbus method. Reason: %s.", command,
               error->message);
    LastCallError::Keep(error);
  }

  const char* command;
  const char* function;
  int line;
};

/// True unless the call ended with an error. Without a proxy GLib refuses the call without an error, so that a command
/// before the start counts as done. It is refused here before the arguments are packed, which GLib would then leak.
template <class Function, class... Args>
bool ClientIpcAdapter::Call(const CallSite& site, Function function, Args... args) {
  LastCallError::Clear();
  const Proxy proxy = ForCommand();
  if (proxy == nullptr) {
    (Drop(args), ...);
    g_dbus_proxy_call_sync(nullptr, site.command, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
    LastCallError::Keep(g_error_new_literal(G_IO_ERROR, G_IO_ERROR_NOT_CONNECTED,
                                            "not sent: no start of the library has reached the bus"));
    return true;
  }
  GError* error = nullptr;
  function(proxy.get(), args..., nullptr, &error);
  if (error == nullptr) return true;
  site.Report(error);
  return false;
}

/// D-Bus strings are UTF-8: anything else is refused here, by name, before GLib would drop the argument.
template <class Function>
bool ClientIpcAdapter::CallText(const CallSite& site, Function function, const std::string& text) {
  const char* invalid = nullptr;
  if (ForCommand() == nullptr || g_utf8_validate(text.c_str(), -1, &invalid)) {
    return Call(site, function, text.c_str());
  }
  site.Report(g_error_new(G_IO_ERROR, G_IO_ERROR_INVALID_ARGUMENT, "the text is not valid UTF-8 from byte %d on",
                          static_cast<int>(invalid - text.c_str())));
  return false;
}

void ClientIpcAdapter::ApplyExternalMcuUpdate() {
  Call("ApplyExternalMcuUpdate", com_vorn_linux_system_call_apply_external_mcu_update_sync);
}

void ClientIpcAdapter::ApplyUpdateAll() { Call("ApplyUpdateAll", com_vorn_linux_system_call_apply_update_all_sync); }

void ClientIpcAdapter::ApplyMpuUpdate() { Call("ApplyMpuUpdate", com_vorn_linux_system_call_apply_mpu_update_sync); }

void ClientIpcAdapter::ApplyUpdate(HLXUpdate::UpdateType type) {
  Call("ApplyUpdate", com_vorn_linux_system_call_apply_update_sync, static_cast<gint>(type));
}

void ClientIpcAdapter::SetCanUpdata(int canUpdate) {
  Call("SetCanUpdata", com_vorn_linux_system_call_can_update_sync, canUpdate);
}

void ClientIpcAdapter::ShutDown() { Call("ShutDown", com_vorn_linux_system_call_shut_down_sync); }

void ClientIpcAdapter::Reset() { Call("Reset", com_vorn_linux_system_call_reset_sync); }

void ClientIpcAdapter::RequestPowerOffState(int isKeyShortPress) {
  Call("RequestPowerOffState", com_vorn_linux_system_call_request_power_off_state_sync, isKeyShortPress);
}

void ClientIpcAdapter::SetPowerOffDelayTime(unsigned char time) {
  Call("SetPowerOffDelayTime", com_vorn_linux_system_call_set_power_off_delay_time_sync, time);
}

void ClientIpcAdapter::SetRetainACCSec(unsigned int sec) {
  Call("SetRetainACCSec", com_vorn_linux_system_call_set_retain_accsec_sync, static_cast<gint>(sec));
}

void ClientIpcAdapter::SetBtCallState(HLXPower::CallState state) {
  Call("SetBtCallState", com_vorn_linux_system_call_set_bt_call_state_sync, LowByte(state));
}

void ClientIpcAdapter::SetCarPlayPhoneState(HLXPower::CpPhoneStateType state) {
  Call("SetCarPlayPhoneState", com_vorn_linux_system_call_set_car_play_phone_state_sync, LowByte(state));
}

void ClientIpcAdapter::SetScreenLightOn(int on) {
  Call("SetScreenLightOn", com_vorn_linux_system_call_set_screen_light_on_sync, on);
}

void ClientIpcAdapter::SetScreenLightLevel(HLXPower::LightType type, unsigned char level) {
  Call("SetScreenLightLevel", com_vorn_linux_system_call_set_screen_light_level_sync, LowByte(type), level);
}

void ClientIpcAdapter::SetColorType(HLXPower::ColorType type) {
  Call("SetColorType", com_vorn_linux_system_call_set_color_type_sync, LowByte(type));
}

void ClientIpcAdapter::SetLedAnimation(int on) {
  Call("SetLedAnimation", com_vorn_linux_system_call_set_led_animation_sync, LowByte(on));
}

void ClientIpcAdapter::SetLightDetectStyle(int isAutomatic) {
  Call("SetLightDetectStyle", com_vorn_linux_system_call_set_light_detect_style_sync, LowByte(isAutomatic));
}

void ClientIpcAdapter::SetLightFixDayStyle(int isDay) {
  Call("SetLightFixDayStyle", com_vorn_linux_system_call_set_light_fix_day_style_sync, LowByte(isDay));
}

void ClientIpcAdapter::ResetScreenBackLight() {
  Call("ResetScreenBackLight", com_vorn_linux_system_call_reset_screen_back_light_sync);
}

void ClientIpcAdapter::SetTempMaxScreenLightLevel(int isActive) {
  Call("SetTempMaxScreenLightLevel", com_vorn_linux_system_call_set_temp_max_screen_light_level_sync, isActive);
}

void ClientIpcAdapter::ConfirmPreRadioOffState(int param) {
  Call("ConfirmPreRadioOffState", com_vorn_linux_system_call_confirm_pre_radio_off_state_sync, param);
}

void ClientIpcAdapter::SetButtonLightState(int on) {
  Call("SetButtonLightState", com_vorn_linux_system_call_set_button_light_state_sync, LowByte(on));
}

void ClientIpcAdapter::SetButtonLightValue(HLXPower::LightType type, unsigned char level) {
  Call("SetButtonLightValue", com_vorn_linux_system_call_set_button_light_value_sync, LowByte(type), level);
}

void ClientIpcAdapter::SetGammaValue(int value) {
  Call("SetGammaValue", com_vorn_linux_system_call_set_gamma_value_sync, value);
}

void ClientIpcAdapter::ResetButtonBackLight() {
  Call("ResetButtonBackLight", com_vorn_linux_system_call_reset_button_back_light_sync);
}

void ClientIpcAdapter::SetPowerRvcStatus(int isOn) {
  Call("SetPowerRvcStatus", com_vorn_linux_system_call_set_rvc_status_sync, isOn);
}

void ClientIpcAdapter::SpeakerDetectStart() {
  Call("SpeakerDetectStart", com_vorn_linux_system_call_speaker_detect_start_sync);
}

void ClientIpcAdapter::ResetFactoryMode() {
  Call("ResetFactoryMode", com_vorn_linux_system_call_reset_factory_mode_sync);
}

void ClientIpcAdapter::EnableCanBoxModule(int enable) {
  Call("EnableCanBoxModule", com_vorn_linux_system_call_enable_can_box_module_sync, enable);
}

void ClientIpcAdapter::EnableScreenShotControl(int enable) {
  Call("EnableScreenShotControl", com_vorn_linux_system_call_enable_screen_shot_control_sync, enable);
}

void ClientIpcAdapter::SetScreenshot() { Call("SetScreenshot", com_vorn_linux_system_call_set_screenshot_sync); }

void ClientIpcAdapter::StartAutoTest() { Call("StartAutoTest", com_vorn_linux_system_call_start_auto_test_sync); }

void ClientIpcAdapter::SpeakerDetectStop() {
  Call("SpeakerDetectStop", com_vorn_linux_system_call_speaker_detect_stop_sync);
}

void ClientIpcAdapter::SetRvcOffDelaySwitch(int isDelayOff) {
  Call("SetRvcOffDelaySwitch", com_vorn_linux_system_call_set_rvc_off_delay_switch_sync, isDelayOff);
}

void ClientIpcAdapter::SetDrivePosition(int isLeft) {
  Call("SetDrivePosition", com_vorn_linux_system_call_set_drive_position_sync, isLeft);
}

bool ClientIpcAdapter::SetOnSourceChange(int source) {
  return Call("ClientIpcAdapter::SetOnSourceChange", com_vorn_linux_system_call_set_on_source_change_sync, source);
}

bool ClientIpcAdapter::SetLogo(unsigned int logo) {
  return Call("com_vorn_linux_system_call_set_logo_sync::SetLogo", com_vorn_linux_system_call_set_logo_sync, logo);
}

void ClientIpcAdapter::SetLogo(SystemMisc::LogoInfo& logo) {
  Call("com_vorn_linux_system_call_set_logo_info_sync", com_vorn_linux_system_call_set_logo_info_sync, Record(logo));
}

bool ClientIpcAdapter::SetOnTimeChange(std::string& text) {
  return CallText("ClientIpcAdapter::SetOnTimeChange", com_vorn_linux_system_call_set_on_time_change_sync, text);
}

bool ClientIpcAdapter::SetOnRadioChange(std::string& text) {
  return CallText("ClientIpcAdapter::SetOnRadioChange", com_vorn_linux_system_call_set_on_radio_change_sync, text);
}

bool ClientIpcAdapter::SetOnTouchInfo(std::string& text) {
  return CallText("ClientIpcAdapter::SetOnTouchInfo", com_vorn_linux_system_call_set_on_touch_info_sync, text);
}

bool ClientIpcAdapter::SetOnPSChange(std::string& text) {
  return CallText("ClientIpcAdapter::SetOnPSChange", com_vorn_linux_system_call_set_on_pschange_sync, text);
}

bool ClientIpcAdapter::SetOnMediaInfoChange(std::string& text) {
  return CallText("ClientIpcAdapter::SetOnMediaInfoChange", com_vorn_linux_system_call_set_on_media_info_change_sync,
                  text);
}

bool ClientIpcAdapter::SetOnPhoneInfoChange(std::string& text) {
  return CallText("ClientIpcAdapter::SetOnPhoneInfoChange", com_vorn_linux_system_call_set_on_phone_info_change_sync,
                  text);
}

bool ClientIpcAdapter::SetOnVolChange(int volume) {
  return Call("ClientIpcAdapter::SetOnVolChange", com_vorn_linux_system_call_set_on_vol_change_sync, volume);
}

void ClientIpcAdapter::SetHandbrakeCheckingSwitch(int isChecked) {
  Call("SetHandbrakeCheckingSwitch", com_vorn_linux_system_call_set_handbrake_checking_switch_sync, isChecked);
}

void ClientIpcAdapter::SetGPSAntennaCheckingSwitch(int isChecked) {
  Call("SetGPSAntennaCheckingSwitch", com_vorn_linux_system_call_set_gpsantenna_checking_switch_sync, isChecked);
}

void ClientIpcAdapter::SetTime24Mode(int is24Mode) {
  Call("SetTime24Mode", com_vorn_linux_system_call_set_time24_mode_sync, is24Mode);
}

void ClientIpcAdapter::SetAutoSyncMode(int isAutoSync) {
  Call("SetAutoSyncMode", com_vorn_linux_system_call_set_auto_sync_mode_sync, isAutoSync);
}

void ClientIpcAdapter::SetAutoAdjustDstMode(int isAutoDst) {
  Call("SetAutoAdjustDstMode", com_vorn_linux_system_call_set_auto_adjust_dst_mode_sync, isAutoDst);
}

void ClientIpcAdapter::SetCurDate(SystemTime::DateInfo& date) {
  Call("SetCurDate", com_vorn_linux_system_call_set_cur_date_sync, Record(date));
}

void ClientIpcAdapter::SetCurTime(SystemTime::TimeInfo& time) {
  Call("SetCurTime", com_vorn_linux_system_call_set_cur_time_sync, Record(time));
}

bool ClientIpcAdapter::SetGpsUTCTimeSync(SystemTime::DateTime& utc) {
  gboolean result = FALSE;
  Call("SetGpsUTCTimeSync", com_vorn_linux_system_call_set_gps_utctime_sync_sync, Record(utc), &result);
  return result != FALSE;
}

void ClientIpcAdapter::SetTimeZone(SystemTime::TimeZone zone) {
  Call("SetTimeZone", com_vorn_linux_system_call_set_time_zone_sync, LowByte(zone));
}
