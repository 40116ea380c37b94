#include <nlohmann/json.hpp>

#include "cli/TimeStamp.h"
#include "dbus_system.h"
#include "tools/common/Bus.h"
#include "tools/common/Failure.h"
#include "tools/common/Loop.h"
#include "tools/common/Wire.h"
#include "tools/hlxctl/EventLog.h"
#include "tools/hlxctl/Verbs.h"

namespace {

/// Writes the bare signals, whoever sends them, and what is wrong with them.
class SignalLog {
 public:
  SignalLog(const Request& request, Loop& loop) : request_(request), loop_(loop) {}

  unsigned Count() const { return count_; }

  void Write(const char* sender, const char* name, GVariant* arguments) {
    const GDBusSignalInfo* const info =
        g_dbus_interface_info_lookup_signal(com_vorn_linux_system_interface_info(), name);
    const std::string expected = info == nullptr ? "" : wire::Signature(info->args);
    const std::string problem =
        info == nullptr ? "no such signal in the interface"
        : expected != g_variant_get_type_string(arguments)
            ? std::string("carries ") + g_variant_get_type_string(arguments) + ", not " + expected
            : "";
    if (request_.json) {
      Json line = {{"time", JsonTimeStamp()}, {"sender", sender}, {"signal", name}, {"args", JsonOf(arguments)}};
      if (!problem.empty()) line["problem"] = problem;
      Output::JsonLine(line);
    } else {
      std::string line = Output::Paint(TimeStamp(), Tone::kDim) + "  " + Output::Paint(name, Tone::kStrong);
      const std::string what = wire::Describe(info == nullptr ? nullptr : info->args, arguments);
      if (!what.empty()) line += "  " + what;
      Output::Line(problem.empty() ? line : line + "  " + Output::Paint(problem, Tone::kBad));
    }
    Output::Flush();
    if (++count_ == request_.count) loop_.Done();
  }

  bool IsWanted(const std::string& name) const {
    const bool full = request_.count != 0 && count_ == request_.count;
    for (const std::string& word : request_.words) {
      if (word == name) return !full;
    }
    return request_.words.empty() && !full;
  }

 private:
  const Request& request_;
  Loop& loop_;
  unsigned count_ = 0;
};

}  // namespace

int Listen(const Request& request) {
  for (const std::string& word : request.words) wire::SignalNamed(word);
  const Bus bus;
  Loop loop(bus, request.timeout);
  SignalLog log(request, loop);
  const Subscription signals(bus, nullptr, [&](const char* sender, const char* signal, GVariant* arguments) {
    if (log.IsWanted(signal)) loop.Guard([&] { log.Write(sender, signal, arguments); });
  });
  Output::Note(std::string("listening to the bare signals") + (request.timeout == 0 ? "; Ctrl-C ends" : ""));
  return Follow(
      loop, request, [&log] { return log.Count(); }, "signals");
}
