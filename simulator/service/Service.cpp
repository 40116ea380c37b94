#include "simulator/service/Service.h"

#include <cstdio>
#include <memory>
#include <utility>

#include "dbus_system.h"

Service::Service(Skeleton::Handler on_call) : skeleton_(com_vorn_linux_system_skeleton_new(), std::move(on_call)) {}

Service::~Service() {
  if (IsOpen()) g_dbus_connection_flush_sync(connection_.get(), nullptr, nullptr);
  Close();
}

void Service::Open() {
  if (IsOpen()) return;
  connection_ = ConnectToSessionBus();
  g_dbus_connection_add_filter(connection_.get(), OnMessage, this, nullptr);
  try {
    skeleton_.Export(connection_.get(), kServicePath);  // first: who sees the name finds something behind it
    OwnItsName();
  } catch (const std::exception&) {
    Close();
    throw;
  }
}

void Service::ComeBack() try {
  Open();
  OwnItsName();
} catch (const std::exception& problem) {
  std::fprintf(stderr, "hlx-simulator: the service cannot come back: %s\n", problem.what());
}

void Service::Close() {
  if (!IsOpen()) return;
  skeleton_.Unexport();
  g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
  connection_.reset();
}

void Service::ReleaseItsName() {
  if (IsOpen()) ReleaseName(connection_.get(), kServiceName);
}

void Service::OwnItsName() {
  if (IsOpen()) OwnName(connection_.get(), kServiceName);
}

void Service::Send(const catalog::Signal& signal, GVariant* tuple) {
  if (!IsAudible()) return;
  g_dbus_connection_emit_signal(connection_.get(), nullptr, kServicePath, com_vorn_linux_system_interface_info()->name,
                                signal.name, tuple, nullptr);
}

/// On a thread of GDBus, which answers some calls itself.
GDBusMessage* Service::OnMessage(GDBusConnection* /*connection*/, GDBusMessage* message, gboolean incoming,
                                 gpointer service) {
  const bool is_call = g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_METHOD_CALL;
  if (incoming == FALSE || !is_call || !static_cast<Service*>(service)->hangs_) return message;
  g_object_unref(message);
  return nullptr;
}

void Service::WhenSent(std::function<void()> done) {
  if (!IsOpen()) return done();
  const auto answered = [](GObject* connection, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<std::function<void()>> then(static_cast<std::function<void()>*>(data));
    GVariant* const answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr);
    if (answer != nullptr) g_variant_unref(answer);
    (*then)();
  };
  g_dbus_connection_call(connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                         "org.freedesktop.DBus.Peer", "Ping", nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
                         answered, new std::function<void()>(std::move(done)));
}
