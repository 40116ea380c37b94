#include "client/update/HLXUpdateClient.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <utility>

#include "client/ChildProcess.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/update/PackageSearch.h"
#include "platform/HLXLog.h"
#include "platform/Shell.h"

HLX_LOG_SOURCE("client/update/HLXUpdateClient");

using namespace HLXUpdate;

namespace {

constexpr int kPidofLimit = 254;

}  // namespace

HLXUpdateClient::HLXUpdateClient(std::shared_ptr<ClientIpcAdapter> adapter, IHLXSystemInfo* info)
    : adapter_(std::move(adapter)), search_(std::make_shared<PackageSearch>(info, [this](UpdateNotifyResult result) {
        OnDetectValidUpdateFileNotify(result);
      })) {}

HLXUpdateClient::~HLXUpdateClient() { (void)StopSearch(); }

bool HLXUpdateClient::StopSearch() { return search_->Detach(); }

void HLXUpdateClient::ApplyUpdate(UpdateType type) { adapter_->ApplyUpdate(type); }

void HLXUpdateClient::SetCanUpdata(int canUpdate) { adapter_->SetCanUpdata(canUpdate); }

int HLXUpdateClient::GetUpdateVersionInfo(SystemInfo::VersionInfo& info) {
  info = search_->PackageVersion();
  return 1;
}

int HLXUpdateClient::ApplyExternalMcuUpdate() {
  if (adapter_ == nullptr) return 0;
  adapter_->ApplyExternalMcuUpdate();
  return 1;
}

int HLXUpdateClient::ApplyMpuUpdate() {
  if (adapter_ == nullptr) return 0;
  adapter_->ApplyMpuUpdate();
  return 1;
}

int HLXUpdateClient::ApplyUpdateAll() {
  if (adapter_ == nullptr) return 0;
  adapter_->ApplyUpdateAll();
  return 1;
}

void HLXUpdateClient::OnAsyncDetectValidUpdateFileNotify(UpdateNotifyResult result) {
  if (!IsHmiProcess()) return;
  HLX_LOG_DEBUG("OnAsyncDetectValidUpdateFileNotify:result(%d).", result);
  if (result == UPDATE_NOTIFY_VALID) {
    search_->Report();
  } else if (result == UPDATE_NOTIFY_REMOVED) {
    search_->Withdraw();
    Notify(&IHLXUpdateListener::OnDetectValidUpdateFileNotify, result);
  }
}

void HLXUpdateClient::OnPackageStateChangeNotify(UpdatePackageState state) {
  if (state == UPDATE_PACKAGE_INSERTED || state == UPDATE_PACKAGE_CHANGED) {
    OnAsyncDetectValidUpdateFileNotify(UPDATE_NOTIFY_VALID);
  }
  Notify(&IHLXUpdateListener::OnPackageStateChangeNotify, state);
}

void HLXUpdateClient::OnDetectValidUpdateFileNotify(UpdateNotifyResult result) {
  HLX_LOG_DEBUG("OnDetectValidUpdateFileNotify:result(%d)", result);
  Notify(&IHLXUpdateListener::OnDetectValidUpdateFileNotify, result);
}

void HLXUpdateClient::OnUpdateRequestResultInform(OpResult result) {
  Notify(&IHLXUpdateListener::OnUpdateRequestResultInform, result);
}

void HLXUpdateClient::OnUpdateCanProcess(int value) { Notify(&IHLXUpdateListener::OnUpdateCanProcess, value); }

void HLXUpdateClient::OnMcuUpdateStateNotify(UpdateState state) {
  Notify(&IHLXUpdateListener::OnMcuUpdateStateNotify, state);
}

void HLXUpdateClient::OnMpuUpdateStateNotify(UpdateState state) {
  Notify(&IHLXUpdateListener::OnMpuUpdateStateNotify, state);
}

void HLXUpdateClient::OnMcuUpdateProgressNotify(unsigned int progress) {
  Notify(&IHLXUpdateListener::OnMcuUpdateProgressNotify, progress);
}

int HLXUpdateClient::GetProcessPidByName(const char* name) {
  char command[kPidofLimit + 1] = {};
  std::snprintf(command, sizeof command, "pidof %s", name);
  const std::lock_guard<std::recursive_mutex> no_other_of_this_name(Shell::starting);
  const auto line = FirstLineOf(command, kPidofLimit);
  return !line || line->empty() ? -1 : std::atoi(line->c_str());
}

bool HLXUpdateClient::IsHmiProcess() {
  const int pid = GetProcessPidByName("hmi");
  return pid != -1 && pid == static_cast<int>(getpid());
}
