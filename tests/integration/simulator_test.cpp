#include <gmock/gmock.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <memory>

#include "data/MiscShmDataBase.h"
#include "data/PowerShmDataBase.h"
#include "data/TimeShmDataBase.h"
#include "dbus/GLibPtr.h"
#include "dbus/VariantRecord.h"
#include "dbus_system.h"
#include "tests/support/Process.h"

using namespace HLXSystemData;
using testing::HasSubstr;

namespace {

constexpr char kSimulator[] = HLX_BINARY_DIR "/simulator/hlx-simulator";
constexpr unsigned long long kKeys[] = {SHM_POWER_DATA_KEY_ID, SHM_MISC_DATA_KEY_ID, SHM_TIME_DATA_KEY_ID,
                                        SHM_INFO_DATA_KEY_ID};

template <class Record>
const Record& Map(unsigned long long key) {
  return *static_cast<const Record*>(shmat(shmget(static_cast<key_t>(key), 0, 0), nullptr, SHM_RDONLY));
}

class SimulatorTest : public testing::Test {
 protected:
  SimulatorTest() {
    char directory[] = "/tmp/simulator.XXXXXX";
    const std::string root = mkdtemp(directory);
    setenv("HLX_HOST_STATE", root.c_str(), 1);
    setenv("HLX_HOST_PERSIST", (root + "/persist.db").c_str(), 1);
    setenv("HLX_HOST_CONFIG", (root + "/platform.conf").c_str(), 1);
    setenv("G_DEBUG", "fatal-criticals", 1);
    std::ofstream(root + "/platform.conf") << "[setting]\ndefault_screen_day_brightness=70\ndefault_time_zone=26\n"
                                              "default_led_night_brightness=9\n[system]\nenable_led_setting=true\n";
    Start();
    bus_.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  }
  ~SimulatorTest() override {
    EXPECT_EQ(0, simulator_->Terminate()) << simulator_->Err();
    ForgetSegments();
  }

  void Start() {
    simulator_ = std::make_unique<Process>(std::vector<std::string>{kSimulator, "--mcu-version=7.7"});
    ASSERT_TRUE(simulator_->WaitForLine("hlx-simulator: ready on com.vorn.linux.systemservice")) << simulator_->Err();
  }

  static void ForgetSegments() {
    for (const auto key : kKeys) shmctl(shmget(static_cast<key_t>(key), 0, 0), IPC_RMID, nullptr);
  }

  /// Calls a method with a tuple in GVariant's text form: what came back, or the error's text.
  std::string Call(const char* method, const std::string& arguments,
                   const char* interface = "com.vorn.linux.system") const {
    GError* failure = nullptr;
    GVariant* const tuple = g_variant_new_parsed(arguments.c_str());
    const GLibPtr<GVariant> answer(
        g_dbus_connection_call_sync(bus_.get(), "com.vorn.linux.systemservice", "/com/vorn/linux/systemservice",
                                    interface, method, tuple, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &failure));
    if (failure != nullptr) return GLibPtr<GError>(failure)->message;
    return GLibPtr<gchar>(g_variant_print(answer.get(), FALSE)).get();
  }

  /// The text form of a record's variant.
  static std::string Record(const std::vector<int>& words) {
    const GLibPtr<GVariant> boxed(g_variant_ref_sink(build_variant_data(words.data(), words.size() * sizeof(int))));
    return GLibPtr<gchar>(g_variant_print(boxed.get(), TRUE)).get();
  }

  static int Control(std::vector<std::string> words, std::string* errors = nullptr) {
    words.insert(words.begin(), kSimulator);
    Process control(words);
    const int code = control.Wait();
    if (errors != nullptr) *errors = control.Err();
    return code;
  }

  bool Lines(const std::vector<const char*>& lines) {
    for (const char* const line : lines) {
      if (!simulator_->WaitForLine(line)) return ADD_FAILURE() << "no " << line << " in\n" << simulator_->Out(), false;
    }
    return true;
  }

  std::unique_ptr<Process> simulator_;
  GLibPtr<GDBusConnection> bus_;
};

TEST_F(SimulatorTest, AnswersAndPrintsEveryMethod) {
  const std::map<std::string, std::string> basic = {
      {"y", "byte 1"}, {"b", "true"}, {"i", "-1"}, {"u", "uint32 4294967295"}, {"s", "'text'"}};
  const std::map<std::string, std::string> records = {{"SetLogoInfo", Record({1, 2, 3, 4, 5})},
                                                      {"SetCurDate", Record({2024, 2, 29, 4})},
                                                      {"SetCurTime", Record({23, 59, 59})},
                                                      {"SetGpsUTCTimeSync", Record({1901, 12, 13, 5, 20, 45, 52})}};
  int count = 0;
  for (auto** method = com_vorn_linux_system_interface_info()->methods; *method != nullptr; ++method, ++count) {
    const char* const name = (*method)->name;
    std::vector<std::string> values;
    for (auto** arg = (*method)->in_args; arg != nullptr && *arg != nullptr; ++arg) {
      values.push_back(records.count(name) != 0 ? records.at(name) : basic.at((*arg)->signature));
    }
    const std::string tuple = values.empty() ? "@() (" : "(" + values[0] + "," + (values.size() > 1 ? values[1] : "");
    EXPECT_EQ(std::strcmp(name, "SetGpsUTCTimeSync") == 0 ? "(true,)" : "()", Call(name, tuple + ")")) << name;
    EXPECT_TRUE(simulator_->WaitForLine(std::string("call ") + name + "(")) << name;
  }
  EXPECT_EQ(54, count);
}

TEST_F(SimulatorTest, DescribesItselfAsTheInterfaceDoes) {
  const std::string answer = Call("Introspect", "@() ()", "org.freedesktop.DBus.Introspectable");
  const GLibPtr<GVariant> tuple(g_variant_parse(nullptr, answer.c_str(), nullptr, nullptr, nullptr));
  const gchar* xml = nullptr;
  g_variant_get(tuple.get(), "(&s)", &xml);
  GString* const expected = g_string_new("<node>");
  g_dbus_interface_info_generate_xml(com_vorn_linux_system_interface_info(), 0, expected);
  g_string_append(expected, "</node>");
  std::vector<std::string> forms;
  for (const char* const text : {static_cast<const char*>(expected->str), xml}) {
    GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(text, nullptr);
    GString* const form = g_string_new(nullptr);
    g_dbus_interface_info_generate_xml(g_dbus_node_info_lookup_interface(node, "com.vorn.linux.system"), 0, form);
    forms.emplace_back(GLibPtr<gchar>(g_string_free(form, FALSE)).get());
    g_dbus_node_info_unref(node);
  }
  g_string_free(expected, TRUE);
  EXPECT_EQ(forms[0], forms[1]);
}

TEST_F(SimulatorTest, RefusesBadArgumentsByName) {
  const struct {
    const char* method;
    std::string argument;
    const char* error;
  } calls[] = {
      {"SetTimeZone", "byte 79", "SetTimeZone: zone: 79 is not within 0 to 78"},
      {"SetCurDate", Record({2024, 2, 29}), "SetCurDate: dateInfo: a byte array of 16 bytes is needed, not 12"},
      {"SetCurDate", Record({2023, 2, 29, 0}), "dateInfo: 2023-2-29,"},
      {"SetCurDate", Record({-2147483647 - 1, 2147483647, -1, 0}), "dateInfo: -2147483648-2147483647--1,"},
      {"SetCurTime", "<'noon'>", "timeInfo: a byte array of 12 bytes is needed, not another type"},
      {"SetCurTime", Record({24, 0, 0}), "timeInfo: "},
      {"SetCurTime", Record({1, 2, 3, 4}), "not 16"},
      {"SetGpsUTCTimeSync", Record({2024, 13, 1, 0, 0, 0, 0}), "dateTime: 2024-13-1,"},
      {"SetGpsUTCTimeSync", "<@ay []>", "dateTime: a byte array of 28 bytes is needed, not 0"},
      {"SetLogoInfo", "<byte 1>", "nLogo: a byte array of 20 bytes is needed, not another type"},
  };
  for (const auto& call : calls) {
    const std::string answer = Call(call.method, "(" + call.argument + ",)");
    EXPECT_THAT(answer, HasSubstr("org.freedesktop.DBus.Error.InvalidArgs"));
    EXPECT_THAT(answer, HasSubstr(call.error));
  }
  const struct {
    std::vector<std::string> words;
    const char* error;
  } controls[] = {
      {{"emit", "NoSuchSignal"}, "there is no signal NoSuchSignal"},
      {{"emit", "OnRadarInfoChangedSignal", "1", "2", "3"}, "OnRadarInfoChangedSignal takes 4, not 3"},
      {{"emit", "KeyStateChangeSignal", "1", "256"}, "state: 256 is not within 0 to 255"},
      {{"emit", "CarSpeedChangeSignal", "-1"}, "speed: -1 is not within 0 to 4294967295"},
      {{"emit", "AirLevelChangeSignal", "99999999999999999999"}, "level: 99999999999999999999 is not within"},
      {{"emit", "TempEnvChangeSignal", "warm"}, "value: warm is no number"},
      {{"emit", "ScreenStateChangeSignal", "2"}, "isScreenOn: 2 is not within 0 to 1"},
      {{"emit"}, "emit needs"},
      {{"set", "misc.nothing", "1"}, "there is no field misc.nothing"},
      {{"set", "misc.can_version", std::string(32, 'x')}, "misc.can_version: a text of 32 bytes does not fit"},
      {{"set", "misc.simple_environment_temperature", "-129"}, "not within -128 to 127"},
      {{"set", "misc.total_mile"}, "set needs"},
      {{"--loud"}, "--loud"},
  };
  for (const auto& control : controls) {
    std::string errors;
    EXPECT_EQ(2, Control(control.words, &errors));
    EXPECT_THAT(errors, HasSubstr(control.error));
  }
}

TEST_F(SimulatorTest, SettingsSurviveARestart) {
  const std::pair<const char*, const char*> commands[] = {{"SetPowerOffDelayTime", "(byte 33,)"},
                                                          {"SetRetainACCSec", "(300,)"},
                                                          {"SetScreenLightLevel", "(byte 1, byte 2)"},
                                                          {"SetColorType", "(byte 9,)"},
                                                          {"SetLedAnimation", "(byte 0,)"},
                                                          {"SetLightDetectStyle", "(byte 1,)"},
                                                          {"SetLightFixDayStyle", "(byte 1,)"},
                                                          {"SetDrivePosition", "(true,)"},
                                                          {"SetButtonLightValue", "(byte 0, byte 255)"},
                                                          {"EnableCanBoxModule", "(true,)"},
                                                          {"SetRvcOffDelaySwitch", "(true,)"},
                                                          {"SetTime24Mode", "(true,)"},
                                                          {"SetAutoSyncMode", "(true,)"},
                                                          {"SetAutoAdjustDstMode", "(true,)"},
                                                          {"SetTimeZone", "(byte 78,)"},
                                                          {"SetHandbrakeCheckingSwitch", "(true,)"}};
  for (const bool restarted : {false, true}) {
    if (restarted) {
      EXPECT_EQ(0, simulator_->Terminate());
      ForgetSegments();
      Start();
    } else {
      for (const auto& [method, arguments] : commands) EXPECT_EQ("()", Call(method, arguments)) << method;
    }
    const auto& power = Map<PowerShmData>(SHM_POWER_DATA_KEY_ID);
    EXPECT_THAT(
        (std::vector<int>{power._power_delay_time, power._power_retain_acc_sec, power._screen_day_level,
                          power._screen_night_level, power.button_day_level, power.button_night_level, power.color_type,
                          int(power.led_animation), int(power.is_light_auto_detect), int(power.is_light_day_fix)}),
        testing::ElementsAre(33, 300 & 255, 70, 2, 255, 9, 9, 0, 1, 1));
    const auto& misc = Map<MiscShmData>(SHM_MISC_DATA_KEY_ID);
    EXPECT_THAT((std::vector<unsigned>{misc._is_left_position, misc._can_box_enble, misc._is_rvc_delay,
                                       misc.is_handbrake_test_on}),
                testing::ElementsAre(1, 1, 1, restarted ? 0 : 1));
    const auto& time = Map<TimeShmData>(SHM_TIME_DATA_KEY_ID);
    EXPECT_THAT((std::vector<int>{time._time_24_mode, time._auto_sync_mode, time.auto_adjust_dst_mode, time._cur_zone}),
                testing::ElementsAre(1, 1, 1, 78));
  }
}

TEST_F(SimulatorTest, ClockRunsInTheSelectedZone) {
  const auto& time = Map<TimeShmData>(SHM_TIME_DATA_KEY_ID);
  const auto now = [&time] {
    return std::vector<int>{time.cur_date.year,          time.cur_date.month,     time.cur_date.day,
                            time.cur_date.week,          time.cur_time.hour,      time.cur_time.minute,
                            time.is_cur_zone_dst_active, time._is_time_reset_need};
  };
  EXPECT_EQ(1, time._is_time_reset_need);
  Call("SetGpsUTCTimeSync", "(" + Record({2024, 7, 1, 0, 12, 30, 5}) + ",)");  // zone 26 is Berlin
  EXPECT_THAT(now(), testing::ElementsAre(2024, 7, 1, 1, 14, 30, 1, 0));
  EXPECT_TRUE(Lines({"emit OnDstStatusChangeSignal(isDst=true)", "emit OnDateInfoChangeSignal"}));
  Call("SetTimeZone", "(byte 78,)");
  EXPECT_THAT(now(), testing::ElementsAre(2024, 7, 1, 1, 21, 30, 0, 0));
  EXPECT_TRUE(Lines({"emit OnDstStatusChangeSignal(isDst=false)"}));
  Call("SetCurDate", "(" + Record({2028, 2, 28, 6}) + ",)");
  Call("SetCurTime", "(" + Record({23, 59, 59}) + ",)");
  EXPECT_TRUE(Lines({"call SetCurTime", "emit OnDateInfoChangeSignal(type=1)", "emit OnDateInfoChangeSignal(type=0)"}));
  EXPECT_THAT(now(), testing::ElementsAre(2028, 2, 29, 2, 0, 0, 0, 0));
}

TEST_F(SimulatorTest, PlaysUpdatesAndPowerKey) {
  EXPECT_EQ(0, Control({"set", "update.duration", "1"}));
  Call("ApplyUpdateAll", "@() ()");
  EXPECT_TRUE(
      Lines({"emit UpdateRequestResultInformSignal", "emit OnMpuUpdateStateNotify", "emit OnMpuUpdateStateNotify",
             "emit OnMcuUpdateStateNotify", "emit OnMcuUpdateProgressNotify(progress=0)",
             "emit OnMcuUpdateProgressNotify(progress=100)", "emit OnMcuUpdateStateNotify"}));
  EXPECT_EQ(0, Control({"set", "update.fails", "1"}));
  Call("ApplyExternalMcuUpdate", "@() ()");
  EXPECT_TRUE(Lines({"emit OnMcuUpdateProgressNotify(progress=50)", "emit OnMcuUpdateStateNotify"}));

  const auto& power = Map<PowerShmData>(SHM_POWER_DATA_KEY_ID);
  Call("RequestPowerOffState", "(true,)");
  EXPECT_EQ(16U, power.radio_on_state);
  Call("ConfirmPreRadioOffState", "(1,)");
  EXPECT_EQ(0U, power.radio_on_state);
  EXPECT_EQ(0U, power.is_screen_on);
  EXPECT_TRUE(Lines({"emit OnPowerPreRadioOffNotify()", "emit RadioStateChangeSignal(state=0)"}));
}

TEST_F(SimulatorTest, StartsAndStopsCleanly) {
  const auto fails = [](const std::vector<std::string>& command, const char* cause) {
    Process other(command);
    EXPECT_EQ(1, other.Wait());
    EXPECT_THAT(other.Err(), HasSubstr(cause));
  };
  fails({kSimulator}, "hlx-simulator: the name com.vorn.linux.systemservice is already taken");
  fails({"env", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent", kSimulator}, "cannot reach the session bus");
  simulator_->Signal(SIGINT);
  EXPECT_EQ(0, simulator_->Wait());
  std::string errors;
  EXPECT_EQ(1, Control({"emit", "OnFactoryResetModeSignal"}, &errors));
  EXPECT_THAT(errors, HasSubstr("no simulator runs"));
  ForgetSegments();
  shmget(static_cast<key_t>(SHM_MISC_DATA_KEY_ID), 100, IPC_CREAT | 0666);
  fails({kSimulator}, "cannot have the misc segment (key 0xA8800082, 232 bytes): Invalid argument");
  ForgetSegments();
  Start();
}

}  // namespace
