/// The command line: builds what the words in front of it ask for, and nothing else.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "tools/hlxctl/Request.h"

/// An example of help and manual; tests run each.
struct Example {
  const char* command;  ///< behind "hlxctl "
  const char* what;
};

/// One word behind "hlxctl".
struct Verb {
  const char* name;
  const char* group;  ///< heading under which help lists it; empty: not listed
  const char* about;
  /// Adds options and what they do to `app`. `ahead`: the words of the command line behind this one; null asks for
  /// everything there is.
  void (*add)(CLI::App& app, Request& request, const std::vector<std::string>* ahead);
  std::vector<Example> examples;
};

const std::vector<Verb>& Verbs();

class CommandLine {
 public:
  /// Everything there is, for manual and completion.
  CommandLine();
  CommandLine(int argc, char** argv);

  /// Does what is asked for. @return the exit code; @throws as the verbs do
  int Run();

  bool WantsJson() const { return json_; }
  const CLI::App& App() const { return app_; }

 private:
  void Add(const std::vector<std::string>* ahead);
  [[noreturn]] void Explain(const CLI::ParseError& problem) const;

  Request request_;
  bool json_ = false;
  std::vector<std::string> arguments_;
  CLI::App app_;
};
