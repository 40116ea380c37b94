#include "tools/hlxctl/CallMonitor.h"

#include <cstring>

#include "tools/common/Bus.h"

/// On its way from the connection's thread to the main loop.
struct CallMonitor::Message {
  CallMonitor* monitor;
  GLibPtr<GDBusMessage> message;

  static GDBusMessage* Filter(GDBusConnection* /*connection*/, GDBusMessage* message, gboolean incoming,
                              gpointer self) {
    const bool call = incoming != FALSE &&
                      g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_METHOD_CALL &&
                      g_strcmp0(g_dbus_message_get_interface(message), kServiceInterface) == 0;
    if (call) {
      auto* const told = new Message{static_cast<CallMonitor*>(self), GLibPtr<GDBusMessage>(g_object_ref(message))};
      g_main_context_invoke_full(nullptr, G_PRIORITY_DEFAULT, Tell, told, Delete);
      g_object_unref(message);
      return nullptr;  // what it hears is not for it to answer
    }
    return message;
  }
  static gboolean Tell(gpointer data) {
    const auto& told = *static_cast<Message*>(data);
    GVariant* const body = g_dbus_message_get_body(told.message.get());
    const GLibPtr<GVariant> none(body == nullptr ? g_variant_ref_sink(g_variant_new_tuple(nullptr, 0)) : nullptr);
    told.monitor->heard_(g_dbus_message_get_member(told.message.get()), body != nullptr ? body : none.get());
    return G_SOURCE_REMOVE;
  }
  static void Delete(gpointer data) { delete static_cast<Message*>(data); }
};

CallMonitor::CallMonitor(Heard heard) : heard_(std::move(heard)) {
  const GLibPtr<gchar> address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  if (address == nullptr) return;
  constexpr int kFlags = G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION;
  connection_.reset(g_dbus_connection_new_for_address_sync(address.get(), static_cast<GDBusConnectionFlags>(kFlags),
                                                           nullptr, nullptr, nullptr));
  if (connection_ == nullptr) return;
  filter_ = g_dbus_connection_add_filter(connection_.get(), Message::Filter, this, nullptr);
  const std::string rule = std::string("type='method_call',interface='") + kServiceInterface + "'";
  const char* const rules[] = {rule.c_str(), nullptr};
  const GLibPtr<GVariant> reply(g_dbus_connection_call_sync(
      connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Monitoring",
      "BecomeMonitor", g_variant_new("(^asu)", rules, 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
  hears_ = reply != nullptr;
}

CallMonitor::~CallMonitor() {
  if (filter_ != 0) g_dbus_connection_remove_filter(connection_.get(), filter_);
  if (connection_ != nullptr) g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}
