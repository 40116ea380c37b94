#pragma once

#include <optional>

/// The unit's zone; nothing when there is no time record.
std::optional<int> CurrentZone();
