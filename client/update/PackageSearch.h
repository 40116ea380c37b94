#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>

#include "HLXInfoTypes.h"
#include "HLXUpdateTypes.h"
#include "client/update/PackageVerifier.h"

class HLXUpdateClient;
class IHLXSystemInfo;

/// The searches of one update client. Client and worker threads own it jointly, so that a search may outlive the
/// client: it then ends as one that was overtaken does, and says nothing.
class PackageSearch : public std::enable_shared_from_this<PackageSearch> {
 public:
  PackageSearch(HLXUpdateClient* client, IHLXSystemInfo* info) : client_(client), info_(info) {}

  /// Makes every search that is under way stale and empties the package's versions. @return the new session
  int NewSession();

  /// Searches on a thread of its own.
  void Start(int session);

  /// The client goes. Returns once no notification is running; none follows.
  void Detach();

  SystemInfo::VersionInfo PackageVersion() const;

 private:
  void Run(int session);
  void AnalysisSoftwareFile(int session);
  bool VerifyPackage(int session);
  bool Extract(int session);
  bool GoesOn(int session, bool succeeded, const std::string& command);
  bool VerifyUpdateVersion(int session);
  bool Overtaken(int session) const { return detached_ || session != session_counter_; }
  void Relay(HLXUpdate::UpdateNotifyResult result);
  bool UnitVersion(SystemInfo::VersionInfo* unit);

  const PackageVerifier verifier_;
  std::mutex analysis_;  ///< one search at a time
  std::atomic<int> session_counter_{0};

  std::mutex owner_;  ///< held while the client or the info client is used
  std::atomic<bool> detached_{false};
  HLXUpdateClient* const client_;  ///< as the next one, not to be used when detached
  IHLXSystemInfo* const info_;

  mutable std::mutex version_mutex_;  ///< also held while a session begins
  SystemInfo::VersionInfo package_version_;
};
