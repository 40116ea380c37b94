/// hlx-panel: the unit in a browser.
#include <sys/resource.h>
#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>

#include "cli/Failure.h"
#include "tools/common/Failure.h"
#include "tools/common/Loop.h"
#include "tools/common/Output.h"
#include "tools/hlx-panel/Panel.h"
#include "tools/hlx-panel/Server.h"

namespace {

/// Browsers, and whoever else connects, take a descriptor each.
void RaiseDescriptorLimit() {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
}

void OpenBrowser(const std::string& address) {
  GError* problem = nullptr;
  if (g_app_info_launch_default_for_uri(address.c_str(), nullptr, &problem) == FALSE) {
    std::fprintf(stderr, "hlx-panel: no browser can be opened: %s\n", GLibPtr<GError>(problem)->message);
  }
}

int Run(int argc, char** argv) {
  CLI::App app(
      "Shows the head unit in a browser: what it says, what happens, and what applications send to a simulated one.\n"
      "Looking changes nothing. Prints the address to open, with a token that only this machine's user should see.",
      "hlx-panel");
  app.failure_message(FailureMessage);
  app.footer("Example: hlx-panel --port 8470 --open\nOn a unit: ssh -L 8470:127.0.0.1:8470 unit hlx-panel --port 8470");
  Server::Options options;
  bool open = false;
  bool verbose = false;
  app.add_option("--port", options.port, "Port to listen on; without it any that is free");
  app.add_option("--listen", options.address, "IP address to listen on instead of 127.0.0.1 and ::1");
  app.add_option("--allow-host", options.allowed_hosts, "Name under which the panel may be reached as well");
  app.add_flag("--open", open, "Open the browser");
  app.add_flag("-v,--verbose", verbose, "Show the library's log records on standard error");
  app.set_version_flag("--version", HLX_VERSION);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& problem) {
    return app.exit(problem) == 0 ? kExitDone : kExitUsage;
  }
  Output::Open(Color::kNever, verbose);
  RaiseDescriptorLimit();

  const Bus bus;
  Panel panel(bus);
  const Server server(options, [&panel](SoupWebsocketConnection* connection) { panel.Greet(connection); });
  if (!options.address.empty()) {
    std::fprintf(stderr,
                 "hlx-panel: warning: others can reach %s: whoever has the token drives the unit, and the connection "
                 "is not encrypted\n",
                 options.address.c_str());
  }
  Output::Line("hlx-panel: open " + server.Address());
  Output::Flush();
  if (open) OpenBrowser(server.Address());
  Loop(bus, 0).Run();
  return kExitDone;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const Failure& problem) {
    std::fprintf(stderr, "hlx-panel: %s\n", problem.what());
    return problem.Code();
  } catch (const ClosedPipe&) {
    return kExitClosedPipe;
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "hlx-panel: %s\n", problem.what());
    return kExitInternal;
  }
}
