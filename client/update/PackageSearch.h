#pragma once

#include <condition_variable>
#include <functional>
#include <list>
#include <memory>
#include <mutex>

#include "HLXInfoTypes.h"
#include "HLXUpdateTypes.h"

class IHLXSystemInfo;

/// The searches of one update client, each on a thread of its own, one at a time, in the order in which they were
/// reported. Client and worker threads own it jointly, so that a search may outlive the client: it then ends as one
/// that was overtaken does, and says nothing.
class PackageSearch : public std::enable_shared_from_this<PackageSearch> {
 public:
  using Listener = std::function<void(HLXUpdate::UpdateNotifyResult)>;

  /// @param info asked for the unit's versions; @param listener told the results, on the searches' threads. Neither is
  ///   used after Detach().
  PackageSearch(IHLXSystemInfo* info, Listener listener);

  /// A stick was reported: overtakes the searches that are under way, empties the package's versions, and begins one.
  void Report();

  /// The stick is gone: as Report(), without a new search. None of those under way will say "valid" any more.
  void Withdraw();

  /// The client goes. Returns once no result is being told; none follows.
  /// @return false when the calling thread must not wait for that, see DispatchGate; nothing has changed then
  [[nodiscard]] bool Detach();

  /// Of the package examined last, also by a search that was overtaken meanwhile.
  SystemInfo::VersionInfo PackageVersion() const;

 private:
  class Search;

  int NewSession();
  bool AwaitTurn(Search* search);
  void EndTurn(Search* search);

  IHLXSystemInfo* const info_;
  const Listener listener_;

  mutable std::mutex mutex_;  ///< guards what follows
  std::condition_variable turn_;
  std::list<Search*> searches_;  ///< not yet ended; it is the first one's turn, and only the last is not overtaken
  int session_ = 0;
  bool detached_ = false;
  SystemInfo::VersionInfo package_version_;

  std::mutex telling_;  ///< held while a result is told
};
