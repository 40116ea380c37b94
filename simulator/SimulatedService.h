/// The simulated system service on the session bus.
#pragma once

#include <string>

#include "dbus/GLibPtr.h"
#include "dbus_system.h"
#include "simulator/MethodTable.h"

class SimulatedService {
 public:
  struct Options {
    std::string mcu_version;
    bool quiet = false;
    bool update_fails = false;
  };

  /// Owns the service's name and answers its calls from here on. @throws std::runtime_error that names the cause: no
  /// bus, a segment that is not to be had, a name that somebody else owns
  explicit SimulatedService(const Options& options);
  ~SimulatedService();
  SimulatedService(const SimulatedService&) = delete;
  SimulatedService& operator=(const SimulatedService&) = delete;

  /// Runs until SIGINT or SIGTERM. @throws std::runtime_error when the bus goes away
  void Run();

 private:
  void ExportSkeleton();
  void OwnName();
  static void OnCall(GClosure* closure, GValue* result, guint count, const GValue* values, gpointer hint,
                     gpointer service);
  static gboolean OnStop(gpointer service);
  static void OnBusGone(GDBusConnection* connection, gboolean peer, GError* problem, gpointer service);

  GLibPtr<GDBusConnection> connection_;
  GLibPtr<GMainLoop> loop_;
  Unit unit_;
  Models models_;
  GLibPtr<ComVornLinuxSystem> skeleton_;
  bool bus_gone_ = false;
};
