/// The interface through which tests, demos and people drive the simulated unit.
#pragma once

#include "simulator/Unit.h"

constexpr char kControlInterface[] = "com.vorn.linux.simulator";
constexpr char kControlPath[] = "/com/vorn/linux/simulator";

/// Exports "com.vorn.linux.simulator" on `connection` for as long as that lives; `unit` must live as long.
/// - Emit(signal "s", arguments "av"): stores the arguments in the record and sends the signal.
/// - Set(field "s", value "v"): stores a value in a record field and sends nothing.
/// Values may be numbers, booleans or texts of either. What cannot be taken is answered with
/// G_DBUS_ERROR_INVALID_ARGS and a text that names it.
/// @throws std::runtime_error when the path is taken
void ExportControlInterface(GDBusConnection* connection, Unit& unit);
