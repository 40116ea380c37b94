#pragma once

#include <glib-object.h>

#include <array>

/// How one signal of the service is received.
struct SignalRow {
  const char* name;   ///< GLib's name of the signal
  GCallback handler;  ///< takes the proxy, the arguments, and the SignalDispatch as user data
  char arguments[6];  ///< D-Bus types of the handler's arguments; a gboolean, being an int, shows as 'i'
};

/// All signals, in the order in which they are connected.
const std::array<SignalRow, 76>& SignalTable();
