#pragma once

#include "dbus/GLibPtr.h"

/// The newest error of a failed command, one slot per thread: a service that is down costs one error, not one a call.
class LastCallError {
 public:
  static void Keep(GLibPtr<GError> error);
  /// Null when no command of this thread has failed yet.
  static const char* Text();
};
