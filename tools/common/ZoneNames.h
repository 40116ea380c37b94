/// The unit's time zones.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// "(GMT+09:00) Osaka, Sapporo, Tokyo"; a number outside the table is named as such.
std::string ZoneName(int64_t zone);

/// The zone's file below the system's zoneinfo directory, "Asia/Tokyo"; `zone` is one of the table.
std::string ZoneFile(int zone);

/// A zone by number, by its name or file, or by a part of the name that no other has. @throws std::invalid_argument
int ZoneNamed(const std::string& text);

/// Zones whose files this machine does not have.
std::vector<int> MissingZones();
