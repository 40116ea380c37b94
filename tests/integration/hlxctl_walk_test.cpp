// Every value, command and event of the catalogue through hlxctl, against a service in this process.
#include <gmock/gmock.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "catalog/Catalog.h"
#include "tests/support/Process.h"
#include "tests/support/TestService.h"

using nlohmann::json;

namespace {

constexpr char kTool[] = HLX_BINARY_DIR "/tools/hlxctl/hlxctl";
constexpr char kConfig[] = "/tmp/hlxctl_walk.conf";
using Words = std::vector<std::string>;

Words Split(const std::string& text, char separator) {
  std::istringstream stream(text);
  Words words;
  for (std::string word; std::getline(stream, word, separator);) words.push_back(word);
  return words;
}

std::string Ctl(Words words) {
  words.insert(words.begin(), kTool);
  Process process(words);
  EXPECT_EQ(0, process.Wait()) << testing::PrintToString(words) << process.Err();
  return process.Out();
}

class HlxctlWalk : public testing::Test {
 public:
  HlxctlWalk() {
    setenv("HLX_HOST_CONFIG", kConfig, 1);
    Configure("raise_toyota");
    for (const catalog::RecordInfo& info : catalog::Records()) {
      const int id = shmget(static_cast<key_t>(info.key), info.size, IPC_CREAT | 0666);
      records_[info.record] = shmat(id, nullptr, 0);
      *reinterpret_cast<uint32_t*>(static_cast<char*>(records_[info.record]) + info.initialised) = 1;
    }
  }
  static void Configure(const std::string& protocol) {
    std::ofstream(kConfig) << "[system]\nusing_can_protocol=" << protocol << "\n";
  }
  void Store(const catalog::Value& value, const catalog::Scalar& scalar) {
    catalog::StoreField(value, records_[value.field.record], scalar);
  }

  std::map<catalog::Record, void*> records_;
  TestService service_;
};

TEST_F(HlxctlWalk, ShowsEveryField) {
  std::map<std::string, json> expected;
  int64_t next = 2;  // another one for each field, so that none can stand in for its neighbour
  for (const catalog::Value& value : catalog::Values()) {
    if (!value.InRecord() || value.IsBit() || value.area == catalog::Area::kInfo) continue;
    using Type = catalog::FieldType;
    const std::map<Type, const char*> texts = {{Type::kText, "Fünf"},
                                               {Type::kDate, "2024-02-29"},
                                               {Type::kClock, "23:59:30"},
                                               {Type::kMoment, "2025-01-01T12:00:01"}};
    const auto text = texts.find(value.field.type);
    if (text != texts.end()) {
      Store(value, std::string(text->second));
      expected[value.FullName()] = text->second;
    } else {
      Store(value, next);
      expected[value.FullName()] = next++ % 128;
    }
  }
  Words names = {"get", "--raw"};
  for (const auto& entry : expected) names.push_back(entry.first);
  const Words lines = Split(Ctl(names), '\n');
  ASSERT_EQ(expected.size(), lines.size());
  auto line = lines.begin();
  std::map<std::string, json> areas;
  for (const auto& [name, value] : expected) {
    EXPECT_EQ(value.is_string() ? value.get<std::string>() : value.dump(), *line++) << name;
    const std::string area = name.substr(0, name.find('.'));
    json& shown = areas[area];
    if (shown.is_null()) shown = json::parse(Ctl({area, "--json"}));
    EXPECT_EQ(value, shown.at(name.substr(area.size() + 1)).at("value")) << name;
  }
  // Flags bit by bit, in words.
  Store(*catalog::FindValue("misc.doors"), int64_t{0x84});
  EXPECT_EQ("0x84\nopen\nopen\nclosed\n",
            Ctl({"get", "misc.doors", "misc.door_front_left", "misc.door_hood", "misc.door_trunk"}));
}

/// What a parameter is sent as in the walk below, and what reaches the bus.
struct Sample {
  std::string word;
  int64_t number;
};

Sample SampleOf(const catalog::Reading& reading) {
  if (!reading.words.empty()) return {reading.words[0].word, reading.words[0].value};
  return {"7", 7};
}

std::string OnBus(char type, const Sample& sample) {
  char byte[16];
  std::snprintf(byte, sizeof byte, "byte 0x%02x", static_cast<unsigned>(sample.number));
  switch (type) {
    case 'y':
      return byte;
    case 'b':
      return sample.number != 0 ? "true" : "false";
    case 'u':
      return "uint32 " + std::to_string(sample.number);
    case 's':
      return "'" + sample.word + "'";
    default:
      return std::to_string(sample.number);
  }
}

/// Commands that send a record: the words, and its 32-bit numbers.
const std::map<std::string, std::pair<const char*, std::vector<int>>> kRecords = {
    {"logo-info", {"1 2 3 4 5", {1, 2, 3, 4, 5}}},
    {"date", {"2024-02-29", {2024, 2, 29, 4}}},
    {"time", {"23:59", {23, 59, 0}}},
    {"gps", {"2024-07-01 12:30:05", {2024, 7, 1, 1, 12, 30, 5}}},
    {"carplay", {"-1", {1969, 12, 31, 3, 23, 59, 59}}},
};

std::string RecordOnBus(const std::vector<int>& numbers) {
  std::string text;
  for (const int number : numbers) {
    for (int shift = 0; shift < 32; shift += 8) {
      char byte[8];
      std::snprintf(byte, sizeof byte, "0x%02x", static_cast<unsigned>(number) >> shift & 0xFF);
      text.append(text.empty() ? "<[byte " : ", ").append(byte);
    }
  }
  return text + "]>";
}

TEST_F(HlxctlWalk, SendsEveryCommand) {
  for (const catalog::Command& command : catalog::Commands()) {
    Words words = {NameOf(command.area), "set", command.name};
    if (command.asks_first) words.emplace_back("--yes");
    std::string expected;
    const auto record = kRecords.find(command.name);
    if (record != kRecords.end()) {
      for (const std::string& word : Split(record->second.first, ' ')) words.push_back(word);
      expected = RecordOnBus(record->second.second);
    }
    const GDBusMethodInfo* const method =
        g_dbus_interface_info_lookup_method(com_vorn_linux_system_interface_info(), command.method);
    ASSERT_NE(nullptr, method) << command.method;
    for (std::size_t i = 0; i < command.Parameters().size() && record == kRecords.end(); ++i) {
      const Sample sample = SampleOf(command.Parameters()[i].reading);
      words.push_back(sample.word);
      expected += (i == 0 ? "" : ", ") + OnBus(*method->in_args[i]->signature, sample);
    }
    if (command.Parameters().size() == 1 || record != kRecords.end()) expected += ",";
    EXPECT_EQ("ok", Ctl(words).substr(0, 2));
    EXPECT_THAT(service_.TakeCalls(), testing::ElementsAre(std::string(command.method) + " (" + expected + ")"));
    // The example of its help.
    const std::string help = Ctl({NameOf(command.area), "set", command.name, "--help"});
    Words example = Split(help.substr(help.find("\n  hlxctl ") + 1), ' ');
    example.erase(example.begin(), example.begin() + 3);
    example.back() = example.back().substr(0, example.back().find('\n'));
    EXPECT_EQ("ok", Ctl(example).substr(0, 2));
    EXPECT_THAT(service_.TakeCalls(), testing::ElementsAre(testing::StartsWith(std::string(command.method) + " (")));
  }
}

TEST_F(HlxctlWalk, CallsEveryMethod) {
  const std::map<char, Sample> samples = {{'b', {"on", 1}},
                                          {'y', {"255", 255}},
                                          {'i', {"-7", -7}},
                                          {'u', {"0xFFFFFFFF", UINT32_MAX}},
                                          {'s', {"-- Fünf", 0}}};
  GDBusMethodInfo* const* const methods = com_vorn_linux_system_interface_info()->methods;
  for (GDBusMethodInfo* const* method = methods; *method != nullptr; ++method) {
    Words words = {"call", "--yes", (*method)->name};
    Words expected;
    for (GDBusArgInfo* const* info = (*method)->in_args; info != nullptr && *info != nullptr; ++info) {
      const char type = *(*info)->signature;
      words.push_back(type == 'v' ? "2024,-1,4294967295" : samples.at(type).word);
      expected.push_back(type == 'v' ? RecordOnBus({2024, -1, -1}) : OnBus(type, samples.at(type)));
    }
    const std::string tuple = expected.empty() ? "" : expected[0] + (expected.size() == 1 ? "," : ", " + expected[1]);
    EXPECT_EQ((*method)->out_args == nullptr ? "ok\n" : "ok: result=true\n", Ctl(words));
    EXPECT_THAT(service_.TakeCalls(), testing::ElementsAre((*method)->name + (" (" + tuple + ")")));
  }
}

/// A tool that listens, under a name that may examine packages: it hears what is told of a search, too.
std::unique_ptr<Process> Listener(const char* verb, const char* option) {
  const std::string hmi = "/tmp/hmi";
  if (!std::filesystem::exists(hmi)) std::filesystem::create_symlink(kTool, hmi);
  auto process = std::make_unique<Process>(Words{hmi, verb, option});
  for (int i = 0; i < 5000 && process->Err().find("listening") == std::string::npos; ++i) usleep(2000);
  return process;
}

std::string Arguments(const catalog::Signal& signal) {
  std::string text = "(";
  for (const char* type = signal.arguments; *type != '\0'; ++type) {
    const int number = static_cast<int>(type - signal.arguments) + 2;
    text += *type == 'd' ? std::to_string(number) + ".5" : OnBus(*type, {"", number});
    if (type == signal.arguments || type[1] != '\0') text += ", ";
  }
  return text + ")";
}

TEST_F(HlxctlWalk, PrintsEveryEvent) {
  for (const auto& [name, value] : {std::pair{"time.vehicle_24_hour", 1}, {"time.vehicle_zone", 9}}) {
    Store(*catalog::FindValue(name), int64_t{value});
  }
  const auto monitor = Listener("monitor", "--json");
  std::set<std::string> callbacks;
  std::istringstream lines;
  for (const char* const protocol : {"raise_gac", "raise_renault", "raise_ford"}) {
    Configure(protocol);
    for (const catalog::Signal& signal : catalog::Signals()) service_.Emit(signal.name, Arguments(signal));
    for (const char* const key : {"(byte 0xA2, byte 1)", "(byte 0xAE, byte 1)"})
      service_.Emit("KeyStateChangeSignal", key);
    service_.Emit("PowerOffDelayTimeChangeSignal", "(byte 0xFF,)");
    ASSERT_TRUE(monitor->WaitForLine("\"power_off_delay\":{\"value\":255")) << monitor->Out();
    // What each event tells, in the order of the signals.
    lines.str(monitor->Out());
    lines.clear();
  }
  std::map<std::string, json> told;  // the last of each
  for (std::string line; std::getline(lines, line);) {
    const json event = json::parse(line);
    const std::string name = event["event"];
    callbacks.insert(name);
    if (told.count(name) == 0) told[name] = event;
    EXPECT_EQ(event["area"], NameOf(catalog::SignalOf(name)->area)) << name;
  }
  std::set<std::string> all;
  for (const catalog::Signal& signal : catalog::Signals()) {
    for (const char* const callback : signal.callbacks) {
      if (callback != nullptr) all.insert(callback);
    }
  }
  EXPECT_EQ(all, callbacks);
  for (const catalog::Signal& signal : catalog::Signals()) {
    for (const catalog::Telling& telling : catalog::AnnouncedBy(signal)) {
      const json& values = told.at(signal.callbacks[0])["values"];
      if (telling.argument < 0 || telling.value->IsBit() || values.count(telling.value->name) == 0) continue;
      const char type = signal.arguments[telling.argument];
      const int number = telling.argument + 2;
      const json expected = type == 'd' ? json(number + 0.5) : type == 'b' ? json(1) : json(number);
      EXPECT_EQ(expected, values[telling.value->name]["value"]) << signal.name << " " << telling.value->name;
    }
  }
  monitor->Signal(SIGINT);
  EXPECT_EQ(0, monitor->Wait());
}

TEST_F(HlxctlWalk, ListensToEverySignal) {
  const auto listener = Listener("listen", "--json");
  const auto reader = Listener("listen", "-v");
  std::vector<json> expected;
  for (const catalog::Signal& signal : catalog::Signals()) {
    service_.Emit(signal.name, Arguments(signal));
    json arguments = json::array();
    for (const char* type = signal.arguments; *type != '\0'; ++type) {
      const auto number = type - signal.arguments + 2;
      arguments.push_back(*type == 'd'   ? json(static_cast<double>(number) + 0.5)
                          : *type == 'b' ? json(true)
                                         : json(number));
    }
    expected.push_back({{"signal", signal.name}, {"args", arguments}});
  }
  // What another service than ours may send.
  service_.Emit("AccStateChangeSignal", "(byte 5,)");
  expected.push_back({{"signal", "AccStateChangeSignal"}, {"args", {5}}, {"problem", "carries (y), not (b)"}});
  service_.Emit("Other", "('Fünf', <[byte 0xFE, 0xFF, 0xFF, 0xFF]>, <[byte 7]>, <true>)");
  expected.push_back(
      {{"signal", "Other"}, {"args", {"Fünf", {-2}, {7}, true}}, {"problem", "no such signal in the interface"}});
  EXPECT_TRUE(listener->WaitForLine("\"Other\""));
  Words lines = Split(listener->Out(), '\n');
  ASSERT_EQ(expected.size(), lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    json line = json::parse(lines[i]);
    line.erase("time");
    line.erase("sender");
    EXPECT_EQ(expected[i], line);
  }
  EXPECT_TRUE(reader->WaitForLine("  ScreenLightLevelChangedSignal  type=2, level=3"));
  EXPECT_TRUE(reader->WaitForLine("  AccStateChangeSignal  isAccOn=5  carries (y), not (b)"));
  EXPECT_TRUE(reader->WaitForLine("  Other  \"Fünf\", [-2], [7], true  no such signal in the interface"));
  for (Process* const process : {listener.get(), reader.get()}) {
    process->Signal(SIGINT);
    EXPECT_EQ(0, process->Wait());
  }
}

}  // namespace
