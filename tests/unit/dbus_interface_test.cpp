// The wire contract: every name, argument and signature of the interface, and the GLib names made of them.
#include <gtest/gtest.h>

#include <cstring>
#include <regex>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include "dbus/GLibPtr.h"
#include "dbus_system.h"

namespace {

using Rows = std::vector<std::string>;

constexpr char kMethods[] = R"(
ApplyUpdate(i update_type); CanUpdate(i iCanUpdate); ApplyExternalMcuUpdate(); ApplyUpdateAll(); ApplyMpuUpdate();
ShutDown(); Reset(); RequestPowerOffState(b isKeyShortPress); SetPowerOffDelayTime(y time); SetRetainACCSec(i sec);
SetBtCallState(y btState); SetCarPlayPhoneState(y state); SetScreenLightOn(b bLightOn);
SetScreenLightLevel(y type, y level); SetColorType(y type); SetLedAnimation(y Animation);
SetLightDetectStyle(y bAutomatic); SetLightFixDayStyle(y bDayLight); ResetScreenBackLight();
SetButtonLightState(b bLightOn); SetButtonLightValue(y type, y level); SetGammaValue(i value); ResetButtonBackLight();
SetRvcStatus(b isOn); SetTempMaxScreenLightLevel(b isActive); ConfirmPreRadioOffState(i param); SpeakerDetectStart();
SpeakerDetectStop(); SetScreenshot(); SetRvcOffDelaySwitch(b isDelayOff); SetHandbrakeCheckingSwitch(b isChecked);
SetGPSAntennaCheckingSwitch(b isChecked); SetDrivePosition(b isLeft); SetOnSourceChange(i SourceValue);
SetLogo(u nLogo); SetLogoInfo(v nLogo); SetOnTimeChange(s TimeValue); SetOnRadioChange(s RaidoValue);
SetOnTouchInfo(s TouchValue); SetOnPSChange(s PSValue); SetOnMediaInfoChange(s MediaInfoValue);
SetOnPhoneInfoChange(s PhoneInfoValue); SetOnVolChange(i VolValue); ResetFactoryMode(); EnableCanBoxModule(b enable);
EnableScreenShotControl(b enable); StartAutoTest(); SetTime24Mode(b is24Mode); SetAutoSyncMode(b isAutoSync);
SetAutoAdjustDstMode(b isAutoDst); SetCurDate(v dateInfo); SetCurTime(v timeInfo);
SetGpsUTCTimeSync(v dateTime) -> b result; SetTimeZone(y zone);)";

constexpr char kSignals[] = R"(
DetectValidUpdateFileNotifySignal(y result); UpdateRequestResultInformSignal(y result);
UpdateCanProcess(i CanProcessValue); OnMcuUpdateStateNotify(i state); OnMpuUpdateStateNotify(i state);
OnMcuUpdateProgressNotify(u progress); OnPackageStateChangeNotify(i state); ScreenStateChangeSignal(b isScreenOn);
RadioStateChangeSignal(y state); AccStateChangeSignal(b isAccOn); PowerOffDelayTimeChangeSignal(y time);
ScreenLightLevelChangedSignal(y type, y level); ScreenLightTypeChangedSignal(y type);
ButtonLightLevelChangedSignal(y type, y level); ButtonColorChangedSignal(y type); ButtonLightTypeChangedSignal(y type);
BatteryBootStateChangeSignal(b isColdBoot); AbnormalPowerAudioNotifySignal(y param);
AbnormalPowerUsbNotifySignal(y param); OnPowerPreRadioOffNotify(); OnMcuBootTypeNotifySignal(y reason);
OnMcuRequestDisplayUiActionSignal(y uiAction); OnHeadLightStateChange(b on); SpeakerStateChangeSignal();
CarSpeedChangeSignal(u speed); CarFloatSpeedChangeSignal(d speed); ParkingStateChangeSignal(b isParking);
RadioAntStateChangeSignal(y state); GpsAntStateChangeSignal(y state); DABAntStateChangeSignal(y state);
MicConnectStateChangeSignal(y state); OnFactoryResetModeSignal(); AcStateChangeSignal(y state);
AirBlowModeChangeSignal(y mode); AirLevelChangeSignal(i level); TempDriverChangeSignal(d value);
TempCopilotChangeSignal(d value); TempEnvChangeSignal(d value); DoorStateChangeSignal(y state);
KeyStateChangeSignal(y key, y state); CurSpeedChangeSignal(i value); CurSpeedChangeSignalRaise(i value);
AvrSpeedChangeSignal(i value); MileTotalChangeSignal(u value); MileEnduranceChangeSignal(i value);
MileTotalChangeSignalRaise(u value); MileEnduranceChangeSignalRaise(i value); MileStageAChangeSignal(u value);
MileStageBChangeSignal(u value); CurFuelChangeSignal(i value); AvrFuelChangeSignal(i value);
RotateSpeedChangeSignal(i value); SimpleAirModeChangeSignal(y state); OnCameraStateChangeSignal(b fCamera, b rCamera);
OnSystemTempChange(i tempVal); OnTFTTempChange(i tempVal); OnSystemLanguageChangeSignal(y language);
OnUrgentMuteStateChangeSignal(b mute); OnRadioRegionChangeSignal(y region);
OnRadioPresetChangeSignal(y band, u frequency, y preset); OnSpeakerAmountChangeSignal(y amount);
OnDateInfoChangeSignal(y type); OnExternalMcuTimeChangeSignal(y parm); On24TimeModeChangeSignal(b is24Mode);
OnDstStatusChangeSignal(b isDst); OnPowerWakeupTypeSignal(y type);
OnRadarInfoChangedSignal(y rearLeft, y rearMiddleLeft, y rearMiddleRight, y rearRight); OnSimpleRVCSignal(b on);
RaiseGacAcStateChangeSignal(y state_one, y state_two);
OnRaiseGacRadarInfoChangedSignal(y display_type, y rearLeft, y rearMiddleLeft, y rearMiddleRight, y rearRight);
RaiseVWSteeringWheelAngelChangeSignal(y esp_one, y esp_two);
OnGeneralAcStateChangeSignal(y ac_state_data, y ac_state_value); OnGeneralAirLevelChangeSignal(y type, i level);
OnGeneralLeftTempChangeSignal(y type, d value); OnGeneralRightTempChangeSignal(y type, d value);
OnSteelMateRadarInfoChangedSignal(y left, y midLeft, y midRight, y right);)";

Rows Split(const char* table) {
  Rows rows;
  std::istringstream text(table);
  for (std::string row; std::getline(text >> std::ws, row, ';');) rows.push_back(row);
  return rows;
}

std::string Render(GDBusArgInfo** arguments) {
  std::string text;
  for (; arguments != nullptr && *arguments != nullptr; ++arguments)
    text += (text.empty() ? "" : ", ") + std::string((*arguments)->signature) + " " + (*arguments)->name;
  return text;
}

/// The name as GLib spells it: a hyphen before each capital that does not follow another one.
std::string GLibName(const std::string& row) {
  static const std::regex word("([^A-Z])([A-Z])");
  const std::string name = std::regex_replace(row.substr(0, row.find('(')), word, "$1-$2");
  return GLibPtr<gchar>(g_ascii_strdown(name.c_str(), -1)).get();
}

TEST(DBusInterface, IsTheWireContract) {
  GDBusInterfaceInfo* info = com_vorn_linux_system_interface_info();
  EXPECT_STREQ(info->name, "com.vorn.linux.system");
  Rows methods, signals;
  for (GDBusMethodInfo** m = info->methods; *m != nullptr; ++m) {
    const std::string out = Render((*m)->out_args);
    methods.push_back((*m)->name + ("(" + Render((*m)->in_args) + ")") + (out.empty() ? "" : " -> " + out));
  }
  for (GDBusSignalInfo** s = info->signals; *s != nullptr; ++s)
    signals.push_back((*s)->name + ("(" + Render((*s)->args) + ")"));
  EXPECT_EQ(methods, Split(kMethods));
  EXPECT_EQ(signals, Split(kSignals));

  GString* xml = g_string_new(nullptr);
  g_dbus_interface_info_generate_xml(info, 0, xml);
  const GLibPtr<gchar> text(g_string_free(xml, FALSE));
  for (const char* unwanted : {"<annotation", "<property"}) EXPECT_EQ(strstr(text.get(), unwanted), nullptr);
}

static_assert(!std::is_invocable_v<GLibDeleter, GHashTable*>, "no row, no pointer");

TEST(GLibPtr, FreesWhatIsNoObject) {
  const GLibPtr<GTimeZone> zone(g_time_zone_new_utc());
  const GLibPtr<GDateTime> time(g_date_time_new(zone.get(), 2026, 1, 1, 0, 0, 0));
  const GLibPtr<GKeyFile> file(g_key_file_new());
  EXPECT_EQ(g_date_time_get_year(time.get()), 2026);
}

TEST(DBusInterface, HasItsGLibSignals) {
  const GLibPtr<ComVornLinuxSystem> skeleton(com_vorn_linux_system_skeleton_new());
  Rows names;
  for (const std::string& row : Split(kMethods)) names.push_back("handle-" + GLibName(row));
  for (const std::string& row : Split(kSignals)) names.push_back(GLibName(row));
  for (const std::string& name : names)
    EXPECT_NE(g_signal_lookup(name.c_str(), TYPE_COM_VORN_LINUX_SYSTEM), 0U) << name;
  guint count = 0;
  g_free(g_signal_list_ids(TYPE_COM_VORN_LINUX_SYSTEM, &count));
  EXPECT_EQ(count, names.size());
}

}  // namespace
