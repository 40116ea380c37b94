#include "client/info/VersionFile.h"

#include <cstdlib>
#include <string_view>

#include "platform/LibConfigs.h"

namespace {

constexpr char kSystemFile[] = "/app/etc/sys_version.conf";
constexpr char kBoardFile[] = "/etc/boot/boot-script/bsp_version.conf";

}  // namespace

std::optional<std::string> FindVersionValue(std::FILE* file, const std::string& key) {
  struct Line {
    char* text = nullptr;
    std::size_t capacity = 0;
    ~Line() { std::free(text); }
  } buffer;
  for (ssize_t length; (length = getline(&buffer.text, &buffer.capacity, file)) != -1;) {
    std::string_view line(buffer.text, static_cast<std::size_t>(length));
    if (line.back() == '\n') line.remove_suffix(1);
    const auto colon = line.find(':');
    if (colon != line.npos && line.substr(0, colon) == key) return std::string(line.substr(colon + 1));
  }
  return std::nullopt;
}

std::string AnalysisLocalVersionInfo(const std::string& key, const std::string& source) {
  const char* const path = source == "ARM" ? kSystemFile : kBoardFile;
  const FilePtr file(std::fopen(path, "re"));
  if (file == nullptr) {
    std::printf("open %s failed!\n", path);
    return {};
  }
  return FindVersionValue(file.get(), key).value_or(std::string());
}

std::string PrefixedArmVersion(const std::string& key, const std::function<std::string(const std::string&)>& value_of) {
  LibConfigs& configs = *GetLibConfigs();
  if (!configs.GetBool("/q4system/enable_arm_version_prefix")) return value_of(key);
  std::string prefix = value_of("Project ID");
  if (prefix.empty()) prefix = configs.GetString("/project/project_model_name");
  return prefix.empty() ? value_of(key) : prefix + "_" + value_of(key);
}
