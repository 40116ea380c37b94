/// The process that is the unit: from its environment to the end of its main loop.
#pragma once

#include <memory>
#include <string>

#include "dbus/GLibPtr.h"
#include "simulator/Simulator.h"
#include "simulator/control/Control.h"
#include "simulator/model/SavedSettings.h"
#include "simulator/play/CaptureWriter.h"

class UnitProcess {
 public:
  struct Options : Simulator::Options {
    bool verbose = false;
    bool update_fails = false;
    std::string log;       ///< directory for a capture and the calls; empty: none
    std::string scenario;  ///< to be played; empty: none
    int ready_fd = -1;     ///< is written to and closed when the unit is there
  };

  /// The unit is there when this returns. @throws std::runtime_error that names what is in the way
  explicit UnitProcess(const Options& options);
  ~UnitProcess();
  UnitProcess(const UnitProcess&) = delete;
  UnitProcess& operator=(const UnitProcess&) = delete;

  /// Until SIGINT or SIGTERM. @throws std::runtime_error when the bus goes away
  void Run();

 private:
  static gboolean OnStop(gpointer process);
  static void OnBusGone(GDBusConnection* connection, gboolean peer, GError* problem, gpointer process);

  std::unique_ptr<ScratchSettings> scratch_;
  GLibPtr<GMainLoop> loop_;
  Simulator simulator_;
  GLibPtr<GDBusConnection> connection_;
  Control control_;
  std::unique_ptr<CaptureWriter> capture_;
  bool bus_gone_ = false;
};
