#include "client/update/PackageExamination.h"

#include <cerrno>
#include <cstring>

#include "platform/HLXLog.h"
#include "platform/HLXPlatform.h"

HLX_LOG_SOURCE("client/update/HLXUpdateClient");

using namespace HLXUpdate;

int PackageExamination::AnalysisSoftwareFile() {
  const PackagePaths& paths = verifier_.Paths();
  HLX_LOG_INFO("AnalysisSoftwareFile,session:%d", session_);
  if (FileExists(paths.CanFile())) {
    Tell(UPDATE_NOTIFY_CAN_FILE);
    return UPDATE_NOTIFY_CAN_FILE;
  }
  if (!IsRegularFile(paths.Package())) {
    HLX_LOG_ERROR("Can not find update file in path:%s.", paths.Package().c_str());
    return kNoPackage;
  }
  if (!verifier_.VerifyMD5Sum(&stop_) || Overtaken()) {
    HLX_LOG_ERROR("upgrade file md5 verify fail...");
    Tell(UPDATE_NOTIFY_CHECKSUM_WRONG);
    return UPDATE_NOTIFY_CHECKSUM_WRONG;
  }

  const std::string directory = paths.extracted + "/";
  std::string command = "mkdir " + directory;
  const bool made = FileExists(directory);
  if (!made) HLX_LOG_WARN("%s is not exist,create a new one.", directory.c_str());
  if (!made && (HLX_ExecSystemCmd(command.c_str(), 1) == 0 || Overtaken())) {
    HLX_LOG_ERROR("Exec command fail:%s", command.c_str());
    return kNoVersionFile;
  }
  command = "cd " + paths.stick + "/ && unzip -o update.zip app/etc/sys_version.conf -d " + directory + " && sync";
  if (HLX_ExecSystemCmd(command.c_str(), 1) == 0 || Overtaken()) {
    HLX_LOG_ERROR("Exec command fail:%s", command.c_str());
    return kNoVersionFile;
  }
  Settle();
  HLX_LOG_INFO("Extract update software package success:%s", command.c_str());
  if (!FileExists(paths.VersionFile())) {
    HLX_LOG_ERROR("Can not find version file in path:%s.", paths.VersionFile().c_str());
    return kNoVersionFile;
  }

  const int outcome = VerifyUpdateVersion();
  if (outcome != UPDATE_NOTIFY_VALID || !Tell(UPDATE_NOTIFY_VALID)) {
    HLX_LOG_ERROR("verify update availability fail.");
  }
  if (Overtaken()) return outcome;
  const std::string extracted = paths.extracted + "/app";
  command = "rm -rf " + extracted;
  if (FileExists(extracted) && HLX_ExecSystemCmd(command.c_str(), 0) == 0) {
    HLX_LOG_ERROR("remove /media/usbstorage0/app fail:%s", std::strerror(errno));
  }
  return outcome;
}

int PackageExamination::VerifyUpdateVersion() {
  SystemInfo::VersionInfo unit;
  if (!UnitVersion(&unit)) {
    HLX_LOG_ERROR("Get local version info fail.");
    return kNoUnitVersion;
  }
  const SystemInfo::VersionInfo package = verifier_.ReadVersion();
  OnVersions(unit, package);
  const UpdateNotifyResult result = verifier_.VerifyUpdateVersion(unit, package);
  if (result != UPDATE_NOTIFY_VALID) Tell(result);
  return result;
}
