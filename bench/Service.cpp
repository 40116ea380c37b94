/// bench_service: the service that every subject talks to. Takes each command at once, and emits what it is asked for.
#include <dbus_system.h>

#include "bench/Harness.h"
#include "dbus/GLibPtr.h"

namespace {

constexpr char kControl[] =
    "<node><interface name='com.vorn.linux.bench'><method name='Emit'>"
    "<arg name='count' type='u' direction='in'/><arg name='gap_us' type='u' direction='in'/>"
    "</method></interface></node>";

gboolean OnSetScreenLightLevel(ComVornLinuxSystem* skeleton, GDBusMethodInvocation* call, guchar /*type*/,
                               guchar /*level*/) {
  com_vorn_linux_system_complete_set_screen_light_level(skeleton, call);
  return TRUE;
}

void SleepUntil(int64_t when) {
  const timespec moment{static_cast<time_t>(when / 1'000'000'000), static_cast<long>(when % 1'000'000'000)};
  clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &moment, nullptr);
}

void OnEmit(GDBusConnection* connection, const gchar* /*sender*/, const gchar* /*path*/, const gchar* /*interface*/,
            const gchar* /*method*/, GVariant* arguments, GDBusMethodInvocation* call, gpointer /*nothing*/) {
  guint count = 0;
  guint gap_us = 0;
  g_variant_get(arguments, "(uu)", &count, &gap_us);
  int64_t next = bench::Now();
  for (guint i = 0; i < count; ++i) {
    if (gap_us > 0) SleepUntil(next += gap_us * INT64_C(1000));
    g_dbus_connection_emit_signal(connection, nullptr, bench::kServicePath,
                                  com_vorn_linux_system_interface_info()->name, "ScreenLightLevelChangedSignal",
                                  g_variant_new("(yy)", i & 0xff, (i >> 8) & 0xff), nullptr);
    if (gap_us > 0 || i % 64 == 0) g_dbus_connection_flush_sync(connection, nullptr, nullptr);
  }
  g_dbus_method_invocation_return_value(call, nullptr);
}

}  // namespace

int main() {
  const GLibPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  if (bus == nullptr) bench::Fail("no session bus");
  ComVornLinuxSystem* const skeleton = com_vorn_linux_system_skeleton_new();
  g_signal_connect(skeleton, "handle-set-screen-light-level", G_CALLBACK(OnSetScreenLightLevel), nullptr);
  g_dbus_interface_skeleton_export(G_DBUS_INTERFACE_SKELETON(skeleton), bus.get(), bench::kServicePath, nullptr);
  GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(kControl, nullptr);
  const GDBusInterfaceVTable table = {OnEmit, nullptr, nullptr, {}};
  g_dbus_connection_register_object(bus.get(), bench::kServicePath, node->interfaces[0], &table, nullptr, nullptr,
                                    nullptr);
  g_bus_own_name_on_connection(
      bus.get(), bench::kServiceName, G_BUS_NAME_OWNER_FLAGS_DO_NOT_QUEUE, nullptr,
      [](GDBusConnection*, const gchar*, gpointer) { bench::Fail("cannot own the name"); }, nullptr, nullptr);
  g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
