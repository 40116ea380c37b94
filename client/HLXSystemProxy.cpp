/// The exported functions and the one HLXSystemClient behind them.
#include "HLXSystemProxy.h"

#include <atomic>
#include <memory>
#include <mutex>

#include "HLXVersion.h"
#include "client/DispatchGate.h"
#include "client/HLXSystemClient.h"
#include "client/info/HLXInfoClient.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/ipc/LastCallError.h"
#include "client/ipc/ServiceConnection.h"
#include "client/misc/HLXMiscClient.h"
#include "client/power/HLXPowerClient.h"
#include "client/time/HLXTimeClient.h"
#include "client/update/HLXUpdateClient.h"

namespace {

/// The platform's mutex as something that std::lock_guard takes.
class HLXCriticalSection {
 public:
  void lock() { mutex_.Lock(); }
  void unlock() { mutex_.Unlock(); }

 private:
  HLXMutex mutex_;
};

class HLXSingleton {
 public:
  static HLXSystemClient& Get() {
    if (HLXSystemClient* const client = ms_pSingleton.load()) return *client;
    const std::lock_guard<HLXCriticalSection> lock(ms_cs);
    if (ms_pSingleton.load() == nullptr) ms_pSingleton.store(std::make_unique<HLXSystemClient>().release());
    return *ms_pSingleton.load();
  }

  /// Whatever calls back is stopped first, outside the lock that a callback takes when it asks for a client.
  static void Release() {
    if (DispatchGate::Refused()) return;
    const DispatchGate::Turn one_release_at_a_time(&ms_pSingleton);
    HLXSystemClient* const client = ms_pSingleton.load();
    if (client == nullptr || !client->StopCallbacks()) return;
    const std::lock_guard<HLXCriticalSection> lock(ms_cs);
    delete ms_pSingleton.exchange(nullptr);
  }

 private:
  static std::atomic<HLXSystemClient*> ms_pSingleton;
  static HLXCriticalSection ms_cs;
};

std::atomic<HLXSystemClient*> HLXSingleton::ms_pSingleton{nullptr};
HLXCriticalSection HLXSingleton::ms_cs;

}  // namespace

bool HLX_StartSystemProxy() { return HLXSingleton::Get().StartService(); }
IHLXSystemInfo* HLX_GetSystemInfoProxy() { return HLXSingleton::Get().GetInfoClient(); }
IHLXSystemPower* HLX_GetSystemPowerProxy() { return HLXSingleton::Get().GetPowerClient(); }
IHLXSystemMisc* HLX_GetSystemMiscProxy() { return HLXSingleton::Get().GetMiscClient(); }
IHLXSystemTime* HLX_GetSystemTimeProxy() { return HLXSingleton::Get().GetTimeClient(); }
IHLXSystemUpdate* HLX_GetSystemUpdateProxy() { return HLXSingleton::Get().GetUpdateClient(); }
void HLX_ReleaseSystemProxy() { HLXSingleton::Release(); }
const char* HLX_GetLastCallError() { return LastCallError::Text(); }
bool HLX_SetCallTimeout(int milliseconds) { return ClientIpcAdapter::SetCallTimeout(milliseconds); }
bool HLX_IsServiceConnected() { return ServiceConnection::IsConnected(); }
void HLX_AddConnectionListener(IHLXConnectionListener* listener) { ServiceConnection::AddListener(listener); }
void HLX_RemoveConnectionListener(IHLXConnectionListener* listener) { ServiceConnection::RemoveListener(listener); }
const char* HLX_GetVersion() { return HLX_VERSION_STRING; }
