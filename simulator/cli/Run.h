/// `hlx-simulator run`: a command with a unit of its own around it.
#pragma once

#include <string>
#include <vector>

constexpr int kExitTimeIsUp = 124;  ///< COMMAND was ended
constexpr int kExitNoUnit = 125;    ///< the unit could not start
constexpr int kExitUnitDied = 126;  ///< before COMMAND did
constexpr int kExitNotFound = 127;  ///< COMMAND cannot be started

struct RunOptions {
  bool fresh = false;            ///< settings of earlier runs do not count
  bool on_this_machine = false;  ///< go on where no namespaces are to be had
  bool display = false;          ///< the command needs one
  double timeout = 0;            ///< seconds; 0: none
  std::string log;               ///< directory for journal, calls and capture
  std::string scenario;          ///< is played while the command runs; empty: none
  std::vector<std::string> command;
  int channel = -1;  ///< inside: what the process outside and the one inside tell each other
};

/// Outside: makes the surroundings and waits for the end. The command's exit status, 128 and its signal, or one of the
/// codes above. @throws VerbError
int RunOutside(const RunOptions& options);

/// Inside them: bus and namespaces are there; starts the unit, then the command. What RunOutside() gives.
int RunInside(const RunOptions& options);

/// One byte each over the channel.
constexpr char kCommandStarted = 's';  ///< from inside; outside sends the numbers of signals for the command
