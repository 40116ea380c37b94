// Fuzz target over what comes as a signal: any of them, with arguments of any types, as GIO reads them from a
// connection. Of other types than the interface says nothing is told; of the right ones only what the catalogue says
// follows.
#include <gio/gio.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <algorithm>
#include <memory>
#include <thread>

#include "catalog/Catalog.h"
#include "catalog/EveryEvent.h"
#include "client/dispatch/SignalDispatch.h"
#include "client/dispatch/SignalTable.h"
#include "client/misc/HLXMiscClient.h"
#include "client/power/HLXPowerClient.h"
#include "client/time/HLXTimeClient.h"
#include "dbus/GLibPtr.h"
#include "tests/fuzz/Input.h"
#include "tests/fuzz/StreamPair.h"

namespace {

constexpr char kPath[] = "/com/vorn/linux/systemservice";
constexpr char kInterface[] = "com.vorn.linux.system";
constexpr char kBehind[] = "fuzz.Behind";  ///< comes when all that was sent before it has been told

/// Whether there is a message that carries this, and a bus would let it through.
bool IsCarried(const char* signal, GVariant* arguments) {
  GDBusMessage* const message = g_dbus_message_new_signal(kPath, kInterface, signal);
  g_dbus_message_set_serial(message, 1);
  g_dbus_message_set_body(message, arguments);
  gsize size = 0;
  guchar* const blob = g_dbus_message_to_blob(message, &size, G_DBUS_CAPABILITY_FLAGS_NONE, nullptr);
  g_object_unref(message);
  if (blob == nullptr) return false;
  const GLibPtr<GDBusMessage> read(g_dbus_message_new_from_blob(blob, size, G_DBUS_CAPABILITY_FLAGS_NONE, nullptr));
  g_free(blob);
  return read != nullptr;
}

struct Application {
  Application() {
    g_log_set_writer_func([](GLogLevelFlags, const GLogField*, gsize, gpointer) { return G_LOG_WRITER_HANDLED; },
                          nullptr, nullptr);
    for (const catalog::RecordInfo& info : catalog::Records()) {
      shmat(shmget(static_cast<key_t>(info.key), info.size, IPC_CREAT | 0666), nullptr, 0);
    }
    const StreamPair ends;  // of a connection without a bus; both must be made at once
    std::thread other_end([&] {
      const GLibPtr<gchar> guid(g_dbus_generate_guid());
      service = g_dbus_connection_new_sync(ends[0], guid.get(), G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_SERVER, nullptr,
                                           nullptr, nullptr);
    });
    connection = g_dbus_connection_new_sync(ends[1], nullptr, G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT, nullptr,
                                            nullptr, nullptr);
    other_end.join();
    proxy = com_vorn_linux_system_proxy_new_sync(connection, G_DBUS_PROXY_FLAGS_DO_NOT_LOAD_PROPERTIES, nullptr, kPath,
                                                 nullptr, nullptr);
    Require(proxy != nullptr);
    for (const SignalRow& row : SignalTable()) {
      g_signal_connect(proxy, row.name, row.handler, static_cast<ClientIpcAdapter*>(dispatch.get()));
    }
    g_dbus_connection_signal_subscribe(
        connection, nullptr, kBehind, nullptr, nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant*, gpointer came) {
          *static_cast<bool*>(came) = true;
        },
        &all_told, nullptr);
    dispatch->SetClient(&power);
    dispatch->SetClient(&misc);
    dispatch->SetClient(&time);
    power.AddListener(&listener);
    misc.AddListener(&listener);
    time.AddListener(&listener);
  }

  /// What is told of a signal with these arguments, a tuple.
  std::vector<std::string> Told(const char* signal, GVariant* arguments) {
    told.clear();
    all_told = false;
    if (!IsCarried(signal, arguments)) return {};
    g_dbus_connection_emit_signal(service, nullptr, kPath, kInterface, signal, arguments, nullptr);
    g_dbus_connection_emit_signal(service, nullptr, kPath, kBehind, "Behind", nullptr, nullptr);
    while (!all_told) g_main_context_iteration(nullptr, TRUE);
    return told;
  }

  GDBusConnection* service = nullptr;
  GDBusConnection* connection = nullptr;
  ComVornLinuxSystem* proxy = nullptr;
  const std::shared_ptr<SignalDispatch> dispatch = std::make_shared<SignalDispatch>();
  HLXPowerClient power{dispatch};
  HLXMiscClient misc{dispatch};
  HLXTimeClient time{dispatch};
  std::vector<std::string> told;
  bool all_told = false;
  catalog::EveryEvent listener{[this](const catalog::Event& event) { told.emplace_back(event.callback); }};
};

/// A value of this type made of any bytes, floating; null for what is no type.
GVariant* ValueOf(const std::string& type, const std::string& bytes) {
  if (g_variant_type_string_is_valid(type.c_str()) == FALSE) return nullptr;
  if (g_variant_type_is_definite(G_VARIANT_TYPE(type.c_str())) == FALSE) return nullptr;
  GBytes* const copy = g_bytes_new(bytes.data(), bytes.size());
  GVariant* const raw = g_variant_ref_sink(g_variant_new_from_bytes(G_VARIANT_TYPE(type.c_str()), copy, FALSE));
  g_bytes_unref(copy);
  GVariant* const value = g_variant_get_normal_form(raw);
  g_variant_unref(raw);
  return value;
}

}  // namespace

/// The number of a signal; how many bytes of types follow, 0 for the right ones; the types; the arguments.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  static Application* const application = new Application;  // its connections end with the process
  Input input(data, size);
  const auto signals = catalog::Signals();
  const catalog::Signal& signal = *(signals.begin() + input.Byte() % signals.size());
  const std::string right = std::string("(") + signal.arguments + ")";
  const std::string given = input.Take(input.Byte() % 16);
  const std::string type = given.empty() ? right : "(" + given + ")";
  const GLibPtr<GVariant> arguments(ValueOf(type, input.Rest()));
  if (arguments == nullptr) return 0;
  for (const std::string& callback : application->Told(signal.name, arguments.get())) {
    Require(g_variant_get_type_string(arguments.get()) == right);
    Require(std::any_of(std::begin(signal.callbacks), std::end(signal.callbacks),
                        [&](const char* follows) { return follows != nullptr && callback == follows; }));
  }
  return 0;
}
