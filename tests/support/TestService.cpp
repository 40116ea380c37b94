#include "tests/support/TestService.h"

#include <cstdio>
#include <cstdlib>
#include <future>
#include <utility>

namespace {

constexpr char kInterface[] = "com.vorn.linux.system";
constexpr char kObjectPath[] = "/com/vorn/linux/systemservice";

GLibPtr<GDBusConnection> Connect() {
  GError* failure = nullptr;
  const GLibPtr<gchar> address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, &failure));
  const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                       G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  GDBusConnection* connection =
      g_dbus_connection_new_for_address_sync(address.get(), flags, nullptr, nullptr, &failure);
  if (connection == nullptr) {
    std::fprintf(stderr, "test service: no session bus\n");
    std::abort();
  }
  return GLibPtr<GDBusConnection>(connection);
}

}  // namespace

TestService::TestService() : context_(g_main_context_new()), loop_(g_main_loop_new(context_.get(), FALSE)) {
  std::promise<void> ready;
  thread_ = std::thread([this, &ready] {
    g_main_context_push_thread_default(context_.get());
    connection_ = Connect();
    const GLibPtr<ComVornLinuxSystem> skeleton(com_vorn_linux_system_skeleton_new());
    guint count = 0;
    guint* const ids = g_signal_list_ids(TYPE_COM_VORN_LINUX_SYSTEM, &count);
    for (guint i = 0; i < count; ++i) {
      if (!g_str_has_prefix(g_signal_name(ids[i]), "handle-")) continue;
      GClosure* const closure = g_closure_new_simple(sizeof(GClosure), this);
      g_closure_set_meta_marshal(closure, this, OnCall);
      g_signal_connect_closure_by_id(skeleton.get(), ids[i], 0, closure, FALSE);
    }
    g_free(ids);
    g_dbus_interface_skeleton_export(G_DBUS_INTERFACE_SKELETON(skeleton.get()), connection_.get(), kObjectPath,
                                     nullptr);
    const GLibPtr<GVariant> owned(g_dbus_connection_call_sync(connection_.get(), "org.freedesktop.DBus", "/",
                                                              "org.freedesktop.DBus", "RequestName",
                                                              g_variant_new("(su)", "com.vorn.linux.systemservice", 4U),
                                                              nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    ready.set_value();
    g_main_loop_run(loop_.get());
    g_dbus_interface_skeleton_unexport(G_DBUS_INTERFACE_SKELETON(skeleton.get()));
    g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
    g_main_context_pop_thread_default(context_.get());
  });
  ready.get_future().wait();
}

TestService::~TestService() {
  AnswerAll();
  g_main_context_invoke(
      context_.get(),
      [](gpointer loop) -> gboolean {
        g_main_loop_quit(static_cast<GMainLoop*>(loop));
        return G_SOURCE_REMOVE;
      },
      loop_.get());
  thread_.join();
}

void TestService::OnCall(GClosure* /*closure*/, GValue* result, guint /*count*/, const GValue* values,
                         gpointer /*hint*/, gpointer self) {
  auto& service = *static_cast<TestService*>(self);
  auto* const call = static_cast<GDBusMethodInvocation*>(g_value_get_object(&values[1]));
  const GLibPtr<gchar> arguments(g_variant_print(g_dbus_method_invocation_get_parameters(call), TRUE));
  const Answer answer = service.answer_;
  {
    const std::lock_guard<std::mutex> lock(service.mutex_);
    service.calls_.push_back(std::string(g_dbus_method_invocation_get_method_name(call)) + " " + arguments.get());
    if (answer == Answer::kNone) service.unanswered_.push_back(call);
  }
  if (answer == Answer::kError) {
    g_dbus_method_invocation_return_dbus_error(call, "com.vorn.linux.Error.Refused", "not today");
  } else if (answer != Answer::kNone) {
    Return(call, answer == Answer::kOk);
  }
  g_value_set_boolean(result, TRUE);
}

void TestService::Return(GDBusMethodInvocation* call, bool result) {
  const bool has_result = g_dbus_method_invocation_get_method_info(call)->out_args != nullptr &&
                          *g_dbus_method_invocation_get_method_info(call)->out_args != nullptr;
  g_dbus_method_invocation_return_value(call, has_result ? g_variant_new("(b)", result) : nullptr);
}

void TestService::AnswerAll() {
  const std::lock_guard<std::mutex> lock(mutex_);
  for (GDBusMethodInvocation* const call : std::exchange(unanswered_, {})) Return(call, true);
}

std::vector<std::string> TestService::TakeCalls() {
  const std::lock_guard<std::mutex> lock(mutex_);
  return std::exchange(calls_, {});
}

void TestService::Emit(const std::string& signal, const std::string& arguments) {
  GVariant* const tuple = g_variant_new_parsed(arguments.c_str());
  g_dbus_connection_emit_signal(connection_.get(), nullptr, kObjectPath, kInterface, signal.c_str(), tuple, nullptr);
}
