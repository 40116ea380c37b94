#pragma once

#include <atomic>
#include <tuple>

#include "client/ipc/ClientIpcAdapter.h"

class HLXMiscClient;
class HLXPowerClient;
class HLXTimeClient;
class HLXUpdateClient;

/// The adapter with its signals: each goes to the one client that owns the state, once that client exists. They arrive
/// in the main context that was the thread-default one where Init() ran.
class SignalDispatch final : public ClientIpcAdapter {
 public:
  ~SignalDispatch() override;

  /// From a handler's user data.
  static SignalDispatch* From(gpointer adapter) {
    return static_cast<SignalDispatch*>(static_cast<ClientIpcAdapter*>(adapter));
  }

  /// `client` gets its signals from now on. Not owned.
  template <class Client>
  void SetClient(Client* client) {
    std::get<std::atomic<Client*>>(clients_).store(client);
  }

  /// Null until the client exists.
  template <class Client>
  Client* Get() const {
    return std::get<std::atomic<Client*>>(clients_).load();
  }

 private:
  void ConnectDBusSignal(ComVornLinuxSystem* proxy) override;

  std::tuple<std::atomic<HLXUpdateClient*>, std::atomic<HLXPowerClient*>, std::atomic<HLXMiscClient*>,
             std::atomic<HLXTimeClient*>>
      clients_{nullptr, nullptr, nullptr, nullptr};
};
