#include "tools/hlxctl/Condition.h"

#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "catalog/EveryEvent.h"
#include "tools/common/Records.h"
#include "tools/common/Values.h"

using catalog::Scalar;

namespace {

constexpr char kBack[] = "OnServiceBack";
constexpr char kLost[] = "OnServiceLost";
constexpr char kOperators[] = ": use =, !=, <, >, <= or >=";

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string> EventNames() {
  std::vector<std::string> names = {kBack, kLost};
  for (const catalog::Signal& signal : catalog::Signals()) {
    for (const char* const callback : signal.callbacks) {
      if (callback != nullptr) names.emplace_back(callback);
    }
  }
  return names;
}

/// What a value is compared with may lie outside the range that it is set from.
Scalar Operand(catalog::Reading reading, const std::string& text) {
  reading.least = std::numeric_limits<int64_t>::min();
  reading.most = std::numeric_limits<int64_t>::max();
  return ParseValue(reading, text);
}

bool HasOrder(const catalog::Reading& reading) {
  using Kind = catalog::Reading::Kind;
  return reading.kind != Kind::kFlag && reading.kind != Kind::kNamed && reading.kind != Kind::kBits;
}

bool IsLess(const Scalar& one, const Scalar& other) {
  const auto* const text = std::get_if<std::string>(&one);
  return text != nullptr ? *text < std::get<std::string>(other) : catalog::NumberIn(one) < catalog::NumberIn(other);
}

}  // namespace

Condition::Condition(const std::string& text) : text_(text) {
  const std::size_t at = text.find_first_of("=!<>");
  if (at != std::string::npos) {
    operator_ = text.substr(at, text.compare(at + 1, 1, "=") == 0 ? 2 : 1);
    const std::string operand = Trimmed(text.substr(at + operator_.size()));
    if (operator_ == "==") operator_ = "=";
    if (operator_ == "!") throw std::invalid_argument("'" + text + "': '!' alone is no comparison" + kOperators);
    value_ = &ValueNamed(Trimmed(text.substr(0, at)));
    try {
      wanted_ = Operand(value_->reading, operand);
      if (operator_ != "=" && operator_ != "!=" && !HasOrder(value_->reading)) {
        throw std::invalid_argument("it has words, none of which is more than another: compare with = or !=");
      }
    } catch (const std::invalid_argument& problem) {
      throw std::invalid_argument(value_->FullName() + ": " + problem.what());
    }
    return;
  }
  signal_ = catalog::SignalOf(text);
  if (signal_ != nullptr || text == kBack || text == kLost) return;
  if (catalog::FindValue(text) != nullptr) {
    throw std::invalid_argument("'" + text + "' is a value: say what it should be, as \"" + text + "=…\"");
  }
  throw std::invalid_argument("'" + text + "' is neither a comparison nor an event" + DidYouMean(text, EventNames()));
}

bool Condition::Holds(const Scalar& scalar) const {
  if (std::holds_alternative<std::monostate>(scalar)) return false;
  // Equal is what reads the same: any number but 0 is "on".
  const bool same = Bare(value_->reading, scalar) == Bare(value_->reading, wanted_);
  if (operator_ == "=" || operator_ == "!=") return same == (operator_ == "=");
  const bool less = IsLess(scalar, wanted_);
  const bool more = IsLess(wanted_, scalar);
  return operator_[0] == '<' ? less || (operator_ == "<=" && !more) : more || (operator_ == ">=" && !less);
}

void Condition::RequireRecord() const { Read(*value_); }

bool Condition::IsMet() const {
  if (!NeedsLooks()) return false;
  const std::optional<Scalar> now = ReadUnlessEmpty(*value_);
  return now && Holds(*now);
}

bool Condition::IsMet(const catalog::Event& event) const {
  if (value_ == nullptr) return text_ == event.callback;
  for (const catalog::EventArgument& argument : event.arguments) {
    if (argument.value == value_ && Holds(argument.scalar)) return true;
  }
  return false;
}

bool Condition::IsMet(bool service_there) const { return text_ == (service_there ? kBack : kLost); }

void Condition::Print(const Request& request) const {
  const Scalar scalar = Read(*value_);
  if (request.json) {
    Output::JsonLine({{value_->FullName(), ToJson(value_->reading, scalar)}});
  } else {
    Output::Line(value_->FullName() + " " + ForPeople(value_->reading, scalar));
  }
}

std::string Condition::Now() const {
  const std::optional<Scalar> now = NeedsLooks() ? ReadUnlessEmpty(*value_) : std::nullopt;
  return now ? "; it is " + ForPeople(value_->reading, *now) : "";
}
