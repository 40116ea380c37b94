#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <ctime>
#include <iostream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "catalog/Moment.h"
#include "dbus/VariantRecord.h"
#include "tools/hlxctl/Bus.h"
#include "tools/hlxctl/Failure.h"
#include "tools/hlxctl/Records.h"
#include "tools/hlxctl/Values.h"
#include "tools/hlxctl/Verbs.h"
#include "tools/hlxctl/Wire.h"

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
  const Json result = wire::ToJson(reply.get());
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

/// The 32-bit numbers of which a record on the bus consists.
class RecordNumbers {
 public:
  void Add(const catalog::Reading& reading, const catalog::Scalar& scalar) {
    using Kind = catalog::Reading::Kind;
    if (reading.kind == Kind::kDate) {
      AddStruct<SystemTime::DateInfo>(catalog::ReadDate, std::get<std::string>(scalar));
    } else if (reading.kind == Kind::kClock) {
      AddStruct<SystemTime::TimeInfo>(catalog::ReadTime, std::get<std::string>(scalar));
    } else {
      numbers_.push_back(static_cast<int32_t>(std::get<int64_t>(scalar)));
    }
  }
  void AddUtc(int64_t seconds) {
    const auto moment = static_cast<time_t>(seconds);
    std::tm utc{};
    gmtime_r(&moment, &utc);
    numbers_ = {utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday, utc.tm_wday, utc.tm_hour, utc.tm_min, utc.tm_sec};
  }
  GVariant* Variant() const { return build_variant_data(numbers_.data(), numbers_.size() * sizeof(int32_t)); }

 private:
  template <class Struct>
  void AddStruct(bool (*read)(const std::string&, Struct*), const std::string& text) {
    Struct value{};
    read(text, &value);
    int32_t words[sizeof(Struct) / sizeof(int32_t)];
    std::memcpy(words, &value, sizeof value);
    numbers_.insert(numbers_.end(), std::begin(words), std::end(words));
  }

  std::vector<int32_t> numbers_;
};

GVariant* OnWire(char type, const catalog::Scalar& scalar) {
  if (type == 's') return g_variant_new_string(std::get<std::string>(scalar).c_str());
  const int64_t number = std::get<int64_t>(scalar);
  if (type == 'y') return g_variant_new_byte(static_cast<guchar>(number));
  if (type == 'b') return g_variant_new_boolean(number != 0);
  if (type == 'u') return g_variant_new_uint32(static_cast<guint32>(number));
  return g_variant_new_int32(static_cast<gint32>(number));
}

/// What `command` carries on the bus.
GVariant* Arguments(const catalog::Command& command, const std::vector<catalog::Scalar>& scalars) {
  const GDBusMethodInfo& method = wire::MethodNamed(command.method);
  const catalog::View<catalog::Parameter> parameters = command.Parameters();
  std::vector<GLibPtr<GVariant>> arguments;
  const auto add = [&arguments](GVariant* argument) { arguments.emplace_back(g_variant_ref_sink(argument)); };
  if (wire::Count(method.in_args) == 1 && *method.in_args[0]->signature == 'v') {
    RecordNumbers record;
    const bool carplay = std::strcmp(command.function, "SetCarplayTimeSync") == 0;
    if (carplay) record.AddUtc(std::get<int64_t>(scalars[0]));
    for (std::size_t i = 0; i < scalars.size() && !carplay; ++i) record.Add(parameters[i].reading, scalars[i]);
    add(record.Variant());
  } else {
    for (std::size_t i = 0; i < scalars.size(); ++i) add(OnWire(*method.in_args[i]->signature, scalars[i]));
  }
  return wire::Tuple(arguments);
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
  std::vector<catalog::Scalar> scalars;
  for (std::size_t i = 0; i < request.words.size(); ++i) {
    const catalog::Parameter& parameter = command.Parameters()[i];
    try {
      scalars.push_back(ParseValue(parameter.reading, request.words[i]));
    } catch (const std::invalid_argument& problem) {
      throw std::invalid_argument(std::string(parameter.name) + ": " + problem.what());
    }
    what += " " + request.words[i];
  }
  if (command.asks_first && !request.yes) Confirm(what);
  const Bus bus;
  bus.RequireLife();
  for (const catalog::Record record : RecordsOf(command.area)) RecordOf(record);
  return Deliver(request, bus, what, command.method, Arguments(command, scalars));
}

int Call(const Request& request) {
  const std::string& name = request.words.front();
  const GDBusMethodInfo& method = wire::MethodNamed(name);
  const std::string signature = wire::Signature(method.in_args);
  const std::size_t count = wire::Count(method.in_args);
  if (request.words.size() - 1 != count) {
    throw std::invalid_argument(name + " takes " + std::to_string(count) + " arguments " + signature + ", not " +
                                std::to_string(request.words.size() - 1));
  }
  std::vector<GLibPtr<GVariant>> arguments;
  std::string what = name;
  for (std::size_t i = 0; i < count; ++i) {
    arguments.push_back(wire::Argument(*method.in_args[i], request.words[i + 1]));
    what += " " + request.words[i + 1];
  }
  if (AsksFirst(name) && !request.yes) Confirm(what);
  return Deliver(request, Bus(), what, name.c_str(), wire::Tuple(arguments));
}
