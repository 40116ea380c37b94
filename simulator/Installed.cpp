#include "simulator/Installed.h"

#include <unistd.h>

#include <climits>

namespace {

std::string Found(const std::string& directory, const std::string& name) {
  char program[PATH_MAX];
  const ssize_t size = readlink("/proc/self/exe", program, sizeof program);
  if (size <= 0) return "";
  const std::string path(program, static_cast<std::size_t>(size));
  const std::string file = path.substr(0, path.rfind('/')) + "/" + directory + "/" + name;
  char real[PATH_MAX];
  return realpath(file.c_str(), real) == nullptr ? "" : real;
}

}  // namespace

std::string InstalledFile(const std::string& name) { return Found(HLX_DATA_FROM_BIN, name); }
std::string InstalledProgram(const std::string& name) { return Found(HLX_LIBEXEC_FROM_BIN, name); }
