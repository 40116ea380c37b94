// The tool as a process, against the real simulator.
#include <gmock/gmock.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "data/InfoShmDataBase.h"
#include "tests/support/Process.h"

using nlohmann::json;
using testing::HasSubstr;

namespace {

constexpr char kTool[] = HLX_BINARY_DIR "/tools/hlxctl/hlxctl";
constexpr char kSimulator[] = HLX_BINARY_DIR "/simulator/hlx-simulator";
constexpr unsigned kFirstKey = 0xA8800081;

struct Result {
  int code;
  std::string out;
  std::string err;
};

std::vector<std::string> Split(const std::string& line) {
  std::istringstream words(line);
  return {std::istream_iterator<std::string>(words), {}};
}

std::vector<std::string> Cut(const std::string& text, const std::string& separator) {
  std::vector<std::string> pieces;
  for (std::size_t start = 0, end = 0; end != std::string::npos; start = end + separator.size()) {
    end = text.find(separator, start);
    pieces.push_back(text.substr(start, end - start));
  }
  return pieces;
}

/// The rows of a table: on lines of their own or between " ; "; columns between " | ".
std::vector<std::vector<std::string>> Rows(const std::string& table) {
  std::vector<std::vector<std::string>> rows;
  for (const std::string& line : Cut(table.substr(1), "\n")) {
    for (const std::string& row : Cut(line, " ; ")) rows.push_back(Cut(row, " | "));
  }
  return rows;
}

Result Execute(const std::vector<std::string>& words) {
  Process process(words);
  const int code = process.Wait();
  return {code, process.Out(), process.Err()};
}

Result Ctl(const std::string& line) { return Execute(Split(kTool + (" " + line))); }
json Show(const std::string& area) { return json::parse(Ctl(area + " --json").out); }

int SegmentId(int record) { return shmget(static_cast<key_t>(kFirstKey + static_cast<unsigned>(record)), 0, 0); }

class HlxctlTest : public testing::Test {
 public:
  HlxctlTest() {
    setenv("HLX_HOST_STATE", "/tmp/hlxctl_test", 1);
    setenv("HLX_HOST_CONFIG", HLX_SOURCE_DIR "/platform/host/platform.conf.sample", 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", bus_.c_str(), 1);
    for (const char* const left : {"/tmp/hlxctl_test", "/app/etc"}) std::filesystem::remove_all(left);
  }
  ~HlxctlTest() override {
    simulator_.reset();
    for (int record = 0; record < 4; ++record) shmctl(SegmentId(record), IPC_RMID, nullptr);
  }
  void Start() {
    simulator_ = std::make_unique<Process>(std::vector<std::string>{kSimulator});
    ASSERT_TRUE(simulator_->WaitForLine("hlx-simulator: ready")) << simulator_->Err();
  }
  static void Simulate(const std::string& line) {
    const Result result = Execute(Split(kSimulator + (" " + line)));
    ASSERT_EQ(0, result.code) << line << ": " << result.err;
  }

  static inline const std::string bus_ = getenv("DBUS_SESSION_BUS_ADDRESS");
  std::unique_ptr<Process> simulator_;
};

/// Record fields, and the names under which they are shown where those differ.
constexpr char kFields[] = R"(
power: is_acc_on=acc is_screen_on=screen radio_on_state=radio head_light_state=head_lights is_cold_boot=cold_boot
power_wakeup_type=wakeup mcu_boot_type=boot_reason _power_delay_time=power_off_delay _power_retain_acc_sec=retain_acc
cur_screen_light_type=screen_light _screen_day_level=brightness_day _screen_night_level=brightness_night
default_screen_day_level=default_brightness_day default_screen_night_level=default_brightness_night
screen_gamma_level=gamma default_screen_gamma_level=default_gamma is_light_auto_detect=light_auto_detect
is_light_day_fix=light_fixed_day button_light_type=button_light button_day_level=button_brightness_day
button_night_level=button_brightness_night color_type=button_color led_animation
misc: _can_box_enble=can_box car_speed current_car_speed=current_speed average_car_speed=average_speed
engine_rotate_speed=engine_speed total_mile endurance_mile stage_a_mile stage_b_mile current_fuel average_fuel
parking_state=parking simple_rvc_signal_actived=reverse front_camera_active=front_camera
rear_camera_active=rear_camera _is_rvc_delay=rear_view_delay _is_left_position=drive_position
is_handbrake_test_on=handbrake_check is_gps_ant_checking_on=gps_antenna_check radio_ant_state=radio_antenna
gps_ant_state=gps_antenna dab_ant_state=dab_antenna mic_connect_state=microphone speakers_amount=speakers
speaker_states[0]=speaker_front_left speaker_states[1]=speaker_front_right speaker_states[2]=speaker_rear_left
speaker_states[3]=speaker_rear_right air_blow_mode air_blow_level=air_level
driver_position_temperature=driver_temperature copilot_position_temperature=copilot_temperature
environment_temperature=outside_temperature simple_environment_temperature=outside_degrees system_temperature
tft_temperature steel_mate_radar[0]=radar_left steel_mate_radar[1]=radar_middle_left
steel_mate_radar[2]=radar_middle_right steel_mate_radar[3]=radar_right system_language=language radio_region
urgent_mute_state=urgent_mute _screen_shot_enble=screenshots
time: _time_24_mode=24_hour _auto_sync_mode=auto_sync auto_adjust_dst_mode=auto_dst
ext_mcu_can_time_24_mode=vehicle_24_hour ext_mcu_can_time_zone=vehicle_zone)";

TEST_F(HlxctlTest, ShowsEveryField) {
  Start();
  std::map<std::string, std::map<std::string, int>> expected;
  std::string area;
  int value = 3;  // another one for each field, so that none can stand in for its neighbour
  for (const std::string& word : Split(kFields)) {
    if (word.back() == ':') {
      area = word.substr(0, word.size() - 1);
      continue;
    }
    const std::vector<std::string> names = Cut(word, "=");
    Simulate("set " + area + "." + names.front() + " " + std::to_string(value));
    expected[area][names.back()] = value++;
  }
  for (const auto& [shown_area, values] : expected) {
    const json shown = Show(shown_area);
    for (const auto& [name, number] : values) EXPECT_EQ(shown.at(name).at("value"), number) << name;
  }
  for (const char* const field : {"car_float_speed_raw 12345", "door_state_bits 0xA4", "ac_state_bits 0x21",
                                  "can_version CAN-1.0", "simple_environment_temperature -40"}) {
    Simulate(std::string("set misc.") + field);
  }
  const json misc = Show("misc");
  for (const auto& row :
       Rows("\nprotocol | raise_toyota ; can_version | CAN-1.0 ; car_float_speed | 123.45 ; outside_degrees | -40")) {
    EXPECT_EQ(row[1], misc[row[0]]["text"]);
  }
  std::set<std::string> on;
  for (const auto& [name, shown] : misc.items()) {
    if ((name.rfind("door_", 0) == 0 || name.rfind("ac_", 0) == 0) && shown["value"] == 1) on.insert(name);
  }
  EXPECT_THAT(on, testing::ElementsAre("ac_max_front", "ac_power", "door_front_left", "door_hood", "door_rear_left"));
  EXPECT_EQ(23U, Show("power").size());
  EXPECT_EQ(63U, misc.size());
  EXPECT_THAT(Ctl("power").out, HasSubstr("Power-off delay                10 s\n"));

  std::ofstream("/tmp/other.conf") << "[system]\nusing_can_protocol=raise_moon\n";
  setenv("HLX_HOST_CONFIG", "/tmp/other.conf", 1);
  EXPECT_THAT(Ctl("misc").out, HasSubstr("CAN-box protocol               raise_moon (unknown protocol)\n"));
  setenv("HLX_HOST_CONFIG", "/nowhere.conf", 1);
  const Result unconfigured = Ctl("misc");
  EXPECT_THAT(unconfigured.out, HasSubstr("CAN-box protocol               –\n"));
  EXPECT_THAT(unconfigured.err, HasSubstr("/nowhere.conf"));
}

TEST_F(HlxctlTest, ShowsTheUnitAndWhatIsAbsent) {
  Start();
  std::filesystem::create_directories("/app/etc");
  std::ofstream("/app/etc/sys_version.conf") << "ARM Version:V1.2.3.4\nHardware Version:V1.0.3\nProject Name:\n";
  const json expected = json::parse(R"({"market": 2, "car_maker": "Vorn", "fuel_types": [3, 4], "engine_type": 0,
      "screen_pixels": [1280, 720], "screen_physical": [154, 87], "screen_depth": 32, "arm_version": "V1.2.3.4",
      "drive_type": 1, "mcu_version": "SIM-MCU-1.04.27", "project_name": null, "mcu_file_version": null})");
  const json info = Show("info");
  for (const auto& [name, value] : expected.items()) EXPECT_EQ(value, info.at(name).at("value")) << name;
  EXPECT_EQ(39U, info.size());
  EXPECT_THAT(Ctl("info").out, HasSubstr("Project                       –\n"));
  const json update = Show("update");
  for (const auto& [name, field] : update.items()) EXPECT_TRUE(field["value"].is_null()) << name;
}

/// Command | what reaches the service | where it shows afterwards.
constexpr char kCommands[] = R"(
power shutdown | ShutDown() | power screen 0 ; power reset | Reset() | power screen 1 ; power set reset | Reset()
power set power-off short | RequestPowerOffState(isKeyShortPress=true)
power set confirm-radio-off -7 | ConfirmPreRadioOffState(param=-7) | power radio 0
power set power-off-delay 255 | SetPowerOffDelayTime(time=255) | power power_off_delay 255
power set retain-acc 300 | SetRetainACCSec(sec=300) | power retain_acc 44
power set bt-call active | SetBtCallState(btState=3) ; power set carplay-call calling | SetCarPlayPhoneState(state=1)
power set screen on | SetScreenLightOn(bLightOn=true) | power screen 1
power set brightness night 41 | SetScreenLightLevel(type=1, level=41) | power brightness_night 41
power set button-color custom | SetColorType(type=9) | power button_color 9
power set led-animation off | SetLedAnimation(Animation=0) | power led_animation 0
power reset-brightness | ResetScreenBackLight() | power brightness_night 35
power set full-brightness on | SetTempMaxScreenLightLevel(isActive=true)
power set light-auto-detect off | SetLightDetectStyle(bAutomatic=0) | power light_auto_detect 0
power set light-fixed-day on | SetLightFixDayStyle(bDayLight=1) | power light_fixed_day 1
power set button-light off | SetButtonLightState(bLightOn=false)
power set button-brightness day 0x11 | SetButtonLightValue(type=0, level=17) | power button_brightness_day 17
power set gamma 12 | SetGammaValue(value=12) | power gamma 12
power reset-button-brightness | ResetButtonBackLight() | power button_brightness_day 60
power set rear-view on | SetRvcStatus(isOn=true)
misc speaker-detect-start | SpeakerDetectStart() | misc speaker_rear_left 0
misc speaker-detect-stop | SpeakerDetectStop() ; misc factory-reset | ResetFactoryMode()
misc screenshot | SetScreenshot() ; misc auto-test | StartAutoTest()
misc set rear-view-delay on | SetRvcOffDelaySwitch(isDelayOff=true) | misc rear_view_delay 1
misc set drive-position right | SetDrivePosition(isLeft=false) | misc drive_position 0
misc set handbrake-check off | SetHandbrakeCheckingSwitch(isChecked=false) | misc handbrake_check 0
misc set gps-antenna-check off | SetGPSAntennaCheckingSwitch(isChecked=false) | misc gps_antenna_check 0
misc set can-box off | EnableCanBoxModule(enable=false) | misc can_box 0
misc set screenshots on | EnableScreenShotControl(enable=true) | misc screenshots 1
misc set source -1 | SetOnSourceChange(SourceValue=-1)
misc set play-time 01:02 | SetOnTimeChange(TimeValue='01:02')
misc set radio FM | SetOnRadioChange(RaidoValue='FM') ; misc set touch 1,2 | SetOnTouchInfo(TouchValue='1,2')
misc set station-name Vorn | SetOnPSChange(PSValue='Vorn')
misc set media -- --json | SetOnMediaInfoChange(MediaInfoValue='--json')
misc set volume 30 | SetOnVolChange(VolValue=30) ; misc set phone idle | SetOnPhoneInfoChange(PhoneInfoValue='idle')
misc set logo 4294967295 | SetLogo(nLogo=4294967295) ; misc set logo-info 1 2 3 4 5 | SetLogoInfo(nLogo=<1 2 3 4 5>)
time set 24-hour off | SetTime24Mode(is24Mode=false) | time 24_hour 0
time set auto-sync off | SetAutoSyncMode(isAutoSync=false) | time auto_sync 0
time set auto-dst on | SetAutoAdjustDstMode(isAutoDst=true) | time auto_dst 1
time set zone kolkata | SetTimeZone(zone=41) | time zone 41
time set date 2024-02-29 | SetCurDate(dateInfo=<2024 2 29 4>) | time date "2024-02-29"
time set time 23:59 | SetCurTime(timeInfo=<23 59 0>)
time set gps 2024-07-01 12:30:05 | SetGpsUTCTimeSync(dateTime=<2024 7 1 1 12 30 5>) | time sync_time "2024-07-01T12:30:05"
time set carplay -1 | SetGpsUTCTimeSync(dateTime=<1969 12 31 3 23 59 59>)
update apply mcu --yes | ApplyUpdate(update_type=1) ; update apply-all --yes | ApplyUpdateAll()
update apply-mpu --yes | ApplyMpuUpdate() ; update set apply-mcu -y | ApplyExternalMcuUpdate()
update can 0 --yes | CanUpdate(iCanUpdate=0))";

TEST_F(HlxctlTest, SendsEveryCommand) {
  Start();
  for (const auto& row : Rows(kCommands)) {
    const Result result = Ctl(row[0]);
    EXPECT_EQ(0, result.code) << row[0] << ": " << result.err;
    EXPECT_EQ("ok\n", result.out);
    EXPECT_TRUE(simulator_->WaitForLine("call " + row[1])) << row[1] << "\n" << simulator_->Out();
    if (row.size() < 3) continue;
    const std::vector<std::string> shown = Split(row[2]);
    EXPECT_EQ(json::parse(shown[2]), Show(shown[0]).at(shown[1]).at("value")) << row[0];
  }
  EXPECT_EQ(json::parse(R"({"command":"power gamma 1","ok":true})"), json::parse(Ctl("power set gamma 1 --json").out));
  EXPECT_EQ(0, Ctl("time set gps 2025-01-01 00:00 off").code);  // stays in the record
  EXPECT_EQ("2025-01-01T00:00:00", Show("time")["sync_time"]["value"]);
}

/// Signal | what a listening tool writes.
constexpr char kEvents[] = R"EVENTS(
AccStateChangeSignal true | "area":"power","event":"OnAccStateChange","values":{"acc":{"value":1,"text":"on"
ScreenLightLevelChangedSignal 1 9 | {"light":{"value":1,"text":"night","unit":null},"level":{"value":9
OnPowerPreRadioOffNotify | "event":"OnPowerPreRadioOffNotify","values":{}}
DoorStateChangeSignal 0xA7 | {"hood":{"value":1,"text":"open","unit":null},"rear-left":{"value":1,
AcStateChangeSignal 0x21 | "OnAcStateChange","values":{"power":{"value":1,"text":"on","unit":null},"max-front"
OnGeneralAcStateChangeSignal 4 0x80 | "values":{"left-seat-heat":{"value":1,"text":"on"
SimpleAirModeChangeSignal 0x20 | "values":{"window":{"value":1,
KeyStateChangeSignal 0xA2 1 | {"key":{"value":162,"text":"0xA2","unit":null},"state":{"value":1
RaiseVWSteeringWheelAngelChangeSignal 0x84 0x0E | "values":{"angle":{"value":100,"text":"100","unit":"%"}}
SpeakerStateChangeSignal | {"front-left":{"value":5,"text":"not-detected"
MileTotalChangeSignalRaise 4294967295 | "distance":{"value":4294967295,
OnExternalMcuTimeChangeSignal 0 | "area":"time","event":"OnExternalMcuTimeChange","values":{"date":
OnDstStatusChangeSignal true | "event":"OnDstStatusChange","values":{"dst":{"value":1,"text":"on"
OnMcuUpdateProgressNotify 40 | "area":"update","event":"OnMcuUpdateProgressNotify","values":{"MCU":{"value":40
UpdateRequestResultInformSignal 2 | "values":{"result":{"value":2,"text":"busy")EVENTS";

TEST_F(HlxctlTest, PrintsEvents) {
  Start();
  const auto listen = [](const std::string& line) {
    auto monitor = std::make_unique<Process>(Split(kTool + (" " + line)));
    for (int i = 0; i < 5000 && monitor->Err().find("listening") == std::string::npos; ++i) usleep(2000);
    return monitor;
  };
  const auto monitor = listen("monitor power misc time update --json");
  for (const auto& row : Rows(kEvents)) {
    Simulate("emit " + row[0]);
    EXPECT_TRUE(monitor->WaitForLine(row[1])) << row[1] << "\n" << monitor->Out();
  }
  monitor->Signal(SIGINT);
  EXPECT_EQ(0, monitor->Wait());
  std::istringstream lines(monitor->Out());
  for (std::string line; std::getline(lines, line);) EXPECT_TRUE(json::accept(line)) << line;

  const auto counted = listen("monitor power --count 2 --for 60");
  for (const char* const on : {"true", "false"}) Simulate(std::string("emit AccStateChangeSignal ") + on);
  EXPECT_EQ(0, counted->Wait());
  EXPECT_THAT(counted->Out(), testing::MatchesRegex("..:..:..\\....  power  OnAccStateChange  acc: on\n.*acc: off\n"));
  EXPECT_EQ(0, Ctl("update watch --for 1").code);
}

TEST_F(HlxctlTest, SaysOnceThatTheServiceIsNotThere) {
  for (const char* const bus : {bus_.c_str(), "unix:path=/nowhere"}) {
    setenv("DBUS_SESSION_BUS_ADDRESS", bus, 1);
    for (const char* const line : {"power", "misc", "time", "info", "update", "power set screen on", "monitor"}) {
      const Result result = Ctl(line);
      EXPECT_EQ(3, result.code) << line;
      EXPECT_EQ("", result.out);
      EXPECT_THAT(result.err, testing::MatchesRegex("hlxctl: the system service is not on the session bus[^\n]*\n"));
    }
  }
  for (int record = 0; record < 4; ++record) EXPECT_EQ(-1, SegmentId(record));
}

TEST_F(HlxctlTest, SaysThatTheServiceWentAwayDuringACommand) {
  Start();
  simulator_->Signal(SIGSTOP);
  Process tool({kTool, "power", "set", "gamma", "1"});
  sleep(1);  // it is waiting for the answer now
  simulator_->Signal(SIGKILL);
  EXPECT_EQ(4, tool.Wait());
  EXPECT_THAT(tool.Err(), testing::MatchesRegex("hlxctl: power gamma 1: GDBus.Error:[^\n]*\n"));
}

TEST_F(HlxctlTest, LooksChangeNothing) {
  Start();
  Ctl("time set zone 78");  // makes the time client of this unit link the zone
  std::filesystem::remove("/etc/localtime");
  for (const char* const line : {"power", "misc", "time", "info", "update", "time zones"}) {
    EXPECT_EQ(0, Ctl(line).code) << line;
  }
  EXPECT_FALSE(std::filesystem::exists("/etc/localtime"));
  const json zones = json::parse(Ctl("time zones --json").out);
  ASSERT_EQ(79U, zones.size());
  EXPECT_EQ(19800, zones[41]["utc_offset"]);
  EXPECT_THAT(Ctl("time zones").out, HasSubstr("* 78  +09:00   (GMT+09:00) Osaka, Sapporo, Tokyo"));

  shmctl(SegmentId(3), IPC_RMID, nullptr);  // a service that has not made one of its records
  const Result result = Ctl("info");
  EXPECT_EQ(3, result.code);
  EXPECT_THAT(result.err, HasSubstr("the info record (shared memory 0xA8800084, 260 bytes) is not there"));
  EXPECT_EQ(-1, SegmentId(3));
}

/// Exit code | command | what it says of it.
constexpr char kWrong[] = R"(
2 |  | choose from: power, misc, time, info, update, monitor
2 | powr | 'powr' is not known here; choose from: power,
2 | power set brightnes day 40 | 'brightnes' is not known here; choose from: shutdown,
2 | power set brightness dusk 40 | light: 'dusk' is not allowed; allowed: day, night, or 0 to 255
2 | power set brightness day 256 | level: '256' is not allowed; allowed: 0 to 255
2 | power set brightness day | level is required ; 2 | power set brightness day 4O | level: '4O'
2 | power set screen 2 | on: '2' is not allowed; allowed: on or off
2 | power set retain-acc 2147483648 | seconds: '2147483648'
2 | time set zone 79 | zone: '79' is not allowed; allowed: 0 to 78
2 | time set zone GMT+08 | zone: 'GMT+08' fits several zones: 48, 49, 50, 51, 52
2 | time set date 2023-02-29 | date: '2023-02-29' ; 2 | time set date 2023-02-300 | date: '2023-02-300'
2 | time set time 24:00 | time: '24:00' ; 4 | time set gps 1800-01-01 00:00 | 1800-1-1, 0:0:0 is no date and time
2 | monitor info | 'info' has no events ; 5 | update apply-all | must be confirmed
2 | update check /nowhere | '/nowhere': No such file)";

TEST_F(HlxctlTest, NamesWhatIsWrong) {
  Start();
  for (const auto& row : Rows(kWrong)) {
    const Result result = Ctl(row[1]);
    EXPECT_EQ(std::stoi(row[0]), result.code) << row[1];
    EXPECT_THAT(result.err, HasSubstr(row[2]));
  }
  EXPECT_THAT(Ctl("misc set media \xff").err, HasSubstr("allowed: UTF-8 text"));
  const auto answer = [](const char* word) {
    return Execute(
        {"sh", "-c", std::string("(sleep 1; echo ") + word + ") | script -qec '" + kTool + " update can 0' /dev/null"});
  };
  EXPECT_EQ(5, answer("no").code);
  EXPECT_EQ(0, answer("yes").code);
  EXPECT_EQ(1, Execute({"sh", "-c", std::string(kTool) + " power >/dev/full"}).code);
}

/// Exit code | packages.
constexpr char kOutcomes[] = R"(
0 | good same newer long-line escaping ; 13 | can-file ; 14 | bad-checksum no-checksum ; 16 | wrong-hardware
15 | older rubbish empty-version-file symbolic-link ; 17 | wrong-project any-project ; 18 | no-package
19 | truncated no-version-file)";

TEST_F(HlxctlTest, ChecksPackages) {
  const std::string packages = "/tmp/set of 'packages'; exit";  // a name that no shell may see
  ASSERT_EQ(0, Execute({HLX_SOURCE_DIR "/tests/packages/make-packages", packages}).code);
  const auto check = [&packages](const std::string& name, const char* option = "-v") {
    return Execute({kTool, option, "update", "check", std::string(packages).append("/").append(name)});
  };
  EXPECT_EQ(20, check("good").code);
  std::filesystem::create_directories("/app/etc");
  std::filesystem::copy_file(packages + "/unit-version.conf", "/app/etc/sys_version.conf");
  for (const auto& row : Rows(kOutcomes)) {
    const int code = std::stoi(row[0]);
    for (const std::string& name : Split(row[1])) {
      const Result result = check(name, "--json");
      EXPECT_EQ(code, result.code) << name << result.err;
      EXPECT_EQ(code == 0 ? json(1) : code < 18 ? json(code - 10) : json(), json::parse(result.out)["listeners_get"]);
    }
  }
  EXPECT_THAT(check("older").out, HasSubstr("software    failed   unit \"V1.2.3.4\" <= package \"V1.2.2.9\"\n"));
  std::ofstream("/app/etc/sys_version.conf") << "ARM Version:V1.0\nHardware Version:V1.0.3\nProject Name:T268ZF\n";
  EXPECT_EQ(0, check("any-project").code);
  for (const auto& entry : std::filesystem::directory_iterator("/tmp")) {
    EXPECT_EQ(std::string::npos, entry.path().string().find("/hlxctl-")) << "left behind";
  }
  for (int record = 0; record < 4; ++record) EXPECT_EQ(-1, SegmentId(record));
}

}  // namespace
