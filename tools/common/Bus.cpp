#include "tools/common/Bus.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <utility>

#include "tools/common/Failure.h"

namespace {

constexpr char kBusName[] = "org.freedesktop.DBus";
constexpr char kBusPath[] = "/org/freedesktop/DBus";
constexpr char kProperties[] = "org.freedesktop.DBus.Properties";
constexpr int kLifeMs = 2000;

std::string Address() {
  const char* const address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
  return std::string(" (DBUS_SESSION_BUS_ADDRESS is ") + (address != nullptr ? address : "not set") + ")";
}

}  // namespace

Bus::Bus() {
  GError* problem = nullptr;
  connection_.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &problem));
  const GLibPtr<GError> owned(problem);
  if (connection_ == nullptr) {
    throw Failure(kExitNoService, std::string("the session bus cannot be reached: ") + problem->message + Address());
  }
  // Its end is ours to tell: see Loop.
  g_dbus_connection_set_exit_on_close(connection_.get(), FALSE);
}

GLibPtr<GVariant> Bus::Call(const char* destination, const char* path, const char* interface, const char* method,
                            GVariant* arguments, int timeout_ms, GError** error) const {
  return GLibPtr<GVariant>(g_dbus_connection_call_sync(connection_.get(), destination, path, interface, method,
                                                       arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, timeout_ms,
                                                       nullptr, error));
}

std::string Bus::Owner() const {
  const GLibPtr<GVariant> reply =
      Call(kBusName, kBusPath, kBusName, "GetNameOwner", g_variant_new("(s)", kServiceName), -1, nullptr);
  if (reply == nullptr) return "";
  const gchar* owner = nullptr;
  g_variant_get(reply.get(), "(&s)", &owner);
  return owner;
}

unsigned Bus::ProcessOf(const std::string& name) const {
  const GLibPtr<GVariant> reply =
      Call(kBusName, kBusPath, kBusName, "GetConnectionUnixProcessID", g_variant_new("(s)", name.c_str()), -1, nullptr);
  guint32 pid = 0;
  if (reply != nullptr) g_variant_get(reply.get(), "(u)", &pid);
  return pid;
}

void Bus::RequireOwner() const {
  if (Owner().empty()) throw Failure(kExitNoService, "the system service is not on the session bus" + Address());
}

void Bus::RequireLife() const {
  GError* problem = nullptr;
  const GLibPtr<GVariant> reply = Call(kServiceName, kServicePath, kProperties, "GetAll",
                                       g_variant_new("(s)", kServiceInterface), kLifeMs, &problem);
  const GLibPtr<GError> owned(problem);
  if (IsAnswered(problem)) return;
  if (g_error_matches(problem, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) ||
      g_error_matches(problem, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER)) {
    throw Failure(kExitNoService, "the system service is not on the session bus" + Address());
  }
  const unsigned pid = ProcessOf(kServiceName);
  throw Failure(kExitNoService, "the system service does not answer: process " + std::to_string(pid) + " (" +
                                    ProcessName(pid) + ") has its name and is silent");
}

void Bus::AskForLife(GCancellable* cancel, GAsyncReadyCallback done, gpointer data) const {
  g_dbus_connection_call(connection_.get(), kServiceName, kServicePath, kProperties, "GetAll",
                         g_variant_new("(s)", kServiceInterface), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, kLifeMs,
                         cancel, done, data);
}

bool IsAnswered(const GError* problem) {
  if (problem == nullptr) return true;
  if (problem->domain == G_IO_ERROR) return false;
  constexpr int kNoAnswer[] = {G_DBUS_ERROR_SERVICE_UNKNOWN, G_DBUS_ERROR_NAME_HAS_NO_OWNER, G_DBUS_ERROR_NO_REPLY};
  return std::none_of(std::begin(kNoAnswer), std::end(kNoAnswer),
                      [problem](int code) { return g_error_matches(problem, G_DBUS_ERROR, code) != FALSE; });
}

std::string ProcessName(unsigned pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/comm");
  std::string name;
  std::getline(file, name);
  return name;
}

ServiceWatch::ServiceWatch(const Bus& bus, std::function<void(bool there)> changed)
    : changed_(std::move(changed)), there_(!bus.Owner().empty()) {
  id_ = g_bus_watch_name_on_connection(
      bus.Connection(), kServiceName, G_BUS_NAME_WATCHER_FLAGS_NONE,
      [](GDBusConnection*, const gchar*, const gchar*, gpointer watch) {
        static_cast<ServiceWatch*>(watch)->Tell(true);
      },
      [](GDBusConnection*, const gchar*, gpointer watch) { static_cast<ServiceWatch*>(watch)->Tell(false); }, this,
      nullptr);
}

void ServiceWatch::Tell(bool there) {
  if (std::exchange(there_, there) != there) changed_(there);
}

Subscription::Subscription(const Bus& bus, const char* sender, Heard heard)
    : heard_(std::move(heard)), connection_(bus.Connection()) {
  const auto relay = [](GDBusConnection* /*connection*/, const gchar* from, const gchar* /*path*/,
                        const gchar* /*interface*/, const gchar* signal, GVariant* arguments,
                        gpointer self) { static_cast<Subscription*>(self)->heard_(from, signal, arguments); };
  id_ = g_dbus_connection_signal_subscribe(connection_, sender, kServiceInterface, nullptr, nullptr, nullptr,
                                           G_DBUS_SIGNAL_FLAGS_NONE, relay, this, nullptr);
  bus.Owner();  // once that is answered, the bus knows of the subscription
}
