#include "client/update/PackageSearch.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <new>
#include <system_error>
#include <thread>

#include "IHLXSystemInfo.h"
#include "client/update/HLXUpdateClient.h"
#include "platform/HLXLog.h"
#include "platform/HLXPlatform.h"

HLX_LOG_SOURCE("client/update/HLXUpdateClient");

using namespace HLXUpdate;

namespace {

constexpr int kLastSession = 1001;

}  // namespace

int PackageSearch::NewSession() {
  const std::lock_guard<std::mutex> lock(version_mutex_);
  package_version_ = {};
  const int session = session_counter_ < kLastSession ? session_counter_ + 1 : 0;
  session_counter_ = session;
  return session;
}

void PackageSearch::Start(int session) {
  try {
    std::thread([self = shared_from_this(), session] { self->Run(session); }).detach();
  } catch (const std::system_error& error) {
    HLX_LOG_ERROR("no thread for the package search: %s", error.what());
  }
}

/// A stick must not end the application.
void PackageSearch::Run(int session) {
  try {
    AnalysisSoftwareFile(session);
  } catch (const std::bad_alloc&) {
    HLX_LOG_ERROR("no memory for the package search");
  }
}

void PackageSearch::Detach() {
  detached_ = true;
  const std::lock_guard<std::mutex> wait_for_notification(owner_);
}

SystemInfo::VersionInfo PackageSearch::PackageVersion() const {
  const std::lock_guard<std::mutex> lock(version_mutex_);
  return package_version_;
}

void PackageSearch::Relay(UpdateNotifyResult result) {
  const std::lock_guard<std::mutex> lock(owner_);
  if (!detached_) client_->OnDetectValidUpdateFileNotify(result);
}

bool PackageSearch::UnitVersion(SystemInfo::VersionInfo* unit) {
  const std::lock_guard<std::mutex> lock(owner_);
  if (detached_) return false;
  if (info_->GetLocalVersionInfo(*unit) != 0) return true;
  HLX_LOG_ERROR("Get local version info fail.");
  return false;
}

void PackageSearch::AnalysisSoftwareFile(int session) {
  const std::lock_guard<std::mutex> lock(analysis_);
  if (detached_) return;  // its client is gone: no long checksum for nobody
  HLX_LOG_INFO("AnalysisSoftwareFile,session:%d", session);
  if (!VerifyPackage(session) || !Extract(session)) return;

  const std::string version_file = verifier_.Paths().VersionFile();
  if (!FileExists(version_file)) {
    HLX_LOG_ERROR("Can not find version file in path:%s.", version_file.c_str());
    return;
  }
  if (VerifyUpdateVersion(session) && !Overtaken(session)) {
    Relay(UPDATE_NOTIFY_VALID);
  } else {
    HLX_LOG_ERROR("verify update availability fail.");
  }
  if (Overtaken(session)) return;
  if (FileExists("/data/update/app") && HLX_ExecSystemCmd("rm -rf /data/update/app", 0) == 0) {
    HLX_LOG_ERROR("remove /media/usbstorage0/app fail:%s", std::strerror(errno));
  }
}

/// What the stick holds, up to the checksums. False: nothing more to examine.
bool PackageSearch::VerifyPackage(int session) {
  const PackagePaths& paths = verifier_.Paths();
  if (FileExists(paths.CanFile())) {
    Relay(UPDATE_NOTIFY_CAN_FILE);
    return false;
  }
  if (!FileExists(paths.Package())) {
    HLX_LOG_ERROR("Can not find update file in path:%s.", paths.Package().c_str());
    return false;
  }
  if (!verifier_.VerifyMD5Sum() || Overtaken(session)) {
    HLX_LOG_ERROR("upgrade file md5 verify fail...");
    Relay(UPDATE_NOTIFY_CHECKSUM_WRONG);
    return false;
  }
  return true;
}

/// Whether the search goes on after a command.
bool PackageSearch::GoesOn(int session, bool succeeded, const std::string& command) {
  if (succeeded && !Overtaken(session)) return true;
  HLX_LOG_ERROR("Exec command fail:%s", command.c_str());
  return false;
}

bool PackageSearch::Extract(int session) {
  const std::string directory = verifier_.Paths().extracted + "/";
  if (!FileExists(directory)) {
    HLX_LOG_WARN("%s is not exist,create a new one.", directory.c_str());
    const std::string command = "mkdir " + directory;
    if (!GoesOn(session, HLX_ExecSystemCmd(command.c_str(), 1) != 0, command)) return false;
  }
  std::string command;
  const bool extracted = verifier_.ExtractVersionFile(&command);
  if (!GoesOn(session, extracted, command)) return false;
  sync();
  sleep(1);
  HLX_LOG_INFO("Extract update software package success:%s", command.c_str());
  return true;
}

bool PackageSearch::VerifyUpdateVersion(int session) {
  SystemInfo::VersionInfo unit;
  if (!UnitVersion(&unit)) return false;
  const SystemInfo::VersionInfo package = verifier_.ReadVersion();
  {
    // What is shown is the package of the newest report, not of a search that it overtook.
    const std::lock_guard<std::mutex> lock(version_mutex_);
    if (!Overtaken(session)) package_version_ = package;
  }
  const UpdateNotifyResult result = verifier_.CompareWith(unit, package);
  if (result == UPDATE_NOTIFY_VALID) return true;
  Relay(result);
  return false;
}
