#include "simulator/SimulatedService.h"

#include <glib-unix.h>

#include <csignal>
#include <cstdio>
#include <stdexcept>

#include "simulator/ControlInterface.h"

namespace {

GLibPtr<GDBusConnection> ConnectToBus() {
  GError* problem = nullptr;
  GDBusConnection* const connection = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &problem);
  if (problem != nullptr) {
    throw std::runtime_error(std::string("cannot reach the session bus: ") + GLibPtr<GError>(problem)->message);
  }
  g_dbus_connection_set_exit_on_close(connection, FALSE);
  return GLibPtr<GDBusConnection>(connection);
}

}  // namespace

SimulatedService::SimulatedService(const Options& options)
    : connection_(ConnectToBus()),
      loop_(g_main_loop_new(nullptr, FALSE)),
      unit_(options.quiet),
      models_(unit_, unit_, unit_, unit_),
      skeleton_(com_vorn_linux_system_skeleton_new()) {
  g_signal_connect(connection_.get(), "closed", G_CALLBACK(OnBusGone), this);
  for (const int number : {SIGINT, SIGTERM}) g_unix_signal_add(number, OnStop, this);
  unit_.SpeakThrough(connection_.get());
  ExportSkeleton();  // before the name is there, so that nobody who sees the name finds nothing behind it
  ExportControlInterface(connection_.get(), unit_);
  OwnName();

  Records& records = unit_.records();
  records.update.fails = options.update_fails ? 1 : 0;
  FieldNamed("info.mcu_version").StoreText(records, options.mcu_version);
  std::get<PowerModel>(models_).Boot();
  std::get<MiscModel>(models_).Boot();
  std::get<TimeModel>(models_).Boot();
}

SimulatedService::~SimulatedService() {
  while (g_source_remove_by_user_data(this)) continue;
  g_signal_handlers_disconnect_by_data(connection_.get(), this);
  g_dbus_interface_skeleton_unexport(G_DBUS_INTERFACE_SKELETON(skeleton_.get()));
  g_dbus_connection_flush_sync(connection_.get(), nullptr, nullptr);
}

void SimulatedService::ExportSkeleton() {
  guint count = 0;
  guint* const ids = g_signal_list_ids(com_vorn_linux_system_get_type(), &count);
  for (guint i = 0; i < count; ++i) {
    if (!g_str_has_prefix(g_signal_name(ids[i]), "handle-")) continue;
    GClosure* const closure = g_closure_new_simple(sizeof(GClosure), this);
    g_closure_set_meta_marshal(closure, this, OnCall);
    g_signal_connect_closure_by_id(skeleton_.get(), ids[i], 0, closure, FALSE);
  }
  g_free(ids);
  GError* problem = nullptr;
  if (!g_dbus_interface_skeleton_export(G_DBUS_INTERFACE_SKELETON(skeleton_.get()), connection_.get(), kServicePath,
                                        &problem)) {
    throw std::runtime_error(GLibPtr<GError>(problem)->message);
  }
}

void SimulatedService::OwnName() {
  constexpr guint32 kDoNotQueue = 4;
  constexpr guint32 kPrimaryOwner = 1;
  GError* problem = nullptr;
  const GLibPtr<GVariant> answer(g_dbus_connection_call_sync(
      connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
      g_variant_new("(su)", kServiceName, kDoNotQueue), G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
      &problem));
  if (problem != nullptr) {
    throw std::runtime_error(std::string("cannot own ") + kServiceName + ": " + GLibPtr<GError>(problem)->message);
  }
  guint32 result = 0;
  g_variant_get(answer.get(), "(u)", &result);
  if (result != kPrimaryOwner) {
    throw std::runtime_error(std::string("the name ") + kServiceName + " is already taken on this bus");
  }
}

void SimulatedService::Run() {
  std::printf("hlx-simulator: ready on %s\n", kServiceName);
  g_main_loop_run(loop_.get());
  if (bus_gone_) throw std::runtime_error("the session bus went away");
}

void SimulatedService::OnCall(GClosure* /*closure*/, GValue* result, guint /*count*/, const GValue* values,
                              gpointer /*hint*/, gpointer service) {
  auto& self = *static_cast<SimulatedService*>(service);
  auto* const call = static_cast<GDBusMethodInvocation*>(g_value_get_object(&values[1]));
  const GDBusMethodInfo* const info = g_dbus_method_invocation_get_method_info(call);
  self.unit_.Journal("call " + Describe(info->name, info->in_args, g_dbus_method_invocation_get_parameters(call)));
  g_value_set_boolean(result, AnswerCall(self.models_, call));
}

gboolean SimulatedService::OnStop(gpointer service) {
  g_main_loop_quit(static_cast<SimulatedService*>(service)->loop_.get());
  return G_SOURCE_CONTINUE;
}

void SimulatedService::OnBusGone(GDBusConnection* /*connection*/, gboolean /*peer*/, GError* /*problem*/,
                                 gpointer service) {
  static_cast<SimulatedService*>(service)->bus_gone_ = true;
  OnStop(service);
}
