#include "client/ipc/ServiceConnection.h"

#include <mutex>
#include <set>
#include <string>

#include "IHLXConnectionListener.h"
#include "client/DispatchGate.h"

namespace {

struct State {
  std::mutex mutex;  ///< not held while a listener is told: that is somebody's turn
  std::set<IHLXConnectionListener*> listeners;
  ComVornLinuxSystem* watched = nullptr;  ///< not owned, only compared
  std::string owner;                      ///< of the service's name; empty: nobody
};

/// Never destroyed, like the listeners' registrations.
State& TheState() {
  static State& state = *new State;
  return state;
}

std::string OwnerOf(ComVornLinuxSystem* proxy) {
  if (proxy == nullptr) return {};
  const GLibPtr<gchar> owner(g_dbus_proxy_get_name_owner(reinterpret_cast<GDBusProxy*>(proxy)));
  return owner == nullptr ? std::string() : owner.get();
}

/// A callback may add and remove listeners, itself too.
void Tell(void (IHLXConnectionListener::*news)()) {
  State& state = TheState();
  std::unique_lock<std::mutex> lock(state.mutex);
  const std::set<IHLXConnectionListener*> listeners = state.listeners;
  for (IHLXConnectionListener* const listener : listeners) {
    if (state.listeners.count(listener) == 0) continue;
    lock.unlock();
    (listener->*news)();
    lock.lock();
  }
}

}  // namespace

void ServiceConnection::AddListener(IHLXConnectionListener* listener) {
  if (listener == nullptr) return;
  State& state = TheState();
  const std::lock_guard<std::mutex> lock(state.mutex);
  state.listeners.insert(listener);
}

void ServiceConnection::RemoveListener(IHLXConnectionListener* listener) {
  State& state = TheState();
  const DispatchGate::Turn no_callback_elsewhere(&state);
  const std::lock_guard<std::mutex> lock(state.mutex);
  state.listeners.erase(listener);
}

bool ServiceConnection::IsConnected() {
  State& state = TheState();
  const std::lock_guard<std::mutex> lock(state.mutex);
  return !state.owner.empty();
}

void ServiceConnection::Watch(ComVornLinuxSystem* proxy) {
  State& state = TheState();
  const std::lock_guard<std::mutex> lock(state.mutex);
  state.watched = proxy;
  state.owner = OwnerOf(proxy);
}

void ServiceConnection::OwnerChanged(ComVornLinuxSystem* proxy) {
  State& state = TheState();
  const DispatchGate::Turn turn(&state);
  std::string before;
  std::string now;
  {
    const std::lock_guard<std::mutex> lock(state.mutex);
    if (proxy != state.watched) return;
    before = state.owner;
    now = state.owner = OwnerOf(proxy);
  }
  if (now == before) return;
  if (!before.empty()) Tell(&IHLXConnectionListener::OnServiceLost);
  if (!now.empty()) Tell(&IHLXConnectionListener::OnServiceBack);
}

void ServiceConnection::BusLost() {
  State& state = TheState();
  const DispatchGate::Turn turn(&state);
  {
    const std::lock_guard<std::mutex> lock(state.mutex);
    state.watched = nullptr;
    state.owner.clear();
  }
  Tell(&IHLXConnectionListener::OnBusLost);
}
