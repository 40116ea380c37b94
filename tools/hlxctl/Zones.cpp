#include <glib.h>

#include <cstdlib>
#include <nlohmann/json.hpp>
#include <optional>

#include "catalog/Catalog.h"
#include "data/ZoneTable.h"
#include "dbus/GLibPtr.h"
#include "tools/common/Failure.h"
#include "tools/common/Records.h"
#include "tools/common/ZoneNames.h"
#include "tools/hlxctl/Verbs.h"

using HLXSystemData::kZones;
using SystemTime::kTimeZoneCount;

namespace {

/// Seconds east of UTC in the zone's file now; nothing when there is no such file.
std::optional<int> OffsetNow(int zone) {
  const GLibPtr<GTimeZone> rules(g_time_zone_new_identifier(kZones[zone].path));
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
