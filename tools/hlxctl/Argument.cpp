#include "tools/hlxctl/Argument.h"

#include <glib.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace {

constexpr Word kSwitch[] = {{1, "on"}, {0, "off"}};

/// The whole of `text` as a number from `least` to `most`.
int64_t ReadNumber(const std::string& text, int64_t least, int64_t most) {
  const bool hexadecimal = text.compare(0, 2, "0x") == 0 && g_ascii_isxdigit(text.c_str()[2]);
  gint64 number = 0;
  if (!g_ascii_string_to_signed(text.c_str() + (hexadecimal ? 2 : 0), hexadecimal ? 16 : 10, least, most, &number,
                                nullptr)) {
    throw std::invalid_argument("");
  }
  return number;
}

std::string Interval(int64_t least, int64_t most) { return std::to_string(least) + " to " + std::to_string(most); }

/// The whole numbers of "1:2:3", no matter how many; none for any other text.
std::vector<int> Split(const std::string& text, char separator) {
  std::vector<int> numbers;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(separator, start), text.size());
    const std::string digits = text.substr(start, end - start);
    if (digits.empty() || digits.size() > 4 || digits.find_first_not_of("0123456789") != std::string::npos) return {};
    numbers.push_back(std::stoi(digits));
    start = end + 1;
  }
  return numbers;
}

}  // namespace

ArgumentValue Argument::Read(const std::string& text) const {
  try {
    return read(text);
  } catch (const std::invalid_argument& problem) {
    const std::string detail = problem.what();
    throw std::invalid_argument(name + ": '" + text + "' " +
                                (detail.empty() ? "is not allowed; allowed: " + allowed : detail));
  }
}

Argument Range(const std::string& name, int64_t least, int64_t most) {
  return {name, Interval(least, most), [=](const std::string& text) { return ReadNumber(text, least, most); }, ""};
}

Argument Choice(const std::string& name, Words words, int64_t most) {
  return {name, List(words) + ", or " + Interval(0, most),
          [=](const std::string& text) {
            for (const Word& word : words) {
              if (text == word.word) return word.value;
            }
            return ReadNumber(text, 0, most);
          },
          ""};
}

Argument Switch(const std::string& name) {
  Argument argument = Choice(name, kSwitch, 1);
  argument.allowed = "on or off (1 or 0)";
  return argument;
}

Argument TextArgument(const std::string& name) {
  return {name, "UTF-8 text",
          [](const std::string& text) {
            // A command line cannot hold a NUL, the one character that D-Bus refuses and UTF-8 allows.
            if (g_utf8_validate(text.c_str(), -1, nullptr) == FALSE) throw std::invalid_argument("");
            return text;
          },
          ""};
}

Argument DateArgument() {
  return {
      "date", "a day that exists, as YYYY-MM-DD",
      [](const std::string& text) {
        const std::vector<int> parts = Split(text, '-');
        GDate day;
        g_date_clear(&day, 1);
        if (parts.size() == 3) {  // GLib's types are narrow: what is too large stays too large
          const auto year = static_cast<GDateYear>(parts[0]);
          const auto month = static_cast<GDateMonth>(std::min(parts[1], 13));
          const auto number = static_cast<GDateDay>(std::min(parts[2], 32));
          if (g_date_valid_dmy(number, month, year) != FALSE) g_date_set_dmy(&day, number, month, year);
        }
        if (g_date_valid(&day) == FALSE) throw std::invalid_argument("");
        return SystemTime::DateInfo{parts[0], parts[1], parts[2], g_date_get_weekday(&day) % 7};  // there 7 is Sunday
      },
      ""};
}

Argument TimeArgument() {
  return {"time", "a time of day, as HH:MM or HH:MM:SS",
          [](const std::string& text) {
            std::vector<int> parts = Split(text, ':');
            if (parts.size() == 2) parts.push_back(0);
            if (parts.size() != 3 || parts[0] > 23 || parts[1] > 59 || parts[2] > 59) throw std::invalid_argument("");
            return SystemTime::TimeInfo{parts[0], parts[1], parts[2]};
          },
          ""};
}
