/// Manual pages made from the command lines of programs, so that help and manual cannot differ.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <utility>
#include <vector>

namespace cli {

/// What a page says besides the command line.
struct ManualExtras {
  std::string version;
  std::string name_line;                                    ///< what the program is, in half a line
  std::vector<std::pair<std::string, std::string>> before;  ///< sections behind SYNOPSIS: heading and plain text
  std::vector<std::pair<std::string, std::string>> after;   ///< sections at the end
};

/// The page of section 1 for `app` and all below it, in roff. The lines of a footer behind "Examples:" or "Exit
/// codes:" become a section of that meaning; others are a paragraph. Subcommands without a group are left out. In the
/// texts of extras a line that begins with blanks is shown as it is.
std::string ManualPage(const CLI::App& app, const ManualExtras& extras);

}  // namespace cli
