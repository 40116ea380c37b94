/// Only the process named hmi searches sticks: a test that needs that goes on under the name.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

/// Starts the running program again, unless it has that name already. Exits when it cannot.
inline void GoOnAsHmi(char** argv) {
  if (std::string(program_invocation_short_name) == "hmi") return;
  static char name[] = "/tmp/hmi";
  const std::string link = "ln -s $(readlink /proc/" + std::to_string(getpid()) + "/exe) " + name;
  if (std::system(link.c_str()) != 0) std::exit(1);
  argv[0] = name;
  execv(name, argv);
  std::exit(1);
}
