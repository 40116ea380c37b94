/// The control interface: how tests, scenarios, tools and people drive the simulated unit.
#pragma once

#include <gio/gio.h>

#include <optional>
#include <string>

#include "simulator/Simulator.h"
#include "simulator/control/Stick.h"
#include "simulator/service/Skeleton.h"

constexpr char kControlName[] = "com.vorn.linux.simulator";
constexpr char kControlPath[] = "/com/vorn/linux/simulator";

/// On a connection of its own, which outlives everything that happens to the service.
class Control {
 public:
  /// Answers calls from here on. @throws std::runtime_error when another simulator has the name
  Control(GDBusConnection* connection, Simulator& simulator);

 private:
  /// The tuple to answer with, floating, null for an empty one; nothing when it is answered later.
  using Answer = std::optional<GVariant*>;
  struct Row;
  static const Row kRows[];

  void OnCall(GDBusMethodInvocation* call);

  Answer Set(GVariant* arguments, GDBusMethodInvocation* call);
  Answer Get(GVariant* arguments, GDBusMethodInvocation* call);
  Answer List(GVariant* arguments, GDBusMethodInvocation* call);
  Answer Emit(GVariant* arguments, GDBusMethodInvocation* call);
  Answer Calls(GVariant* arguments, GDBusMethodInvocation* call);
  Answer ClearCalls(GVariant* arguments, GDBusMethodInvocation* call);
  Answer WaitCall(GVariant* arguments, GDBusMethodInvocation* call);
  Answer Reboot(GVariant* arguments, GDBusMethodInvocation* call);
  Answer AddFault(GVariant* arguments, GDBusMethodInvocation* call);
  Answer Faults(GVariant* arguments, GDBusMethodInvocation* call);
  Answer ClearFaults(GVariant* arguments, GDBusMethodInvocation* call);
  Answer UseStick(GVariant* arguments, GDBusMethodInvocation* call);
  Answer Play(GVariant* arguments, GDBusMethodInvocation* call);
  Answer Stop(GVariant* arguments, GDBusMethodInvocation* call);
  Answer Status(GVariant* arguments, GDBusMethodInvocation* call);

  void EmitOwn(const char* signal, GVariant* tuple);

  GDBusConnection* connection_;
  Simulator& simulator_;
  Stick stick_;
  Skeleton skeleton_;
};
