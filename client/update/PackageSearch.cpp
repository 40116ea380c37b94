#include "client/update/PackageSearch.h"

#include <unistd.h>

#include <exception>
#include <new>
#include <thread>
#include <utility>

#include "IHLXSystemInfo.h"
#include "client/DispatchGate.h"
#include "client/update/PackageExamination.h"
#include "platform/HLXLog.h"

HLX_LOG_SOURCE("client/update/HLXUpdateClient");

using namespace HLXUpdate;

namespace {

constexpr int kLastSession = 1001;

}  // namespace

class PackageSearch::Search : public PackageExamination {
 public:
  Search(std::shared_ptr<PackageSearch> owner, int session) : PackageExamination(session), owner_(std::move(owner)) {}

  /// A stick must not end the application.
  void Run() {
    try {
      if (owner_->AwaitTurn(this)) AnalysisSoftwareFile();
    } catch (const std::bad_alloc&) {
      HLX_LOG_ERROR("no memory for the package search");
    }
    owner_->EndTurn(this);
  }

 private:
  bool UnitVersion(SystemInfo::VersionInfo* unit) override {
    const DispatchGate::Pass pass(owner_.get());
    return pass && owner_->info_->GetLocalVersionInfo(*unit) != 0;
  }

  void OnVersions(const SystemInfo::VersionInfo& /*unit*/, const SystemInfo::VersionInfo& package) override {
    const std::lock_guard<std::mutex> lock(owner_->mutex_);
    owner_->package_version_ = package;
  }

  bool Tell(UpdateNotifyResult result) override {
    const std::lock_guard<std::mutex> lock(owner_->telling_);
    if (result == UPDATE_NOTIFY_VALID && Overtaken()) return false;
    const DispatchGate::Pass pass(owner_.get());
    if (pass) owner_->listener_(result);
    return static_cast<bool>(pass);
  }

  void Settle() override {
    sync();
    sleep(1);
  }

  const std::shared_ptr<PackageSearch> owner_;
};

PackageSearch::PackageSearch(IHLXSystemInfo* info, Listener listener) : info_(info), listener_(std::move(listener)) {
  DispatchGate::Open(this);
}

/// With mutex_ held.
int PackageSearch::NewSession() {
  if (!searches_.empty()) searches_.back()->Overtake();
  package_version_ = {};
  session_ = session_ < kLastSession ? session_ + 1 : 0;
  return session_;
}

void PackageSearch::Report() {
  std::shared_ptr<Search> search;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    search = std::make_shared<Search>(shared_from_this(), NewSession());
    searches_.push_back(search.get());
  }
  try {
    std::thread([search] { search->Run(); }).detach();
  } catch (const std::exception& error) {
    HLX_LOG_ERROR("no thread for the package search: %s", error.what());
    EndTurn(search.get());
  }
}

void PackageSearch::Withdraw() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    NewSession();
  }
  const std::lock_guard<std::mutex> wait_for_what_is_being_told(telling_);
}

bool PackageSearch::Detach() {
  if (!DispatchGate::Close(this)) return false;
  const std::lock_guard<std::mutex> lock(mutex_);
  detached_ = true;
  if (!searches_.empty()) searches_.back()->Overtake();
  return true;
}

SystemInfo::VersionInfo PackageSearch::PackageVersion() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return package_version_;
}

/// False when the client went meanwhile: no long checksum for nobody.
bool PackageSearch::AwaitTurn(Search* search) {
  std::unique_lock<std::mutex> lock(mutex_);
  turn_.wait(lock, [&] { return searches_.front() == search; });
  return !detached_;
}

void PackageSearch::EndTurn(Search* search) {
  const std::lock_guard<std::mutex> lock(mutex_);
  searches_.remove(search);
  turn_.notify_all();
}
