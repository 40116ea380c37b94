#pragma once

#include <memory>

#include "IHLXSystemUpdate.h"

class ClientIpcAdapter;
class IHLXSystemInfo;
class PackageSearch;

/// Update commands through the adapter, events to the listeners; and, in the process named "hmi", the search of a stick
/// that the service reports.
class HLXUpdateClient : public IHLXSystemUpdate {
 public:
  /// @param info asked for the unit's versions; must outlive this client
  HLXUpdateClient(std::shared_ptr<ClientIpcAdapter> adapter, IHLXSystemInfo* info);
  ~HLXUpdateClient() override;

  /// A search that is under way ends silently; only a result that is being told is waited for. Safe to repeat.
  /// @return false when it must not wait, see DispatchGate::Refused(); nothing has changed then
  [[nodiscard]] bool StopSearch();

  void ApplyUpdate(HLXUpdate::UpdateType type) override;
  void SetCanUpdata(int canUpdate) override;
  int GetUpdateVersionInfo(SystemInfo::VersionInfo& info) override;
  int ApplyExternalMcuUpdate() override;
  int ApplyMpuUpdate() override;
  int ApplyUpdateAll() override;

  // Events, called by the adapter. The first starts a search.
  void OnAsyncDetectValidUpdateFileNotify(HLXUpdate::UpdateNotifyResult result);
  void OnUpdateRequestResultInform(HLXUpdate::OpResult result);
  void OnUpdateCanProcess(int value);
  void OnMcuUpdateStateNotify(HLXUpdate::UpdateState state);
  void OnMpuUpdateStateNotify(HLXUpdate::UpdateState state);
  void OnMcuUpdateProgressNotify(unsigned int progress);
  void OnPackageStateChangeNotify(HLXUpdate::UpdatePackageState state);

  /// Tells the listeners the outcome of a search.
  void OnDetectValidUpdateFileNotify(HLXUpdate::UpdateNotifyResult result);

  /// The first process that `pidof` prints; -1 when there is none.
  static int GetProcessPidByName(const char* name);
  static bool IsHmiProcess();

 private:
  std::shared_ptr<ClientIpcAdapter> adapter_;
  std::shared_ptr<PackageSearch> search_;
};
