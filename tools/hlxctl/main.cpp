/// hlxctl: looks into a head unit, commands it and listens to it, through the client library.
#include <cstdio>
#include <exception>
#include <stdexcept>

#include "tools/hlxctl/CommandLine.h"
#include "tools/hlxctl/Failure.h"
#include "tools/hlxctl/Output.h"

namespace {

int Run(const CommandLine& command_line) try {
  Output::TakeOver(command_line.GetOptions().verbose);
  const int code = command_line.Action()();
  HLX_ReleaseSystemProxy();
  return code;
} catch (const Failure& failure) {
  Output::Note(failure.what());
  return failure.Code();
} catch (const std::invalid_argument& problem) {
  Output::Note(problem.what());
  return kExitUsage;
} catch (const std::exception& problem) {
  Output::Note(problem.what());
  return kExitInternal;
}

}  // namespace

int main(int argc, char** argv) {
  CommandLine command_line;
  try {
    command_line.Parse(argc, argv);
  } catch (const CLI::ParseError& problem) {
    return command_line.Explain(problem);
  }
  return Run(command_line);
}
