#include "simulator/control/Control.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "catalog/Catalog.h"
#include "dbus/VariantBuilder.h"
#include "simulator/control/Lists.h"
#include "simulator/model/Names.h"
#include "simulator/model/SignalTable.h"
#include "simulator/model/ValueNames.h"
#include "simulator/model/Values.h"
#include "simulator/play/Located.h"
#include "simulator_dbus.h"

using catalog::BadValue;

namespace {

constexpr char kTimedOut[] = "com.vorn.linux.simulator.Error.TimedOut";

std::vector<GLibPtr<GVariant>> Unboxed(GVariant* array) {
  std::vector<GLibPtr<GVariant>> values;
  for (gsize i = 0; i < g_variant_n_children(array); ++i) {
    const GLibPtr<GVariant> boxed(g_variant_get_child_value(array, i));
    values.emplace_back(g_variant_get_variant(boxed.get()));
  }
  return values;
}

std::string TextAt(GVariant* tuple, gsize index) {
  const GLibPtr<GVariant> text(g_variant_get_child_value(tuple, index));
  return g_variant_get_string(text.get(), nullptr);
}

const std::string& KnownMethod(const std::string& name) {
  if (!name.empty()) MethodNamed(name);
  return name;
}

}  // namespace

struct Control::Row {
  const char* method;
  Answer (Control::*answer)(GVariant* arguments, GDBusMethodInvocation* call);
};
const Control::Row Control::kRows[] = {
    {"Set", &Control::Set},
    {"Get", &Control::Get},
    {"List", &Control::List},
    {"Emit", &Control::Emit},
    {"Calls", &Control::Calls},
    {"ClearCalls", &Control::ClearCalls},
    {"WaitCall", &Control::WaitCall},
    {"Reboot", &Control::Reboot},
    {"Fault", &Control::AddFault},
    {"Faults", &Control::Faults},
    {"ClearFaults", &Control::ClearFaults},
    {"Stick", &Control::UseStick},
    {"Play", &Control::Play},
    {"Stop", &Control::Stop},
    {"Status", &Control::Status},
};

Control::Control(GDBusConnection* connection, Simulator& simulator)
    : connection_(connection),
      simulator_(simulator),
      stick_(simulator.unit()),
      skeleton_(com_vorn_linux_simulator_skeleton_new(), [this](GDBusMethodInvocation* call) { OnCall(call); }) {
  if (HasOwner(connection_, kControlName)) throw std::runtime_error("another simulator runs on this bus");
  skeleton_.Export(connection_, kControlPath);
  OwnName(connection_, kControlName);
  simulator.player().OnChange([this] { EmitOwn("Played", g_variant_new("(@a{sv})", simulator_.player().Status())); });
  simulator.calls().Listen([this](const Call& call) { EmitOwn("Called", call.ToVariant()); });
  simulator.unit().observers().kept.push_back([this](const OwnValue& value, const catalog::Scalar& scalar) {
    EmitOwn("Changed", g_variant_new("(sv)", value.name, VariantOf(scalar)));
  });
}

void Control::EmitOwn(const char* signal, GVariant* tuple) {
  g_dbus_connection_emit_signal(connection_, nullptr, kControlPath, kControlName, signal, tuple, nullptr);
}

void Control::OnCall(GDBusMethodInvocation* call) {
  const std::string method = g_dbus_method_invocation_get_method_name(call);
  try {
    for (const Row& row : kRows) {
      if (method != row.method) continue;
      const Answer answer = (this->*row.answer)(g_dbus_method_invocation_get_parameters(call), call);
      if (answer) g_dbus_method_invocation_return_value(call, *answer);
      return;
    }
    g_dbus_method_invocation_return_error(call, G_DBUS_ERROR, G_DBUS_ERROR_UNKNOWN_METHOD, "there is no method %s",
                                          method.c_str());
  } catch (const BadValue& problem) {
    g_dbus_method_invocation_return_error_literal(call, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS, problem.what());
  } catch (const BadFile& problem) {
    g_dbus_method_invocation_return_error_literal(call, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS, problem.what());
  } catch (const std::exception& problem) {
    g_dbus_method_invocation_return_error_literal(call, G_DBUS_ERROR, G_DBUS_ERROR_FAILED, problem.what());
  }
}

Control::Answer Control::Set(GVariant* arguments, GDBusMethodInvocation* /*call*/) {
  GVariant* boxed = nullptr;
  gboolean silent = FALSE;
  g_variant_get(arguments, "(&svb)", nullptr, &boxed, &silent);
  const GLibPtr<GVariant> value(boxed);
  const NamedValue named = ValueNamed(TextAt(arguments, 0));
  const std::string text = TextOf(value.get());
  const catalog::Scalar scalar = ParseFor(named, text);
  simulator_.Journal("set " + named.name() + " = " + text);
  ::Set(simulator_.unit(), named, scalar, silent != FALSE);
  return nullptr;
}

Control::Answer Control::Get(GVariant* arguments, GDBusMethodInvocation* /*call*/) {
  const GLibPtr<GVariant> names(g_variant_get_child_value(arguments, 0));
  std::vector<NamedValue> values;
  if (g_variant_n_children(names.get()) == 0) values = HeldValues();
  for (gsize i = 0; i < g_variant_n_children(names.get()); ++i) {
    for (const NamedValue& value : ValuesNamed(TextAt(names.get(), i))) values.push_back(value);
  }
  VariantBuilder builder(G_VARIANT_TYPE("a(sv)"));
  for (const NamedValue& value : values) {
    builder.Add("(sv)", value.name().c_str(), VariantOf(::Get(simulator_.unit(), value)));
  }
  return g_variant_new("(@a(sv))", builder.End());
}

Control::Answer Control::List(GVariant* arguments, GDBusMethodInvocation* /*call*/) {
  VariantBuilder builder(G_VARIANT_TYPE("a(sss)"));
  for (const ListEntry& entry : ListOf(TextAt(arguments, 0))) {
    builder.Add("(sss)", entry.kind.c_str(), entry.name.c_str(), entry.takes.c_str());
  }
  return g_variant_new("(@a(sss))", builder.End());
}

Control::Answer Control::Emit(GVariant* arguments, GDBusMethodInvocation* /*call*/) {
  const catalog::Signal& signal = SignalNamed(TextAt(arguments, 0));
  const GLibPtr<GVariant> array(g_variant_get_child_value(arguments, 1));
  simulator_.unit().Announce(signal, ScalarsOf(signal, Unboxed(array.get())));
  return nullptr;
}

Control::Answer Control::Calls(GVariant* arguments, GDBusMethodInvocation* /*call*/) {
  VariantBuilder builder(G_VARIANT_TYPE("a(xssa{sv})"));
  for (const Call* const call : simulator_.calls().Find(KnownMethod(TextAt(arguments, 0)))) {
    builder.Add(call->ToVariant());
  }
  return g_variant_new("(@a(xssa{sv}))", builder.End());
}

Control::Answer Control::ClearCalls(GVariant* /*arguments*/, GDBusMethodInvocation* /*call*/) {
  simulator_.calls().Clear();
  return nullptr;
}

Control::Answer Control::WaitCall(GVariant* arguments, GDBusMethodInvocation* call) {
  double seconds = 0;
  g_variant_get(arguments, "(&sd)", nullptr, &seconds);
  const std::string method = KnownMethod(TextAt(arguments, 0));
  if (method.empty()) throw BadValue("the method to wait for needs a name");
  if (!(seconds >= 0 && seconds <= 86400)) throw BadValue("seconds: a number from 0 to 86400 is needed");
  const auto done = [call, method, seconds](const Call* came) {
    if (came != nullptr) {
      GVariant* const answer = came->ToVariant();
      return g_dbus_method_invocation_return_value(call, g_variant_new_tuple(&answer, 1));
    }
    char text[128];
    std::snprintf(text, sizeof text, "no call of %s within %g s", method.c_str(), seconds);
    g_dbus_method_invocation_return_dbus_error(call, kTimedOut, text);
  };
  simulator_.calls().Wait(method, seconds, done);
  return {};
}

Control::Answer Control::Reboot(GVariant* arguments, GDBusMethodInvocation* call) {
  const std::string how = TextAt(arguments, 0);
  const LifeCycle::Boot boot = LifeCycle::BootNamed(how);
  simulator_.Journal("reboot " + how);
  simulator_.models().life.Reboot(boot, [call] { g_dbus_method_invocation_return_value(call, nullptr); });
  return {};
}

Control::Answer Control::AddFault(GVariant* arguments, GDBusMethodInvocation* /*call*/) {
  const GLibPtr<GVariant> array(g_variant_get_child_value(arguments, 0));
  std::vector<std::string> words;
  for (gsize i = 0; i < g_variant_n_children(array.get()); ++i) words.push_back(TextAt(array.get(), i));
  guint times = 0;
  g_variant_get(arguments, "(@asu)", nullptr, &times);
  simulator_.AddFault(words, times);
  return nullptr;
}

Control::Answer Control::Faults(GVariant* /*arguments*/, GDBusMethodInvocation* /*call*/) {
  VariantBuilder builder(G_VARIANT_TYPE("a(su)"));
  for (const Fault& fault : simulator_.faults().all()) builder.Add("(su)", fault.words.c_str(), fault.left);
  return g_variant_new("(@a(su))", builder.End());
}

Control::Answer Control::ClearFaults(GVariant* /*arguments*/, GDBusMethodInvocation* /*call*/) {
  simulator_.ClearFaults();
  return nullptr;
}

Control::Answer Control::UseStick(GVariant* arguments, GDBusMethodInvocation* call) {
  const std::string what = TextAt(arguments, 0);
  simulator_.Journal("stick " + what);
  if (what == kRemoveStick) {
    stick_.Remove();
    return nullptr;
  }
  stick_.Insert(what, [call](const std::string& problem) {
    if (problem.empty()) return g_dbus_method_invocation_return_value(call, nullptr);
    g_dbus_method_invocation_return_error_literal(call, G_DBUS_ERROR, G_DBUS_ERROR_FAILED, problem.c_str());
  });
  return {};
}

Control::Answer Control::Play(GVariant* arguments, GDBusMethodInvocation* /*call*/) {
  double speed = 0;
  gboolean loop = FALSE;
  g_variant_get(arguments, "(&sdb)", nullptr, &speed, &loop);
  simulator_.player().Play(TextAt(arguments, 0), speed, loop != FALSE);
  return nullptr;
}

Control::Answer Control::Stop(GVariant* /*arguments*/, GDBusMethodInvocation* /*call*/) {
  simulator_.player().Stop();
  return nullptr;
}

Control::Answer Control::Status(GVariant* /*arguments*/, GDBusMethodInvocation* /*call*/) {
  return g_variant_new("(@a{sv})", simulator_.player().Status());
}
