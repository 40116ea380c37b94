#include "tools/hlxctl/Zones.h"

#include <glib.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>

#include "data/ZoneTable.h"
#include "platform/LibConfigs.h"
#include "tools/hlxctl/Failure.h"
#include "tools/hlxctl/Records.h"
#include "tools/hlxctl/Values.h"
#include "tools/hlxctl/Verbs.h"

using HLXSystemData::kZones;
using SystemTime::kTimeZoneCount;

namespace {

constexpr std::string_view kDirectory = "/usr/share/zoneinfo/";

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), g_ascii_tolower);
  return text;
}

std::vector<int> ZonesLike(const std::string& text) {
  std::vector<int> zones;
  std::vector<int> files;
  for (int zone = 0; zone < kTimeZoneCount && !text.empty(); ++zone) {
    const std::string name = Lower(ZoneName(zone));
    if (name == text) return {zone};
    if (Lower(ZoneFile(zone)) == text) files.push_back(zone);
    if (name.find(text) != std::string::npos) zones.push_back(zone);
  }
  return files.empty() ? zones : files;
}

/// Seconds east of UTC in the zone's file now; nothing when there is no such file.
std::optional<int> OffsetNow(int zone) {
  const std::unique_ptr<GTimeZone, decltype(&g_time_zone_unref)> rules(g_time_zone_new_identifier(kZones[zone].path),
                                                                       g_time_zone_unref);
  if (rules == nullptr) return {};
  const gint64 now = g_get_real_time() / G_USEC_PER_SEC;
  return g_time_zone_get_offset(rules.get(), g_time_zone_find_interval(rules.get(), G_TIME_TYPE_UNIVERSAL, now));
}

std::string OffsetText(std::optional<int> offset) {
  if (!offset) return "missing";
  char text[16];
  const int minutes = std::abs(*offset) / 60;
  std::snprintf(text, sizeof text, "%c%02d:%02d", *offset < 0 ? '-' : '+', minutes / 60, minutes % 60);
  return text;
}

/// The unit's zone; nothing when there is no time record.
std::optional<int64_t> CurrentZone() {
  try {
    return std::get<int64_t>(Read(*catalog::FindValue(catalog::Area::kTime, "zone")));
  } catch (const Failure&) {
    return {};
  }
}

}  // namespace

std::string ZoneName(int64_t zone) {
  if (zone < 0 || zone >= kTimeZoneCount) return "unnamed (" + std::to_string(zone) + ")";
  return zone == HLXSystemData::kIstanbulZone && GetLibConfigs()->GetBool("/setting/default_time_zone_istanbul_p3")
             ? HLXSystemData::kIstanbulPlus3Name
             : kZones[zone].name;
}

std::string ZoneFile(int zone) { return kZones[zone].path + kDirectory.size(); }

int ZoneNamed(const std::string& text) {
  if (!text.empty() && text.find_first_not_of("0123456789") == std::string::npos) {
    return static_cast<int>(catalog::ParseWhole(text, 0, kTimeZoneCount - 1));
  }
  const std::vector<int> zones = ZonesLike(Lower(text));
  if (zones.size() == 1) return zones.front();
  std::string fitting;
  for (const int zone : zones) fitting.append(fitting.empty() ? "" : ", ").append(std::to_string(zone));
  const std::string quoted = "'" + Printable(text) + "' ";
  throw std::invalid_argument(
      quoted + (fitting.empty() ? "is no zone: see \"hlxctl time zones\"" : "fits several zones: " + fitting));
}

std::vector<int> MissingZones() {
  std::vector<int> missing;
  for (int zone = 0; zone < kTimeZoneCount; ++zone) {
    if (access(kZones[zone].path, R_OK) != 0) missing.push_back(zone);
  }
  return missing;
}

int Zones(const Request& request) {
  const std::optional<int64_t> current = CurrentZone();
  Json list = Json::array();
  Table table;
  for (int zone = 0; zone < kTimeZoneCount; ++zone) {
    const std::optional<int> offset = OffsetNow(zone);
    if (request.json) {
      list.push_back({{"zone", zone},
                      {"name", ZoneName(zone)},
                      {"file", ZoneFile(zone)},
                      {"utc_offset", offset ? Json(*offset) : Json()},
                      {"current", current == zone}});
    } else {
      const Tone tone = !offset ? Tone::kBad : current == zone ? Tone::kGood : Tone::kPlain;
      table.Row({{current == zone ? "*" : " "},
                 {std::to_string(zone), tone},
                 {OffsetText(offset), tone},
                 {ZoneFile(zone)},
                 {ZoneName(zone)}});
    }
  }
  if (request.json) {
    Output::JsonLine(list);
    return kExitDone;
  }
  table.Print();
  Output::Line(current ? "* the unit's zone" : "The unit's zone is not known: there is no time record.");
  const std::size_t missing = MissingZones().size();
  if (missing != 0) Output::Line(std::to_string(missing) + " zone files are missing on this machine.");
  return kExitDone;
}
