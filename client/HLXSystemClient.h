#pragma once

#include <atomic>
#include <memory>

class HLXInfoClient;
class HLXMiscClient;
class HLXPowerClient;
class HLXTimeClient;
class HLXUpdateClient;
class SignalDispatch;

/// The process-wide facade: owns the connection and the clients, each made when it is first asked for.
class HLXSystemClient {
 public:
  HLXSystemClient();
  HLXSystemClient(const HLXSystemClient&) = delete;
  HLXSystemClient& operator=(const HLXSystemClient&) = delete;
  ~HLXSystemClient();

  bool StartService();

  /// Ends all callbacks, and waits for those that run on other threads. @return false when it must not wait
  bool StopCallbacks();

  HLXInfoClient* GetInfoClient();
  HLXUpdateClient* GetUpdateClient();
  HLXPowerClient* GetPowerClient();
  HLXMiscClient* GetMiscClient();
  HLXTimeClient* GetTimeClient();

 private:
  template <class Client, class... Args>
  Client* Lazy(std::atomic<Client*>& slot, const Args&... args);

  std::shared_ptr<SignalDispatch> adapter_;
  std::atomic<HLXPowerClient*> power_client_{nullptr};
  std::atomic<HLXMiscClient*> misc_client_{nullptr};
  std::atomic<HLXInfoClient*> info_client_{nullptr};
  std::atomic<HLXTimeClient*> time_client_{nullptr};
  std::atomic<HLXUpdateClient*> update_client_{nullptr};
};
