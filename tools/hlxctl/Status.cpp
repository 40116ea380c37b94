#include <nlohmann/json.hpp>

#include "platform/LibConfigs.h"
#include "tools/common/Bus.h"
#include "tools/common/Failure.h"
#include "tools/common/Records.h"
#include "tools/common/Values.h"
#include "tools/hlxctl/Verbs.h"

namespace {

struct Line {
  const char* heading;
  const char* values[8];
};

constexpr Line kLines[] = {
    {"Power", {"power.acc", "power.screen", "power.radio", "power.head_lights", "power.wakeup"}},
    {"Vehicle",
     {"misc.car_speed", "misc.engine_speed", "misc.total_mile", "misc.parking", "misc.reverse", "misc.doors",
      "misc.outside_temperature"}},
    {"Time", {"time.date", "time.time", "time.zone", "time.dst"}},
    {"Versions", {"info.arm_version", "info.hardware_version", "info.mcu_version", "misc.can_version"}},
};

/// What is worth a warning, and what is not.
struct Expectation {
  const char* value;
  int64_t fine[2];
};

constexpr Expectation kExpectations[] = {
    {"misc.radio_antenna", {0, 5}},      {"misc.gps_antenna", {0, 5}},        {"misc.dab_antenna", {0, 5}},
    {"misc.microphone", {0, 5}},         {"misc.speaker_front_left", {0, 5}}, {"misc.speaker_front_right", {0, 5}},
    {"misc.speaker_rear_left", {0, 5}},  {"misc.speaker_rear_right", {0, 5}}, {"misc.urgent_mute", {0, 0}},
    {"time.clock_reset_needed", {0, 0}},
};

/// Collects what cannot be had once, in the words of the failure.
class Warnings {
 public:
  void Add(const std::string& text) {
    for (const std::string& known : texts_) {
      if (known == text) return;
    }
    texts_.push_back(text);
  }
  const std::vector<std::string>& Texts() const { return texts_; }

  /// What the value is; nothing, and a warning, where it is not to be had.
  catalog::Scalar Read(const catalog::Value& value) try { return ::Read(value); } catch (const Failure& failure) {
    Add(failure.what());
    return {};
  }

 private:
  std::vector<std::string> texts_;
};

/// A byte of flags in words: "Doors closed", or "Doors: Trunk open".
std::string FlagsOf(const catalog::Value& byte) {
  std::string text;
  std::string none;
  for (const catalog::Value& flag : catalog::Values(byte.area)) {
    const bool of_byte =
        flag.IsBit() && flag.field.record == byte.field.record && flag.field.offset == byte.field.offset;
    if (!of_byte) continue;
    none = Bare(flag.reading, int64_t{0});
    const catalog::Scalar now = ReadUnlessEmpty(flag).value_or(int64_t{0});
    if (now != catalog::Scalar(int64_t{0})) {
      text.append(text.empty() ? ": " : ", ").append(flag.label).append(" ") += Bare(flag.reading, now);
    }
  }
  return byte.group + (text.empty() ? " " + none : text);
}

struct Service {
  std::string process;
  unsigned pid = 0;
  std::string problem;  ///< empty: it answers
};

Service Look() {
  Service service;
  try {
    const Bus bus;
    bus.RequireOwner();
    service.pid = bus.ProcessOf(kServiceName);
    service.process = ProcessName(service.pid);
    bus.RequireLife();
  } catch (const Failure& failure) {
    service.problem = failure.what();
  }
  return service;
}

void CheckExpectations(Warnings& warnings) {
  for (const Expectation& expected : kExpectations) {
    const catalog::Value& value = ValueNamed(expected.value);
    const catalog::Scalar scalar = warnings.Read(value);
    const auto* const number = std::get_if<int64_t>(&scalar);
    if (number == nullptr || *number == expected.fine[0] || *number == expected.fine[1]) continue;
    warnings.Add(std::string(value.label) + ": " + Bare(value.reading, scalar));
  }
}

}  // namespace

int Status(const Request& request) {
  const Service service = Look();
  Warnings warnings;
  if (!service.problem.empty()) warnings.Add(service.problem);
  Json values = Json::object();
  bool sees_records = false;
  Table table;
  const std::string process = service.process + " (process " + std::to_string(service.pid) + ")";
  table.Row({{"Service", Tone::kStrong},
             service.problem.empty() ? Cell(process + ", answers", Tone::kGood)
             : service.pid != 0      ? Cell(process + ", does not answer", Tone::kBad)
                                     : Cell("not on the bus", Tone::kBad)});
  for (const Line& line : kLines) {
    std::string text;
    for (const char* const name : line.values) {
      if (name == nullptr) break;
      const catalog::Value& value = ValueNamed(name);
      const catalog::Scalar scalar = warnings.Read(value);
      values[name] = ToJson(value.reading, scalar);
      sees_records = sees_records || !std::holds_alternative<std::monostate>(scalar);
      if (!text.empty()) text += ", ";
      text += value.reading.kind == catalog::Reading::Kind::kBits && !std::holds_alternative<std::monostate>(scalar)
                  ? FlagsOf(value)
                  : std::string(value.label) + " " + ForPeople(value.reading, scalar);
    }
    table.Row({{line.heading, Tone::kStrong}, text});
  }
  const std::string protocol = GetLibConfigs()->GetString("/system/using_can_protocol");
  table.Row({{"CAN box", Tone::kStrong},
             protocol.empty() ? Cell("no protocol configured") : Cell("protocol " + Printable(protocol))});
  CheckExpectations(warnings);
  const int code = service.problem.empty() && sees_records ? kExitDone : kExitNoService;
  if (request.json) {
    Json json = {{"ok", code == kExitDone}};
    if (code != kExitDone) json.update({{"error", warnings.Texts()[0]}, {"code", code}});
    json["service"] = {{"process", service.process}, {"pid", service.pid}};
    json["can_protocol"] = protocol;
    json["values"] = values;
    json["warnings"] = warnings.Texts();
    Output::JsonLine(json);
    return code;
  }
  for (const std::string& warning : warnings.Texts()) table.Row({{"Warning", Tone::kWarning}, warning});
  table.Print();
  return code;
}
