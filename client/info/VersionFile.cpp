#include "client/info/VersionFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "platform/HLXLog.h"
#include "platform/LibConfigs.h"

HLX_LOG_SOURCE("client/info/HLXInfoClient");

namespace {

constexpr char kSystemFile[] = "/app/etc/sys_version.conf";
constexpr char kBoardFile[] = "/etc/boot/boot-script/bsp_version.conf";

}  // namespace

std::optional<std::string> ReadVersionFile(const FileDescriptor& file, std::string* problem) {
  struct stat status = {};
  if (!file || fstat(file.Get(), &status) != 0) {
    *problem = std::strerror(errno);
  } else if (!S_ISREG(status.st_mode)) {
    *problem = "no regular file";
  } else if (status.st_size > static_cast<off_t>(kVersionFileLimit)) {
    *problem =
        std::to_string(status.st_size) + " bytes are too many, " + std::to_string(kVersionFileLimit) + " allowed";
  } else {
    std::string text(kVersionFileLimit, '\0');
    std::size_t size = 0;
    for (ssize_t count; size < text.size() && (count = read(file.Get(), &text[size], text.size() - size)) > 0;) {
      size += static_cast<std::size_t>(count);
    }
    text.resize(size);
    return text;
  }
  return std::nullopt;
}

std::optional<std::string> FindVersionValue(std::string_view text, std::string_view key) {
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    const auto colon = line.find(':');
    if (colon != line.npos && line.substr(0, colon) == key) return std::string(line.substr(colon + 1));
  }
  return std::nullopt;
}

std::string AnalysisLocalVersionInfo(const std::string& key, const std::string& source) {
  const char* const path = source == "ARM" ? kSystemFile : kBoardFile;
  const FileDescriptor file(open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  std::string problem;
  const auto text = ReadVersionFile(file, &problem);
  if (!text) {
    std::printf("open %s failed!\n", path);
    if (file) HLX_LOG_ERROR("%s is no version file: %s", path, problem.c_str());
    return {};
  }
  return FindVersionValue(*text, key).value_or(std::string());
}

std::string PrefixedArmVersion(const std::string& key, const std::function<std::string(const std::string&)>& value_of) {
  LibConfigs& configs = *GetLibConfigs();
  if (!configs.GetBool("/q4system/enable_arm_version_prefix")) return value_of(key);
  std::string prefix = value_of("Project ID");
  if (prefix.empty()) prefix = configs.GetString("/project/project_model_name");
  return prefix.empty() ? value_of(key) : prefix + "_" + value_of(key);
}
