/// The catalogue's rows as the page needs them.
#include <limits>
#include <nlohmann/json.hpp>

#include "catalog/Catalog.h"
#include "cli/Json.h"
#include "tools/hlx-panel/Panel.h"

namespace {

const char* NameOf(catalog::Reading::Kind kind) {
  constexpr const char* kNames[] = {"count", "number", "decimal", "flag", "named", "bits",
                                    "code",  "zone",   "text",    "date", "clock", "moment"};
  return kNames[static_cast<std::size_t>(kind)];
}

void Describe(Json& json, const catalog::Reading& reading) {
  json["kind"] = NameOf(reading.kind);
  if (!reading.words.empty()) {
    Json words = Json::array();
    for (const catalog::Word& word : reading.words) words.push_back({word.value, word.word});
    json["words"] = std::move(words);
  }
  if (*reading.unit != '\0') json["unit"] = reading.unit;
  if (reading.decimals != 0) json["decimals"] = reading.decimals;
  if (reading.HasRange()) {
    json["least"] = reading.least;
    json["most"] = reading.most;
  }
}

Json Describe(const catalog::Value& value) {
  Json json = {{"name", value.FullName()},
               {"label", value.label},
               {"group", value.group},
               {"area", catalog::NameOf(value.area)},
               {"settable", value.settable}};
  Describe(json, value.reading);
  return json;
}

Json Describe(const catalog::Command& command) {
  Json parameters = Json::array();
  for (const catalog::Parameter& parameter : command.Parameters()) {
    Json json = {{"name", parameter.name}};
    Describe(json, parameter.reading);
    if (*parameter.otherwise != '\0') json["otherwise"] = parameter.otherwise;
    parameters.push_back(std::move(json));
  }
  return {{"area", catalog::NameOf(command.area)},
          {"name", command.name},
          {"help", command.help},
          {"method", command.method},
          {"confirm", command.asks_first},
          {"parameters", std::move(parameters)}};
}

std::string Describe() {
  Json values = Json::array();
  for (const catalog::Value& value : catalog::Values()) values.push_back(Describe(value));
  Json commands = Json::array();
  for (const catalog::Command& command : catalog::Commands()) commands.push_back(Describe(command));
  return Json{
      {"type", "hello"}, {"version", HLX_VERSION}, {"values", std::move(values)}, {"commands", std::move(commands)}}
      .dump();
}

}  // namespace

const std::string& Panel::Hello() {
  static const std::string hello = Describe();
  return hello;
}
