#include "client/HLXSystemClient.h"

#include "client/DispatchGate.h"
#include "client/dispatch/SignalDispatch.h"
#include "client/info/HLXInfoClient.h"
#include "client/misc/HLXMiscClient.h"
#include "client/power/HLXPowerClient.h"
#include "client/time/HLXTimeClient.h"
#include "client/update/HLXUpdateClient.h"
#include "platform/HLXLog.h"

HLX_LOG_SOURCE("client/HLXSystemClient");

namespace {

template <class Client>
void Delete(std::atomic<Client*>& slot) {
  delete slot.exchange(nullptr);
}

}  // namespace

HLXSystemClient::HLXSystemClient() : adapter_(std::make_shared<SignalDispatch>()) { HLX_LOG_INFO("%s()", __func__); }

HLXSystemClient::~HLXSystemClient() {
  HLX_LOG_INFO("%s()", __func__);
  Delete(update_client_);
  Delete(power_client_);
  Delete(misc_client_);
  Delete(info_client_);
  Delete(time_client_);
}

bool HLXSystemClient::StartService() {
  HLX_LOG_INFO("%s()", __func__);
  return adapter_->Init();
}

/// The events first, since one of them starts the searches.
bool HLXSystemClient::StopCallbacks() {
  if (!adapter_->StopDispatch()) return false;
  HLXUpdateClient* const update = update_client_.load();
  return update == nullptr || update->StopSearch();
}

/// Two threads that ask first at once get one client.
template <class Client, class Make>
Client* HLXSystemClient::Lazy(std::atomic<Client*>& slot, const Make& make) {
  if (Client* const made = slot.load()) return made;
  const DispatchGate::Turn one_at_a_time(this);  // making one may end the process
  Client* client = slot.load();
  if (client == nullptr) {
    client = make();
    slot.store(client);
  }
  return client;
}

/// A client with events: it shares the adapter, which delivers to it from now on.
template <class Client>
Client* HLXSystemClient::GetEventClient(std::atomic<Client*>& slot) {
  return Lazy(slot, [this] {
    auto client = std::make_unique<Client>(adapter_);
    adapter_->SetClient(client.get());
    return client.release();
  });
}

HLXPowerClient* HLXSystemClient::GetPowerClient() { return GetEventClient(power_client_); }
HLXMiscClient* HLXSystemClient::GetMiscClient() { return GetEventClient(misc_client_); }
HLXTimeClient* HLXSystemClient::GetTimeClient() { return GetEventClient(time_client_); }

HLXInfoClient* HLXSystemClient::GetInfoClient() {
  return Lazy(info_client_, [] { return new HLXInfoClient; });
}

HLXUpdateClient* HLXSystemClient::GetUpdateClient() {
  HLXInfoClient* const info = GetInfoClient();
  return Lazy(update_client_, [this, info] {
    auto client = std::make_unique<HLXUpdateClient>(adapter_, info);
    adapter_->SetClient(client.get());
    return client.release();
  });
}
