#include "simulator/ControlClient.h"

#include <cstdio>

#include "dbus_system.h"
#include "simulator/ControlInterface.h"

namespace {

int Fail(int code, const std::string& text) {
  std::fprintf(stderr, "hlx-simulator: %s\n", text.c_str());
  return code;
}

int CallSimulator(const char* method, GVariant* parameters) {
  const GLibPtr<GVariant> owned(g_variant_ref_sink(parameters));
  GError* problem = nullptr;
  const GLibPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &problem));
  if (bus == nullptr) {
    return Fail(kExitFailed, std::string("cannot reach the session bus: ") + GLibPtr<GError>(problem)->message);
  }
  const GLibPtr<GVariant> answer(g_dbus_connection_call_sync(bus.get(), kServiceName, kControlPath, kControlInterface,
                                                             method, owned.get(), nullptr,
                                                             G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, &problem));
  if (answer != nullptr) return 0;
  const GLibPtr<GError> error(problem);
  g_dbus_error_strip_remote_error(error.get());
  if (g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS)) {
    return Fail(kExitBadArgument, error->message);
  }
  const bool absent = g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) ||
                      g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER);
  return Fail(kExitFailed, absent ? std::string("no simulator runs on this bus") : error->message);
}

}  // namespace

int EmitSignal(const std::vector<std::string>& words) {
  if (words.empty()) return Fail(kExitBadArgument, "emit needs the name of a signal; see hlx-simulator list");
  GVariantBuilder arguments;
  g_variant_builder_init(&arguments, G_VARIANT_TYPE("av"));
  for (std::size_t i = 1; i < words.size(); ++i) {
    g_variant_builder_add(&arguments, "v", g_variant_new_string(words[i].c_str()));
  }
  return CallSimulator("Emit", g_variant_new("(sav)", words[0].c_str(), &arguments));
}

int SetField(const std::vector<std::string>& words) {
  if (words.size() != 2) return Fail(kExitBadArgument, "set needs a field and a value; see hlx-simulator list");
  return CallSimulator("Set", g_variant_new("(sv)", words[0].c_str(), g_variant_new_string(words[1].c_str())));
}

int ListSignalsAndFields() {
  std::puts("Signals for emit, with the D-Bus types of their arguments:");
  for (GDBusSignalInfo** signal = com_vorn_linux_system_interface_info()->signals; *signal != nullptr; ++signal) {
    std::printf("  %s", (*signal)->name);
    for (GDBusArgInfo** arg = (*signal)->args; arg != nullptr && *arg != nullptr; ++arg) {
      std::printf(" %s:%s", (*arg)->name, (*arg)->signature);
    }
    std::puts("");
  }
  std::puts("Fields for set:");
  for (const RecordField& field : kRecordFields) std::printf("  %s\n", std::string(field.name).c_str());
  return 0;
}
