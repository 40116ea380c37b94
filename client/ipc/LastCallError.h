#pragma once

#include "dbus/GLibPtr.h"

/// Why the last command of a thread failed, one slot per thread: a service that is down costs one error, not one a
/// call.
class LastCallError {
 public:
  /// A command begins.
  static void Clear();
  /// Takes the error over.
  static void Keep(GError* error);
  /// Null when the last command of this thread arrived, or there was none.
  static const char* Text();
};
