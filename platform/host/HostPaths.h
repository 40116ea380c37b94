/// Where the host platform keeps what it keeps.
#pragma once

#include <glib.h>
#include <sys/stat.h>

#include <string>

namespace host {

/// The value of an environment variable; empty when it is unset or empty.
inline std::string Environment(const char* name) {
  const char* const value = g_getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

/// The state directory: HLX_HOST_STATE, else hlx below XDG_STATE_HOME.
inline std::string StateDirectory() {
  std::string named = Environment("HLX_HOST_STATE");
  if (!named.empty()) return named;
  const std::string state = Environment("XDG_STATE_HOME");
  return (state.empty() ? std::string(g_get_home_dir()) + "/.local/state" : state) + "/hlx";
}

/// The configuration file: HLX_HOST_CONFIG, else hlx/platform.conf below XDG_CONFIG_HOME.
inline std::string ConfigFile() {
  std::string named = Environment("HLX_HOST_CONFIG");
  return named.empty() ? std::string(g_get_user_config_dir()) + "/hlx/platform.conf" : named;
}

/// Whether a file of this status may be read whole: a pipe would be waited for, and a giant fill the memory.
constexpr off_t kMostBytes = 1 << 20;
inline bool IsReadable(const struct stat& status) { return S_ISREG(status.st_mode) && status.st_size <= kMostBytes; }

}  // namespace host
