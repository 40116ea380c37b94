#include "tools/hlxctl/Zones.h"

#include <glib.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

#include "data/ZoneTable.h"
#include "platform/LibConfigs.h"
#include "tools/hlxctl/Output.h"

using HLXSystemData::kZones;
using SystemTime::kTimeZoneCount;

namespace {

/// As the unit shows it, which for one zone is a matter of configuration.
std::string ZoneName(int zone) {
  return zone == HLXSystemData::kIstanbulZone && GetLibConfigs()->GetBool("/setting/default_time_zone_istanbul_p3")
             ? HLXSystemData::kIstanbulPlus3Name
             : kZones[zone].name;
}

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), g_ascii_tolower);
  return text;
}

std::vector<int> ZonesNamed(const std::string& part) {
  std::vector<int> zones;
  for (int zone = 0; zone < kTimeZoneCount && !part.empty(); ++zone) {
    const std::string name = Lower(ZoneName(zone));
    if (name == Lower(part)) return {zone};
    if (name.find(Lower(part)) != std::string::npos) zones.push_back(zone);
  }
  return zones;
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
  std::snprintf(text, sizeof(text), "%c%02d:%02d", *offset < 0 ? '-' : '+', minutes / 60, minutes % 60);
  return text;
}

}  // namespace

Value ZoneValue(int zone) {
  const bool known = zone >= 0 && zone < kTimeZoneCount;
  return {zone, std::to_string(zone) + (known ? ": " + ZoneName(zone) : " (no such zone)"), ""};
}

Argument ZoneArgument() {
  const std::string last = std::to_string(kTimeZoneCount - 1);
  return {"zone", "0 to " + last + ", or a part of the name that fits one zone (see \"hlxctl time zones\")",
          [](const std::string& text) -> ArgumentValue {
            if (text.find_first_not_of("0123456789") == std::string::npos) {
              return Range("zone", 0, kTimeZoneCount - 1).read(text);
            }
            const std::vector<int> zones = ZonesNamed(text);
            if (zones.size() == 1) return int64_t{zones.front()};
            std::string fitting;
            for (const int zone : zones) fitting.append(fitting.empty() ? "" : ", ").append(std::to_string(zone));
            throw std::invalid_argument(fitting.empty() ? "" : "fits several zones: " + fitting);
          },
          ""};
}

void ListZones(std::optional<int> current, bool json) {
  Json list = Json::array();
  int missing = 0;
  for (int zone = 0; zone < kTimeZoneCount; ++zone) {
    const std::optional<int> offset = OffsetNow(zone);
    if (!offset) ++missing;
    if (json) {
      list.push_back({{"zone", zone},
                      {"name", ZoneName(zone)},
                      {"file", kZones[zone].path},
                      {"utc_offset", offset ? Json(*offset) : Json()},
                      {"current", current == zone}});
      continue;
    }
    std::string number = std::to_string(zone);
    number.insert(0, 3 - number.size(), ' ');
    std::string shown = OffsetText(offset);
    shown.resize(9, ' ');
    std::string line = current == zone ? "*" : " ";
    line.append(number).append("  ").append(shown).append(ZoneName(zone)).append("  ").append(kZones[zone].path);
    Output::Line(line);
  }
  if (json) return Output::JsonLine(list);
  Output::Line(current ? "* the unit's zone" : "The unit's zone is not known: there is no time record.");
  if (missing != 0) Output::Line(std::to_string(missing) + " zone files are missing on this machine.");
}
