#include "simulator/Simulator.h"

#include <cstdio>

#include "catalog/Catalog.h"
#include "simulator/model/SignalTable.h"
#include "simulator/model/ValueNames.h"
#include "simulator/model/Values.h"

Simulator::Simulator(const Options& options)
    : options_(options),
      service_([this](GDBusMethodInvocation* call) { OnCall(call); }),
      wire_(service_, faults_),
      fault_control_(unit_, service_, faults_),
      models_(unit_, Hooks()),
      player_(*this) {
  unit_.observers().announced.push_back(
      [this](const catalog::Signal& signal, GVariant* tuple) { wire_.Send(signal, tuple); });
  wire_.Listen([this](const catalog::Signal& signal, GVariant* tuple) {
    Journal("emit " + Describe(signal.name, InfoOf(signal).args, tuple));
  });
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
    fault_control_.OnBoot();
    service_.ComeBack();
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
  Fault fault;
  if (!faults_.Strikes(Fault::On::kCall, info.name, &fault)) return Answer(call, nullptr);
  if (fault.kind == Fault::Kind::kHang) return g_object_unref(call);
  if (fault.kind == Fault::Kind::kError) {
    return g_dbus_method_invocation_return_dbus_error(call, fault.error.c_str(), fault.text.c_str());
  }
  Answer(call, &fault);
}

void Simulator::Answer(GDBusMethodInvocation* call, const Fault* fault) {
  const GDBusMethodInfo& info = *g_dbus_method_invocation_get_method_info(call);
  try {
    if (fault != nullptr && fault->kind == Fault::Kind::kDrop) {
      const bool has_result = info.out_args != nullptr && *info.out_args != nullptr;
      return g_dbus_method_invocation_return_value(call, has_result ? g_variant_new("(b)", TRUE) : nullptr);
    }
    GVariant* const answer =
        FindMethod(info.name)->run(models_, g_dbus_method_invocation_get_parameters(call), info.in_args);
    if (fault == nullptr) return g_dbus_method_invocation_return_value(call, answer);
    const std::shared_ptr<GVariant> kept(answer == nullptr ? nullptr : g_variant_ref_sink(answer), [](GVariant* tuple) {
      if (tuple != nullptr) g_variant_unref(tuple);
    });
    answers_.Start(fault->time, [call, kept] { g_dbus_method_invocation_return_value(call, kept.get()); });
  } catch (const catalog::BadValue& problem) {
    g_dbus_method_invocation_return_error(call, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS, "%s: %s", info.name,
                                          problem.what());
  }
}

void Simulator::AddFault(const std::vector<std::string>& words, unsigned int times) {
  const Fault fault = ParseFault(words, times);
  Journal("fault " + fault.words);
  fault_control_.Add(fault);
}

void Simulator::ClearFaults() {
  Journal("fault clear");
  fault_control_.Clear();
  wire_.Flush();
}

void Simulator::Journal(const std::string& line) const {
  if (!options_.quiet) std::puts(line.c_str());
}
