#include "client/update/PackageVerifier.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "client/CommandPipe.h"
#include "client/info/VersionFile.h"
#include "dbus/GLibPtr.h"
#include "platform/HLXLog.h"
#include "platform/HLXPlatform.h"
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

/// A path as a word of a shell command; the unit's own paths stay as they are.
std::string Word(const std::string& path) {
  const bool plain =
      path.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./-") == std::string::npos;
  return plain ? path : GLibPtr<gchar>(g_shell_quote(path.c_str())).get();
}

/// Takes the descriptor over. Null with errno set.
FilePtr OpenStream(int descriptor) {
  std::FILE* const file = fdopen(descriptor, "r");
  if (file == nullptr) {
    const int reason = errno;
    close(descriptor);
    errno = reason;
  }
  return FilePtr(file);
}

/// Opens `path` for reading, refusing a symbolic link in any place of it below `directory`. Null with errno set.
FilePtr OpenBelow(const std::string& directory, const std::string& path) {
  int descriptor = open(directory.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
  for (std::size_t start = directory.size() + 1; descriptor != -1 && start <= path.size();) {
    const auto end = path.find('/', start);
    const std::string name = path.substr(start, end - start);
    const int flags = end == std::string::npos ? O_RDONLY | O_NONBLOCK : O_PATH | O_DIRECTORY;
    const int next = openat(descriptor, name.c_str(), flags | O_NOFOLLOW | O_CLOEXEC);
    const int reason = errno;
    close(descriptor);
    errno = reason;
    descriptor = next;
    start = end == std::string::npos ? path.size() + 1 : end + 1;
  }
  return descriptor == -1 ? nullptr : OpenStream(descriptor);
}

bool Allowed(const char* key) { return GetLibConfigs()->GetBool(key); }

}  // namespace

bool FileExists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

bool PackageVerifier::VerifyMD5Sum() const {
  if (!FileExists(paths_.ChecksumList())) {
    HLX_LOG_ERROR("no md5 text file found in usb0 path.");
    return false;
  }
  const auto report = FirstLineOf("cd " + Word(paths_.stick) + " && md5sum -c md5.txt", kChecksumLineLimit);
  if (!report) return false;
  HLX_LOG_INFO("get checksum result:%s", report->c_str());
  if (report->find("OK") == std::string::npos) return false;
  HLX_LOG_INFO("verify md5 success.");
  return true;
}

bool PackageVerifier::ExtractVersionFile(std::string* command) const {
  *command =
      "cd " + paths_.stick + "/ && unzip -o update.zip app/etc/sys_version.conf -d " + paths_.extracted + "/ && sync";
  return HLX_ExecSystemCmd(command->c_str(), 1) != 0;
}

std::string PackageVerifier::AnalysisCmpVersionInfo(const std::string& key) const {
  const std::string path = paths_.VersionFile();
  const FilePtr file = OpenBelow(paths_.extracted, path);
  if (file == nullptr) {
    HLX_LOG_ERROR("open %s failed:%s", path.c_str(), std::strerror(errno));
    return {};
  }
  const auto value = FindVersionValue(file.get(), key);
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

UpdateNotifyResult PackageVerifier::CompareWith(const SystemInfo::VersionInfo& unit,
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
