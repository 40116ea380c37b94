/// What the two interfaces that the simulator serves have in common.
#pragma once

#include <gio/gio.h>

#include <functional>
#include <stdexcept>
#include <string>

#include "dbus/GLibPtr.h"

/// A connection of its own to the session bus. @throws std::runtime_error when there is none
GLibPtr<GDBusConnection> ConnectToSessionBus();

/// @throws std::runtime_error when somebody else has the name
void OwnName(GDBusConnection* connection, const char* name);
void ReleaseName(GDBusConnection* connection, const char* name);
bool HasOwner(GDBusConnection* connection, const char* name);

/// Calls one function for every method of an exported skeleton. The function answers the call, now or later.
class Skeleton {
 public:
  using Handler = std::function<void(GDBusMethodInvocation* call)>;

  /// @param skeleton  made by the generated code; taken over
  Skeleton(gpointer skeleton, Handler handler);
  ~Skeleton();
  Skeleton(const Skeleton&) = delete;
  Skeleton& operator=(const Skeleton&) = delete;

  /// @throws std::runtime_error when the path is taken
  void Export(GDBusConnection* connection, const char* path);
  void Unexport();
  gpointer get() const { return skeleton_.get(); }

 private:
  static void OnCall(GClosure* closure, GValue* result, guint count, const GValue* values, gpointer hint,
                     gpointer skeleton);

  GLibPtr<GDBusInterfaceSkeleton> skeleton_;
  Handler handler_;
};

/// The error of a GLib call as an exception.
[[noreturn]] inline void Throw(const std::string& what, GError* problem) {
  throw std::runtime_error(what + ": " + GLibPtr<GError>(problem)->message);
}
