/// What a program says of a command line that it cannot take.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

/// "hlx-panel: --port: ...; see hlx-panel --help", as CLI::App::failure_message() wants it.
inline std::string FailureMessage(const CLI::App* app, const CLI::Error& problem) {
  return app->get_name() + ": " + problem.what() + "; see " + app->get_name() + " --help\n";
}
