/// What the tool does with an area.
#pragma once

#include "tools/hlxctl/Area.h"
#include "tools/hlxctl/Monitor.h"

struct Options {
  bool json = false;
  bool verbose = false;
  bool yes = false;
};

// All throw Failure.

void Show(const Area& area, const Options& options);

/// @throws std::invalid_argument that names the word that `command` does not take
void Send(const Area& area, const Command& command, const std::vector<std::string>& words, const Options& options);

void Watch(const std::vector<const Area*>& areas, const MonitorOptions& options);
