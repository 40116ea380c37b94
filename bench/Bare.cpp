/// bench_bare: what one would write by hand: the generated proxy, with a handler on each of the interface's signals.
#include <dbus_system.h>

#include "bench/Subject.h"

namespace {

class Bare {
 public:
  static constexpr const char* kName = "bare";

  Bare(bench::Counter& counter, bool /*with_client*/) {
    GError* problem = nullptr;
    proxy_ = com_vorn_linux_system_proxy_new_for_bus_sync(G_BUS_TYPE_SESSION, G_DBUS_PROXY_FLAGS_NONE,
                                                          bench::kServiceName, bench::kServicePath, nullptr, &problem);
    if (proxy_ == nullptr) bench::Fail(problem->message);
    const GLibPtr<gchar> owner(g_dbus_proxy_get_name_owner(G_DBUS_PROXY(proxy_)));
    if (owner == nullptr) bench::Fail("the service is not there");
    Connect(counter);
  }

  void Call(unsigned char type, unsigned char level) {
    GError* problem = nullptr;
    if (com_vorn_linux_system_call_set_screen_light_level_sync(proxy_, type, level, nullptr, &problem) == FALSE) {
      bench::Fail(problem->message);
    }
  }

 private:
  static void OnLevel(ComVornLinuxSystem* /*proxy*/, guchar low, guchar high, gpointer counter) {
    bench::Hit(*static_cast<bench::Counter*>(counter), low, high);
  }
  static void OnOther(gpointer /*counter*/) {}

  void Connect(bench::Counter& counter) {
    guint count = 0;
    const std::unique_ptr<guint, decltype(&g_free)> ids(g_signal_list_ids(com_vorn_linux_system_get_type(), &count),
                                                        g_free);
    for (guint i = 0; i < count; ++i) {
      const char* const name = g_signal_name(ids.get()[i]);
      if (g_str_has_prefix(name, "handle-") != FALSE) continue;  // the skeleton's
      if (std::strcmp(name, "screen-light-level-changed-signal") == 0) {
        g_signal_connect(proxy_, name, G_CALLBACK(OnLevel), &counter);
      } else {
        g_signal_connect_swapped(proxy_, name, G_CALLBACK(OnOther), &counter);
      }
    }
  }

  ComVornLinuxSystem* proxy_ = nullptr;
};

}  // namespace

int main(int argc, char** argv) { return bench::Run<Bare>(argc, argv); }
