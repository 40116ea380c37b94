#include "tools/hlxctl/CommandLine.h"

#include <algorithm>
#include <string_view>

#include "tools/hlxctl/Failure.h"
#include "tools/hlxctl/Output.h"
#include "tools/hlxctl/PackageCheck.h"
#include "tools/hlxctl/TimeArea.h"
#include "tools/hlxctl/Zones.h"

using namespace std::string_view_literals;

CommandLine::CommandLine() : areas_{PowerArea(), MiscArea(), TimeArea(), InfoArea(), UpdateArea()} {
  app_.set_version_flag("--version", "hlxctl " HLX_VERSION);
  app_.add_flag("--json", options_.json, "Write JSON");
  app_.add_flag("-v,--verbose", options_.verbose, "Show the library's log records on standard error");
  app_.require_subcommand(1)->fallthrough();
  app_.footer(
      "Exit codes: 0 done; 1 internal, or output that cannot be written; 2 a wrong command line or value; 3 no "
      "service,\n"
      "bus or record; 4 the command failed; 5 not confirmed; 13 to 20 outcomes of \"update check\" (see its help).");
  for (const Area& area : areas_) AddArea(area);
  AddMonitor();
}

void CommandLine::AddArea(const Area& area) {
  CLI::App* const shown = app_.add_subcommand(area.name, area.about);
  shown->footer(area.warning);
  shown->require_subcommand(0, 1)->fallthrough();
  shown->callback([this, shown, &area] {
    if (shown->get_subcommands().empty()) Do([this, &area] { Show(area, options_); });
  });
  if (!area.commands.empty()) {
    CLI::App* const set = shown->add_subcommand("set", "Send a command");
    set->require_subcommand(1)->fallthrough();
    set->footer(area.warning);
    for (const Command& command : area.commands) {
      AddCommand(set, area, command);
      // What reads better as a verb goes without "set", too.
      if (command.arguments.empty() || command.confirm) AddCommand(shown, area, command);
    }
  }
  if (area.name == "time"sv) {
    CLI::App* const zones = shown->add_subcommand("zones", "List the time zones, without a service")->fallthrough();
    zones->callback([this] { Do([this] { ListZones(CurrentZone(), options_.json); }); });
  }
  if (area.name == "update"sv) AddUpdateTools(shown, area);
}

void CommandLine::AddCommand(CLI::App* parent, const Area& area, const Command& command) {
  CLI::App* const sub = parent->add_subcommand(command.name, command.help)->fallthrough();
  std::vector<std::string>& words = words_.emplace_back(command.arguments.size());
  for (std::size_t i = 0; i < words.size(); ++i) {
    const Argument& argument = command.arguments[i];
    words[i] = argument.otherwise;
    sub->add_option(argument.name, words[i], argument.allowed)->required(argument.otherwise.empty());
  }
  if (command.confirm) sub->add_flag("-y,--yes", options_.yes, "Do not ask");
  sub->callback([this, &area, &command, &words] {
    Do([this, &area, &command, &words] { Send(area, command, words, options_); });
  });
}

void CommandLine::AddUpdateTools(CLI::App* update, const Area& area) {
  CLI::App* const watch = update->add_subcommand("watch", "Show how an update goes")->fallthrough();
  AddLimits(watch);
  watch->callback([this, &area] { Do([this, &area] { Watch({&area}, monitor_); }); });
  CLI::App* const check = update->add_subcommand("check", "Examine a package, without a service")->fallthrough();
  check->add_option("DIR", directory_, "What would be the stick: update.zip, md5.txt")->required();
  check->footer(
      "Exit codes: 0 valid; 13 a CAN file; 14 wrong checksum; 15 older than the unit; 16 other hardware; 17 other\n"
      "project; 18 no update.zip; 19 no version file in it; 20 the unit has no version to compare with.");
  check->callback([this] { action_ = [this] { return CheckPackage(directory_, options_.json); }; });
}

void CommandLine::AddMonitor() {
  CLI::App* const monitor = app_.add_subcommand("monitor", "Print events as they come")->fallthrough();
  monitor->add_option("area", watched_, "power, misc, time, update; without any: all but time");
  AddLimits(monitor);
  std::string notes;
  for (const Area& area : areas_) {
    if (*area.warning != '\0') notes.append(notes.empty() ? "" : "\n\n").append(area.name).append(": ") += area.warning;
  }
  monitor->footer(notes);
  monitor->callback([this] { Do([this, areas = Watched()] { Watch(areas, monitor_); }); });
}

void CommandLine::AddLimits(CLI::App* app) {
  app->add_option("--count", monitor_.count, "End after so many events")->check(CLI::PositiveNumber);
  app->add_option("--for", monitor_.seconds, "End after so many seconds")->check(CLI::PositiveNumber);
}

/// Time is watched only when it is named, since listening to it changes the system.
std::vector<const Area*> CommandLine::Watched() const {
  std::vector<const Area*> watched;
  for (const Area& area : areas_) {
    const bool meant =
        watched_.empty() ? area.name != "time"sv : std::count(watched_.begin(), watched_.end(), area.name) != 0;
    if (meant && area.listen) watched.push_back(&area);
  }
  for (const std::string& name : watched_) {
    if (std::none_of(watched.begin(), watched.end(), [&name](const Area* area) { return area->name == name; })) {
      throw CLI::ValidationError("area", "'" + name + "' has no events: power, misc, time and update have");
    }
  }
  return watched;
}

void CommandLine::Do(const std::function<void()>& work) {
  action_ = [this, work] {
    monitor_.json = options_.json;
    work();
    return kExitDone;
  };
}

int CommandLine::Explain(const CLI::ParseError& problem) const {
  if (problem.get_exit_code() == 0) return app_.exit(problem);  // help and version
  std::string place;
  const CLI::App* app = &app_;
  while (!app->get_subcommands().empty()) {
    app = app->get_subcommands().front();
    place += app->get_name() + ": ";
  }
  std::string choice;
  for (const CLI::App* const sub : app->get_subcommands([](const CLI::App*) { return true; })) {
    choice.append(choice.empty() ? "" : ", ").append(sub->get_name());
  }
  const std::vector<std::string> unknown = app_.remaining(true);
  std::string text = unknown.empty() ? problem.what() : "'" + unknown.front() + "' is not known here";
  if (!choice.empty()) text += "; choose from: " + choice;
  Output::Note(place + text);
  return kExitUsage;
}
