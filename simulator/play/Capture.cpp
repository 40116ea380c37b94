// Captures: JSON lines, as `hlxctl record` and `hlx-simulator run --log` write them.
#include <cmath>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "simulator/model/SignalTable.h"
#include "simulator/model/Values.h"
#include "simulator/play/Located.h"
#include "simulator/play/Script.h"

using catalog::BadValue;

namespace {

/// As the record held it: no range is looked at.
catalog::Scalar HeldIn(const NamedValue& named, const Located& value) {
  const Json& json = value.scalar;
  const bool is_numeric = named.reading().IsNumeric();
  if (json.is_number_integer() && is_numeric && named.reading().kind != catalog::Reading::Kind::kDecimal) {
    return json.get<int64_t>();
  }
  if (json.is_number() && is_numeric) return json.get<double>();
  if (json.is_string() && !is_numeric) return json.get<std::string>();
  return ParseFor(named, value.Text());
}

/// @throws BadValue where the record would hold something else
void RequireFit(const catalog::Value& value, const catalog::Scalar& scalar) {
  constexpr double kRounding = 0.01;
  std::vector<double> record(catalog::InfoOf(value.field.record).size / sizeof(double) + 1);
  StoreField(value, record.data(), scalar);
  if (!value.reading.IsNumeric()) return;
  const double wanted = catalog::NumberIn(scalar);
  const double held = catalog::NumberIn(ReadField(value, record.data()));
  if (!(std::abs(held - wanted) <= kRounding)) {
    throw BadValue(value.FullName() + ": " + Compact(JsonOf(scalar)) + " would be " + Compact(JsonOf(held)) +
                   " in the record");
  }
}

class CaptureReader {
 public:
  explicit CaptureReader(Script& script) : script_(script) {}

  void Read(const std::string& text) {
    for (std::size_t begin = 0; begin < text.size(); ++line_) {
      const std::size_t end = std::min(text.find('\n', begin), text.size());
      if (end > begin) ReadLine(ParseLocated(script_.file, text.substr(begin, end - begin), line_));
      begin = end + 1;
    }
  }

 private:
  [[noreturn]] void Throw(const std::string& what) const { throw BadFile(script_.file, line_, what); }

  void ReadLine(const Located& line) try {
    if (line.kind != Located::Kind::kObject) Throw("an object is needed");
    if (line_ == 1) return ReadHead(line);
    const Located* const time = line.Find("t");
    if (time == nullptr || !time->IsNumber()) Throw("\"t\", the seconds since the beginning, is needed");
    const double before = std::exchange(time_, time->scalar.get<double>());
    if (!(time_ >= 0 && time_ <= kLongest)) Throw("t: " + time->Text() + " is not within 0 to 604800");
    if (time_ < before) Throw("t: " + time->Text() + " is before that of the line above");
    if (const Located* const values = line.Find("values")) ReadValues(*values);
    if (const Located* const signal = line.Find("signal")) ReadSignal(*signal, line.Find("args"));
    script_.length = time_;
  } catch (const BadValue& problem) {
    Throw(problem.what());
  }

  void ReadHead(const Located& head) {
    const Located* const version = head.Find("version");
    if (version == nullptr || version->Text() != "1") Throw("version: 1 is needed");
    if (const Located* const protocol = head.Find("can_protocol")) script_.can_protocol = protocol->Text();
    if (const Located* const values = head.Find("values")) ReadValues(*values);
  }

  void ReadValues(const Located& values) {
    if (values.kind != Located::Kind::kObject) Throw("values: an object is needed");
    for (const auto& [name, value] : values.members) {
      const NamedValue named = ValueNamed(name);
      if (named.value == nullptr) Throw(name + " stands in no record");
      if (value.kind == Located::Kind::kScalar && value.scalar.is_null()) continue;
      const catalog::Scalar held = HeldIn(named, value);
      RequireFit(*named.value, held);
      Add(SetStep{named, held, true});
    }
  }

  void ReadSignal(const Located& name, const Located* arguments) {
    const catalog::Signal& signal = SignalNamed(name.Text());
    Add(EmitStep{&signal, ArgumentsOf(signal, arguments)});
  }

  template <class What>
  void Add(What what) {
    if (script_.steps.size() == kMostSteps) Throw(kTooMany);
    script_.Append(time_, line_, std::move(what));
  }

  Script& script_;
  int line_ = 1;
  double time_ = 0;
};

}  // namespace

void ReadCapture(const std::string& text, Script& script) { CaptureReader(script).Read(text); }
