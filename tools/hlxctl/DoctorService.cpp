#include "dbus_system.h"
#include "tools/common/Failure.h"
#include "tools/common/Wire.h"
#include "tools/hlxctl/Doctor.h"

namespace {

constexpr int kIntrospectionMs = 2000;
constexpr char kSimulatorName[] = "com.vorn.linux.simulator";  // and its interface
constexpr char kSimulatorPath[] = "/com/vorn/linux/simulator";

std::string Described(const Bus& bus, const std::string& name) {
  const unsigned pid = bus.ProcessOf(name);
  return pid == 0 ? "a process that the bus does not name"
                  : "process " + std::to_string(pid) + " (" + ProcessName(pid) + ")";
}

std::string SignatureOf(const GDBusMethodInfo& method) {
  return wire::Signature(method.in_args) + wire::Signature(method.out_args);
}
std::string SignatureOf(const GDBusSignalInfo& signal) { return wire::Signature(signal.args); }

/// What of `ours` the service lacks or has otherwise, and what it has besides.
template <class Info>
void Compare(Info* const* ours, Info* const* theirs, std::vector<std::string>& wrong, std::vector<std::string>& more) {
  const auto find = [](Info* const* infos, const char* name) -> const Info* {
    for (; infos != nullptr && *infos != nullptr; ++infos) {
      if (g_strcmp0((*infos)->name, name) == 0) return *infos;
    }
    return nullptr;
  };
  for (Info* const* info = ours; *info != nullptr; ++info) {
    const Info* const other = find(theirs, (*info)->name);
    if (other == nullptr) wrong.push_back(std::string((*info)->name) + " is missing");
    if (other != nullptr && SignatureOf(**info) != SignatureOf(*other)) {
      wrong.push_back(std::string((*info)->name) + " is " + SignatureOf(*other) + ", not " + SignatureOf(**info));
    }
  }
  for (Info* const* info = theirs; info != nullptr && *info != nullptr; ++info) {
    if (find(ours, (*info)->name) == nullptr) more.emplace_back((*info)->name);
  }
}

Findings CompareWith(const char* xml) {
  GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(xml, nullptr);
  const std::unique_ptr<GDBusNodeInfo, decltype(&g_dbus_node_info_unref)> owned(node, g_dbus_node_info_unref);
  const GDBusInterfaceInfo* const theirs =
      node == nullptr ? nullptr : g_dbus_node_info_lookup_interface(node, kServiceInterface);
  if (theirs == nullptr) {
    return {{Health::kFailure, std::string(kServicePath) + " does not have the interface " + kServiceInterface,
             "the service must export it there"}};
  }
  const GDBusInterfaceInfo& ours = *com_vorn_linux_system_interface_info();
  std::vector<std::string> wrong;
  std::vector<std::string> more;
  Compare(ours.methods, theirs->methods, wrong, more);
  Compare(ours.signals, theirs->signals, wrong, more);
  if (!wrong.empty()) {
    return {{Health::kFailure, Enumerate(wrong), "service and library were built from different descriptions"}};
  }
  if (!more.empty())
    return {{Health::kWarning, "it also has " + Enumerate(more), "a newer service: update the library"}};
  return {{Health::kOk, "the same 54 methods and 76 signals"}};
}

}  // namespace

Findings CheckBus(Patient& patient) try {
  patient.bus = std::make_unique<Bus>();
  return {{Health::kOk, "the session bus is there"}};
} catch (const Failure& failure) {
  return {{Health::kFailure, failure.what(), "start one, or name it in DBUS_SESSION_BUS_ADDRESS"}};
}

Findings CheckOwner(Patient& patient) {
  if (patient.bus == nullptr) return {};
  const std::string owner = patient.bus->Owner();
  if (owner.empty()) {
    return {{Health::kFailure, std::string("nobody owns ") + kServiceName, "start the service, on this bus"}};
  }
  return {{Health::kOk, std::string(kServiceName) + " belongs to " + Described(*patient.bus, owner)}};
}

Findings CheckLife(Patient& patient) {
  if (patient.bus == nullptr || patient.bus->Owner().empty()) return {};
  try {
    patient.bus->RequireLife();
    patient.lives = true;
    return {{Health::kOk, "the service answers"}};
  } catch (const Failure& failure) {
    return {{Health::kFailure, failure.what(), "it hangs: look at its main loop, or restart it"}};
  }
}

Findings CheckInterface(Patient& patient) {
  if (!patient.lives) return {};
  GError* problem = nullptr;
  const GLibPtr<GVariant> reply = patient.bus->Call(kServiceName, kServicePath, "org.freedesktop.DBus.Introspectable",
                                                    "Introspect", nullptr, kIntrospectionMs, &problem);
  const GLibPtr<GError> owned(problem);
  const gchar* xml = nullptr;
  if (reply != nullptr && g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(s)"))) {
    g_variant_get(reply.get(), "(&s)", &xml);
    return CompareWith(xml);
  }
  return {{Health::kWarning,
           "the service does not describe itself" + (problem == nullptr ? "" : ": " + std::string(problem->message))}};
}

Findings CheckFaults(Patient& patient) {
  if (patient.bus == nullptr) return {};
  const GLibPtr<GVariant> reply =
      patient.bus->Call(kSimulatorName, kSimulatorPath, kSimulatorName, "Faults", nullptr, kIntrospectionMs, nullptr);
  if (reply == nullptr || g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(a(su))")) == FALSE) return {};
  const GLibPtr<GVariant> faults(g_variant_get_child_value(reply.get(), 0));
  Findings findings;
  for (gsize i = 0; i < g_variant_n_children(faults.get()); ++i) {
    const gchar* words = nullptr;
    guint32 left = 0;
    g_variant_get_child(faults.get(), i, "(&su)", &words, &left);
    findings.push_back({Health::kWarning,
                        std::string("the simulated unit does this on purpose: ") + words +
                            (left == 0 ? "" : ", " + std::to_string(left) + " times more"),
                        "hlx-simulator fault clear"});
  }
  return findings;
}
