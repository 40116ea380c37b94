/// The unit's time zones.
#pragma once

#include <optional>
#include <string>

#include "tools/hlxctl/Argument.h"

/// "78: (GMT+09:00) Osaka, Sapporo, Tokyo"; a zone outside the table is named as such.
Value ZoneValue(int zone);

/// A zone by number, or by a part of its name that no other has.
Argument ZoneArgument();

/// Lists all zones with the offset that their files give now. @param current the unit's zone, if it is known
void ListZones(std::optional<int> current, bool json);
