/* A small system service in plain C: one record, two commands, three signals. Start here when you write the real one.
 *
 * It publishes the power record, obeys SetScreenLightOn and SetScreenLightLevel, and announces the screen, its
 * brightness and ACC. ACC changes with each SIGUSR1; SIGTERM and Ctrl-C end it. */
#include <HLXSystemRecords.h>
#include <dbus_system.h>
#include <errno.h>
#include <glib-unix.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/shm.h>

typedef struct {
  GMainLoop* loop;
  ComVornLinuxSystem* skeleton;
  HLXPowerShmData* power;
  int status; /* of the process, at the end */
} Service;

/* Clients read at any moment and take no lock: every field is written in one access of its size. */
#define STORE(field, value) __atomic_store_n(&(field), (value), __ATOMIC_RELAXED)
#define LOAD(field) __atomic_load_n(&(field), __ATOMIC_RELAXED)

/* 1. The record. Make the segment readable and writable for everybody, before any client comes: one that comes first
 *    makes it with 0444, which only privileged processes may then map. */
static HLXPowerShmData* map_power_record(void) {
  const int id = shmget((key_t)HLX_SHM_POWER_DATA_KEY, sizeof(HLXPowerShmData), IPC_CREAT | HLX_SHM_CREATE_BITS);
  void* const address = id == -1 ? (void*)-1 : shmat(id, NULL, 0);
  if (address != (void*)-1) return address;
  fprintf(stderr, "service: the power record (key 0x%x): %s\n", HLX_SHM_POWER_DATA_KEY, strerror(errno));
  return NULL;
}

/* 2. Its first filling. `initialised` first: nobody else fills it after that, and what it holds stays when the service
 *    restarts. A real service takes the values from its saved settings. */
static void fill_power_record(HLXPowerShmData* power) {
  if (__atomic_exchange_n(&power->initialised, 1U, __ATOMIC_RELAXED) != 0) return;
  STORE(power->is_screen_on, 1U);
  STORE(power->is_acc_on, 1U);
  STORE(power->radio_on_state, 16U);
  STORE(power->_screen_day_level, (uint8_t)80);
  STORE(power->_screen_night_level, (uint8_t)35);
}

/* 3. Commands arrive as GObject signals "handle-…" of the skeleton. Check, write the record, answer, announce: whoever
 *    hears the signal and then reads the record must find the new value. TRUE means: answered, or will be. A method
 *    that nothing is connected to is answered with an error by the skeleton itself. */
static gboolean on_set_screen_light_on(ComVornLinuxSystem* skeleton, GDBusMethodInvocation* call, gboolean on,
                                       gpointer user_data) {
  Service* const service = user_data;
  STORE(service->power->is_screen_on, on ? 1U : 0U);
  com_vorn_linux_system_complete_set_screen_light_on(skeleton, call);
  com_vorn_linux_system_emit_screen_state_change_signal(skeleton, on);
  return TRUE;
}

static gboolean on_set_screen_light_level(ComVornLinuxSystem* skeleton, GDBusMethodInvocation* call, guchar type,
                                          guchar level, gpointer user_data) {
  Service* const service = user_data;
  if (level == 0) { /* a command may be refused: the application reads the text with HLX_GetLastCallError() */
    g_dbus_method_invocation_return_error(call, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS,
                                          "level: 0 would leave the driver in the dark; allowed: 1 to 255");
    return TRUE;
  }
  if (type == 0) {
    STORE(service->power->_screen_day_level, level);
  } else { /* every type but 0 is the night level */
    STORE(service->power->_screen_night_level, level);
  }
  com_vorn_linux_system_complete_set_screen_light_level(skeleton, call);
  com_vorn_linux_system_emit_screen_light_level_changed_signal(skeleton, type, level);
  return TRUE;
}

/* 4. What nobody asked for: the vehicle switches ACC. The same order, record before signal. */
static gboolean on_acc_line(gpointer user_data) {
  Service* const service = user_data;
  const uint32_t on = LOAD(service->power->is_acc_on) == 0 ? 1U : 0U;
  STORE(service->power->is_acc_on, on);
  com_vorn_linux_system_emit_acc_state_change_signal(service->skeleton, on != 0);
  return G_SOURCE_CONTINUE;
}

static void end_with(Service* service, int status) {
  service->status = status;
  g_main_loop_quit(service->loop);
}

static gboolean on_end(gpointer user_data) {
  end_with(user_data, EXIT_SUCCESS);
  return G_SOURCE_CONTINUE;
}

/* 5. Export the object before the name is owned: whoever sees the name may call at once. */
static void on_bus_acquired(GDBusConnection* bus, const gchar* name, gpointer user_data) {
  Service* const service = user_data;
  GError* error = NULL;
  (void)name;
  if (g_dbus_interface_skeleton_export(G_DBUS_INTERFACE_SKELETON(service->skeleton), bus,
                                       "/com/vorn/linux/systemservice", &error)) {
    return;
  }
  fprintf(stderr, "service: %s\n", error->message);
  g_error_free(error);
  end_with(service, EXIT_FAILURE);
}

static void on_name_acquired(GDBusConnection* bus, const gchar* name, gpointer user_data) {
  (void)bus;
  (void)user_data;
  printf("service: %s\n", name);
  fflush(stdout);
}

static void on_name_lost(GDBusConnection* bus, const gchar* name, gpointer user_data) {
  fprintf(stderr, "service: %s %s\n", name, bus == NULL ? "needs a session bus" : "belongs to somebody else");
  end_with(user_data, EXIT_FAILURE);
}

int main(void) {
  Service service = {NULL, NULL, map_power_record(), EXIT_SUCCESS};
  if (service.power == NULL) return EXIT_FAILURE;
  fill_power_record(service.power);

  service.loop = g_main_loop_new(NULL, FALSE);
  service.skeleton = com_vorn_linux_system_skeleton_new();
  g_signal_connect(service.skeleton, "handle-set-screen-light-on", G_CALLBACK(on_set_screen_light_on), &service);
  g_signal_connect(service.skeleton, "handle-set-screen-light-level", G_CALLBACK(on_set_screen_light_level), &service);
  g_unix_signal_add(SIGUSR1, on_acc_line, &service);
  g_unix_signal_add(SIGTERM, on_end, &service);
  g_unix_signal_add(SIGINT, on_end, &service);

  const guint owner = g_bus_own_name(G_BUS_TYPE_SESSION, "com.vorn.linux.systemservice", G_BUS_NAME_OWNER_FLAGS_NONE,
                                     on_bus_acquired, on_name_acquired, on_name_lost, &service, NULL);
  g_main_loop_run(service.loop);

  g_bus_unown_name(owner);
  g_object_unref(service.skeleton);
  g_main_loop_unref(service.loop);
  return service.status; /* the segment stays: clients have it mapped */
}
