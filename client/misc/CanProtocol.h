#pragma once

#include <string>

#include "platform/LibConfigs.h"

/// The CAN-box protocol that the unit is configured for now. Read at every use: a change counts from the next event on.
inline std::string CanProtocol() { return GetLibConfigs()->GetString("/system/using_can_protocol"); }
