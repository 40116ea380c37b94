/// What the command line asks for.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tools/common/Output.h"

struct Request {
  std::function<int(const Request&)> action;  ///< what is to be done; gives the exit code, or throws Failure

  bool json = false;
  bool verbose = false;
  Color color = Color::kAuto;
  double timeout = 0;              ///< seconds; 0: not given
  std::vector<std::string> words;  ///< what the verb works on
  std::string file;

  bool yes = false;          ///< commands: do not ask
  bool raw = false;          ///< get: as numbers
  bool unit = false;         ///< get: with units
  bool live = false;         ///< get: only while the service is there
  bool values = false;       ///< monitor: readings only
  bool since_start = false;  ///< monitor: seconds since the start instead of dates
  unsigned count = 0;        ///< monitor, listen: end after so many; 0: never
  unsigned interval = 100;   ///< record: milliseconds between looks at the records
};
