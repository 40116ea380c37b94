// hlxctl: what it shows, sends and refuses.
#include "tests/support/Hlxctl.h"

namespace {

TEST_F(HlxctlTest, ShowsTheUnit) {
  Start();
  std::filesystem::create_directories("/app/etc");
  std::ofstream("/app/etc/sys_version.conf") << "ARM Version:V1.2.3.4\nHardware Version:V1.0.3\nProject Name:\n";
  const json status = CtlJson("status", "status");
  EXPECT_EQ("hlx-simulator", status["service"]["process"]);
  EXPECT_EQ("V1.2.3.4", status["values"]["info.arm_version"]["value"]);
  EXPECT_EQ("raise_toyota", status["can_protocol"]);
  EXPECT_THAT(Ctl("").out,
              MatchesRegex("Service   hlx-simulator .process [0-9]+., answers\nPower     ACC on, (.|\n)*"));

  EXPECT_THAT(Ctl("").out, HasSubstr(", Doors closed, "));
  Emit("DoorStateChangeSignal 0x84");
  EXPECT_THAT(Ctl("").out, HasSubstr(", Doors: Door, front left open, Hood open, "));

  const json expected = json::parse(R"json({"market": 2, "car_maker": "Vorn", "fuel_types": "unleaded, diesel",
      "engine_type": 0, "screen_pixels": "1280 x 720", "screen_physical": "154 x 87", "screen_depth": 32,
      "arm_version": "V1.2.3.4", "drive_type": 1, "project_name": null, "mcu_file_version": null})json");
  const json info = CtlJson("info", "area");
  for (const auto& [name, value] : expected.items()) EXPECT_EQ(value, info.at(name).at("value")) << name;
  EXPECT_THAT(Ctl("info").out, HasSubstr("\nProject                       –  "));
  const json update = CtlJson("update", "area");
  for (const auto& [name, field] : update.items()) EXPECT_TRUE(field["value"].is_null()) << name;
  EXPECT_THAT(Ctl("power --color=always").out, HasSubstr("\x1b[1m20 s\x1b[0m"));
  EXPECT_THAT(Ctl("misc").out, HasSubstr("0.0 °"));
  setenv("LC_ALL", "C", 1);
  EXPECT_THAT(Ctl("misc").out, HasSubstr("0.0 deg"));
  EXPECT_EQ(R"({"misc.driver_temperature":{"value":0,"text":"0.0","unit":"\u00b0"}})"
            "\n",
            Ctl("get misc.driver_temperature --json").out);
}

/// Options and names | what is printed.
constexpr char kGets[] = R"(
power.screen power.power_off_delay | on#20# ; --raw power.screen time.zone | 1#26# ; --unit power.power_off_delay | 20 s#
time.zone | (GMT+01:00) Amsterdam, Berlin, Bern, Rome, Stockholm, Vienna# ; --live info.arm_version | #)";

TEST_F(HlxctlTest, GetsBareValuesWithoutABus) {
  Start();
  for (const auto& row : Rows(kGets)) {
    std::string expected = row[1];
    std::replace(expected.begin(), expected.end(), '#', '\n');
    EXPECT_EQ(expected, Ctl("get " + row[0]).out) << row[0];
  }
  EXPECT_EQ(20, CtlJson("get power.power_off_delay", "get")["power.power_off_delay"]["value"]);
  EXPECT_EQ("power.radio", CtlJson("names RadioStateChange", "names")[0]["name"]);
  setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere", 1);
  for (const char* const line : {"get power.screen", "names gamma", "time zones", "--help", "--version"}) {
    EXPECT_EQ(0, Ctl(line).code) << line;
  }
  EXPECT_EQ(kExitNoService, Ctl("get --live power.screen").code);
}

TEST_F(HlxctlTest, SaysThatTheServiceOrARecordIsNotThere) {
  for (const char* const bus : {bus_.c_str(), "unix:path=/nowhere"}) {
    setenv("DBUS_SESSION_BUS_ADDRESS", bus, 1);
    for (const char* const line : {"power", "misc", "time", "info", "update", "power set screen on", "monitor",
                                   "wait-for power.acc=on", "record /tmp/never"}) {
      const Result result = Ctl(line);
      EXPECT_EQ(kExitNoService, result.code) << line;
      EXPECT_EQ("", result.out);
      EXPECT_THAT(result.err, MatchesRegex("hlxctl: the (system service is not on the )?session bus[^\n]*\n"));
    }
  }
  EXPECT_EQ(false, CtlJson("status", "status")["ok"]);
  EXPECT_EQ(3, CtlJson("get power.acc", "failure")["code"]);
  for (int record = 0; record < 4; ++record) EXPECT_EQ(-1, Segments::Id(record));
  EXPECT_FALSE(std::filesystem::exists("/tmp/never"));
  EXPECT_THAT(Ctl("time zones").out, HasSubstr("\nThe unit's zone is not known: there is no time record.\n"));

  setenv("DBUS_SESSION_BUS_ADDRESS", bus_.c_str(), 1);
  Start();
  shmctl(Segments::Id(0), IPC_RMID, nullptr);  // a service that does not make all of its records
  for (const char* const line : {"get power.acc", "power set screen on", "monitor power", "watch power"}) {
    const Result result = Execute({"script", "-qec", std::string(kTool) + " " + line, "/dev/null"});
    EXPECT_EQ(kExitNoService, result.code) << line;
    EXPECT_THAT(result.out, HasSubstr("the power record (shared memory 0xA8800081, 92 bytes) is not there"));
    EXPECT_THAT(result.out, HasSubstr("\"hlxctl call\" and \"hlxctl listen\""));
  }
  EXPECT_EQ(-1, Segments::Id(0));
  EXPECT_EQ(0, Ctl("call SetScreenLightOn on").code);
  EXPECT_TRUE(simulator_->WaitForLine("call SetScreenLightOn(bLightOn=true)"));
  EXPECT_EQ(true, CtlJson("call SetGpsUTCTimeSync 2024,7,1,1,12,30,5", "command")["result"][0]);
}

TEST_F(HlxctlTest, ObserversChangeNothing) {
  Start();
  std::filesystem::remove("/etc/localtime");
  const auto settings = [] { return Execute({"sh", "-c", "cat /tmp/hlxctl_test/*"}).out; };
  const std::string records = Segments::Bytes();
  const std::string saved = settings();
  for (const char* const line :
       {"status", "power", "misc", "time", "info", "update", "get time.zone", "names", "doctor", "time zones",
        "monitor --timeout 0.2", "wait-for time.zone=26", "wait-for OnDstStatusChange --timeout 0.2",
        "listen --timeout 0.2", "record /tmp/observed --timeout 0.3"}) {
    EXPECT_THAT(Ctl(line).code, testing::AnyOf(0, kExitTimeUp)) << line;
  }
  EXPECT_EQ(0, Execute({"script", "-qec", std::string(kTool) + " watch --timeout 0.3", "/dev/null"}).code);
  EXPECT_EQ(records, Segments::Bytes());
  EXPECT_EQ(saved, settings());
  EXPECT_FALSE(std::filesystem::exists("/etc/localtime"));
  EXPECT_EQ(0, Ctl("time set zone Asia/Tokyo").code);  // nor does a command: the zone is the service's to apply
  EXPECT_FALSE(std::filesystem::exists("/etc/localtime"));
  const json zones = CtlJson("time zones", "zones");
  ASSERT_EQ(79U, zones.size());
  EXPECT_EQ(19800, zones[41]["utc_offset"]);
  EXPECT_EQ(true, zones[78]["current"]);
  EXPECT_THAT(Ctl("time zones").out, HasSubstr("*  78  +09:00  Asia/Tokyo"));
}

TEST_F(HlxctlTest, SaysThatTheServiceIsSilentOrWentAway) {
  Start();
  EXPECT_EQ(0, Execute({kSimulator, "fault", "segment", "missing"}).code);
  EXPECT_EQ(kExitNoService, CtlJson("status", "status")["code"]) << "no record";
  EXPECT_EQ(0, Execute({kSimulator, "fault", "clear"}).code);
  simulator_->Signal(SIGSTOP);
  for (const char* const line : {"status", "power set gamma 1", "monitor --timeout 3", "wait-for OnAccStateChange"}) {
    const Result result = Ctl(line);
    EXPECT_EQ(kExitNoService, result.code) << line;
    EXPECT_THAT(result.out + result.err, HasSubstr("(hlx-simulator) has its name and is silent"));
  }
  EXPECT_EQ(kExitCallFailed, Ctl("call SetGammaValue 1 --timeout 0.1").code);
  Process tool({kTool, "call", "SetGammaValue", "1"});
  sleep(1);  // it is waiting for the answer now
  simulator_->Signal(SIGKILL);
  EXPECT_EQ(kExitCallFailed, tool.Wait());
  EXPECT_THAT(tool.Err(), MatchesRegex("hlxctl: SetGammaValue 1: [^\n]*\n"));
}

/// Exit code | command | what it says of it.
constexpr char kWrong[] = R"(
2 | powr | 'powr' is not known here; did you mean 'power'? ; 2 | power --jsno | '--jsno' is not known
2 | power set brightnes day 40 | power: set: 'brightnes' is not known here; did you mean 'brightness'
2 | power set brightness dusk 40 | light: 'dusk' is not allowed; allowed: day, night, or 0 to 255
2 | power set brightness day 256 | level: '256' is not allowed; allowed: 0 to 255
2 | power set brightness day | level is missing: 0 to 255 ; 2 | power set brightness day 4O | level: '4O'
2 | power set screen 2 | on: '2' is not allowed; allowed: on or off ; 0 | power set screen YES | 
2 | power set retain-acc 2147483648 | seconds: '2147483648'
2 | time set zone 79 | zone: '79' is no ; 2 | time set zone GMT+08 | zone: 'GMT+08' fits several zones: 48, 49, 50, 51, 52
2 | time set zone Africa/Casablanca | fits several zones: 22, 75 ; 2 | time set zone moon | 'moon' is no zone
2 | time set date 2023-02-29 | date: '2023-02-29' ; 2 | time set time 24:00 | time: '24:00'
4 | time set gps 1800-01-01 00:00 | 1800-1-1, 0:0:0 is no date and time ; 0 | time set gps 2025-01-01 00:00:01 | 
5 | power shutdown | must be confirmed ; 5 | misc factory-reset | must be confirmed ; 5 | update apply-all | must be
5 | call ShutDown | must be confirmed ; 2 | get power.scren | there is no value 'power.scren'; did you mean 'power.screen'
2 | get misc.steering_angle | is told by events alone ; 2 | monitor info | 'info' has no events
2 | monitor powr | there is no 'powr'; did you mean 'power' ; 2 | wait-for power.acc | is a value: say what it should be ; 2 | wait-for power.acc!on | '!' alone
2 | wait-for OnAccStateChang | did you mean 'OnAccStateChange' ; 2 | wait-for power.acc=maybe | power.acc: 'maybe' is not allowed
2 | watch | watch draws on a terminal ; 2 | listen AccStateChangSignal | there is no signal 'AccStateChangSignal'; did you mean 'AccStateChangeSignal'
2 | call SetGamaValue 1 | did you mean 'SetGammaValue' ; 2 | call SetGammaValue | takes 1 argument (i), not 0
2 | call SetGammaValue 1.5 | value: '1.5' is no whole number ; 2 | call SetLogo -1 | nLogo: '-1' is no whole number from 0
2 | call SetScreenLightLevel 1 256 | level: '256' is no whole number from 0 to 255
2 | call SetCurDate 2024,,4 | dateInfo: '' is no whole number ; 2 | call SetScreenLightOn maybe | bLightOn: 'maybe' is not
1 | record /nowhere/file | '/nowhere/file': No such file
2 | help | did you mean '--help' ; 2 | power get screen | get comes first, as in "get power.acc" ; 2 | zones | 'time zones'
2 | misc set drive_position left | did you mean 'misc set drive-position' ; 2 | name gamma | or 'names'
0 | wait-for power.screen = on | 
2 | set power screen on | 'set' is not known here; the area comes first
2 | power brightness | did you mean 'power set brightness' ; 2 | power set zone 5 | did you mean 'time set zone' or 'get time.zone'
2 | power.acc | did you mean 'get power.acc' ; 2 | get power | 'power' is an area: name one of its values, as "power.acc"
2 | power set screen | screen: on is missing: on or off ; 2 | power set | what is missing; there are: shutdown, reset, screen
2 | get | value is missing ; 2 | --colour always power | '--colour' is not known here; did you mean '--color'
2 | monitor --count x | 'x' is not allowed; allowed: a number from 1 on
2 | wait-for power.screen>on | none of which is more than another ; 0 | wait-for power.screen==on | 
0 | wait-for power.power_off_delay>=20 |  ; 6 | wait-for power.power_off_delay>20 --timeout 0.1 | it is 20 s ; 0 | wait-for time.date>2000-01-01 |  ; 6 | wait-for power.power_off_delay<=19 --timeout 0.1 | it is 20 s
2 | monitor --timeout 0 | '0' is not allowed; allowed: seconds ; 2 | update check /nowhere | '/nowhere': No such file)";

TEST_F(HlxctlTest, NamesWhatIsWrong) {
  Start();
  for (const auto& row : Rows(kWrong)) {
    const Result result = Ctl(row[1]);
    EXPECT_EQ(std::stoi(row[0]), result.code) << row[1];
    EXPECT_THAT(result.err, HasSubstr(row[2])) << row[1];
    if (result.code == 0) continue;
    EXPECT_EQ(result.code, CtlJson(row[1], "failure")["code"]) << row[1];
  }
  EXPECT_EQ("ok\n", Execute({kTool, "time", "set", "zone", "New York"}).out);
  EXPECT_THAT(Ctl("misc set media \xff").err, HasSubstr("allowed: UTF-8 text"));
  EXPECT_THAT(Ctl("call SetOnPSChange \xff").err, HasSubstr("PSValue: '\uFFFD' is not allowed; allowed: UTF-8 text"));
  EXPECT_THAT(Ctl("misc set media -- --json").out, HasSubstr("ok"));
  EXPECT_TRUE(simulator_->WaitForLine("call SetOnMediaInfoChange(MediaInfoValue='--json')"));
  EXPECT_EQ("power gamma 1", CtlJson("power set gamma 1", "command")["command"]);
  const auto answer = [](const char* word) {
    return Execute(
        {"sh", "-c", std::string("(sleep 1; echo ") + word + ") | script -qec '" + kTool + " update can 0' /dev/null"});
  };
  EXPECT_EQ(kExitNotConfirmed, answer("no").code);
  EXPECT_EQ(0, answer("yes").code);
}

}  // namespace
