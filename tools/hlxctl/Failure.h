/// How the tool ends when it cannot do what it was asked for.
#pragma once

#include <stdexcept>
#include <string>

enum ExitCode : int {
  kExitDone = 0,
  kExitInternal = 1,      ///< out of memory, output that cannot be written
  kExitUsage = 2,         ///< a wrong command line or value
  kExitNoService = 3,     ///< the service, the bus or the service's records are not there
  kExitCallFailed = 4,    ///< the service refused the command, or went away during it
  kExitNotConfirmed = 5,  ///< the question was not answered with yes
  kExitPackage = 10,      ///< update check: 10 and the outcome
};

/// Ends the tool with one line on standard error.
class Failure : public std::runtime_error {
 public:
  Failure(ExitCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
  ExitCode Code() const { return code_; }

 private:
  ExitCode code_;
};
