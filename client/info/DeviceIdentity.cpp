#include "client/info/DeviceIdentity.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "platform/FileDescriptor.h"
#include "platform/HLXLog.h"

HLX_LOG_SOURCE("client/info/HLXInfoClient");

namespace {

constexpr char kUuid[] = "uuid=";
constexpr std::size_t kUuidLength = sizeof(kUuid) - 1;
constexpr std::size_t kIdentifierLength = 32;
constexpr std::size_t kSampleLength = 32;

}  // namespace

std::string DeviceIdentity::GetEmmcId(const char* path) {
  std::ifstream file(path);
  if (!file.is_open()) {
    HLX_LOG_ERROR("get emmc id error:%s", std::strerror(errno));
    return {};
  }
  std::string id;
  for (std::string line; std::getline(file, line);) id += line;
  HLX_LOG_INFO("get emmc id:%s", id.c_str());
  return id;
}

std::string DeviceIdentity::SerialNumberFrom(const std::string& command_line) {
  const auto uuid = command_line.find(kUuid);
  // Counted from the "u", so that an identifier a little shorter than 32 characters passes: units were sold with such.
  if (uuid == std::string::npos || command_line.size() < uuid + kIdentifierLength) return {};
  std::string serial = command_line.substr(uuid + kUuidLength, kIdentifierLength);
  for (std::size_t index = 4; index < serial.size(); index += 5) serial.insert(index, 1, ':');
  return serial;
}

unsigned int DeviceIdentity::MachineSampleFrom(const std::string& text) {
  return static_cast<unsigned int>(std::stoi(text, nullptr, 16));
}

int DeviceIdentity::GetMachineSample(const char* path, unsigned int* value) {
  if (value == nullptr) {
    HLX_LOG_ERROR("pointer to value is NULL\n");
    return -1;
  }
  const FileDescriptor file(open(path, O_RDWR | O_CLOEXEC));
  if (!file) {
    const int reason = errno;
    HLX_LOG_ERROR(": %s\n", path);
    errno = reason;
    std::perror("Open");
    return -1;
  }
  char text[kSampleLength + 1] = {};
  if (read(file.Get(), text, kSampleLength) == -1) {
    *value = 0;
    return -1;
  }
  *value = MachineSampleFrom(text);
  return 0;
}
