// The simulator as a process on a real bus: its verbs, settings, calls, reboots, start and stop.
#include <gmock/gmock.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <algorithm>
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

  void Start(const char* option = "--update-fails") {
    simulator_ = std::make_unique<Process>(Words{kSimulator, option});
    ASSERT_TRUE(simulator_->WaitForLine("hlx-simulator: ready on com.vorn.linux.systemservice")) << simulator_->Err();
  }

  static void ForgetSegments() {
    for (const auto key : {SHM_POWER_DATA_KEY_ID, SHM_MISC_DATA_KEY_ID, SHM_TIME_DATA_KEY_ID, SHM_INFO_DATA_KEY_ID}) {
      shmctl(Segment(key), IPC_RMID, nullptr);
    }
  }

  /// Calls a method with a tuple in GVariant's text form: what came back, or the error's text.
  std::string Call(const char* method, const std::string& arguments = "@() ()",
                   const std::string& interface = "com.vorn.linux.system") const {
    const std::string name = interface == "com.vorn.linux.system" ? "com.vorn.linux.systemservice" : interface;
    GError* failure = nullptr;
    std::string path = "/" + name;
    std::replace(path.begin(), path.end(), '.', '/');
    const GLibPtr<GVariant> answer(g_dbus_connection_call_sync(
        bus_.get(), name.c_str(), path.c_str(), interface.c_str(), method, g_variant_new_parsed(arguments.c_str()),
        nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &failure));
    if (failure != nullptr) return GLibPtr<GError>(failure)->message;
    return GLibPtr<gchar>(g_variant_print(answer.get(), FALSE)).get();
  }
  std::string Control(const char* method, const std::string& arguments) const {
    return Call(method, arguments, "com.vorn.linux.simulator");
  }

  void ExpectLines(const Words& lines) {
    for (const std::string& line : lines) EXPECT_TRUE(simulator_->WaitForLine(line)) << line << simulator_->Out();
  }

  /// Runs another simulator, or a command of it, that must end with `code` and say `text`.
  static void ExpectEnd(Words words, int code, const std::string& text) {
    words.insert(words.begin(), kSimulator);
    Process process(words);
    EXPECT_EQ(code, process.Wait()) << words.at(1) << process.Err();
    EXPECT_THAT(process.Out() + process.Err(), HasSubstr(text));
  }

  std::unique_ptr<Process> simulator_;
  GLibPtr<GDBusConnection> bus_;
};

TEST_F(SimulatorTest, RefusesWhatIsWrongAndNamesIt) {
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
      {{"emit", "AccStateChangeSignl", "1"},
       "there is no signal 'AccStateChangeSignl'; did you mean AccStateChangeSignal"},
      {{"emit", "OnRadarInfoChangedSignal", "1", "2", "3"}, "OnRadarInfoChangedSignal takes 4 arguments, not 3"},
      {{"emit", "KeyStateChangeSignal", "1", "256"},
       "KeyStateChangeSignal: state: '256' is not allowed; allowed: 0 to 255"},
      {{"emit", "CarSpeedChangeSignal", "-1"}, "speed: '-1' is no"},
      {{"emit", "ScreenStateChangeSignal", "2"}, "isScreenOn: '2'"},
      {{"emit", "OnHeadLightStateChange", "\xff"}, "is no UTF-8 text"},
      {{"emit"}, "emit takes SIGNAL"},
      {{"set", "misc.dors", "1"}, "there is no value 'misc.dors'; did you mean misc.doors"},
      {{"set", "misc.can_version", std::string(32, 'x')}, "misc.can_version: a text of 32 bytes does not fit"},
      {{"set", "misc.can_version", "\xff"}, "is no UTF-8 text"},
      {{"set", "power.acc", "perhaps"}, "power.acc: 'perhaps' is not allowed; allowed: on or off (1 or 0)"},
      {{"set", "time.date", "2024-02-29"}, "time.date cannot be set: the unit decides it"},
      {{"set", "info.arm_version", "V1"}, "info.arm_version comes from the unit's configuration and files"},
      {{"set", "power.acc"}, "set takes NAME VALUE"},
      {{"get", "powr"}, "there is no area 'powr'; did you mean power?"},
      {{"calls", "SetLogos"}, "there is no method 'SetLogos'; did you mean SetLogo"},
      {{"list", "things"}, "there is no kind 'thing'"},
      {{"reboot", "--warm"}, "--warm"},
      {{"reboot", "--cold", "--acc"}, "--cold excludes --acc"},
      {{"--fresh", "get"}, "--fresh is for a unit that starts"},
      {{"--loud"}, "hlx-simulator: The following argument was not expected: --loud; see hlx-simulator --help"}};
  for (const auto& [words, text] : commands) ExpectEnd(words, 2, text);
}

TEST_F(SimulatorTest, TakesValuesOfAnyTypeAndGivesThemInManyForms) {
  const std::pair<const char*, const char*> values[] = {{"<byte 5>", "5"},   {"<int16 6>", "6"},
                                                        {"<uint16 7>", "7"}, {"<uint64 8>", "8"},
                                                        {"<'0x9'>", "9"},    {"<[1]>", "misc.car_speed: '[1]' is no"}};
  for (const auto& [value, outcome] : values) {
    const std::string answer = Control("Set", "('misc.car_speed', " + std::string(value) + ", false)");
    const std::string speed = Control("Get", "(['misc.car_speed'],)");
    EXPECT_THAT(answer == "()" ? speed : answer, HasSubstr(outcome)) << value;
  }
  ExpectLines({"emit CarSpeedChangeSignal(speed=9)"});
  ExpectEnd({"set", "--silent", "misc.car_speed", "11"}, 0, "");
  ExpectEnd({"set", "misc.car_speed", "12", "--silent"}, 0, "");
  ExpectEnd({"set", "misc.endurance_mile", "13"}, 0, "");
  ExpectLines({"emit MileEnduranceChangeSignal"});
  EXPECT_THAT(simulator_->Out(), testing::Not(HasSubstr("(speed=1")));
  ExpectEnd({"get", "--json", "misc.car_speed", "power.acc", "misc.driver_temperature"}, 0,
            "{\n  \"misc.car_speed\": 12,\n  \"power.acc\": \"on\",\n  \"misc.driver_temperature\": ");
  ExpectEnd({"get", "--json", "--raw", "power.acc"}, 0, "{\n  \"power.acc\": 1\n}\n");
  ExpectEnd({"get", "--raw", "power.acc"}, 0, "1\n");
}

TEST_F(SimulatorTest, SaysWhyTheServiceCannotComeBack) {
  ExpectEnd({"fault", "service", "vanish"}, 0, "");
  Call("RequestName", "('com.vorn.linux.systemservice', uint32 4)", "org.freedesktop.DBus");
  ExpectEnd({"fault", "clear"}, 0, "");
  EXPECT_EQ(
      "hlx-simulator: the service cannot come back: the name com.vorn.linux.systemservice is already taken on this "
      "bus\n",
      simulator_->Err());
  Call("ReleaseName", "('com.vorn.linux.systemservice',)", "org.freedesktop.DBus");
  ExpectEnd({"reboot"}, 0, "");
  EXPECT_EQ("()", Call("SetLogo", "(uint32 1,)"));
}

TEST_F(SimulatorTest, KeepsTheLastTenThousandCalls) {
  const int more = 10;
  for (int number = 0; number < 10000 + more; ++number) {
    ASSERT_EQ("()", Call("SetLogo", "(uint32 " + std::to_string(number) + ",)"));
  }
  const std::string calls = Control("Calls", "('',)");
  EXPECT_EQ(std::string::npos, calls.find("uint32 9>"));
  EXPECT_NE(std::string::npos, calls.find("uint32 10>"));
  EXPECT_NE(std::string::npos, calls.find("uint32 10009>"));
}

TEST_F(SimulatorTest, SettingsSurviveARestartAndEndWithTheFactoryReset) {
  Words all = {"get"};
  const std::vector<std::array<const char*, 4>> settings = {
      // call, value, set, of the factory
      {"SetPowerOffDelayTime(byte 33,)", "power.power_off_delay", "33", "0"},
      {"SetRetainACCSec(300,)", "power.retain_acc", "44", "0"},
      {"SetColorType(byte 3,)", "power.button_color", "blue", "red"},
      {"SetLedAnimation(byte 0,)", "power.led_animation", "off", "on"},
      {"SetScreenLightLevel(byte 1, byte 2)", "power.brightness_night", "2", "0"},
      {"SetScreenLightLevel(byte 0, byte 2)", "power.brightness_day", "2", "70"},
      {"SetButtonLightValue(byte 1, byte 255)", "power.button_brightness_night", "255", "9"},
      {"SetLightDetectStyle(byte 1,)", "power.light_auto_detect", "on", "off"},
      {"SetLightFixDayStyle(byte 1,)", "power.light_fixed_day", "on", "off"},
      {"SetDrivePosition(true,)", "misc.drive_position", "left", "right"},
      {"EnableCanBoxModule(true,)", "misc.can_box", "on", "off"},
      {"SetRvcOffDelaySwitch(true,)", "misc.rear_view_delay", "on", "off"},
      {"SetTime24Mode(true,)", "time.24_hour", "on", "off"},
      {"SetAutoSyncMode(true,)", "time.auto_sync", "on", "off"},
      {"SetAutoAdjustDstMode(true,)", "time.auto_dst", "on", "off"},
      {"SetTimeZone(byte 78,)", "time.zone", "Asia/Tokyo", "Europe/Berlin"}};
  std::string set;
  std::string factory;
  for (const auto& row : settings) {
    const std::string call = row[0];
    EXPECT_EQ("()", Call(call.substr(0, call.find('(')).c_str(), call.substr(call.find('('))));
    all.emplace_back(row[1]);
    set += std::string(row[2]) + "\n";
    factory += std::string(row[3]) + "\n";
  }
  const auto restart = [this](const char* option) {
    EXPECT_EQ(0, simulator_->Terminate());
    ForgetSegments();
    Start(option);
  };
  ExpectEnd(all, 0, set);
  restart("--fresh");
  ExpectEnd(all, 0, factory);
  restart("--quiet");
  ExpectEnd(all, 0, set);
  Call("SetOnPSChange", "('Radio 1',)");
  ExpectEnd({"get", "inbox.ps_text"}, 0, "Radio 1\n");
  Call("SetOnPSChange", "('\\u001b[2JÄ\\u009b\\n',)");
  ExpectEnd({"get", "inbox.ps_text"}, 0, "?[2JÄ??\n");
  Call("ResetFactoryMode");
  ExpectEnd(all, 0, factory);
  ExpectEnd({"get", "inbox.ps_text"}, 0, "\n");
  restart("--quiet");
  ExpectEnd(all, 0, factory);
}

TEST_F(SimulatorTest, RemembersCallsAndLetsWaitForThem) {
  ExpectEnd({"calls", "--wait", "SetLogo", "--timeout", "0"}, 124, "no call of SetLogo within 0 s");
  Process waiting({kSimulator, "calls", "--wait", "SetLogo", "--json"});
  while (Call("SetOnVolChange", "(7,)") == "()" && waiting.Wait(Process::Seconds(0)) == Process::kRunning) {
    Call("SetLogo", "(uint32 4294967295,)");
  }
  EXPECT_EQ(0, waiting.Wait());
  EXPECT_THAT(waiting.Out(),
              testing::MatchesRegex(
                  R"(\{"wall":"20[0-9T:.+-]*","call":"SetLogo","args":\{"nLogo":4294967295\},"sender":":1\.[0-9]*"\}
)"));
  Call("SetLogoInfo", Record({1, 320, 240, 2, 4096}));
  ExpectEnd({"calls", "SetLogoInfo"}, 0, R"(SetLogoInfo(nLogo="1 320 240 2 4096")  from :1.)");
  ExpectEnd({"get", "inbox.logo", "inbox.volume", "inbox.logo_info"}, 0,
            "4294967295\n7\nid 1, 320 x 240, format 2, 4096 bytes\n");
  ExpectEnd({"calls", "--clear"}, 0, "");
  Process none({kSimulator, "calls"});
  EXPECT_EQ(0, none.Wait());
  EXPECT_EQ("", none.Out());
}

TEST_F(SimulatorTest, RebootsInPlace) {
  const auto& power = Map<PowerShmData>(SHM_POWER_DATA_KEY_ID);
  const auto& misc = Map<MiscShmData>(SHM_MISC_DATA_KEY_ID);
  const struct {
    const char* how;
    unsigned speed, cold, reason;
  } kBoots[] = {{"--acc", 50, 0, 1}, {"--reset", 0, 0, 3}, {"--cold", 0, 1, 0}};
  for (const auto& boot : kBoots) {
    SCOPED_TRACE(boot.how);
    ExpectEnd({"set", "misc.car_speed", "50"}, 0, "");
    ExpectEnd({"set", "power.head_lights", "on"}, 0, "");
    const std::string owner = Call("GetNameOwner", "('com.vorn.linux.systemservice',)", "org.freedesktop.DBus");
    ExpectEnd({"reboot", boot.how}, 0, "");
    ExpectLines({"emit OnMcuBootTypeNotifySignal(reason=" + std::to_string(boot.reason) + ")"});
    EXPECT_NE(owner, Call("GetNameOwner", "('com.vorn.linux.systemservice',)", "org.freedesktop.DBus"));
    EXPECT_THAT(
        (std::vector<unsigned>{misc.car_speed, power.head_light_state, power.is_cold_boot, power.mcu_boot_type}),
        ElementsAre(boot.speed, 0, boot.cold, boot.reason));
  }
}

TEST_F(SimulatorTest, PlaysUpdates) {
  ExpectEnd({"set", "unit.update_seconds", "1"}, 0, "");
  Call("CanUpdate", "(1,)");
  ExpectLines({"emit UpdateCanProcess(CanProcessValue=50)", "emit UpdateCanProcess(CanProcessValue=-1)"});
  ExpectEnd({"set", "unit.update_fails", "no"}, 0, "");
  Call("ApplyUpdate", "(9,)");
  ExpectLines({"emit UpdateRequestResultInformSignal(result=1)"});
  Call("ApplyUpdate", "(2,)");
  Call("ApplyMpuUpdate");
  ExpectLines({"emit UpdateRequestResultInformSignal(result=0)", "emit OnMpuUpdateStateNotify(state=1)",
               "emit UpdateRequestResultInformSignal(result=2)", "emit OnMpuUpdateStateNotify(state=3)",
               "emit OnMcuUpdateStateNotify(state=1)", "emit OnMcuUpdateProgressNotify(progress=0)",
               "emit OnMcuUpdateProgressNotify(progress=100)", "emit OnMcuUpdateStateNotify(state=3)"});
}

TEST_F(SimulatorTest, StartsAndStopsCleanly) {
  ExpectEnd({}, 1, "hlx-simulator: another simulator runs on this bus");
  Process busless({"env", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent", kSimulator});
  EXPECT_EQ(1, busless.Wait());
  EXPECT_THAT(busless.Err(), HasSubstr("hlx-simulator: cannot reach the session bus: "));
  for (const char* const verb : {"get power.acc", "calls --json", "list"}) {
    Call("SetLogo", "(uint32 1,)");
    Process full({"sh", "-c", std::string(kSimulator) + " " + verb + " >/dev/full"});
    EXPECT_EQ(1, full.Wait()) << verb;
    EXPECT_EQ("hlx-simulator: standard output: No space left on device\n", full.Err()) << verb;
  }
  ExpectEnd({"--version"}, 0, "hlx-simulator ");
  ExpectEnd({"set", "misc.driver_temperature", "--", "-5"}, 0, "");
  Process lost({"env", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent", kSimulator, "get", "power.acc"});
  EXPECT_EQ(1, lost.Wait());
  EXPECT_THAT(lost.Err(), HasSubstr("hlx-simulator: cannot reach the session bus: "));
  ExpectEnd({"--mcu-version", std::string(256, 'x')}, 1, "another simulator");
  simulator_->Signal(SIGINT);
  EXPECT_EQ(0, simulator_->Wait());
  EXPECT_EQ("", simulator_->Err());  // the library's records are for --verbose
  ExpectEnd({"emit", "OnFactoryResetModeSignal"}, 1, "no simulator runs on this bus");
  ForgetSegments();
  EXPECT_NE(-1, shmget(static_cast<key_t>(SHM_MISC_DATA_KEY_ID), 100, IPC_CREAT | 0666));
  ExpectEnd({"--quiet"}, 1,
            "hlx-simulator: cannot have the misc segment (key 0xA8800082, 232 bytes): Invalid argument");
  ForgetSegments();
  Call("RequestName", "('com.vorn.linux.systemservice', uint32 4)", "org.freedesktop.DBus");
  ExpectEnd({"--quiet"}, 1, "hlx-simulator: the name com.vorn.linux.systemservice is already taken");
  Call("ReleaseName", "('com.vorn.linux.systemservice',)", "org.freedesktop.DBus");
  ExpectEnd({"--mcu-version", std::string(256, 'x')}, 2,
            "--mcu-version: a text of 256 bytes does not fit, at most 255");
  simulator_.reset();
  std::ofstream("/tmp/typo.conf") << "[setting]\ndefault_screen_day_brightness=8O\n";
  setenv("HLX_HOST_CONFIG", "/tmp/typo.conf", 1);
  Start("--fresh");
  EXPECT_THAT(simulator_->Err(), HasSubstr("/setting/default_screen_day_brightness=8O is no 32-bit number"));
  EXPECT_EQ(0, simulator_->Terminate());
  ForgetSegments();
  unsetenv("HLX_HOST_CONFIG");
  Start("--fresh");
  EXPECT_THAT(simulator_->Err(),
              HasSubstr("playing the unit of " HLX_SOURCE_DIR "/platform/host/platform.conf.sample\n"));
  ExpectEnd({"get", "power.brightness_day", "time.zone"}, 0, "80\nEurope/Berlin\n");
}

}  // namespace
