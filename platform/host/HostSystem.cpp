#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ctime>
#include <string>

#include "platform/HLXPlatform.h"
#include "platform/Shell.h"
#include "platform/host/HostLog.h"
#include "platform/host/HostPaths.h"

HLX_LOG_SOURCE("platform/host/HostSystem");

namespace {

constexpr unsigned int kDefaultGamma = 8;

constexpr char kTellsItsStatus[] = R"(/bin/sh -c "$1" 3>&-; echo $? >&3)";

/// Cold when nobody asked in this boot before: the boot id that is remembered is another one, or none. A boot whose
/// id cannot be read is taken for a new one.
int FindColdBoot() {
  g_autofree gchar* boot_id = nullptr;
  g_autofree gchar* remembered = nullptr;
  g_autoptr(GError) error = nullptr;
  if (!g_file_get_contents("/proc/sys/kernel/random/boot_id", &boot_id, nullptr, &error)) {
    HLX_HOST_COMPLAIN("every start counts as a cold boot: %s", error->message);
    return 1;
  }
  const std::string directory = host::StateDirectory();
  const std::string file = directory + "/boot_id";
  struct stat status {};
  if (stat(file.c_str(), &status) == 0 && host::IsReadable(status) &&
      g_file_get_contents(file.c_str(), &remembered, nullptr, nullptr) && g_str_equal(remembered, boot_id)) {
    return 0;
  }
  g_mkdir_with_parents(directory.c_str(), 0700);  // a failure shows when the file is written
  if (!g_file_set_contents(file.c_str(), boot_id, -1, &error)) {
    HLX_HOST_COMPLAIN("this boot is not remembered, the next start counts as a cold boot too: %s", error->message);
  }
  return 1;
}

}  // namespace

int HLX_ExecSystemCmd(const char* command, int /*flag*/) {
  if (command == nullptr || *command == '\0') {
    HLX_HOST_COMPLAIN("an empty command was to be run");
    return 0;
  }
  Shell::Pipe status;
  const pid_t process = Shell::Start(kTellsItsStatus, command, status.childs);
  if (process == -1) {
    HLX_HOST_COMPLAIN("\"%s\" was not run: %s", command, std::strerror(errno));
    return 0;
  }
  status.childs = FileDescriptor();
  char text[sizeof "255\n"] = {};
  while (read(status.mine.Get(), text, sizeof text - 1) == -1 && errno == EINTR) {
  }
  Shell::Reap(process);
  if (*text == '\0') HLX_HOST_COMPLAIN("the end of \"%s\" was not seen", command);
  return std::strcmp(text, "0\n") == 0 ? 1 : 0;
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
  g_autoptr(GError) error = nullptr;
  if (text.empty()) return;
  if (g_ascii_string_to_unsigned(text.c_str(), 10, 0, G_MAXUINT32, &value, &error)) {
    *gamma = static_cast<unsigned int>(value);
    return;
  }
  HLX_HOST_COMPLAIN("HLX_HOST_GAMMA=%s: %s; %u is used", text.c_str(), error->message, kDefaultGamma);
}

int HLX_SetSystemClock(int64_t seconds) {
  const timespec time = {static_cast<time_t>(seconds), 0};
  if (time.tv_sec != seconds) {
    errno = EOVERFLOW;
    return -1;
  }
  return clock_settime(CLOCK_REALTIME, &time);
}
