#include "tools/hlxctl/Value.h"

#include <glib.h>

#include <algorithm>
#include <cstdio>

namespace {

constexpr char kAbsent[] = "–";

std::string Fixed(double number, int digits) {
  char text[400];  // the largest double has 309 digits
  std::snprintf(text, sizeof(text), "%.*f", digits, number);
  return text;
}

/// What a terminal can show: valid UTF-8, and no control character that could steer it.
std::string Printable(const std::string& raw) {
  gchar* const valid = g_utf8_make_valid(raw.data(), static_cast<gssize>(raw.size()));
  std::string text = valid;
  g_free(valid);
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, '?');
  return text;
}

}  // namespace

std::string InWords(Words words, int64_t value) {
  for (const Word& word : words) {
    if (word.value == value) return word.word;
  }
  return "unnamed (" + std::to_string(value) + ")";
}

std::string List(Words words) {
  std::string list;
  for (const Word& word : words) list.append(list.empty() ? "" : ", ").append(word.word);
  return list;
}

Json Value::ToJson() const {
  return {
      {"value", value}, {"text", value.is_null() ? Json() : Json(text)}, {"unit", unit.empty() ? Json() : Json(unit)}};
}

std::string Value::ToText() const {
  if (value.is_null()) return kAbsent;
  return unit.empty() ? text : text + " " + unit;
}

Value Number::Make(int64_t number) const { return {number, std::to_string(number), unit}; }

Value Measure::operator()(double number) const {
  if (number == 0) return {nullptr, "", unit};
  return {number, Fixed(number, 0), unit};
}

Value Decimal::operator()(double number) const { return {number, Fixed(number, digits), unit}; }

Value Text::operator()(const std::string& text) const {
  if (text.empty()) return {nullptr, "", ""};
  return {text, Printable(text), ""};
}
