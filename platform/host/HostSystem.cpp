#include <spawn.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstring>
#include <ctime>
#include <memory>
#include <string>

#include "dbus/GLibPtr.h"
#include "platform/HLXPlatform.h"
#include "platform/host/HostLog.h"
#include "platform/host/HostPaths.h"

HLX_LOG_SOURCE("platform/host/HostSystem");

namespace {

constexpr unsigned int kDefaultGamma = 8;

std::string ReadFile(const std::string& path) {
  gchar* content = nullptr;
  GError* failure = nullptr;
  if (g_file_get_contents(path.c_str(), &content, nullptr, &failure)) {
    const GLibPtr<gchar> text(content);
    return text.get();
  }
  const GLibPtr<GError> error(failure);
  if (!g_error_matches(error.get(), G_FILE_ERROR, G_FILE_ERROR_NOENT)) HLX_HOST_COMPLAIN("%s", error->message);
  return {};
}

/// Cold when nobody asked in this boot before: the boot id that is remembered is another one, or none.
int FindColdBoot() {
  const std::string boot_id = ReadFile("/proc/sys/kernel/random/boot_id");
  const std::string directory = host::StateDirectory();
  const std::string remembered = directory + "/boot_id";
  if (ReadFile(remembered) == boot_id) return 0;
  GError* failure = nullptr;
  g_mkdir_with_parents(directory.c_str(), 0700);
  if (!g_file_set_contents(remembered.c_str(), boot_id.c_str(), -1, &failure)) {
    const GLibPtr<GError> error(failure);
    HLX_HOST_COMPLAIN("the boot is not remembered: %s", error->message);
  }
  return 1;
}

}  // namespace

int HLX_ExecSystemCmd(const char* command, int /*flag*/) {
  if (command == nullptr || *command == '\0') {
    HLX_HOST_COMPLAIN("an empty command was to be run");
    return 0;
  }
  std::string shell = "/bin/sh";
  std::string option = "-c";
  std::string text = command;
  char* const arguments[] = {shell.data(), option.data(), text.data(), nullptr};
  pid_t pid = 0;
  const int failure = posix_spawn(&pid, shell.c_str(), nullptr, nullptr, arguments, environ);
  if (failure != 0) {
    HLX_HOST_COMPLAIN("\"%s\" was not run: %s", command, std::strerror(failure));
    return 0;
  }
  int status = 0;
  while (waitpid(pid, &status, 0) == -1) {
    if (errno == EINTR) continue;
    HLX_HOST_COMPLAIN("the end of \"%s\" was not seen: %s", command, std::strerror(errno));
    return 0;
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 1 : 0;
}

int IsSystemColdBoot() {
  static const int cold_boot = FindColdBoot();
  return cold_boot;
}

/// From HLX_HOST_GAMMA, a number.
void mwapi_gamma_get(unsigned int* gamma) {
  *gamma = kDefaultGamma;
  const std::string text = host::Environment("HLX_HOST_GAMMA");
  guint64 value = 0;
  GError* failure = nullptr;
  if (text.empty()) return;
  if (g_ascii_string_to_unsigned(text.c_str(), 10, 0, G_MAXUINT32, &value, &failure)) {
    *gamma = static_cast<unsigned int>(value);
    return;
  }
  const GLibPtr<GError> error(failure);
  HLX_HOST_COMPLAIN("HLX_HOST_GAMMA=%s: %s; %u is used", text.c_str(), error->message, kDefaultGamma);
}

int HLX_SetSystemClock(time_t seconds) {
  const timespec time = {seconds, 0};
  return clock_settime(CLOCK_REALTIME, &time);
}
