/// The other end of the control interface, for the verbs of the command line.
#pragma once

#include <gio/gio.h>

#include <stdexcept>
#include <string>

#include "dbus/GLibPtr.h"

constexpr int kExitFailed = 1;       ///< the unit cannot start or cannot be reached, or what was asked for went wrong
constexpr int kExitBadArgument = 2;  ///< a wrong command line, name or value
constexpr int kExitTimedOut = 124;   ///< the time is up

/// Ends a verb with an exit code and a text.
class VerbError : public std::runtime_error {
 public:
  VerbError(int exit_code, const std::string& text) : std::runtime_error(text), code(exit_code) {}
  const int code;
};

class ControlClient {
 public:
  /// @throws VerbError without a bus
  ControlClient();

  /// Calls a method of the running simulator; `parameters` is floating. @throws VerbError
  GLibPtr<GVariant> Call(const char* method, GVariant* parameters, const char* answer = "()") const;

  GDBusConnection* bus() const { return bus_.get(); }

 private:
  GLibPtr<GDBusConnection> bus_;
};
