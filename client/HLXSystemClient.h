#pragma once

#include <atomic>
#include <memory>
#include <mutex>

class ClientIpcAdapter;
class HLXInfoClient;
class HLXMiscClient;
class HLXPowerClient;
class HLXTimeClient;
class HLXUpdateClient;

/// The process-wide facade: owns the connection and the clients, each made when it is first asked for.
class HLXSystemClient {
 public:
  HLXSystemClient();
  HLXSystemClient(const HLXSystemClient&) = delete;
  HLXSystemClient& operator=(const HLXSystemClient&) = delete;
  ~HLXSystemClient();

  bool StartService();

  /// Ends the delivery of events; see ClientIpcAdapter::StopDispatch().
  void StopDispatch();

  HLXInfoClient* GetInfoClient();
  HLXUpdateClient* GetUpdateClient();
  HLXPowerClient* GetPowerClient();
  HLXMiscClient* GetMiscClient();
  HLXTimeClient* GetTimeClient();

 private:
  template <class Client>
  Client* GetEventClient(std::atomic<Client*>& slot);
  template <class Client, class Make>
  Client* Lazy(std::atomic<Client*>& slot, const Make& make);

  std::shared_ptr<ClientIpcAdapter> adapter_;
  std::atomic<HLXPowerClient*> power_client_{nullptr};
  std::atomic<HLXMiscClient*> misc_client_{nullptr};
  std::atomic<HLXInfoClient*> info_client_{nullptr};
  std::atomic<HLXTimeClient*> time_client_{nullptr};
  std::atomic<HLXUpdateClient*> update_client_{nullptr};
  std::mutex making_;  ///< two threads that ask first at once get one client
};
