// The simulator as a process on a real bus: calls, records, settings, clock, start and stop.
#include <gmock/gmock.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <array>
#include <cstdlib>
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
using testing::ElementsAre;
using testing::HasSubstr;
using Words = std::vector<std::string>;

namespace {

constexpr char kSimulator[] = HLX_BINARY_DIR "/simulator/hlx-simulator";

int Segment(unsigned long long key) { return shmget(static_cast<key_t>(key), 0, 0); }

template <class Record>
const Record& Map(unsigned long long key) {
  return *static_cast<const Record*>(shmat(Segment(key), nullptr, SHM_RDONLY));
}

/// A record's variant, alone in a tuple, in GVariant's text form.
std::string Record(const std::vector<int>& numbers) {
  const GLibPtr<GVariant> boxed(g_variant_ref_sink(build_variant_data(numbers.data(), numbers.size() * sizeof(int))));
  return std::string("(") + GLibPtr<gchar>(g_variant_print(boxed.get(), TRUE)).get() + ",)";
}

class SimulatorTest : public testing::Test {
 public:
  SimulatorTest() {
    char directory[] = "/tmp/simulator.XXXXXX";
    const std::string root = mkdtemp(directory);
    setenv("HLX_HOST_STATE", root.c_str(), 1);
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
    simulator_ = std::make_unique<Process>(Words{kSimulator});
    ASSERT_TRUE(simulator_->WaitForLine("hlx-simulator: ready on com.vorn.linux.systemservice")) << simulator_->Err();
  }

  static void ForgetSegments() {
    for (const auto key : {SHM_POWER_DATA_KEY_ID, SHM_MISC_DATA_KEY_ID, SHM_TIME_DATA_KEY_ID, SHM_INFO_DATA_KEY_ID}) {
      shmctl(Segment(key), IPC_RMID, nullptr);
    }
  }

  /// Calls a method with a tuple in GVariant's text form: what came back, or the error's text.
  std::string Call(const char* method, const std::string& arguments = "@() ()",
                   const char* interface = "com.vorn.linux.system") const {
    GError* failure = nullptr;
    const GLibPtr<GVariant> answer(g_dbus_connection_call_sync(
        bus_.get(), "com.vorn.linux.systemservice", "/com/vorn/linux/systemservice", interface, method,
        g_variant_new_parsed(arguments.c_str()), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &failure));
    if (failure != nullptr) return GLibPtr<GError>(failure)->message;
    return GLibPtr<gchar>(g_variant_print(answer.get(), FALSE)).get();
  }

  void ExpectLines(const Words& lines) {
    for (const std::string& line : lines) EXPECT_TRUE(simulator_->WaitForLine(line)) << line << simulator_->Out();
  }

  /// Runs another simulator, or a command of it, that must end with `code` and say `text`.
  static void ExpectEnd(Words words, int code, const std::string& text) {
    words.insert(words.begin(), kSimulator);
    Process process(words);
    EXPECT_EQ(code, process.Wait());
    EXPECT_THAT(process.Err(), HasSubstr(text));
  }

  std::unique_ptr<Process> simulator_;
  GLibPtr<GDBusConnection> bus_;
};

TEST_F(SimulatorTest, DescribesAnswersAndPrintsEveryMethod) {
  const std::string xml = Call("Introspect", "@() ()", "org.freedesktop.DBus.Introspectable");
  // clang-format off
  const std::map<std::string, std::string> arguments = {
      {"", "@() ()"}, {"y", "(byte 1,)"}, {"yy", "(byte 1, byte 255)"}, {"b", "(true,)"}, {"i", "(-1,)"},
      {"u", "(uint32 4294967295,)"}, {"s", "('text',)"}, {"SetLogoInfo", Record({1, 2, 3, 4, 5})},
      {"SetCurDate", Record({2024, 2, 29, 4})}, {"SetCurTime", Record({23, 59, 59})},
      {"SetGpsUTCTimeSync", Record({1901, 12, 13, 5, 20, 45, 52})}};
  // clang-format on
  int count = 0;
  for (auto** method = com_vorn_linux_system_interface_info()->methods; *method != nullptr; ++method, ++count) {
    const std::string name = (*method)->name;
    std::string signature;
    for (auto** arg = (*method)->in_args; arg != nullptr && *arg != nullptr; ++arg) signature += (*arg)->signature;
    EXPECT_EQ(name == "SetGpsUTCTimeSync" ? "(true,)" : "()",
              Call(name.c_str(), arguments.at(signature == "v" ? name : signature)));
    ExpectLines({"call " + name + "("});
    EXPECT_NE(std::string::npos, xml.find("<method name=\"" + name + "\"")) << name;
  }
  EXPECT_EQ(54, count);
}

TEST_F(SimulatorTest, RefusesBadArgumentsByName) {
  const std::vector<std::array<std::string, 3>> calls = {
      {"SetTimeZone", "(byte 79,)", "SetTimeZone: zone: 79 is not within 0 to 78"},
      {"SetCurDate", Record({2024, 2, 29}), "SetCurDate: dateInfo: a byte array of 16 bytes is needed, not 12"},
      {"SetCurDate", Record({-2147483647 - 1, 2147483647, -1, 0}), "dateInfo: -2147483648-2147483647--1,"},
      {"SetCurTime", "(<'noon'>,)", "timeInfo: a byte array of 12 bytes is needed, not another type"},
      {"SetGpsUTCTimeSync", Record({2024, 13, 1, 0, 0, 0, 0}), "dateTime: 2024-13-1,"},
      {"SetLogoInfo", Record({1, 2, 3, 4, 5, 6}), "nLogo: a byte array of 20 bytes is needed, not 24"}};
  for (const auto& [method, arguments, text] : calls) {
    EXPECT_THAT(Call(method.c_str(), arguments),
                testing::AllOf(HasSubstr("org.freedesktop.DBus.Error.InvalidArgs"), HasSubstr(text)));
  }
  const std::vector<std::pair<Words, const char*>> commands = {
      {{"emit", "NoSuchSignal"}, "there is no signal NoSuchSignal"},
      {{"emit", "OnRadarInfoChangedSignal", "1", "2", "3"}, "OnRadarInfoChangedSignal takes 4, not 3"},
      {{"emit", "KeyStateChangeSignal", "1", "256"}, "state: 256 is not within 0 to 255"},
      {{"emit", "CarSpeedChangeSignal", "-1"}, "speed: -1 is not within 0 to 4294967295"},
      {{"emit", "ScreenStateChangeSignal", "2"}, "isScreenOn: 2 is not within 0 to 1"},
      {{"set", "misc.nothing", "1"}, "there is no field misc.nothing"},
      {{"set", "misc.can_version", std::string(32, 'x')}, "misc.can_version: a text of 32 bytes does not fit"},
      {{"set", "misc.simple_environment_temperature", "-129"}, "not within -128 to 127"},
      {{"--loud"}, "--loud"}};
  for (const auto& [words, text] : commands) ExpectEnd(words, 2, text);
}

TEST_F(SimulatorTest, SettingsSurviveARestart) {
  for (const std::string command :
       {"SetPowerOffDelayTime(byte 33,)", "SetRetainACCSec(300,)", "SetColorType(byte 9,)", "SetLedAnimation(byte 0,)",
        "SetScreenLightLevel(byte 1, byte 2)", "SetButtonLightValue(byte 0, byte 255)", "SetLightDetectStyle(byte 1,)",
        "SetLightFixDayStyle(byte 1,)", "SetDrivePosition(true,)", "EnableCanBoxModule(true,)",
        "SetRvcOffDelaySwitch(true,)", "SetHandbrakeCheckingSwitch(true,)", "SetTime24Mode(true,)",
        "SetAutoSyncMode(true,)", "SetAutoAdjustDstMode(true,)", "SetTimeZone(byte 78,)"}) {
    const auto bracket = command.find('(');
    EXPECT_EQ("()", Call(command.substr(0, bracket).c_str(), command.substr(bracket))) << command;
  }
  for (const bool restarted : {false, true}) {
    if (restarted) {
      EXPECT_EQ(0, simulator_->Terminate());
      ForgetSegments();
      Start();
    }
    const auto& p = Map<PowerShmData>(SHM_POWER_DATA_KEY_ID);
    const auto& m = Map<MiscShmData>(SHM_MISC_DATA_KEY_ID);
    const auto& t = Map<TimeShmData>(SHM_TIME_DATA_KEY_ID);
    EXPECT_THAT((std::vector<int64_t>{p._power_delay_time, p._power_retain_acc_sec, p._screen_day_level,
                                      p._screen_night_level, p.button_day_level, p.button_night_level, p.color_type,
                                      p.led_animation, p.is_light_auto_detect, p.is_light_day_fix}),
                ElementsAre(33, 300 & 255, 70, 2, 255, 9, 9, 0, 1, 1));
    EXPECT_THAT((std::vector<int64_t>{m._is_left_position, m._can_box_enble, m._is_rvc_delay, t._time_24_mode,
                                      t._auto_sync_mode, t.auto_adjust_dst_mode, t._cur_zone, m.is_handbrake_test_on}),
                ElementsAre(1, 1, 1, 1, 1, 1, 78, restarted ? 0 : 1));
  }
}

TEST_F(SimulatorTest, ClockRunsInTheSelectedZone) {
  const auto& t = Map<TimeShmData>(SHM_TIME_DATA_KEY_ID);
  const auto now = [&t] {
    const auto& [year, month, day, week] = t.cur_date;
    return std::vector<int>{year, month, day, week, t.cur_time.hour, t.cur_time.minute, t.is_cur_zone_dst_active};
  };
  EXPECT_EQ(1, t._is_time_reset_need);
  Call("SetGpsUTCTimeSync", Record({2024, 7, 1, 0, 12, 30, 5}));  // the configured zone is Berlin
  EXPECT_THAT(now(), ElementsAre(2024, 7, 1, 1, 14, 30, 1));
  ExpectLines({"emit OnDstStatusChangeSignal(isDst=true)", "emit OnDateInfoChangeSignal(type=1)"});
  Call("SetTimeZone", "(byte 78,)");
  EXPECT_THAT(now(), ElementsAre(2024, 7, 1, 1, 21, 30, 0));
  ExpectLines({"emit OnDstStatusChangeSignal(isDst=false)"});
  Call("SetCurDate", Record({2028, 2, 28, 6}));
  Call("SetCurTime", Record({23, 59, 59}));
  ExpectLines({"call SetCurTime", "emit OnDateInfoChangeSignal(type=1)", "emit OnDateInfoChangeSignal(type=0)"});
  EXPECT_THAT(now(), ElementsAre(2028, 2, 29, 2, 0, 0, 0));
}

TEST_F(SimulatorTest, PlaysUpdatesAndPowerKey) {
  ExpectEnd({"set", "update.duration", "1"}, 0, "");
  Call("ApplyUpdate", "(2,)");
  Call("ApplyMpuUpdate");
  ExpectLines({"emit UpdateRequestResultInformSignal(result=0)", "emit OnMpuUpdateStateNotify(state=1)",
               "emit UpdateRequestResultInformSignal(result=2)", "emit OnMpuUpdateStateNotify(state=3)",
               "emit OnMcuUpdateStateNotify(state=1)", "emit OnMcuUpdateProgressNotify(progress=0)",
               "emit OnMcuUpdateProgressNotify(progress=100)", "emit OnMcuUpdateStateNotify(state=3)"});
  ExpectEnd({"set", "update.fails", "1"}, 0, "");
  Call("CanUpdate", "(1,)");
  ExpectLines({"emit UpdateCanProcess(CanProcessValue=50)", "emit UpdateCanProcess(CanProcessValue=-1)"});

  const auto& power = Map<PowerShmData>(SHM_POWER_DATA_KEY_ID);
  Call("RequestPowerOffState", "(true,)");
  EXPECT_EQ(16U, power.radio_on_state);
  Call("ConfirmPreRadioOffState", "(1,)");
  EXPECT_EQ(0U, power.radio_on_state);
  ExpectLines({"emit OnPowerPreRadioOffNotify()", "emit RadioStateChangeSignal(state=0)"});
}

TEST_F(SimulatorTest, StartsAndStopsCleanly) {
  ExpectEnd({}, 1, "hlx-simulator: the name com.vorn.linux.systemservice is already taken");
  Process busless({"env", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent", kSimulator});
  EXPECT_EQ(1, busless.Wait());
  EXPECT_THAT(busless.Err(), HasSubstr("hlx-simulator: cannot reach the session bus: "));
  simulator_->Signal(SIGINT);
  EXPECT_EQ(0, simulator_->Wait());
  ExpectEnd({"emit", "OnFactoryResetModeSignal"}, 1, "no simulator runs on this bus");
  ForgetSegments();
  EXPECT_NE(-1, shmget(static_cast<key_t>(SHM_MISC_DATA_KEY_ID), 100, IPC_CREAT | 0666));
  ExpectEnd({}, 1, "hlx-simulator: cannot have the misc segment (key 0xA8800082, 232 bytes): Invalid argument");
  ForgetSegments();
  Start();
}

}  // namespace
