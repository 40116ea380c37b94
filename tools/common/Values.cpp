#include "tools/common/Values.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "tools/common/Output.h"
#include "tools/common/ZoneNames.h"

using catalog::Reading;
using catalog::Scalar;

namespace {

constexpr std::size_t kShortList = 12;

bool IsZone(const Reading& reading) { return reading.kind == Reading::Kind::kZone; }

}  // namespace

const catalog::Value& ValueNamed(const std::string& name) {
  const catalog::Value* const value = catalog::FindValue(name);
  if (value != nullptr) return *value;
  const std::optional<catalog::Area> area = catalog::FindArea(name);
  if (area) {
    throw std::invalid_argument("'" + name + "' is an area: name one of its values, as \"" +
                                catalog::Values(*area)[0].FullName() + "\", or look at all of them: \"hlxctl " + name +
                                "\"");
  }
  throw std::invalid_argument("there is no value '" + name + "'" + Suggest(catalog::NearestValues(name)));
}

std::string Bare(const Reading& reading, const Scalar& scalar) {
  const auto* const whole = std::get_if<int64_t>(&scalar);
  return Printable(whole != nullptr && IsZone(reading) ? ZoneName(*whole) : catalog::InWords(reading, scalar));
}

std::string ForPeople(const Reading& reading, const Scalar& scalar) {
  const std::string text = Bare(reading, scalar);
  if (text.empty()) return "–";
  return *reading.unit == '\0' ? text : text + " " + reading.unit;
}

Json ToJson(const Reading& reading, const Scalar& scalar) {
  const Json value = JsonOf(scalar);
  const Json unit = *reading.unit == '\0' ? Json() : Json(reading.unit);
  return {{"value", value}, {"text", value.is_null() ? Json() : Json(Bare(reading, scalar))}, {"unit", unit}};
}

Scalar ParseValue(const Reading& reading, const std::string& text) {
  return IsZone(reading) ? Scalar(int64_t{ZoneNamed(text)}) : catalog::Parse(reading, text);
}

std::string Suggest(const std::vector<std::string>& nearest) {
  std::string text;
  for (const std::string& name : nearest) text.append(text.empty() ? "; did you mean " : " or ") += "'" + name + "'";
  return text.empty() ? text : text + "?";
}

std::string DidYouMean(const std::string& wrong, const std::vector<std::string>& right) {
  const std::string suggestion = Suggest(catalog::Nearest(wrong, right));
  return !suggestion.empty() || right.size() > kShortList ? suggestion : ThereAre(right);
}

std::string ThereAre(const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) list.append(list.empty() ? "; there are: " : ", ") += name;
  return list;
}
