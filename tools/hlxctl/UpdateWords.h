#pragma once

#include "HLXUpdateTypes.h"
#include "tools/hlxctl/Value.h"

/// Outcomes of a package search.
constexpr Word kUpdateOutcome[] = {{HLXUpdate::UPDATE_NOTIFY_VALID, "valid"},
                                   {HLXUpdate::UPDATE_NOTIFY_REMOVED, "removed"},
                                   {HLXUpdate::UPDATE_NOTIFY_CAN_FILE, "can-file"},
                                   {HLXUpdate::UPDATE_NOTIFY_CHECKSUM_WRONG, "checksum-wrong"},
                                   {HLXUpdate::UPDATE_NOTIFY_VERSION_OLDER, "version-older"},
                                   {HLXUpdate::UPDATE_NOTIFY_HARDWARE_DIFFERS, "hardware-differs"},
                                   {HLXUpdate::UPDATE_NOTIFY_PROJECT_DIFFERS, "project-differs"}};
