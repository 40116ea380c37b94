#include "simulator/play/CaptureWriter.h"

#include <cerrno>
#include <cstring>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "cli/TimeStamp.h"
#include "platform/LibConfigs.h"
#include "simulator/model/ValueNames.h"

namespace {

constexpr int kFormatVersion = 1;

/// What the four records hold, flags as their byte.
Json Snapshot(const Unit& unit) {
  Json values = Json::object();
  for (const NamedValue& named : HeldValues()) {
    if (named.value != nullptr && named.value->InRecord() && !named.value->IsBit()) {
      values[named.name()] = JsonOf(Get(unit, named));
    }
  }
  return values;
}

}  // namespace

CaptureWriter::CaptureWriter(Simulator& simulator, const std::string& directory)
    : capture_(Open(directory + "/capture.jsonl")), calls_(Open(directory + "/calls.jsonl")) {
  Unit& unit = simulator.unit();
  const Json head = {{"format", "hlx-capture"},
                     {"version", kFormatVersion},
                     {"wall", JsonTimeStamp()},
                     {"can_protocol", GetLibConfigs()->GetString("/system/using_can_protocol")},
                     {"values", Snapshot(unit)}};
  std::fputs((Compact(head) + "\n").c_str(), capture_.get());
  simulator.wire().Listen([this](const catalog::Signal& signal, GVariant* tuple) {
    Write({{"signal", signal.name}, {"args", JsonOf(tuple)}});
  });
  unit.observers().written.push_back([this](const std::string& name, const catalog::Scalar& scalar) {
    Write({{"values", {{name, JsonOf(scalar)}}}});
  });
  simulator.calls().Listen([this](const Call& call) {
    Json arguments = Json::array();
    for (const auto& argument : JsonOf(call.arguments.get())) arguments.push_back(argument);
    Write({{"call", call.method}, {"args", arguments}, {"sender", call.sender}});
    std::fputs((Compact(JsonOf(call)) + "\n").c_str(), calls_.get());
  });
}

CaptureWriter::File CaptureWriter::Open(const std::string& name) {
  File file(std::fopen(name.c_str(), "we"));
  if (file == nullptr) throw std::runtime_error(name + ": " + std::strerror(errno));
  std::setvbuf(file.get(), nullptr, _IOLBF, 0);
  return file;
}

void CaptureWriter::Write(const Json& what) {
  Json line = {{"t", static_cast<double>(g_get_monotonic_time() - start_) / G_USEC_PER_SEC}, {"wall", JsonTimeStamp()}};
  line.update(what);
  std::fputs((Compact(line) + "\n").c_str(), capture_.get());
}

Json JsonOf(const Call& call) {
  return {{"wall", JsonTimeStamp(call.time)},
          {"call", call.method},
          {"args", JsonOf(call.arguments.get())},
          {"sender", call.sender}};
}
