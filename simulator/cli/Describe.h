/// What hlx-simulator says of its own command line, to manual and shells.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

/// Prints what may stand in the place of the last of `words`, one a line.
void CompleteVerb(const CLI::App& app, std::vector<std::string> words);

/// Prints the manual page, in roff.
void ManualVerb(const CLI::App& app);
