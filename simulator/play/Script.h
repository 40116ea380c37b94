/// Scenarios and captures as what they come to: steps, each at its time.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "simulator/model/LifeCycle.h"
#include "simulator/model/ValueNames.h"

struct SetStep {
  NamedValue value;
  catalog::Scalar scalar;
  bool silent = false;  ///< record and saved setting alone, whatever the value is
};
struct EmitStep {
  const catalog::Signal* signal;
  std::vector<catalog::Scalar> arguments;
};
struct FaultStep {
  std::vector<std::string> words;  ///< "clear" alone ends all
  unsigned int times = 0;
};
/// Holds the clock until the call comes. One that came since the last expectation, or since the beginning, will do.
struct ExpectStep {
  std::string method;
  std::vector<std::pair<std::string, std::string>> arguments;  ///< those that must be so
  double timeout = 10;                                         ///< seconds, at any speed
};
struct LabelStep {
  std::string text;
};
struct RebootStep {
  LifeCycle::Boot boot;
};

struct Step {
  double time = 0;  ///< seconds from the beginning
  int line = 0;
  std::variant<SetStep, EmitStep, FaultStep, ExpectStep, LabelStep, RebootStep> what;
};

struct Script {
  std::string file;
  std::string title;
  std::string can_protocol;  ///< that it was made for; empty: any
  bool is_capture = false;
  std::vector<Step> steps;  ///< by time
  double length = 0;

  /// Filled in its place: g++ 14 takes the move of a whole step for a use of what was not initialised.
  template <class What>
  void Append(double time, int line, What what) {
    Step& step = steps.emplace_back();
    step.time = time;
    step.line = line;
    step.what = std::move(what);
  }
};

constexpr std::size_t kMostBytes = 64U << 20U;  ///< of a file
constexpr std::size_t kMostSteps = 1000000;
constexpr char kTooMany[] = "more than 1000000 steps";
constexpr double kLongest = 7.0 * 86400;  ///< seconds

/// Reads a scenario or a capture: a file, or the name of a scenario that was installed. @throws BadFile, or
/// catalog::BadValue when it is not to be had
Script ReadScript(const std::string& name);

/// What a word of the command line means: the full path of a file that is here, or the name of a scenario.
std::string ScriptNamed(const std::string& word);

/// What was installed: names and titles.
std::vector<std::pair<std::string, std::string>> InstalledScenarios();

// The two kinds of files, for ReadScript().
struct Located;
/// Of a signal, from an array; null for none. @throws catalog::BadValue
std::vector<catalog::Scalar> ArgumentsOf(const catalog::Signal& signal, const Located* array);
void ReadScenario(const std::string& text, Script& script);
void ReadCapture(const std::string& text, Script& script);
