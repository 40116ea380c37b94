#include "simulator/cli/ControlClient.h"

namespace {

constexpr char kName[] = "com.vorn.linux.simulator";
constexpr char kPath[] = "/com/vorn/linux/simulator";

bool IsRemote(const GError* error, const char* name) {
  const GLibPtr<gchar> remote(g_dbus_error_get_remote_error(error));
  return remote != nullptr && g_str_equal(remote.get(), name) != FALSE;
}

int CodeOf(const GError* error) {
  if (g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS)) return kExitBadArgument;
  return IsRemote(error, "com.vorn.linux.simulator.Error.TimedOut") ? kExitTimedOut : kExitFailed;
}

}  // namespace

ControlClient::ControlClient() {
  GError* problem = nullptr;
  bus_.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &problem));
  if (bus_ == nullptr) {
    throw VerbError(kExitFailed, std::string("cannot reach the session bus: ") + GLibPtr<GError>(problem)->message);
  }
}

GLibPtr<GVariant> ControlClient::Call(const char* method, GVariant* parameters, const char* answer) const {
  GError* problem = nullptr;
  GVariant* const result =
      g_dbus_connection_call_sync(bus_.get(), kName, kPath, kName, method, parameters, G_VARIANT_TYPE(answer),
                                  G_DBUS_CALL_FLAGS_NO_AUTO_START, G_MAXINT, nullptr, &problem);
  if (result != nullptr) return GLibPtr<GVariant>(result);
  const GLibPtr<GError> error(problem);
  const int code = CodeOf(error.get());
  g_dbus_error_strip_remote_error(error.get());
  const bool absent = g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) ||
                      g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER);
  throw VerbError(code, absent ? "no simulator runs on this bus" : error->message);
}
