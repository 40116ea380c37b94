#include "simulator/Installed.h"

#include <unistd.h>

#include <climits>
#include <cstdlib>

namespace {

std::string Found(const std::string& directory, const std::string& name) {
  const std::string program = OwnProgram();
  const std::string file = program.substr(0, program.rfind('/')) + "/" + directory + "/" + name;
  char real[PATH_MAX];
  return realpath(file.c_str(), real) == nullptr ? "" : real;
}

}  // namespace

std::string OwnProgram() {
  char program[PATH_MAX];
  const ssize_t size = readlink("/proc/self/exe", program, sizeof program);
  return size <= 0 ? "hlx-simulator" : std::string(program, static_cast<std::size_t>(size));
}

bool IsInSandbox() {
  char target[sizeof "hlx-sandbox"];
  const ssize_t size = readlink("/media/.hlx-sandbox", target, sizeof target);
  return size > 0 && std::string(target, static_cast<std::size_t>(size)) == "hlx-sandbox";
}

std::string InstalledFile(const std::string& name) { return Found(HLX_DATA_FROM_BIN, name); }
std::string InstalledProgram(const std::string& name) { return Found(HLX_LIBEXEC_FROM_BIN, name); }
std::string SiblingProgram(const std::string& name) { return Found(".", name); }
