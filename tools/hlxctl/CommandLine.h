/// The command line: subcommands made from the areas' tables.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <list>
#include <string>
#include <vector>

#include "tools/hlxctl/Actions.h"

class CommandLine {
 public:
  CommandLine();

  /// Reads the command line; what it asks for is left in Action(). @throws CLI::ParseError
  void Parse(int argc, char** argv) { app_.parse(argc, argv); }

  /// Prints help, or what is wrong with the command line. @return the exit code
  int Explain(const CLI::ParseError& problem) const;

  const std::function<int()>& Action() const { return action_; }
  const Options& GetOptions() const { return options_; }

 private:
  void AddArea(const Area& area);
  void AddCommand(CLI::App* parent, const Area& area, const Command& command);
  void AddUpdateTools(CLI::App* update, const Area& area);
  void AddMonitor();
  void AddLimits(CLI::App* app);
  std::vector<const Area*> Watched() const;
  void Do(const std::function<void()>& work);

  const std::vector<Area> areas_;
  std::list<std::vector<std::string>> words_;  ///< the arguments of each command
  Options options_;
  MonitorOptions monitor_;
  std::vector<std::string> watched_;
  std::string directory_;
  std::function<int()> action_;
  CLI::App app_{"Looks into a head unit, commands it and listens to it."};
};
