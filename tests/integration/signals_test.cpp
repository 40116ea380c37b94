// Every signal that the simulator sends arrives at a listener of the real library with its values unchanged.
#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "HLXListenerBase.h"
#include "HLXSystemProxy.h"
#include "dbus/GLibPtr.h"
#include "dbus_system.h"
#include "tests/support/MainContext.h"
#include "tests/support/Process.h"

namespace {

std::vector<std::string> notes;

std::string Text(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.17g", value);
  return text;
}
template <class T, class = std::enable_if_t<std::is_integral_v<T> || std::is_enum_v<T>>>
std::string Text(T value) {
  return std::to_string(static_cast<long long>(value));
}
std::string Text(const SystemTime::DateTime& value) { return Text(value.date.year) + "/" + Text(value.time.second); }
std::string Text(const SystemMisc::KeyEvent& event) { return Text(event.key) + "=" + Text(event.state); }
template <class K, class V>
std::string Text(const std::map<K, V>& map) {
  std::string text = "{";
  for (const auto& [key, value] : map) text += (text.size() > 1 ? "," : "") + Text(key) + ":" + Text(value);
  return text + "}";
}

template <class... A>
void Note(std::string text, const A&... arguments) {
  ((text += " " + Text(arguments)), ...);
  notes.push_back(std::move(text));
}

class Power : public HLXPowerListenerBase {
 public:
  void OnScreenStateChange(int a) override { Note("ScreenStateChange", a); }
  void OnRadioStateChange(HLXPower::RadioState a) override { Note("RadioStateChange", a); }
  void OnAccStateChange(int a) override { Note("AccStateChange", a); }
  void OnBatteryBootStateChange(int a) override { Note("BatteryBootStateChange", a); }
  void OnPowerOffDelayTimeChange(unsigned char a) override { Note("PowerOffDelayTimeChange", a); }
  void OnPowerWakeupType(HLXPower::PowerWakeupType a) override { Note("PowerWakeupType", a); }
  void OnAbnormalPowerAudioNotify(unsigned char a) override { Note("AbnormalPowerAudioNotify", a); }
  void OnAbnormalPowerUsbNotify(unsigned char a) override { Note("AbnormalPowerUsbNotify", a); }
  void OnPowerPreRadioOffNotify() override { Note("PreRadioOff"); }
  void OnScreenLightLevelChanged(HLXPower::LightType a, unsigned char b) override {
    Note("ScreenLightLevelChanged", a, b);
  }
  void OnScreenLightTypeChanged(HLXPower::LightType a) override { Note("ScreenLightTypeChanged", a); }
  void OnButtonLightLevelChanged(HLXPower::LightType a, unsigned char b) override {
    Note("ButtonLightLevelChanged", a, b);
  }
  void OnButtonLightTypeChanged(HLXPower::LightType a) override { Note("ButtonLightTypeChanged", a); }
  void OnButtonColorChanged(HLXPower::ColorType a) override { Note("ButtonColorChanged", a); }
  void OnMcuBootTypeNotify(HLXPower::BootReason a) override { Note("McuBootTypeNotify", a); }
  void OnMcuRequestDisplayUiAction(HLXPower::McuReqDisplayUi a) override { Note("McuRequestDisplayUiAction", a); }
  void OnHeadLightStateChange(int a) override { Note("HeadLightStateChange", a); }
};

class Misc : public HLXMiscListenerBase {
 public:
  void OnSpeakerStateChange(std::map<SystemMisc::Speaker, SystemMisc::SpeakerState> a) override {
    Note("SpeakerStateChange", a);
  }
  void OnCarSpeedChange(unsigned int a) override { Note("CarSpeedChange", a); }
  void OnCarFloatSpeedChange(double a) override { Note("CarFloatSpeedChange", a); }
  void OnParkingStateChange(int a) override { Note("ParkingStateChange", a); }
  void OnRadioAntStateChange(SystemMisc::AntState a) override { Note("RadioAntStateChange", a); }
  void OnGpsAntStateChange(SystemMisc::AntState a) override { Note("GpsAntStateChange", a); }
  void OnDABAntStateChange(SystemMisc::AntState a) override { Note("DABAntStateChange", a); }
  void OnMicConnectStateChange(SystemMisc::AntState a) override { Note("MicConnectStateChange", a); }
  void OnFactoryResetMode() override { Note("FactoryResetMode"); }
  void OnAcStateChange(std::map<SystemMisc::ACState, int> a) override { Note("AcStateChange", a); }
  void OnAirBlowModeChange(SystemMisc::AirBlowMode a) override { Note("AirBlowModeChange", a); }
  void OnAirLevelChange(int a) override { Note("AirLevelChange", a); }
  void OnTempDriverChange(double a) override { Note("TempDriverChange", a); }
  void OnTempCopilotChange(double a) override { Note("TempCopilotChange", a); }
  void OnTempEnvironmentChange(double a) override { Note("TempEnvironmentChange", a); }
  void OnDoorStateChange(std::map<SystemMisc::DoorState, int> a) override { Note("DoorStateChange", a); }
  void OnCurrentSpeedChange(int a) override { Note("CurrentSpeedChange", a); }
  void OnCurrentSpeedChange_Raise(int a) override { Note("CurrentSpeedChange_Raise", a); }
  void OnAverageSpeedChange(int a) override { Note("AverageSpeedChange", a); }
  void OnTotalMileChange(unsigned int a) override { Note("TotalMileChange", a); }
  void OnEnduranceMileChange(int a) override { Note("EnduranceMileChange", a); }
  void OnTotalMileChange_Raise(std::map<unsigned int, unsigned int> a) override { Note("TotalMileChange_Raise", a); }
  void OnEnduranceMileChange_Raise(std::map<unsigned int, unsigned int> a) override {
    Note("EnduranceMileChange_Raise", a);
  }
  void OnStage_A_MileChange(unsigned int a) override { Note("Stage_A_MileChange", a); }
  void OnStage_B_MileChange(unsigned int a) override { Note("Stage_B_MileChange", a); }
  void OnCurrentFuelChange(int a) override { Note("CurrentFuelChange", a); }
  void OnAverageFuelChange(int a) override { Note("AverageFuelChange", a); }
  void OnRotateSpeedChange(int a) override { Note("RotateSpeedChange", a); }
  void OnKeyStateChange(SystemMisc::KeyEvent& a) override { Note("KeyStateChange", a); }
  void OnRaiseGacKnobKeyChange(unsigned char a, unsigned char b) override { Note("RaiseGacKnobKeyChange", a, b); }
  void OnRaiseGacPanelKeyChange(unsigned char a, unsigned char b) override { Note("RaiseGacPanelKeyChange", a, b); }
  void OnRadarInfoChange(unsigned char a, unsigned char b, unsigned char c, unsigned char d) override {
    Note("RadarInfoChange", a, b, c, d);
  }
  void OnSimpleRVCSignalChange(int a) override { Note("SimpleRVCSignalChange", a); }
  void OnSimpleAirModeChange(std::map<SystemMisc::SimpleAirMode, int> a) override { Note("SimpleAirModeChange", a); }
  void OnRaiseGacAcStateChange(std::map<SystemMisc::Raise_GAC_ACState, int> a) override {
    Note("RaiseGacAcStateChange", a);
  }
  void OnRaiseGacRadarInfoChange(unsigned char a, unsigned char b, unsigned char c, unsigned char d,
                                 unsigned char e) override {
    Note("RaiseGacRadarInfoChange", a, b, c, d, e);
  }
  void OnRaiseVWSteeringWheelAngelChange(int a) override { Note("RaiseVWSteeringWheelAngelChange", a); }
  void OnRaiseRenaultAcStateChange(std::map<SystemMisc::Raise_Renault_ACState, int> a) override {
    Note("RaiseRenaultAcStateChange", a);
  }
  void OnGeneralAcStateChange(std::map<SystemMisc::AC_State_Type, int> a) override { Note("GeneralAcStateChange", a); }
  void OnGeneralAirLevelChange(SystemMisc::SEAT_TYPE a, int b) override { Note("GeneralAirLevelChange", a, b); }
  void OnGeneralLeftTempChange(SystemMisc::SEAT_TYPE a, double b) override { Note("GeneralLeftTempChange", a, b); }
  void OnGeneralRightTempChange(SystemMisc::SEAT_TYPE a, double b) override { Note("GeneralRightTempChange", a, b); }
  void OnCameraStateChange(int a, int b) override { Note("CameraStateChange", a, b); }
  void OnSystemTempChange(int a) override { Note("SystemTempChange", a); }
  void OnTFTTempChange(int a) override { Note("TFTTempChange", a); }
  void OnSystemLanguageChange(SystemMisc::Language a) override { Note("SystemLanguageChange", a); }
  void OnUrgentMuteStateChange(int a) override { Note("UrgentMuteStateChange", a); }
  void OnRadioRegionChange(SystemMisc::Radio_Region_Ford a) override { Note("RadioRegionChange", a); }
  void OnRadioPresetChange(SystemMisc::Radio_Band_Ford a, unsigned int b, unsigned char c) override {
    Note("RadioPresetChange", a, b, c);
  }
  void OnSpeakerAmountChange(unsigned char a) override { Note("SpeakerAmountChange", a); }
  void OnSteelMateRadarInfoChange(unsigned char a, unsigned char b, unsigned char c, unsigned char d) override {
    Note("SteelMateRadarInfoChange", a, b, c, d);
  }
};

class Time : public HLXTimeListenerBase {
 public:
  void OnDateInfoChange(SystemTime::DateTime& a) override { Note("Date", a); }
  void On24TimeModeChange(int a) override { Note("24TimeModeChange", a); }
  void OnDstStatusChange(int a) override { Note("DstStatusChange", a); }
  void OnExternalMcuTimeChange(SystemTime::DateTime& a) override { Note("ExternalMcuTimeChange", a); }
  void OnExternalMcu24TimeModeChange(int a) override { Note("ExternalMcu24TimeModeChange", a); }
  void OnExternalMcuTimeZoneChange(unsigned char a) override { Note("ExternalMcuTimeZoneChange", a); }
};

class Update : public HLXUpdateListenerBase {
 public:
  void OnDetectValidUpdateFileNotify(HLXUpdate::UpdateNotifyResult a) override {
    Note("DetectValidUpdateFileNotify", a);
  }
  void OnUpdateRequestResultInform(HLXUpdate::OpResult a) override { Note("UpdateRequestResultInform", a); }
  void OnUpdateCanProcess(int a) override { Note("UpdateCanProcess", a); }
  void OnMcuUpdateStateNotify(HLXUpdate::UpdateState a) override { Note("McuUpdateStateNotify", a); }
  void OnMpuUpdateStateNotify(HLXUpdate::UpdateState a) override { Note("MpuUpdateStateNotify", a); }
  void OnMcuUpdateProgressNotify(unsigned int a) override { Note("McuUpdateProgressNotify", a); }
  void OnPackageStateChangeNotify(HLXUpdate::UpdatePackageState a) override { Note("PackageStateChangeNotify", a); }
};

/// A signal, its arguments in GVariant's text form, and what the listener is told.
struct Row {
  const char* signal;
  const char* arguments;
  std::vector<std::string> told;
};

const Row kRows[] = {
    {"DetectValidUpdateFileNotifySignal", "(byte 1,)", {}},  // only the process named hmi listens
    {"UpdateRequestResultInformSignal", "(byte 0xff,)", {"UpdateRequestResultInform 255"}},
    {"UpdateCanProcess", "(-2147483648,)", {"UpdateCanProcess -2147483648"}},
    {"OnMcuUpdateStateNotify", "(-1,)", {"McuUpdateStateNotify -1"}},
    {"OnMpuUpdateStateNotify", "(256,)", {"MpuUpdateStateNotify 256"}},
    {"OnMcuUpdateProgressNotify", "(uint32 4294967295,)", {"McuUpdateProgressNotify 4294967295"}},
    {"OnPackageStateChangeNotify", "(2,)", {"PackageStateChangeNotify 2"}},
    {"ScreenStateChangeSignal", "(false,)", {"ScreenStateChange 0"}},
    {"RadioStateChangeSignal", "(byte 0xff,)", {"RadioStateChange 255"}},
    {"AccStateChangeSignal", "(true,)", {"AccStateChange 1"}},
    {"PowerOffDelayTimeChangeSignal", "(byte 0xff,)", {"PowerOffDelayTimeChange 255"}},
    {"ScreenLightLevelChangedSignal", "(byte 0x01, byte 0xff)", {"ScreenLightLevelChanged 1 255"}},
    {"ScreenLightTypeChangedSignal", "(byte 0xfe,)", {"ScreenLightTypeChanged 254"}},
    {"ButtonLightLevelChangedSignal", "(byte 0x00, byte 0x80)", {"ButtonLightLevelChanged 0 128"}},
    {"ButtonColorChangedSignal", "(byte 0x09,)", {"ButtonColorChanged 9"}},
    {"ButtonLightTypeChangedSignal", "(byte 0x01,)", {"ButtonLightTypeChanged 1"}},
    {"BatteryBootStateChangeSignal", "(true,)", {"BatteryBootStateChange 1"}},
    {"AbnormalPowerAudioNotifySignal", "(byte 0x81,)", {"AbnormalPowerAudioNotify 129"}},
    {"AbnormalPowerUsbNotifySignal", "(byte 0x82,)", {"AbnormalPowerUsbNotify 130"}},
    {"OnPowerPreRadioOffNotify", "@() ()", {"PreRadioOff"}},
    {"OnMcuBootTypeNotifySignal", "(byte 0x14,)", {"McuBootTypeNotify 20"}},
    {"OnMcuRequestDisplayUiActionSignal", "(byte 0xc8,)", {"McuRequestDisplayUiAction 200"}},
    {"OnHeadLightStateChange", "(true,)", {"HeadLightStateChange 1"}},
    {"SpeakerStateChangeSignal", "@() ()", {"SpeakerStateChange {1:5,2:5,3:5,4:5}"}},
    {"CarSpeedChangeSignal", "(uint32 4294967295,)", {"CarSpeedChange 4294967295"}},
    {"CarFloatSpeedChangeSignal", "(0.0,)", {"CarFloatSpeedChange 0"}},
    {"CarFloatSpeedChangeSignal", "(123.45,)", {"CarFloatSpeedChange 123.45"}},
    {"ParkingStateChangeSignal", "(true,)", {"ParkingStateChange 1"}},
    {"RadioAntStateChangeSignal", "(byte 0xff,)", {"RadioAntStateChange 255"}},
    {"GpsAntStateChangeSignal", "(byte 0x05,)", {"GpsAntStateChange 5"}},
    {"DABAntStateChangeSignal", "(byte 0x04,)", {"DABAntStateChange 4"}},
    {"MicConnectStateChangeSignal", "(byte 0x03,)", {"MicConnectStateChange 3"}},
    {"OnFactoryResetModeSignal", "@() ()", {"FactoryResetMode"}},
    {"AcStateChangeSignal", "(byte 0x81,)", {"AcStateChange {0:1,7:1}"}},
    {"AirBlowModeChangeSignal", "(byte 0x08,)", {"AirBlowModeChange 8"}},
    {"AirLevelChangeSignal", "(-1,)", {"AirLevelChange -1"}},
    {"TempDriverChangeSignal", "(-40.5,)", {"TempDriverChange -40.5"}},
    {"TempCopilotChangeSignal", "(1e300,)", {"TempCopilotChange 1.0000000000000001e+300"}},
    {"TempEnvChangeSignal", "(0.0,)", {"TempEnvironmentChange 0"}},
    {"DoorStateChangeSignal", "(byte 0x87,)", {"DoorStateChange {2:1,7:1}"}},
    {"DoorStateChangeSignal", "(byte 0x04,)", {"DoorStateChange {7:0}"}},
    {"KeyStateChangeSignal", "(byte 0xa2, byte 0xff)", {"KeyStateChange 162=255"}},
    {"CurSpeedChangeSignal", "(2147483647,)", {"CurrentSpeedChange 2147483647"}},
    {"CurSpeedChangeSignalRaise", "(-2147483648,)", {"CurrentSpeedChange_Raise -2147483648"}},
    {"AvrSpeedChangeSignal", "(-1,)", {"AverageSpeedChange -1"}},
    {"MileTotalChangeSignal", "(uint32 4294967295,)", {"TotalMileChange 4294967295"}},
    {"MileEnduranceChangeSignal", "(-1,)", {"EnduranceMileChange -1"}},
    {"MileTotalChangeSignalRaise", "(uint32 4294967295,)", {"TotalMileChange_Raise {0:4294967295}"}},
    {"MileEnduranceChangeSignalRaise", "(-1,)", {"EnduranceMileChange_Raise {0:4294967295}"}},
    {"MileStageAChangeSignal", "(uint32 1,)", {"Stage_A_MileChange 1"}},
    {"MileStageBChangeSignal", "(uint32 2147483648,)", {"Stage_B_MileChange 2147483648"}},
    {"CurFuelChangeSignal", "(-1,)", {"CurrentFuelChange -1"}},
    {"AvrFuelChangeSignal", "(2147483647,)", {"AverageFuelChange 2147483647"}},
    {"RotateSpeedChangeSignal", "(6500,)", {"RotateSpeedChange 6500"}},
    {"SimpleAirModeChangeSignal", "(byte 0x9f,)", {"SimpleAirModeChange {4:1,7:1}"}},
    {"OnCameraStateChangeSignal", "(true, false)", {"CameraStateChange 1 0"}},
    {"OnSystemTempChange", "(-40,)", {"SystemTempChange -40"}},
    {"OnTFTTempChange", "(255,)", {"TFTTempChange 255"}},
    {"OnSystemLanguageChangeSignal", "(byte 0xff,)", {"SystemLanguageChange 255"}},
    {"OnUrgentMuteStateChangeSignal", "(true,)", {"UrgentMuteStateChange 1"}},
    {"OnRadioRegionChangeSignal", "(byte 0x03,)", {"RadioRegionChange 3"}},
    {"OnRadioPresetChangeSignal", "(byte 0xff, uint32 4294967295, byte 0x06)", {"RadioPresetChange 255 4294967295 6"}},
    {"OnSpeakerAmountChangeSignal", "(byte 0xff,)", {"SpeakerAmountChange 255"}},
    {"OnDateInfoChangeSignal", "(byte 0x01,)", {}},
    {"OnExternalMcuTimeChangeSignal", "(byte 0x01,)", {"ExternalMcuTimeChange 0/0"}},
    {"On24TimeModeChangeSignal", "(true,)", {"24TimeModeChange 1"}},
    {"OnDstStatusChangeSignal", "(true,)", {"DstStatusChange 1"}},
    {"OnPowerWakeupTypeSignal", "(byte 0xff,)", {"PowerWakeupType 255"}},
    {"OnRadarInfoChangedSignal", "(byte 0x01, byte 0x02, byte 0x03, byte 0xff)", {"RadarInfoChange 1 2 3 255"}},
    {"OnSimpleRVCSignal", "(true,)", {"SimpleRVCSignalChange 1"}},
    {"RaiseGacAcStateChangeSignal", "(byte 0xff, byte 0x0f)", {"RaiseGacAcStateChange {}"}},
    {"OnRaiseGacRadarInfoChangedSignal",
     "(byte 0x05, byte 0x01, byte 0x02, byte 0x03, byte 0x04)",
     {"RaiseGacRadarInfoChange 5 1 2 3 4"}},
    {"RaiseVWSteeringWheelAngelChangeSignal", "(byte 0x1c, byte 0x02)", {"RaiseVWSteeringWheelAngelChange 0"}},
    {"OnGeneralAcStateChangeSignal", "(byte 0x01, byte 0xff)", {}},
    {"OnGeneralAirLevelChangeSignal", "(byte 0xff, -1)", {"GeneralAirLevelChange 255 -1"}},
    {"OnGeneralLeftTempChangeSignal", "(byte 0x00, 21.5)", {"GeneralLeftTempChange 0 21.5"}},
    {"OnGeneralRightTempChangeSignal", "(byte 0x01, -0.25)", {"GeneralRightTempChange 1 -0.25"}},
    {"OnSteelMateRadarInfoChangedSignal",
     "(byte 0x0a, byte 0x0b, byte 0x0c, byte 0xff)",
     {"SteelMateRadarInfoChange 10 11 12 255"}},
};

class Signals : public testing::Test {
 protected:
  /// Sends a signal through the simulator's control interface.
  std::string Emit(const Row& row) {
    GVariantBuilder values;
    g_variant_builder_init(&values, G_VARIANT_TYPE("av"));
    const GLibPtr<GVariant> tuple(g_variant_ref_sink(g_variant_new_parsed(row.arguments)));
    for (gsize i = 0; i < g_variant_n_children(tuple.get()); ++i) {
      const GLibPtr<GVariant> value(g_variant_get_child_value(tuple.get(), i));
      g_variant_builder_add(&values, "v", value.get());
    }
    GError* failure = nullptr;
    GVariant* const answer = g_dbus_connection_call_sync(
        bus_.get(), "com.vorn.linux.systemservice", "/com/vorn/linux/simulator", "com.vorn.linux.simulator", "Emit",
        g_variant_new("(sav)", row.signal, &values), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &failure);
    if (answer != nullptr) g_variant_unref(answer);
    const GLibPtr<GError> error(failure);
    return error == nullptr ? "" : error->message;
  }

  GLibPtr<GDBusConnection> bus_{g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr)};
};

TEST_F(Signals, ArriveUnchanged) {
  Process simulator({HLX_BINARY_DIR "/simulator/hlx-simulator"});
  ASSERT_TRUE(simulator.WaitForLine("ready"));
  ASSERT_TRUE(HLX_StartSystemProxy());
  Power power;
  Misc misc;
  Time time;
  Update update;
  HLX_GetSystemPowerProxy()->AddListener(&power);
  HLX_GetSystemMiscProxy()->AddListener(&misc);
  HLX_GetSystemTimeProxy()->AddListener(&time);
  HLX_GetSystemUpdateProxy()->AddListener(&update);

  std::map<std::string, int> sent;
  for (const Row& row : kRows) {
    SCOPED_TRACE(std::string(row.signal) + row.arguments);
    ++sent[row.signal];
    notes.clear();
    ASSERT_EQ(Emit(row), "");
    ASSERT_EQ(Emit({"OnPowerPreRadioOffNotify", "@() ()", {}}), "");  // marks the end
    ASSERT_TRUE(RunUntil([] { return !notes.empty() && notes.back() == "PreRadioOff"; }));
    notes.pop_back();
    // The simulated clock also tells of itself, with a time that is not ours to know.
    const auto dates = std::stable_partition(notes.begin(), notes.end(),
                                             [](const std::string& note) { return note.rfind("Date ", 0) != 0; });
    EXPECT_TRUE(dates != notes.end() || std::string(row.signal) != "OnDateInfoChangeSignal");
    notes.erase(dates, notes.end());
    EXPECT_EQ(notes, row.told);
  }
  // Each signal of the interface has been sent.
  int count = 0;
  for (GDBusSignalInfo** signal = com_vorn_linux_system_interface_info()->signals; *signal != nullptr; ++signal) {
    EXPECT_TRUE(sent.count((*signal)->name)) << (*signal)->name;
    ++count;
  }
  EXPECT_EQ(count, 76);
  HLX_ReleaseSystemProxy();
}

}  // namespace
