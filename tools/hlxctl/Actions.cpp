#include "tools/hlxctl/Actions.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "tools/hlxctl/Failure.h"
#include "tools/hlxctl/Output.h"
#include "tools/hlxctl/Records.h"

namespace {

void Connect() {
  if (HLX_StartSystemProxy()) return;
  const char* const bus = std::getenv("DBUS_SESSION_BUS_ADDRESS");
  throw Failure(kExitNoService, "the system service is not on the session bus (DBUS_SESSION_BUS_ADDRESS is " +
                                    std::string(bus != nullptr ? bus : "not set") + ")");
}

void Confirm(const std::string& what) {
  if (isatty(STDIN_FILENO) == 0) {
    throw Failure(kExitNotConfirmed, what + ": must be confirmed: answer on a terminal, or use --yes");
  }
  std::fprintf(stderr, "hlxctl: really send \"%s\"? yes/no: ", what.c_str());
  std::string answer;
  std::getline(std::cin, answer);
  if (answer != "yes") throw Failure(kExitNotConfirmed, what + ": not confirmed");
}

std::string Column(std::string text, std::size_t width) {
  text.resize(std::max(width, text.size()), ' ');
  return text;
}

}  // namespace

void Show(const Area& area, const Options& options) {
  Connect();
  RequireRecords(area.records);
  Json shown = Json::object();
  std::size_t width = 0;
  bool nothing = true;
  for (const Field& field : area.fields) width = std::max(width, std::string(field.label).size());
  for (const Field& field : area.fields) {
    const Value value = field.get();
    nothing = nothing && value.value.is_null();
    if (options.json) {
      Json& entry = shown[field.name] = {{"label", field.label}};
      entry.update(value.ToJson());
    } else {
      Output::Line(Column(field.label, width + 2) + value.ToText());
    }
  }
  if (options.json) {
    Output::JsonLine(shown);
  } else if (nothing) {
    Output::Line(area.warning);
  }
}

void Send(const Area& area, const Command& command, const std::vector<std::string>& words, const Options& options) {
  ArgumentValues values;
  std::string what = std::string(area.name) + " " + command.name;
  for (std::size_t i = 0; i < words.size(); ++i) values.push_back(command.arguments[i].Read(words[i]));
  for (const std::string& word : words) what += " " + word;
  if (command.confirm && !options.yes) Confirm(what);
  Connect();
  RequireRecords(area.records);
  const bool accepted = command.run(values);
  const char* const error = HLX_GetLastCallError();
  const std::string problem = error != nullptr ? error : accepted ? "" : "the service said no";
  if (options.json) {
    Json result = {{"command", what}, {"ok", problem.empty()}};
    if (!problem.empty()) result["error"] = problem;
    Output::JsonLine(result);
  } else if (problem.empty()) {
    Output::Line("ok");
  }
  if (!problem.empty()) throw Failure(kExitCallFailed, what + ": " + problem);
}

void Watch(const std::vector<const Area*>& areas, const MonitorOptions& options) {
  Connect();
  for (const Area* const area : areas) RequireRecords(area->records);
  Monitor(areas, options);
}
