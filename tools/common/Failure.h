/// Why the tool cannot do what it was asked for.
#pragma once

#include <stdexcept>
#include <string>

#include "tools/common/ExitCode.h"

/// Ends the tool with one line on standard error and, with --json, an object on standard output.
class Failure : public std::runtime_error {
 public:
  Failure(ExitCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
  ExitCode Code() const { return code_; }

 private:
  ExitCode code_;
};

/// Ends the tool without a word: nobody reads what it writes.
struct ClosedPipe {};
