/// The other end of the control interface: what `hlx-simulator emit`, `set` and `list` do. All return an exit code.
#pragma once

#include <string>
#include <vector>

constexpr int kExitFailed = 1;       ///< the simulator cannot start, or cannot be reached
constexpr int kExitBadArgument = 2;  ///< the command line, or a signal, field or value that the simulator refuses

/// `words`: the signal's name and its arguments.
int EmitSignal(const std::vector<std::string>& words);

/// `words`: the field's name and the value.
int SetField(const std::vector<std::string>& words);

int ListSignalsAndFields();
