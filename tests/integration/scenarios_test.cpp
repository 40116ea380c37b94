// Scenarios and captures against the real simulator: those that are shipped, those that are wrong, and captures
// replayed.
#include <set>

#include "tests/support/Hlxctl.h"

namespace {

namespace fs = std::filesystem;
constexpr char kHead[] = R"({"format":"hlx-scenario","version":1,"title":"t","steps":[)";

Result Unit(const std::string& line) { return Execute(Split(kSimulator + (" " + line))); }

std::string Write(const std::string& name, const std::string& text) {
  std::ofstream(name, std::ios::binary) << text;
  return name;
}

class ScenariosTest : public HlxctlTest {
 public:
  static void TearDownTestSuite() {}  // not hlxctl's schema
};

/// NAME | VALUE=what it is at the end, ...
const char kShipped[] = R"(
city-drive | misc.car_speed=0 power.head_lights=off misc.total_mile=48213 misc.parking=yes misc.reverse=off
climate-raise | misc.driver_temperature=18.0 misc.air_level=0 misc.air_blow_mode=off
climate-raise-ford | misc.front_left_temperature=21.5 misc.front_air_level=0
climate-raise-gac | misc.driver_temperature=18.0 misc.air_level=0 misc.air_blow_mode=off
climate-raise-renault | misc.ac_switches=0x00 misc.air_mode=0x00 misc.copilot_temperature=19.0
climate-raise-toyota | misc.rear_left_temperature=20.5 misc.rear_air_level=0
climate-raise-vw | misc.ac_switches=0x00 misc.copilot_temperature=19.0
cold-boot | power.boot_reason=cold power.cold_boot=yes misc.gps_antenna=normal misc.endurance_mile=430 unit.state=running
keys-and-steering | misc.key=0xAF misc.key_state=0
motorway-drive | misc.car_speed=50 power.screen_light=night misc.average_fuel=64
parking | misc.rear_radar_left=nothing misc.radar_right=nothing power.display_request=home misc.rear_camera=off
update-fails-busy | update.request_result=busy update.search_result=valid
update-fails-checksum | update.search_result=checksum-wrong update.package=removed
update-fails-halfway | update.mcu_state=failed update.mcu_progress=50
update-succeeds | update.mcu_state=success update.mpu_state=success update.mcu_progress=100 update.search_result=removed
power-off | unit.state=off power.radio=off power.screen=off)";

TEST_F(ScenariosTest, EachShippedOneReachesItsEndAndFitsTheSchema) {
  Start();
  std::set<std::string> files;
  std::string lines;
  for (const auto& file : fs::directory_iterator(HLX_SOURCE_DIR "/simulator/scenarios")) {
    files.insert(file.path().stem());
    std::ifstream stream(file.path());
    lines += "scenario\t" + json::parse(stream).dump() + "\n";
  }
  Write("/tmp/scenarios", lines);
  const Result schema = Execute({"sh", "-c",
                                 HLX_SOURCE_DIR "/tests/support/check-schema " HLX_SOURCE_DIR
                                                "/simulator/hlx-scenario.schema.json </tmp/scenarios"});
  EXPECT_EQ(0, schema.code) << schema.out << schema.err;
  const std::string listed = Unit("list scenarios").out;
  for (const auto& row : Rows(kShipped)) {
    EXPECT_EQ(1U, files.erase(row[0])) << row[0];
    EXPECT_THAT(listed, HasSubstr(row[0] + " "));
    const Result played = Unit("play " + row[0] + " --speed 0 --wait");
    EXPECT_EQ(0, played.code) << row[0] << played.err;
    EXPECT_EQ(row[0].find("climate") == 0 && row[0].find("toyota") == std::string::npos,
              played.err.find("warning: made for the CAN box raise") != std::string::npos)
        << row[0] << played.err;
    for (const std::string& wanted : Split(row[1])) {
      const std::string name = wanted.substr(0, wanted.find('='));
      const auto value = [&] { return name + "=" + Unit("get " + name).out; };
      // What the unit does by itself takes its own time.
      for (int i = 0; i < 200 && name == "unit.state" && value() != wanted + "\n"; ++i) usleep(100000);
      EXPECT_EQ(wanted + "\n", value()) << row[0];
    }
  }
  EXPECT_TRUE(files.empty()) << "not in the table: " << *files.begin();
}

/// Steps of a scenario | line | what is said. Line 1 has the head; the steps begin on it.
const char kWrong[] = R"(
{"set":{"misc.car_sped":1}} | 1 | there is no value 'misc.car_sped'; did you mean misc.car_speed
{"set":{"power.acc":"perhaps"}} | 1 | power.acc: 'perhaps' is not allowed; allowed: on or off
{"set":{"misc.car_speed":401}} | 1 | misc.car_speed: '401' is not allowed
{"set":{"time.date":"1"}} | 1 | time.date cannot be set: the unit decides it
{"set":[1]} | 1 | set: an object of names and values is needed
{"set":{"power.acc":[1]}} | 1 | a number or a word is needed
{"sett":{}} | 1 | there is no key 'sett'; did you mean set?
{"set":{},"emit":"x"} | 1 | set and emit are steps of their own
{"set":{},"times":1} | 1 | there is no key 'times'; did you mean
{} | 1 | a step needs something to do
7 | 1 | a step is an object
{"after":-1} | 1 | after: a number from 0 to 604800 is needed, not -1
{"after":"soon"} | 1 | after: a number from 0 to 604800 is needed, not soon
{"after":5},{"at":4} | 1 | at: 4 is before the step above ends
{"emit":"AccStateChangeSignl"} | 1 | there is no signal 'AccStateChangeSignl'; did you mean AccStateChangeSignal
{"emit":"AccStateChangeSignal"} | 1 | AccStateChangeSignal takes 1 argument
{"emit":"CarSpeedChangeSignal","args":[-1]} | 1 | CarSpeedChangeSignal: speed: '-1'
{"emit":"CarSpeedChangeSignal","args":{}} | 1 | args: an array is needed
{"ramp":{"misc.car_speed":[0,9]}} | 1 | "seconds" is needed
{"ramp":{"misc.car_speed":[0]},"seconds":1} | 1 | misc.car_speed: [from, to] is needed
{"ramp":{"misc.car_speed":[0,900]},"seconds":1} | 1 | misc.car_speed: '
{"ramp":{"misc.can_version":[0,9]},"seconds":1} | 1 | misc.can_version is no number
{"ramp":{"misc.car_speed":[0,9]},"seconds":1,"curve":"round"} | 1 | curve: linear, ease or quick is needed, not round
{"ramp":{"misc.car_speed":[0,9]},"seconds":604800,"every":0.001} | 1 | more than 1000000 steps
{"repeat":0,"steps":[{"after":1}]} | 1 | repeat: a number from 1 to 1e+06 is needed, not 0
{"repeat":1000000,"steps":[{"repeat":1000000,"steps":[{"label":"a"}]}]} | 1 | more than 1000000 steps
{"repeat":100000,"steps":[{"after":60}]} | 1 | longer than a week
{"fault":"SetLogo explode"} | 1 | there is no fault
{"fault":"SetLogo hang","times":0} | 1 | times: a number from 1 to 1e+06 is needed, not 0
{"expect":"SetLogos"} | 1 | there is no method 'SetLogos'; did you mean SetLogo
{"expect":"SetOnSourceChange","args":{"source":3}} | 1 | there is no argument of SetOnSourceChange 'source'; did you mean SourceValue?
{"reboot":"warm"} | 1 | 'warm' is not allowed; allowed: cold, acc, reset
{"label":1} | 1 | a text is needed, not 1
{"label":"a","label":"b"} | 1 | the key "label" is there twice
{"label":"a"}~{"label":"b"} | 2 | no JSON
{"label":"a"},~{"set":~{"power.acc":2}} | 3 | power.acc: '2' is not allowed)";

TEST_F(ScenariosTest, WhatIsWrongIsSaidWithItsPlaceAndTheUnitGoesOn) {
  Start();
  std::vector<std::array<std::string, 2>> files;  // text of the file, what is said behind its name
  for (const auto& row : Rows(kWrong)) {
    std::string steps = row[0];
    std::replace(steps.begin(), steps.end(), '~', '\n');
    files.push_back({kHead + steps + "]}", ":" + row[1] + ": " + row[2]});
  }
  const std::string deep(10000, '[');
  std::string many;
  for (int i = 0; i < 1000; ++i) many += "\"" + std::to_string(i) + "\":1,";
  const std::string capture = R"({"format":"hlx-capture","version":1})";
  const std::vector<std::array<std::string, 2>> others = {
      {"", ":1: no JSON"},
      {"[]", ":1: a scenario is an object"},
      {kHead, ":1: no JSON"},
      {std::string(kHead) + "{\"label\":\"cut", ":1: no JSON"},
      {deep, ":1: nested more than 64 levels deep"},
      {std::string(kHead) + "\n{\"label\":\"\xff\"}]}", ":2: no UTF-8 text"},
      {"{" + many + "\"a\":1}", ":1: more than 1000 keys in an object"},
      {R"({"format":"hlx-scenario","version":2,"title":"t","steps":[]})", ":1: version: 1 is needed"},
      {R"({"version":1,"title":"t","steps":[]})", ":1: \"format\" is needed"},
      {capture + "\n{\"t\":1,\"signal\":\"Nothing\"}", ":2: there is no signal 'Nothing'"},
      {capture + "\n{\"signal\":\"AccStateChangeSignal\"}", ":2: \"t\", the seconds since the beginning, is needed"},
      {capture + "\n{\"t\":-1}", ":2: t: -1 is not within"},
      {capture + "\n{\"t\":2}\n{\"t\":1.5}", ":3: t: 1.5 is before that of the line above"},
      {capture + "\n{\"t\":1,\"values\":{\"misc.dors\":1}}", ":2: there is no value 'misc.dors'"},
      {capture + "\n{\"t\":1,\"values\":{\"misc.car_speed\":\"fast\"}}", ":2: misc.car_speed: 'fast'"},
      {capture + "\n{\"t\":1,\"values\":{\"misc.speakers\":1000000}}",
       ":2: misc.speakers: 1000000 would be 64 in the record"},
      {capture + "\n{\"t\":1,\"values\":{\"power.acc\":1.5}}", ":2: power.acc: 1.5 would be 2 in the record"},
      {capture + "\n{\"t\":1,\"values\":{\"power.gamma\":1e30}}", ":2: power.gamma: 1e+30 would be"},
      {capture + "\n{\"t\":1,\"values\":{\"time.date\":\"2024-99-99\"}}", ":2: "},
      {capture + "\n{\"t\":1,\"values\":{\"misc.can_version\":\"" + deep + "\"}}", ":2: "},
      {capture + "\n{\"t\":1,\"values\":7}", ":2: values: an object is needed"},
      {capture + "\n{\"t\":1,\"signal\":\"CarSpeedChangeSignal\",\"args\":[", ":2: no JSON"},
      {R"({"format":"hlx-capture","version":9})", ":1: version: 1 is needed"}};
  files.insert(files.end(), others.begin(), others.end());
  for (const auto& [text, said] : files) {
    const Result result = Unit("play " + Write("/tmp/wrong.json", text));
    EXPECT_EQ(2, result.code) << text.substr(0, 200) << result.err;
    EXPECT_THAT(result.err, HasSubstr("/tmp/wrong.json" + said)) << text.substr(0, 200);
  }
  Write("/tmp/large.json", "");
  fs::resize_file("/tmp/large.json", 100U << 20U);
  for (const auto& [word, said] : std::vector<std::array<std::string, 2>>{
           {"/tmp/large.json", "/tmp/large.json: 104857600 bytes; at most"},
           {"/tmp", "/tmp: not a regular file"},
           {"/tmp/none.json", "/tmp/none.json: No such file"},
           {"city-driv", "there is no file and no scenario 'city-driv'; did you mean city-drive"},
           {"city-drive --speed -1", "speed: a number from 0 to 1000000 is needed"},
           {"city-drive --speed nan", "speed: a number from 0 to 1000000 is needed"}}) {
    const Result result = Unit("play " + word);
    EXPECT_EQ(2, result.code) << word << result.err;
    EXPECT_THAT(result.err, HasSubstr(said));
  }
  EXPECT_THAT(Unit("status --json").out, HasSubstr("\"state\":\"idle\""));
  EXPECT_EQ("on\n", Unit("get power.acc").out);
}

TEST_F(ScenariosTest, WaitsForACallLoopsAndStops) {
  Start();
  const std::string file = Write("/tmp/s.json", std::string(kHead) +
                                                    R"({"fault":"SetGammaValue error"},{"label":"waits"},
      {"expect":"SetOnSourceChange","args":{"SourceValue":3}},{"fault":"clear"},{"set":{"misc.car_speed":33}},{"after":5}]})");
  EXPECT_EQ(0, Unit("play " + file).code);
  for (const char* const source : {"2", "3"}) {
    EXPECT_NE(std::string("33\n"), Unit("get misc.car_speed").out) << source;
    EXPECT_THAT(Unit("status --json").out, HasSubstr(R"("label":"waits")"));
    EXPECT_NE(0, Ctl("misc set gamma 1").code);
    EXPECT_EQ(0, Ctl(std::string("misc set source ") + source).code);
  }
  for (int i = 0; i < 500 && Unit("get misc.car_speed").out != "33\n"; ++i) usleep(10000);
  EXPECT_EQ("33\n", Unit("get misc.car_speed").out);
  EXPECT_EQ("", Unit("fault list").out);
  EXPECT_THAT(Unit("status --json").out, HasSubstr(R"("state":"playing")"));
  EXPECT_EQ(0, Unit("stop").code);
  EXPECT_THAT(Unit("status --json").out, HasSubstr(R"("state":"stopped")"));
  // The call came before the step that waits for it.
  Write(file, std::string(kHead) + R"({"label":"early"},{"after":1},{"expect":"SetLogo","timeout":0.1}]})");
  EXPECT_EQ(0, Unit("play " + file).code);
  EXPECT_EQ(0, Ctl("misc set logo 5").code);
  for (int i = 0; i < 500 && Unit("status --json").out.find(R"("state":"playing")") != std::string::npos; ++i)
    usleep(10000);
  EXPECT_THAT(Unit("status --json").out, HasSubstr(R"("state":"done")"));
  // Nobody calls.
  Write(file, std::string(kHead) + "\n" + R"({"expect":"SetLogo","timeout":0.1}]})");
  const Result failed = Unit("play " + file + " --wait --speed 0");
  EXPECT_EQ(1, failed.code);
  EXPECT_THAT(failed.err, HasSubstr("/tmp/s.json:2: expect: no call of SetLogo within 0.1 s"));
  // Around and around, until another one is played.
  Write(file, std::string(kHead) + R"({"set":{"misc.air_level":1}},{"after":0.01,"set":{"misc.air_level":2}}]})");
  EXPECT_EQ(0, Unit("play " + file + " --loop --speed 10").code);
  const auto events = [] { return json::parse(Unit("status --json").out)["events"].get<int>(); };
  for (int i = 0; i < 500 && events() < 20; ++i) usleep(10000);
  EXPECT_GE(events(), 20);
  EXPECT_EQ(0, Unit("play parking --speed 0 --wait").code);
}

/// What happened, without when.
std::vector<std::string> Events(const std::string& file) {
  std::vector<std::string> events;
  std::ifstream stream(file);
  for (std::string line; std::getline(stream, line);) {
    const json event = json::parse(line);
    if (event.contains("signal")) events.push_back(event["signal"].get<std::string>() + event["args"].dump());
  }
  return events;
}

TEST_F(ScenariosTest, ACaptureReplayedHasTheSameEventsInTheSameOrder) {
  Start();
  const auto record = [](const std::string& play, const std::string& file) {
    const auto recording = Begin("record " + file);
    EXPECT_EQ(0, Unit("play " + play + " --speed 0 --wait").code);
    // The recorder has seen the last when it has seen this one.
    Emit("OnFactoryResetModeSignal");
    for (int i = 0; i < 500 && (Events(file).empty() || Events(file).back() != "OnFactoryResetModeSignal[]"); ++i)
      usleep(10000);
    recording->Signal(SIGINT);
    recording->Wait();
  };
  record("city-drive", "/tmp/one.jsonl");
  std::vector<std::string> one = Events("/tmp/one.jsonl");
  ASSERT_GT(one.size(), 2000U);
  record("/tmp/one.jsonl", "/tmp/two.jsonl");
  one.emplace_back("OnFactoryResetModeSignal[]");  // that of the second recording itself
  EXPECT_EQ(one, Events("/tmp/two.jsonl"));
}

}  // namespace
