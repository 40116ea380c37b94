#include "catalog/Moment.h"

#include <glib.h>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace SystemTime;

namespace catalog {

namespace {

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

std::string TextOf(const DateInfo& date) {
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", date.year, date.month, date.day);
  return text;
}

std::string TextOf(const TimeInfo& time) {
  char text[64];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d", time.hour, time.minute, time.second);
  return text;
}

std::string TextOf(const DateTime& moment) { return TextOf(moment.date) + "T" + TextOf(moment.time); }

bool ReadDate(const std::string& text, DateInfo* date) {
  const std::vector<int> parts = Split(text, '-');
  if (parts.size() != 3) return false;
  // GLib's types are narrow: what is too large stays too large.
  const auto year = static_cast<GDateYear>(parts[0]);
  const auto month = static_cast<GDateMonth>(std::min(parts[1], 13));
  const auto day = static_cast<GDateDay>(std::min(parts[2], 32));
  if (g_date_valid_dmy(day, month, year) == FALSE) return false;
  GDate valid;
  g_date_clear(&valid, 1);
  g_date_set_dmy(&valid, day, month, year);
  *date = {parts[0], parts[1], parts[2], g_date_get_weekday(&valid) % 7};  // there 7 is Sunday
  return true;
}

bool ReadTime(const std::string& text, TimeInfo* time) {
  std::vector<int> parts = Split(text, ':');
  if (parts.size() == 2) parts.push_back(0);
  if (parts.size() != 3 || parts[0] > 23 || parts[1] > 59 || parts[2] > 59) return false;
  *time = {parts[0], parts[1], parts[2]};
  return true;
}

bool ReadMoment(const std::string& text, DateTime* moment) {
  const std::size_t middle = text.find_first_of("T ");
  DateTime read{};
  if (middle == std::string::npos || !ReadDate(text.substr(0, middle), &read.date) ||
      !ReadTime(text.substr(middle + 1), &read.time)) {
    return false;
  }
  *moment = read;
  return true;
}

}  // namespace catalog
