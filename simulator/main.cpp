/// hlx-simulator: the system service of a unit that is not there.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

#include "simulator/ControlClient.h"
#include "simulator/SimulatedService.h"

namespace {

/// What the command line asks for. @return the exit code
int Run(int argc, char** argv) {
  CLI::App app(
      "Plays the head unit's system service on the session bus: owns com.vorn.linux.systemservice, keeps the four\n"
      "shared-memory records, answers every command and prints every call and signal. Stop it with Ctrl-C.");
  app.footer(
      "Exit codes: 0 done; 1 it cannot start or cannot be reached; 2 a wrong command line, signal, field or value.");
  app.require_subcommand(0, 1);

  SimulatedService::Options options;
  options.mcu_version = "SIM-MCU-1.04.27";
  app.add_option("--mcu-version", options.mcu_version, "Version text of the MCU, at most 255 bytes")
      ->capture_default_str();
  app.add_flag("--update-fails", options.update_fails, "Let updates break off in the middle (see also update.fails)");
  app.add_flag("--quiet", options.quiet, "Print no calls and signals");

  // Everything behind the command is taken as it stands: arguments may begin with a minus.
  CLI::App* const emit =
      app.add_subcommand("emit", "Have the running simulator send a signal: SIGNAL [ARGUMENT...]")->prefix_command();
  CLI::App* const set =
      app.add_subcommand("set", "Write a record field of the running simulator: FIELD VALUE")->prefix_command();
  CLI::App* const list = app.add_subcommand("list", "List the signals for emit and the fields for set");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& problem) {
    return app.exit(problem) == 0 ? 0 : kExitBadArgument;
  }
  if (emit->parsed()) return EmitSignal(emit->remaining());
  if (set->parsed()) return SetField(set->remaining());
  if (list->parsed()) return ListSignalsAndFields();
  SimulatedService(options).Run();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  try {
    return Run(argc, argv);
  } catch (const BadArgument& problem) {
    std::fprintf(stderr, "hlx-simulator: %s\n", problem.what());
    return kExitBadArgument;
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "hlx-simulator: %s\n", problem.what());
    return kExitFailed;
  }
}
