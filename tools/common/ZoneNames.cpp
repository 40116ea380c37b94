#include "tools/common/ZoneNames.h"

#include <glib.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "catalog/Reading.h"
#include "data/ZoneTable.h"
#include "platform/LibConfigs.h"
#include "tools/common/Output.h"

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
  std::vector<int> places;
  std::string place = "/" + text;
  std::replace(place.begin(), place.end(), ' ', '_');
  for (int zone = 0; zone < kTimeZoneCount && !text.empty(); ++zone) {
    const std::string name = Lower(ZoneName(zone));
    if (name == text) return {zone};
    const std::string file = Lower(ZoneFile(zone));
    if (file == text) files.push_back(zone);
    if (file.size() > place.size() && file.compare(file.size() - place.size(), place.size(), place) == 0) {
      places.push_back(zone);
    }
    if (name.find(text) != std::string::npos) zones.push_back(zone);
  }
  if (!files.empty()) return files;
  return zones.empty() ? places : zones;
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
