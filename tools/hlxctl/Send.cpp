#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "tools/common/Bus.h"
#include "tools/common/CommandCall.h"
#include "tools/common/Failure.h"
#include "tools/common/Records.h"
#include "tools/common/Values.h"
#include "tools/common/Wire.h"
#include "tools/hlxctl/Verbs.h"

namespace {

void Confirm(const std::string& what) {
  if (isatty(STDIN_FILENO) == 0) {
    throw Failure(kExitNotConfirmed, what + ": must be confirmed: answer on a terminal, or use --yes");
  }
  std::fprintf(stderr, "hlxctl: really send \"%s\"? yes/no: ", what.c_str());
  std::string answer;
  std::getline(std::cin, answer);
  if (answer != "yes") throw Failure(kExitNotConfirmed, what + ": not confirmed");
}

/// Sends, and tells the outcome. @throws Failure when the service did not take it
int Deliver(const Request& request, const Bus& bus, const std::string& what, const char* method, GVariant* arguments) {
  GError* problem = nullptr;
  const int timeout_ms = request.timeout == 0 ? -1 : static_cast<int>(request.timeout * 1000);
  const GLibPtr<GVariant> reply =
      bus.Call(kServiceName, kServicePath, kServiceInterface, method, arguments, timeout_ms, &problem);
  const GLibPtr<GError> owned(problem);
  if (reply == nullptr) {
    g_dbus_error_strip_remote_error(problem);
    throw Failure(kExitCallFailed, what + ": " + problem->message);
  }
  const Json result = JsonOf(reply.get());
  if (!result.empty() && result[0] == false) throw Failure(kExitCallFailed, what + ": the service said no");
  if (request.json) {
    Json json = {{"ok", true}, {"command", what}};
    if (!result.empty()) json["result"] = result;
    Output::JsonLine(json);
  } else {
    Output::Line(result.empty() ? "ok" : "ok: " + wire::Describe(wire::MethodNamed(method).out_args, reply.get()));
  }
  return kExitDone;
}

/// The command that sends `method`, if that is one to ask about.
bool AsksFirst(const std::string& method) {
  for (const catalog::Command& command : catalog::Commands()) {
    if (method == command.method && command.asks_first) return true;
  }
  return false;
}

}  // namespace

int Send(const catalog::Command& command, const Request& request) {
  std::string what = std::string(NameOf(command.area)) + " " + command.name;
  for (const std::string& word : request.words) what += " " + word;
  const std::vector<catalog::Scalar> scalars = ParseArguments(command, request.words);
  if (command.asks_first && !request.yes) Confirm(what);
  const Bus bus;
  bus.RequireLife();
  for (const catalog::Record record : RecordsOf(command.area)) RecordOf(record);
  return Deliver(request, bus, what, command.method, ArgumentsOf(command, scalars));
}

int Call(const Request& request) {
  const std::string& name = request.words.front();
  const GDBusMethodInfo& method = wire::MethodNamed(name);
  const std::string signature = wire::Signature(method.in_args);
  const std::size_t count = wire::Count(method.in_args);
  catalog::RequireArity(name, {count, count}, request.words.size() - 1, " " + signature);
  std::vector<GLibPtr<GVariant>> arguments;
  std::string what = name;
  for (std::size_t i = 0; i < count; ++i) {
    arguments.push_back(wire::Argument(*method.in_args[i], request.words[i + 1]));
    what += " " + request.words[i + 1];
  }
  if (AsksFirst(name) && !request.yes) Confirm(what);
  return Deliver(request, Bus(), what, name.c_str(), wire::Tuple(arguments));
}
