#include <algorithm>

#include "catalog/Catalog.h"
#include "tools/common/Values.h"
#include "tools/hlxctl/CommandLine.h"
#include "tools/hlxctl/PackageCheck.h"
#include "tools/hlxctl/Verbs.h"

using Ahead = const std::vector<std::string>*;
using catalog::Area;

namespace {

constexpr char kLook[] = "Look";
constexpr char kAreas[] = "Areas: values, and \"AREA set\" for commands";
constexpr char kCommands[] = "Commands";
constexpr char kFollow[] = "Follow";
constexpr char kFind[] = "Find out";
constexpr char kHidden[] = "";
constexpr char kBare[] = "For authors of a service";

void Does(CLI::App& app, Request& request, int (*action)(const Request&)) {
  app.callback([&request, action] { request.action = action; });
}

CLI::Validator Within(double least, double most, const char* allowed) {
  const auto check = [=](const std::string& text) {
    double number = 0;
    const bool fits = CLI::detail::lexical_cast(text, number) && number >= least && number <= most;
    return fits ? std::string() : "'" + text + "' is not allowed; allowed: " + allowed;
  };
  return {check, ""};
}

void AddTimeout(CLI::App& app, Request& request, const char* meaning) {
  app.add_option("--timeout", request.timeout, meaning)
      ->check(Within(0.001, 1e6, "seconds, from 0.001 to 1000000"))
      ->type_name("S");
}

void AddCount(CLI::App& app, Request& request) {
  app.add_option("--count", request.count, "End after so many")
      ->check(Within(1, 1e9, "a number from 1 on"))
      ->type_name("N");
}

void AddAreas(CLI::App& app, Request& request, const char* meaning) {
  const auto check = [](const std::string& word) {
    std::vector<std::string> areas;
    for (const Area area : catalog::kAreas) areas.emplace_back(NameOf(area));
    return catalog::FindArea(word) ? std::string() : "there is no '" + word + "'" + DidYouMean(word, areas);
  };
  app.add_option("area", request.words, meaning)->check(CLI::Validator(check, ""))->type_name("AREA");
}

void AddStatus(CLI::App& app, Request& request, Ahead /*ahead*/) { Does(app, request, Status); }

void AddGet(CLI::App& app, Request& request, Ahead /*ahead*/) {
  app.add_option("value", request.words, "One or more, as \"hlxctl names\" lists them")
      ->required()
      ->type_name("AREA.NAME");
  app.add_flag("--raw", request.raw, "Numbers instead of words");
  app.add_flag("--unit", request.unit, "With the unit");
  app.add_flag("--live", request.live, "Fail unless the service is there");
  Does(app, request, Get);
}

void AddNames(CLI::App& app, Request& request, Ahead /*ahead*/) {
  app.add_option("word", request.words, "Only what contains it, in any column")->expected(0, 1)->type_name("WORD");
  Does(app, request, Names);
}

void AddMonitor(CLI::App& app, Request& request, Ahead /*ahead*/) {
  AddAreas(app, request, "Only these");
  AddCount(app, request);
  AddTimeout(app, request, "End after so many seconds; with --count it is a failure if fewer came");
  app.add_flag("--since-start", request.since_start, "Seconds since the start instead of dates");
  app.add_flag("--values", request.values, "Readings only, as AREA.NAME and what it is now");
  Does(app, request, Monitor);
}

void AddWaitFor(CLI::App& app, Request& request, Ahead /*ahead*/) {
  app.add_option("what", request.words, "AREA.NAME, one of = != < > <= >=, and a value; or the name of an event")
      ->required()
      ->expected(1, 3)
      ->type_name("CONDITION");
  AddTimeout(app, request, "Give up after so many seconds");
  Does(app, request, WaitFor);
}

void AddWatch(CLI::App& app, Request& request, Ahead /*ahead*/) {
  AddAreas(app, request, "Only these");
  AddTimeout(app, request, "End after so many seconds");
  Does(app, request, Watch);
}

void AddRecord(CLI::App& app, Request& request, Ahead /*ahead*/) {
  app.add_option("file", request.file, "The file, made anew")->required()->type_name("FILE");
  app.add_option("--interval", request.interval, "Milliseconds between two looks at the records: 100 unless given")
      ->check(Within(1, 60000, "milliseconds, from 1 to 60000"))
      ->type_name("MS");
  AddTimeout(app, request, "End after so many seconds");
  Does(app, request, Record);
}

void AddDoctor(CLI::App& app, Request& request, Ahead /*ahead*/) { Does(app, request, Doctor); }

void AddCall(CLI::App& app, Request& request, Ahead /*ahead*/) {
  app.add_option("method", request.words, "And its arguments; a record (signature v) is its numbers, with commas")
      ->required()
      ->type_name("METHOD ARGUMENT");
  app.add_flag("-y,--yes", request.yes, "Do not ask");
  AddTimeout(app, request, "Wait so long for the answer, 25 s unless given");
  Does(app, request, Call);
}

void AddListen(CLI::App& app, Request& request, Ahead /*ahead*/) {
  app.add_option("signal", request.words, "Only these")->type_name("SIGNAL");
  AddCount(app, request);
  AddTimeout(app, request, "End after so many seconds; with --count it is a failure if fewer came");
  Does(app, request, Listen);
}

void AddComplete(CLI::App& app, Request& request, Ahead /*ahead*/) {
  app.add_option("word", request.words);
  Does(app, request, Complete);
}

void AddManual(CLI::App& app, Request& request, Ahead /*ahead*/) { Does(app, request, Manual); }

/// "set" asks for every command, the area's name itself for those that read better as a verb.
using Wanted = bool (*)(const catalog::Command&);

bool IsVerb(const catalog::Command& command) { return command.Parameters().empty() || command.asks_first; }

std::string Follows(const catalog::Command& command) {
  std::string text;
  for (const char* const signal : command.follows) {
    if (signal == nullptr) break;
    for (const char* const callback : catalog::FindSignal(signal)->callbacks) {
      if (callback != nullptr) text.append(text.empty() ? "Followed by: " : ", ").append(callback);
    }
  }
  return text.empty() ? "No event follows." : text;
}

/// A value that may be set.
std::string Sample(const catalog::Reading& reading) {
  using Kind = catalog::Reading::Kind;
  switch (reading.kind) {
    case Kind::kText:
      return "text";
    case Kind::kDate:
      return "2024-02-29";
    case Kind::kClock:
      return "12:30:05";
    case Kind::kZone:
      return "Europe/Berlin";
    default:
      return reading.words.empty() ? std::to_string(std::clamp<int64_t>(1, reading.least, reading.most))
                                   : reading.words[0].word;
  }
}

std::string ExampleOf(const catalog::Command& command) {
  std::string text = std::string("\nExamples:\n  hlxctl ") + NameOf(command.area) + " set " + command.name;
  for (const catalog::Parameter& parameter : command.Parameters()) {
    if (*parameter.otherwise == '\0') text += " " + Sample(parameter.reading);
  }
  return text + (command.asks_first ? " --yes" : "");
}

void AddCommand(CLI::App& parent, Request& request, const catalog::Command& command) {
  CLI::App* const app = parent.add_subcommand(command.name, command.help)->fallthrough()->group(kCommands);
  for (const catalog::Parameter& parameter : command.Parameters()) {
    if (*parameter.otherwise != '\0') continue;  // what stays in the application's own process
    const auto take = [&request](const std::string& word) { request.words.push_back(word); };
    app->add_option_function<std::string>(parameter.name, take, Allowed(parameter.reading))->required()->type_name("");
  }
  if (command.asks_first) app->add_flag("-y,--yes", request.yes, "Do not ask");
  app->footer(Follows(command) + ExampleOf(command));
  app->callback(
      [&request, &command] { request.action = [&command](const Request& asked) { return Send(command, asked); }; });
}

/// Below `parent` the one command that is named, or all.
void AddCommands(CLI::App& parent, Request& request, Area area, const std::string* name, Wanted wanted) {
  const catalog::Command* const named = name == nullptr ? nullptr : catalog::FindCommand(area, *name);
  for (const catalog::Command& command : catalog::Commands(area)) {
    if (wanted(command) && (named == nullptr || named == &command)) AddCommand(parent, request, command);
  }
}

void AddZones(CLI::App& area, Request& request) {
  Does(*area.add_subcommand("zones", "List the time zones and what their files say")->fallthrough()->group(kLook),
       request, Zones);
}

void AddCheck(CLI::App& area, Request& request) {
  CLI::App& app =
      *area.add_subcommand("check", "Examine an update package, without a unit")->fallthrough()->group(kLook);
  app.add_option("DIR", request.file, "What would be the stick: update.zip, md5.txt")->required()->type_name("");
  Does(app, request, [](const Request& asked) { return CheckPackage(asked.file, asked.json); });
}

template <Area kArea>
void AddArea(CLI::App& app, Request& request, Ahead ahead) {
  const std::string* const word = ahead == nullptr || ahead->empty() ? nullptr : ahead->data();
  const bool sets = word != nullptr && *word == "set";
  app.require_subcommand(0, 1);
  if (!catalog::Commands(kArea).empty()) {
    AddTimeout(app, request, "Commands: wait so long for the answer, 25 s unless given");
    CLI::App& set = *app.add_subcommand("set", "Send a command")->fallthrough()->group(kCommands);
    set.require_subcommand(1);
    if (word == nullptr || sets) {
      AddCommands(set, request, kArea, sets && ahead->size() > 1 ? word + 1 : nullptr,
                  [](const catalog::Command&) { return true; });
    }
    if (!sets) AddCommands(app, request, kArea, word, IsVerb);
  }
  if (kArea == Area::kTime) AddZones(app, request);
  if (kArea == Area::kUpdate) AddCheck(app, request);
  app.callback([&app, &request] {
    if (!app.get_subcommands().empty()) return;
    request.action = [](const Request& asked) { return Show(kArea, asked); };
  });
}

}  // namespace

const std::vector<Verb>& Verbs() {
  static const std::vector<Verb> verbs = {
      {"status",
       kLook,
       "The unit on one screen, and what is wrong with it",
       AddStatus,
       {{"status", "the same as hlxctl alone"}}},
      {"power",
       kAreas,
       "ACC, screen, brightness, button light, boot",
       AddArea<Area::kPower>,
       {{"power", "every value"},
        {"power set brightness day 40", "a command"},
        {"power reset --yes", "a command that asks first"}}},
      {"misc",
       kAreas,
       "Vehicle data, climate, doors, keys, switches of the unit",
       AddArea<Area::kMisc>,
       {{"misc", "every value"},
        {"misc set drive-position left", "a command"},
        {"misc set media -- '-- no title --'", "text that begins with a minus"}}},
      {"time",
       kAreas,
       "Clock, zones, daylight saving",
       AddArea<Area::kTime>,
       {{"time", "every value"},
        {"time set zone Europe/Berlin", "a zone by its file, its number or a part of its name"},
        {"time set gps 2024-07-01 12:30:05", "UTC, as a GPS receiver gives it"},
        {"time zones", "the zones to choose from"}}},
      {"info",
       kAreas,
       "Model, screen, versions, identity",
       AddArea<Area::kInfo>,
       {{"info", "every value"}, {"info --json", "for programs"}}},
      {"update",
       kAreas,
       "Software updates",
       AddArea<Area::kUpdate>,
       {{"update", "the package that was found"},
        {"update apply-all --yes", "start an update"},
        {"update check /media/usbstorage0", "examine a package"}}},
      {"get",
       kLook,
       "Bare values, one a line, for scripts",
       AddGet,
       {{"get power.screen", "on or off"},
        {"get --raw power.screen time.zone", "numbers"},
        {"get --unit power.power_off_delay", "with its unit"}}},
      {"names",
       kFind,
       "What a value, a signal, a field, a getter is called elsewhere",
       AddNames,
       {{"names", "everything"}, {"names brightness", "what has to do with brightness"}}},
      {"doctor",
       kFind,
       "Why does it not work: bus, service, records, machine",
       AddDoctor,
       {{"doctor", "one line per check, and what to do"}}},
      {"monitor",
       kFollow,
       "Print events as they come",
       AddMonitor,
       {{"monitor power misc", "the events of two areas"},
        {"monitor --count 1 --timeout 5 power", "wait for one event"},
        {"monitor --values --json", "readings, for programs"}}},
      {"wait-for",
       kFollow,
       "Wait until a value is so, or an event comes",
       AddWaitFor,
       {{"wait-for power.screen=off --timeout 60", "gives up after a minute"},
        {"wait-for 'misc.car_speed >= 0'", "numbers compare"},
        {"wait-for OnAccStateChange", "an event"}}},
      {"watch", kFollow, "A live screen of all values", AddWatch, {{"watch power", "one area"}}},
      {"record",
       kFollow,
       "Keep signals, values and calls in a file that hlx-simulator plays",
       AddRecord,
       {{"record drive.jsonl", "until Ctrl-C"}, {"record drive.jsonl --timeout 60", "for a minute"}}},
      {"call",
       kBare,
       "Call any method of the interface, without records",
       AddCall,
       {{"call SetGammaValue 12", "a number"}, {"call SetCurDate 2024,2,29,4", "a record"}}},
      {"listen",
       kBare,
       "Print the bare signals, without records",
       AddListen,
       {{"listen", "every signal"}, {"listen AccStateChangeSignal --count 1", "one of them"}}},
      {"complete", kHidden, "What may stand here, for shells", AddComplete, {}},
      {"manual", kHidden, "The manual page, in roff", AddManual, {}},
  };
  return verbs;
}
