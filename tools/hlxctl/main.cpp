/// hlxctl: looks into a head unit, commands it and listens to it.
#include <csignal>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "tools/common/Failure.h"
#include "tools/hlxctl/CommandLine.h"

namespace {

int Fail(bool json, int code, const std::string& message) {
  Output::Note(message);
  if (!json) return code;
  Output::JsonLine({{"ok", false}, {"error", message}, {"code", code}});
  Output::Flush();
  return code;
}

int Run(int argc, char** argv) {
  CommandLine command_line(argc, argv);
  const bool json = command_line.WantsJson();
  try {
    try {
      const int code = command_line.Run();
      Output::Flush();
      return code;
    } catch (const Failure& failure) {
      Output::Flush();  // what came before it
      return Fail(json, failure.Code(), failure.what());
    } catch (const std::invalid_argument& problem) {
      return Fail(json, kExitUsage, problem.what());
    }
  } catch (const Failure& failure) {  // the output itself
    return Fail(false, failure.Code(), failure.what());
  } catch (const std::exception& problem) {
    return Fail(false, kExitInternal, problem.what());
  } catch (const ClosedPipe&) {
    return kExitClosedPipe;
  }
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // noticed when writing
  return Run(argc, argv);
}
