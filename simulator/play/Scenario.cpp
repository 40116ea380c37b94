// Scenarios: what a person wrote, in the form of hlx-scenario.schema.json.
#include <algorithm>
#include <cmath>
#include <sstream>

#include "catalog/Catalog.h"
#include "dbus_system.h"
#include "simulator/model/Names.h"
#include "simulator/model/SignalTable.h"
#include "simulator/play/Located.h"
#include "simulator/play/Script.h"
#include "simulator/service/Faults.h"
#include "simulator/service/MethodTable.h"

using catalog::BadValue;
using Kind = Located::Kind;
using Names = std::vector<std::string>;

namespace {

constexpr double kRampPause = 0.1;  ///< seconds between two values of a ramp, unless the scenario says otherwise

double Straight(double part) { return part; }
double Eased(double part) { return part * part * (3 - 2 * part); }
double Quick(double part) { return std::sqrt(part); }
constexpr struct {
  const char* name;
  double (*at)(double part);
} kCurves[] = {{"linear", Straight}, {"ease", Eased}, {"quick", Quick}};

class ScenarioReader {
 public:
  explicit ScenarioReader(Script& script) : script_(script) {}

  void Read(const Located& root) {
    Expect(root, Kind::kObject, "a scenario is an object");
    CheckKeys(root, {"$schema", "format", "version", "title", "can_protocol", "steps"});
    if (TextOf(Needed(root, "format")) != "hlx-scenario") Throw(root, "format: \"hlx-scenario\" is needed");
    if (NumberOf(Needed(root, "version"), "version", 0, 1000) != 1) Throw(root, "version: 1 is needed");
    script_.title = TextOf(Needed(root, "title"));
    if (const Located* const protocol = root.Find("can_protocol")) script_.can_protocol = TextOf(*protocol);
    ReadSteps(Needed(root, "steps"));
    script_.length = time_;
  }

 private:
  struct Row {
    const char* key;
    void (ScenarioReader::*read)(const Located& step, const Located& what);
    Names others;  ///< keys that may stand beside it
  };
  static const std::vector<Row>& Rows();

  [[noreturn]] void Throw(const Located& where, const std::string& what) const {
    throw BadFile(script_.file, where.line, what);
  }
  void Expect(const Located& node, Kind kind, const std::string& what) const {
    if (node.kind != kind) Throw(node, what);
  }
  const Located& Needed(const Located& node, const std::string& key) const {
    const Located* const found = node.Find(key);
    if (found == nullptr) Throw(node, "\"" + key + "\" is needed");
    return *found;
  }
  void CheckKeys(const Located& node, const Names& allowed) const {
    for (const auto& [key, member] : node.members) {
      if (std::find(allowed.begin(), allowed.end(), key) != allowed.end()) continue;
      Throw(member, UnknownAmong("key", key, allowed).what());
    }
  }
  std::string TextOf(const Located& node) const {
    if (!node.scalar.is_string()) Throw(node, "a text is needed, not " + node.Text());
    return node.Text();
  }
  double NumberOf(const Located& node, const std::string& key, double least, double most) const {
    const double number = node.IsNumber() ? node.scalar.get<double>() : std::nan("");
    if (number >= least && number <= most) return number;
    char text[100];
    std::snprintf(text, sizeof text, ": a number from %g to %g is needed, not ", least, most);
    Throw(node, key + text + node.Text());
  }
  double Optional(const Located& step, const char* key, double least, double most, double otherwise) const {
    const Located* const found = step.Find(key);
    return found == nullptr ? otherwise : NumberOf(*found, key, least, most);
  }

  /// What the model says is wrong gets its place.
  template <class Do>
  auto At(const Located& where, Do what) const try {
    return what();
  } catch (const BadValue& problem) {
    Throw(where, problem.what());
  }

  template <class What>
  void Add(const Located& where, double time, What what) {
    if (script_.steps.size() == kMostSteps) Throw(where, kTooMany);
    script_.Append(time, where.line, std::move(what));
  }

  void ReadSteps(const Located& steps) {
    Expect(steps, Kind::kArray, "steps: an array is needed");
    const double begin = time_;
    for (const Located& step : steps.items) {
      Expect(step, Kind::kObject, "a step is an object");
      if (const Located* const at = step.Find("at")) {
        const double time = begin + NumberOf(*at, "at", 0, kLongest);
        if (time < time_) Throw(*at, "at: " + at->Text() + " is before the step above ends");
        time_ = time;
      }
      Pass(step, Optional(step, "after", 0, kLongest, 0));
      ReadStep(step);
    }
  }
  void Pass(const Located& where, double seconds) {
    time_ += seconds;
    if (time_ > kLongest) Throw(where, "longer than a week");
  }

  void ReadStep(const Located& step) {
    const Row* row = nullptr;
    Names all = {"at", "after"};
    for (const Row& candidate : Rows()) {
      all.emplace_back(candidate.key);
      if (step.Find(candidate.key) == nullptr) continue;
      if (row != nullptr) Throw(step, std::string(row->key) + " and " + candidate.key + " are steps of their own");
      row = &candidate;
    }
    if (row == nullptr) {
      CheckKeys(step, all);
      if (step.Find("at") == nullptr && step.Find("after") == nullptr) Throw(step, "a step needs something to do");
      return;  // a pause
    }
    Names allowed = row->others;
    allowed.insert(allowed.end(), {"at", "after", row->key});
    CheckKeys(step, allowed);
    (this->*row->read)(step, *step.Find(row->key));
  }

  NamedValue Settable(const std::string& name, const Located& where) const {
    return At(where, [&] {
      const NamedValue named = ValueNamed(name);
      if (!named.IsSettable()) throw BadValue(name + " cannot be set: the unit decides it");
      return named;
    });
  }

  void ReadSet(const Located& step, const Located& set) {
    Expect(set, Kind::kObject, "set: an object of names and values is needed");
    const Located* const silent = step.Find("silent");
    if (silent != nullptr && !silent->scalar.is_boolean()) Throw(*silent, "silent: true or false is needed");
    for (const auto& [name, value] : set.members) {
      const NamedValue named = Settable(name, value);
      const std::string text = value.Text();
      Add(value, time_,
          SetStep{named,
                  At(value,
                     [&, &where = value] {
                       return Expect(where, Kind::kScalar, "a number or a word is needed"), ParseFor(named, text);
                     }),
                  silent != nullptr && silent->scalar == true});
    }
  }

  void ReadEmit(const Located& step, const Located& name) {
    Add(name, time_, At(name, [&] {
          const catalog::Signal& signal = SignalNamed(TextOf(name));
          return EmitStep{&signal, ArgumentsOf(signal, step.Find("args"))};
        }));
  }

  void ReadRamp(const Located& step, const Located& ramp) {
    Expect(ramp, Kind::kObject, "ramp: an object of names and [from, to] is needed");
    const double seconds = NumberOf(Needed(step, "seconds"), "seconds", 0, kLongest);
    const double every = Optional(step, "every", 0.001, 3600, kRampPause);
    const Located* const curve = step.Find("curve");
    double (*at)(double) = Straight;
    if (curve != nullptr) {
      const auto* const found = std::find_if(std::begin(kCurves), std::end(kCurves),
                                             [&](const auto& row) { return TextOf(*curve) == row.name; });
      if (found == std::end(kCurves)) Throw(*curve, "curve: linear, ease or quick is needed, not " + curve->Text());
      at = found->at;
    }
    if (seconds / every > kMostSteps) Throw(ramp, kTooMany);
    const auto count = std::max<int64_t>(1, std::llround(seconds / every));
    for (const auto& [name, ends] : ramp.members) {
      const NamedValue named = Settable(name, ends);
      if (!named.reading().IsNumeric()) Throw(ends, name + " is no number");
      if (ends.kind != Kind::kArray || ends.items.size() != 2) Throw(ends, name + ": [from, to] is needed");
      const double from = NumberOf(ends.items[0], name, -1e9, 1e9);
      const double to = NumberOf(ends.items[1], name, -1e9, 1e9);
      std::string last;
      for (int64_t i = 0; i <= count; ++i) {
        const double part = static_cast<double>(i) / static_cast<double>(count);
        char text[64];
        std::snprintf(text, sizeof text, "%.*f", named.reading().decimals, from + (to - from) * at(part));
        if (std::exchange(last, text) == text && i != count) continue;  // nothing new to tell
        Add(ends, time_ + seconds * part, SetStep{named, At(ends, [&] { return ParseFor(named, text); })});
      }
    }
    Pass(step, seconds);
  }

  /// Reads one round, and copies it.
  void ReadRepeat(const Located& step, const Located& times) {
    const auto rounds = static_cast<std::size_t>(NumberOf(times, "repeat", 1, kMostSteps));
    const Located& steps = Needed(step, "steps");
    if (steps.items.empty()) Throw(steps, "steps: there is nothing to repeat");
    std::vector<Step>& all = script_.steps;
    const std::size_t first = all.size();
    const double begin = time_;
    ReadSteps(steps);
    const std::size_t last = all.size();
    const double length = time_ - begin;
    if ((last - first) * rounds > kMostSteps - first) Throw(times, kTooMany);
    Pass(times, length * static_cast<double>(rounds - 1));
    all.reserve(first + (last - first) * rounds);
    for (std::size_t round = 1; round < rounds; ++round) {
      for (std::size_t i = first; i < last; ++i) {
        all.push_back(all[i]);
        all.back().time += length * static_cast<double>(round);
      }
    }
  }

  void ReadFault(const Located& step, const Located& fault) {
    FaultStep what;
    std::istringstream words(TextOf(fault));
    for (std::string word; words >> word;) what.words.push_back(word);
    what.times = static_cast<unsigned int>(Optional(step, "times", 1, 1e6, 0));
    At(fault, [&] { return what.words == Names{"clear"} || ParseFault(what.words, what.times).left == what.times; });
    Add(fault, time_, what);
  }

  void ReadExpect(const Located& step, const Located& method) {
    ExpectStep what;
    what.method = At(method, [&] { return MethodNamed(TextOf(method)).method; });
    what.timeout = Optional(step, "timeout", 0, 86400, what.timeout);
    if (const Located* const args = step.Find("args")) {
      Expect(*args, Kind::kObject, "args: an object of names and values is needed");
      for (const auto& [name, value] : args->members) {
        CheckArgument(what.method, name, value);
        what.arguments.emplace_back(name, value.Text());
      }
    }
    Add(method, time_, what);
  }

  void CheckArgument(const std::string& method, const std::string& name, const Located& value) const {
    const GDBusMethodInfo* const info =
        g_dbus_interface_info_lookup_method(com_vorn_linux_system_interface_info(), method.c_str());
    Names all;
    for (GDBusArgInfo** arg = info->in_args; arg != nullptr && *arg != nullptr; ++arg) all.emplace_back((*arg)->name);
    if (std::find(all.begin(), all.end(), name) == all.end()) {
      Throw(value, UnknownAmong("argument of " + method, name, all).what());
    }
    Expect(value, Kind::kScalar, name + ": a number or a word is needed");
  }

  void ReadLabel(const Located& /*step*/, const Located& label) { Add(label, time_, LabelStep{TextOf(label)}); }

  void ReadReboot(const Located& /*step*/, const Located& how) {
    Add(how, time_, At(how, [&] { return RebootStep{LifeCycle::BootNamed(TextOf(how))}; }));
  }

  Script& script_;
  double time_ = 0;
};

const std::vector<ScenarioReader::Row>& ScenarioReader::Rows() {
  static const std::vector<Row> rows = {{"set", &ScenarioReader::ReadSet, {"silent"}},
                                        {"emit", &ScenarioReader::ReadEmit, {"args"}},
                                        {"ramp", &ScenarioReader::ReadRamp, {"seconds", "curve", "every"}},
                                        {"repeat", &ScenarioReader::ReadRepeat, {"steps"}},
                                        {"fault", &ScenarioReader::ReadFault, {"times"}},
                                        {"expect", &ScenarioReader::ReadExpect, {"args", "timeout"}},
                                        {"label", &ScenarioReader::ReadLabel, {}},
                                        {"reboot", &ScenarioReader::ReadReboot, {}}};
  return rows;
}

}  // namespace

void ReadScenario(const std::string& text, Script& script) {
  ScenarioReader(script).Read(ParseLocated(script.file, text));
}
