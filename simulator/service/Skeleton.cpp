#include "simulator/service/Skeleton.h"

#include <utility>

namespace {

GLibPtr<GVariant> AskBus(GDBusConnection* connection, const char* method, GVariant* parameters, const char* answer) {
  GError* problem = nullptr;
  GVariant* const result = g_dbus_connection_call_sync(
      connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, parameters,
      G_VARIANT_TYPE(answer), G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &problem);
  if (problem != nullptr) Throw(std::string("the bus does not answer ") + method, problem);
  return GLibPtr<GVariant>(result);
}

}  // namespace

GLibPtr<GDBusConnection> ConnectToSessionBus() {
  GError* problem = nullptr;
  const GLibPtr<gchar> address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, &problem));
  GDBusConnection* connection = nullptr;
  if (problem == nullptr) {
    const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                         G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    connection = g_dbus_connection_new_for_address_sync(address.get(), flags, nullptr, nullptr, &problem);
  }
  if (problem != nullptr) Throw("cannot reach the session bus", problem);
  return GLibPtr<GDBusConnection>(connection);
}

void OwnName(GDBusConnection* connection, const char* name) {
  constexpr guint32 kDoNotQueue = 4;
  constexpr guint32 kPrimaryOwner = 1;
  constexpr guint32 kAlreadyOwner = 4;
  guint32 result = 0;
  g_variant_get(AskBus(connection, "RequestName", g_variant_new("(su)", name, kDoNotQueue), "(u)").get(), "(u)",
                &result);
  if (result == kPrimaryOwner || result == kAlreadyOwner) return;
  throw std::runtime_error(std::string("the name ") + name + " is already taken on this bus");
}

void ReleaseName(GDBusConnection* connection, const char* name) {
  AskBus(connection, "ReleaseName", g_variant_new("(s)", name), "(u)");
}

bool HasOwner(GDBusConnection* connection, const char* name) {
  gboolean owned = FALSE;
  g_variant_get(AskBus(connection, "NameHasOwner", g_variant_new("(s)", name), "(b)").get(), "(b)", &owned);
  return owned != FALSE;
}

Skeleton::Skeleton(gpointer skeleton, Handler handler)
    : skeleton_(G_DBUS_INTERFACE_SKELETON(skeleton)), handler_(std::move(handler)) {
  guint count = 0;
  // The handler signals belong to the interface that the generated class implements.
  g_autofree GType* interfaces = g_type_interfaces(G_OBJECT_TYPE(skeleton), nullptr);
  for (const GType* type = interfaces; *type != 0; ++type) {
    g_autofree guint* ids = g_signal_list_ids(*type, &count);
    for (guint i = 0; i < count; ++i) {
      if (!g_str_has_prefix(g_signal_name(ids[i]), "handle-")) continue;
      GClosure* const closure = g_closure_new_simple(sizeof(GClosure), this);
      g_closure_set_meta_marshal(closure, this, OnCall);
      g_signal_connect_closure_by_id(skeleton, ids[i], 0, closure, FALSE);
    }
  }
}

Skeleton::~Skeleton() {
  Unexport();
  g_signal_handlers_disconnect_by_data(skeleton_.get(), this);
}

void Skeleton::Export(GDBusConnection* connection, const char* path) {
  GError* problem = nullptr;
  if (!g_dbus_interface_skeleton_export(skeleton_.get(), connection, path, &problem)) {
    Throw(std::string("cannot export ") + path, problem);
  }
}

void Skeleton::Unexport() {
  if (g_dbus_interface_skeleton_get_connection(skeleton_.get()) != nullptr) {
    g_dbus_interface_skeleton_unexport(skeleton_.get());
  }
}

void Skeleton::OnCall(GClosure* /*closure*/, GValue* result, guint /*count*/, const GValue* values, gpointer /*hint*/,
                      gpointer skeleton) {
  static_cast<Skeleton*>(skeleton)->handler_(static_cast<GDBusMethodInvocation*>(g_value_get_object(&values[1])));
  g_value_set_boolean(result, TRUE);
}
