#include <nlohmann/json.hpp>

#include "tools/common/Bus.h"
#include "tools/common/Failure.h"
#include "tools/common/Records.h"
#include "tools/common/Values.h"
#include "tools/hlxctl/Verbs.h"

namespace {

constexpr char kUpdateNote[] =
    "Only the process named \"hmi\" examines sticks: in any other, this tool included, the package is empty.\n"
    "\"hlxctl update check\" examines a package without a unit.";

std::string RawText(const catalog::Scalar& scalar) {
  const auto* const text = std::get_if<std::string>(&scalar);
  if (text != nullptr) return Printable(*text);
  const Json json = JsonOf(scalar);
  return json.is_null() ? "" : json.dump();
}

std::string GetText(const Request& request, const catalog::Reading& reading, const catalog::Scalar& scalar) {
  const std::string text = request.raw ? RawText(scalar) : Bare(reading, scalar);
  return request.unit && !text.empty() && *reading.unit != '\0' ? text + " " + reading.unit : text;
}

bool Contains(const std::string& text, const std::string& part) {
  return g_strrstr(GLibPtr<gchar>(g_ascii_strdown(text.c_str(), -1)).get(), part.c_str()) != nullptr;
}

/// All vocabularies of a value or a command.
struct NameRow {
  std::string name, label, field, getter, signal, callbacks;

  bool Mentions(const std::string& part) const {
    for (const std::string* const text : {&name, &label, &field, &getter, &signal, &callbacks}) {
      if (Contains(*text, part)) return true;
    }
    return false;
  }
};

std::string CallbacksOf(const char* signal_name) {
  std::string text;
  const catalog::Signal* const signal = catalog::FindSignal(signal_name);
  if (signal == nullptr) return text;
  for (const char* const callback : signal->callbacks) {
    if (callback != nullptr) text.append(text.empty() ? "" : " ").append(callback);
  }
  return text;
}

std::vector<NameRow> ValueNames() {
  std::vector<NameRow> rows;
  for (const catalog::Value& value : catalog::Values()) {
    rows.push_back({value.FullName(), value.label, value.field.name, value.getter.name, value.announced.signal,
                    CallbacksOf(value.announced.signal)});
  }
  return rows;
}

/// A command in the same columns: its function stands for a getter, its method for a field.
std::vector<NameRow> CommandNames() {
  std::vector<NameRow> rows;
  for (const catalog::Command& command : catalog::Commands()) {
    std::string signals, callbacks;
    for (const char* const signal : command.follows) {
      if (signal == nullptr) break;
      signals.append(signals.empty() ? "" : " ").append(signal);
      callbacks.append(callbacks.empty() ? "" : " ").append(CallbacksOf(signal));
    }
    rows.push_back({std::string(NameOf(command.area)) + " set " + command.name, command.help, command.method,
                    command.function, signals, callbacks});
  }
  return rows;
}

/// @param field what the second column is: a record's field, or a D-Bus method. @return whether there was any
bool ListNames(const std::vector<NameRow>& rows, const std::string& part, const char* heading, const char* kind,
               const char* field, const char* getter, Json* json) {
  Table table;
  table.Row({{heading, Tone::kStrong},
             {field, Tone::kStrong},
             {getter, Tone::kStrong},
             {"signal", Tone::kStrong},
             {"callback", Tone::kStrong},
             {"label", Tone::kStrong}});
  bool any = false;
  for (const NameRow& row : rows) {
    if (!row.Mentions(part)) continue;
    any = true;
    if (json != nullptr) {
      json->push_back({{"kind", kind},
                       {"name", row.name},
                       {"label", row.label},
                       {field, row.field},
                       {getter, row.getter},
                       {"signal", row.signal},
                       {"callback", row.callbacks}});
    } else {
      table.Row({row.name, row.field, row.getter, row.signal, row.callbacks, {row.label, Tone::kDim}});
    }
  }
  if (json == nullptr && any) table.Print();
  return any;
}

}  // namespace

int Show(catalog::Area area, const Request& request) {
  Bus().RequireOwner();
  Json shown = Json::object();
  Table table;
  std::string group;
  bool package = false;
  for (const catalog::Value& value : catalog::Values(area)) {
    if (value.EventOnly()) continue;
    const catalog::Scalar scalar = Read(value);
    package = package || !std::holds_alternative<std::monostate>(scalar);
    if (request.json) {
      Json& entry = shown[value.name] = {{"label", value.label}};
      entry.update(ToJson(value.reading, scalar));
      continue;
    }
    if (group != value.group) table.Heading(group = value.group);
    table.Row({value.label, {ForPeople(value.reading, scalar), Tone::kStrong}, {value.FullName(), Tone::kDim}});
  }
  if (request.json) {
    Output::JsonLine(shown);
  } else {
    table.Print();
    if (area == catalog::Area::kUpdate && !package) Output::Line(kUpdateNote);
  }
  return kExitDone;
}

int Get(const Request& request) {
  std::vector<const catalog::Value*> values;
  for (const std::string& word : request.words) values.push_back(&ValueNamed(word));
  if (request.live) Bus().RequireOwner();
  Json shown = Json::object();
  for (const catalog::Value* const value : values) {
    const catalog::Scalar scalar = Read(*value);
    if (request.json) {
      shown[value->FullName()] = ToJson(value->reading, scalar);
    } else {
      Output::Line(GetText(request, value->reading, scalar));
    }
  }
  if (request.json) Output::JsonLine(shown);
  return kExitDone;
}

int Names(const Request& request) {
  const std::string word = request.words.empty() ? "" : request.words.front();
  const std::string part = GLibPtr<gchar>(g_ascii_strdown(word.c_str(), -1)).get();
  Json list = Json::array();
  Json* const json = request.json ? &list : nullptr;
  const bool values = ListNames(ValueNames(), part, "value", "value", "field", "getter", json);
  const bool commands = ListNames(CommandNames(), part, "command", "command", "method", "function", json);
  if (!values && !commands) Output::Note("no name contains '" + word + "'");
  if (json != nullptr) Output::JsonLine(list);
  return kExitDone;
}
