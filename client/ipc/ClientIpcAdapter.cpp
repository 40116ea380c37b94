#include "client/ipc/ClientIpcAdapter.h"

#include "client/DispatchGate.h"
#include "platform/HLXLog.h"

HLX_LOG_SOURCE("client/ipc/ClientIpcAdapter");

namespace {

constexpr char kServiceName[] = "com.vorn.linux.systemservice";
constexpr char kObjectPath[] = "/com/vorn/linux/systemservice";

}  // namespace

ClientIpcAdapter::ClientIpcAdapter() { DispatchGate::Open(this); }

ClientIpcAdapter::~ClientIpcAdapter() { StopDispatch(); }

void ClientIpcAdapter::StopDispatch() {
  (void)DispatchGate::Close(this);
  const std::lock_guard<std::mutex> lock(proxies_mutex_);
  for (const auto& proxy : proxies_) g_signal_handlers_disconnect_by_data(proxy.get(), this);
  proxy_.store(nullptr);
  proxies_.clear();
}

/// Only a success at the first attempt ends the loop well: after a failure it goes on, making further proxies, until
/// the bus has refused seven times.
bool ClientIpcAdapter::InitDBusConnect() {
  const std::lock_guard<std::mutex> one_at_a_time(starting_);
  int retry = 0;
  bool first_attempt = true;
  for (;;) {
    GError* failure = nullptr;
    ComVornLinuxSystem* const proxy = com_vorn_linux_system_proxy_new_for_bus_sync(
        G_BUS_TYPE_SESSION, G_DBUS_PROXY_FLAGS_NONE, kServiceName, kObjectPath, nullptr, &failure);
    const GLibPtr<GError> error(failure);
    proxy_.store(proxy);
    if (error == nullptr) {
      const std::lock_guard<std::mutex> lock(proxies_mutex_);
      proxies_.emplace_back(proxy);
      if (first_attempt) break;
      continue;
    }
    HLX_LOG_ERROR("InitDBusConnect: Failed to create proxy. Reason: %s.retry->%d", error->message, retry);
    if (retry > 5) return false;
    ++retry;
    first_attempt = false;
  }

  const GLibPtr<gchar> owner(g_dbus_proxy_get_name_owner(G_DBUS_PROXY(proxy_.load())));
  if (owner == nullptr) {
    HLX_LOG_INFO("system_proxy_get_name_owner Owner Name is nullptr");
    return false;
  }
  HLX_LOG_INFO("system_proxy_get_name_owner Owner Name: %s", owner.get());
  ConnectDBusSignal();
  return true;
}
