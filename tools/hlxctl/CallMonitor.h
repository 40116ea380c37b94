/// The calls that anybody makes of the service, where the bus lets a monitor in.
#pragma once

#include <functional>

#include "dbus/GLibPtr.h"

class CallMonitor {
 public:
  using Heard = std::function<void(const char* method, GVariant* arguments)>;

  /// `heard` runs in the main loop.
  explicit CallMonitor(Heard heard);
  CallMonitor(const CallMonitor&) = delete;
  CallMonitor& operator=(const CallMonitor&) = delete;
  ~CallMonitor();

  bool Hears() const { return hears_; }

 private:
  struct Message;

  GLibPtr<GDBusConnection> connection_;  ///< its own: a monitor says nothing
  Heard heard_;
  guint filter_ = 0;
  bool hears_ = false;
};
