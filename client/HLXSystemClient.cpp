#include "client/HLXSystemClient.h"

#include <type_traits>

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

/// Two threads that ask first at once get one client. Events are delivered to it from now on, if it has any.
template <class Client, class... Args>
Client* HLXSystemClient::Lazy(std::atomic<Client*>& slot, const Args&... args) {
  if (Client* const made = slot.load()) return made;
  const DispatchGate::Turn one_at_a_time(this);  // making one may end the process
  if (slot.load() == nullptr) {
    slot.store(new Client(args...));
    if constexpr (!std::is_same_v<Client, HLXInfoClient>) adapter_->SetClient(slot.load());
  }
  return slot.load();
}

HLXInfoClient* HLXSystemClient::GetInfoClient() { return Lazy(info_client_); }
HLXPowerClient* HLXSystemClient::GetPowerClient() { return Lazy(power_client_, adapter_); }
HLXMiscClient* HLXSystemClient::GetMiscClient() { return Lazy(misc_client_, adapter_); }
HLXTimeClient* HLXSystemClient::GetTimeClient() { return Lazy(time_client_, adapter_); }
HLXUpdateClient* HLXSystemClient::GetUpdateClient() { return Lazy(update_client_, adapter_, GetInfoClient()); }
