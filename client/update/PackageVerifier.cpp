#include "client/update/PackageVerifier.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "client/ChildProcess.h"
#include "client/info/VersionFile.h"
#include "platform/HLXLog.h"
#include "platform/LibConfigs.h"

HLX_LOG_SOURCE("client/update/HLXUpdateClient");

using namespace HLXUpdate;

namespace {

constexpr int kChecksumLineLimit = 1023;

/// The numbers of a version text "V1.2.3.4", each with blanks and a sign in front if need be; those that the text does
/// not reach stay 0. A number that does not fit counts as the nearest that does: it comes from a stick.
template <std::size_t N>
std::array<int, N> Numbers(const std::string& version) {
  std::array<int, N> numbers{};
  const char* text = version.c_str();
  char expected = 'V';
  for (int& number : numbers) {
    if (*text != expected) break;
    char* end = nullptr;
    const long long value = std::strtoll(text + 1, &end, 10);
    if (end == text + 1) break;
    number = static_cast<int>(std::clamp<long long>(value, INT_MIN, INT_MAX));
    text = end;
    expected = '.';
  }
  return numbers;
}

/// Opens `path` for reading, refusing a symbolic link in any place of it below `directory`. None with errno set.
FileDescriptor OpenBelow(const std::string& directory, const std::string& path) {
  FileDescriptor file(open(directory.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  for (std::size_t start = directory.size() + 1; file && start <= path.size();) {
    const auto end = std::min(path.find('/', start), path.size());
    const int flags = end == path.size() ? O_RDONLY | O_NONBLOCK : O_PATH | O_DIRECTORY;
    const int next = openat(file.Get(), path.substr(start, end - start).c_str(), flags | O_NOFOLLOW | O_CLOEXEC);
    const int reason = errno;
    file = FileDescriptor(next);
    errno = reason;
    start = end + 1;
  }
  return file;
}

bool Allowed(const char* key) { return GetLibConfigs()->GetBool(key); }

}  // namespace

bool FileExists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

bool IsRegularFile(const std::string& path) {
  struct stat status = {};
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool PackageVerifier::VerifyMD5Sum(ChildStop* stop) const {
  if (!IsRegularFile(paths_.ChecksumList())) {
    HLX_LOG_ERROR("no md5 text file found in usb0 path.");
    return false;
  }
  const auto report = FirstLineOf("cd " + paths_.stick + " && md5sum -c md5.txt", kChecksumLineLimit, stop);
  if (!report) return false;
  HLX_LOG_INFO("get checksum result:%s", report->c_str());
  if (report->find("OK") == std::string::npos) return false;
  HLX_LOG_INFO("verify md5 success.");
  return true;
}

std::string PackageVerifier::AnalysisCmpVersionInfo(const std::string& key) const {
  const std::string path = paths_.VersionFile();
  std::string problem;
  const auto text = ReadVersionFile(OpenBelow(paths_.extracted, path), &problem);
  if (!text) {
    HLX_LOG_ERROR("open %s failed:%s", path.c_str(), problem.c_str());
    return {};
  }
  const auto value = FindVersionValue(*text, key);
  if (!value) {
    HLX_LOG_WARN("AnalysisCmpVersionInfo[%s]:fail to extract version info.", key.c_str());
    return {};
  }
  HLX_LOG_DEBUG("AnalysisCmpVersionInfo[%s]:%s", key.c_str(), value->c_str());
  return *value;
}

std::string PackageVerifier::GetArmVersion(const std::string& key) const {
  return PrefixedArmVersion(key, [this](const std::string& name) { return AnalysisCmpVersionInfo(name); });
}

SystemInfo::VersionInfo PackageVerifier::ReadVersion() const {
  SystemInfo::VersionInfo version;
  version.arm_version = GetArmVersion("ARM Version");
  version.arm_internal_version = AnalysisCmpVersionInfo("ARM Internal Version");
  version.hardware_version = AnalysisCmpVersionInfo("Hardware Version");
  version.serial_number = AnalysisCmpVersionInfo("Serial Number");
  version.drawing_code = AnalysisCmpVersionInfo("Drawing Code");
  version.build_time = AnalysisCmpVersionInfo("Build Time");
  version.production_date = AnalysisCmpVersionInfo("Production Date");
  version.project_name = AnalysisCmpVersionInfo("Project Name");
  return version;
}

bool PackageVerifier::CheckArmVersion() const {
  const std::string local = AnalysisLocalVersionInfo("ARM Version", "ARM");
  const std::string usb = AnalysisCmpVersionInfo("ARM Version");
  HLX_LOG_DEBUG("check arm version,local:%s,usb:%s", local.c_str(), usb.c_str());
  return Numbers<4>(local) <= Numbers<4>(usb);
}

bool PackageVerifier::CheckHwVersion(const std::string& local, const std::string& usb) {
  HLX_LOG_DEBUG("check hardware version,local:%s,usb:%s", local.c_str(), usb.c_str());
  return Numbers<3>(local) == Numbers<3>(usb);
}

bool PackageVerifier::CheckProject(const std::string& local, const std::string& usb) {
  HLX_LOG_INFO("local project:%s", local.c_str());
  HLX_LOG_INFO("usb file project:%s", usb.c_str());
  return local.empty() || local == usb || local == "T268ZF";
}

UpdateNotifyResult PackageVerifier::VerifyUpdateVersion(const SystemInfo::VersionInfo& unit,
                                                        const SystemInfo::VersionInfo& package) const {
  if (!Allowed("/q4system/allow_sw_version_revert") && !CheckArmVersion()) {
    HLX_LOG_ERROR("valid arm version fail...");
    return UPDATE_NOTIFY_VERSION_OLDER;
  }
  if (!Allowed("/q4system/allow_hw_version_compat") &&
      !CheckHwVersion(unit.hardware_version, package.hardware_version)) {
    HLX_LOG_ERROR("valid hardware version fail...");
    return UPDATE_NOTIFY_HARDWARE_DIFFERS;
  }
  if (!Allowed("/q4system/allow_project_different") && !CheckProject(unit.project_name, package.project_name)) {
    HLX_LOG_ERROR("valid project name fail fail...");
    return UPDATE_NOTIFY_PROJECT_DIFFERS;
  }
  return UPDATE_NOTIFY_VALID;
}
