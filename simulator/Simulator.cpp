#include "simulator/Simulator.h"

#include <cstdio>

#include "catalog/Catalog.h"
#include "simulator/model/SignalTable.h"
#include "simulator/model/ValueNames.h"
#include "simulator/model/Values.h"

Simulator::Simulator(const Options& options)
    : options_(options), service_([this](GDBusMethodInvocation* call) { OnCall(call); }), models_(unit_, Hooks()) {
  unit_.observers().announced.push_back(
      [this](const catalog::Signal& signal, GVariant* tuple) { OnAnnounced(signal, tuple); });
}

void Simulator::Start() {
  service_.Open();  // whoever has the name already has the records, too
  if (options_.fresh) {
    for (const auto& record : unit_.records()) record->InitialiseAnew();
  }
  models_.life.Start();
}

LifeCycle::Hooks Simulator::Hooks() {
  LifeCycle::Hooks hooks;
  hooks.leave = [this] { service_.Close(); };
  hooks.arrive = [this] {
    try {
      service_.Open();
    } catch (const std::exception& problem) {
      std::fprintf(stderr, "hlx-simulator: the service cannot come back: %s\n", problem.what());
    }
  };
  hooks.initialise = [this](bool all) {
    for (const auto& record : unit_.records()) {
      const catalog::Record which = record->info().record;
      if (all || which == catalog::Record::kPower || which == catalog::Record::kTime) record->InitialiseAnew();
    }
  };
  hooks.booted = [this](bool cold) { Booted(cold); };
  return hooks;
}

void Simulator::Booted(bool cold) {
  try {
    unit_.Write(*catalog::FindValue("info.mcu_version"), options_.mcu_version);
  } catch (const catalog::BadValue& problem) {
    throw catalog::BadValue(std::string("--mcu-version: ") + problem.what());
  }
  models_.misc.Boot();
  models_.time.Boot(cold);
}

void Simulator::OnCall(GDBusMethodInvocation* call) {
  const GDBusMethodInfo& info = *g_dbus_method_invocation_get_method_info(call);
  GVariant* const arguments = g_dbus_method_invocation_get_parameters(call);
  Journal("call " + Describe(info.name, info.in_args, arguments));
  calls_.Add({g_get_real_time(), g_dbus_method_invocation_get_sender(call), info.name,
              GLibPtr<GVariant>(g_variant_ref_sink(ArgumentsByName(arguments, info.in_args)))});
  try {
    g_dbus_method_invocation_return_value(call, FindMethod(info.name)->run(models_, arguments, info.in_args));
  } catch (const catalog::BadValue& problem) {
    g_dbus_method_invocation_return_error(call, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS, "%s: %s", info.name,
                                          problem.what());
  }
}

void Simulator::OnAnnounced(const catalog::Signal& signal, GVariant* tuple) {
  if (!service_.IsOpen()) return;
  Journal("emit " + Describe(signal.name, InfoOf(signal).args, tuple));
  service_.Send(signal, tuple);
  for (const auto& sent : sent_) sent(signal, tuple);
}

void Simulator::Journal(const std::string& line) const {
  if (!options_.quiet) std::puts(line.c_str());
}
