#include "catalog/Reading.h"

#include <glib.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <initializer_list>

#include "catalog/Moment.h"

namespace catalog {

namespace {

using Kind = Reading::Kind;

const Word* FindWord(Words words, int64_t value) {
  for (const Word& word : words) {
    if (word.value == value) return &word;
  }
  return nullptr;
}

std::string Fixed(double number, int digits) {
  char text[400];  // the largest double has 309 digits
  std::snprintf(text, sizeof text, "%.*f", digits, number);
  return text;
}

std::string WordFor(const Reading& reading, int64_t value) {
  const int64_t flag = value > 0 || (value < 0 && FindWord(reading.words, -1) == nullptr) ? 1 : (value < 0 ? -1 : 0);
  if (const Word* const word = FindWord(reading.words, reading.kind == Kind::kFlag ? flag : value)) return word->word;
  std::string number = std::to_string(value);
  if (reading.kind == Kind::kNamed) return "unnamed (" + number + ")";
  if (reading.kind != Kind::kCode && reading.kind != Kind::kBits) return number;
  char text[32];
  std::snprintf(text, sizeof text, "0x%02llX", static_cast<unsigned long long>(value));
  return text;
}

std::string Interval(const Reading& reading) {
  return std::to_string(reading.least) + " to " + std::to_string(reading.most);
}

bool IsOneOf(const std::string& text, std::initializer_list<const char*> words) {
  for (const char* const word : words) {
    if (g_ascii_strcasecmp(text.c_str(), word) == 0) return true;
  }
  return false;
}

/// The number that a word of `reading` stands for; false for any other text.
bool ReadWord(const Reading& reading, const std::string& text, int64_t* value) {
  for (const Word& word : reading.words) {
    if (g_ascii_strcasecmp(text.c_str(), word.word) == 0) {
      *value = word.value;
      return true;
    }
  }
  if (reading.kind != Kind::kFlag) return false;
  const bool yes = IsOneOf(text, {"on", "true", "yes"});
  *value = yes ? 1 : 0;
  return yes || IsOneOf(text, {"off", "false", "no"});
}

double ParseDecimal(const std::string& text, const Reading& reading) {
  gchar* end = nullptr;
  const double value = g_ascii_strtod(text.c_str(), &end);
  const bool whole = !text.empty() && end == text.c_str() + text.size() && g_ascii_isspace(text.front()) == FALSE;
  if (!whole || !std::isfinite(value)) throw BadValue("");
  if (value < static_cast<double>(reading.least) || value > static_cast<double>(reading.most)) throw BadValue("");
  return value;
}

/// A text that says a date, a time or a moment, as TextOf() writes it.
template <class T>
Scalar Canonical(bool (*read)(const std::string&, T*), const std::string& text) {
  T value{};
  if (!read(text, &value)) throw BadValue("");
  return TextOf(value);
}

Scalar ParseAny(const Reading& reading, const std::string& text) {
  int64_t value = 0;
  switch (reading.kind) {
    case Kind::kText:
      if (g_utf8_validate(text.c_str(), static_cast<gssize>(text.size()), nullptr) == FALSE) throw BadValue("");
      return text;
    case Kind::kDate:
      return Canonical(ReadDate, text);
    case Kind::kClock:
      return Canonical(ReadTime, text);
    case Kind::kMoment:
      return Canonical(ReadMoment, text);
    case Kind::kDecimal:
      return ParseDecimal(text, reading);
    default:
      return ReadWord(reading, text, &value) ? value : ParseWhole(text, reading.least, reading.most);
  }
}

/// What is shown of a text that is not allowed: it may be anything.
std::string Quoted(const std::string& text) {
  gchar* const valid = g_utf8_make_valid(text.c_str(), static_cast<gssize>(std::min<std::size_t>(text.size(), 80)));
  std::string quoted = std::string("'") + valid + "'";
  g_free(valid);
  return quoted;
}

}  // namespace

void RequireArity(const std::string& name, Arity takes, std::size_t given, const std::string& form) {
  if (given >= takes.least && given <= takes.most) return;
  const std::string least = takes.least == takes.most ? "" : std::to_string(takes.least) + " to ";
  throw BadValue(name + " takes " + least + std::to_string(takes.most) +
                 (takes.most == 1 ? " argument" : " arguments") + form + ", not " + std::to_string(given));
}

double NumberIn(const Scalar& scalar) {
  if (const auto* const whole = std::get_if<int64_t>(&scalar)) return static_cast<double>(*whole);
  if (const auto* const number = std::get_if<double>(&scalar)) return *number;
  throw BadValue("a number is needed");
}

std::string InWords(const Reading& reading, const Scalar& value) {
  if (const auto* const text = std::get_if<std::string>(&value)) return *text;
  if (const auto* const number = std::get_if<double>(&value)) return Fixed(*number, reading.decimals);
  const auto* const whole = std::get_if<int64_t>(&value);
  if (whole == nullptr) return "";
  if (reading.kind == Kind::kDecimal) return Fixed(static_cast<double>(*whole), reading.decimals);
  return WordFor(reading, *whole);
}

std::string WithUnit(const Reading& reading, const Scalar& value) {
  const std::string text = InWords(reading, value);
  return text.empty() || *reading.unit == '\0' ? text : text + " " + reading.unit;
}

std::string Allowed(const Reading& reading) {
  switch (reading.kind) {
    case Kind::kText:
      return "UTF-8 text";
    case Kind::kDate:
      return "a day that exists, as YYYY-MM-DD";
    case Kind::kClock:
      return "a time of day, as HH:MM or HH:MM:SS";
    case Kind::kMoment:
      return "a day and a time, as YYYY-MM-DDTHH:MM:SS";
    case Kind::kFlag:
      return std::string(InWords(reading, int64_t{1})) + " or " + InWords(reading, int64_t{0}) + " (1 or 0)";
    default:
      break;
  }
  std::string allowed;
  for (const Word& word : reading.words) allowed.append(word.word).append(", ");
  if (!allowed.empty()) allowed.append("or ");
  if (!reading.HasRange()) return allowed + (reading.kind == Kind::kDecimal ? "a number" : "a whole number");
  return allowed + Interval(reading);
}

Scalar Parse(const Reading& reading, const std::string& text) {
  try {
    return ParseAny(reading, text);
  } catch (const BadValue&) {
    throw BadValue(Quoted(text) + " is not allowed; allowed: " + Allowed(reading));
  }
}

int64_t ParseWhole(const std::string& text, int64_t least, int64_t most) {
  const bool hexadecimal = text.compare(0, 2, "0x") == 0 && text.size() > 2 && g_ascii_isxdigit(text[2]) != FALSE;
  gint64 number = 0;
  if (text.find('\0') != std::string::npos ||
      g_ascii_string_to_signed(text.c_str() + (hexadecimal ? 2 : 0), hexadecimal ? 16 : 10, least, most, &number,
                               nullptr) == FALSE) {
    throw BadValue(Quoted(text) + " is no whole number from " + std::to_string(least) + " to " + std::to_string(most));
  }
  return number;
}

}  // namespace catalog
