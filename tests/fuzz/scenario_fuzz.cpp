// Fuzz target over the files that play takes: a scenario, or a capture (the first byte is odd). What is read has its
// steps in order and within the limits; anything else is refused with the place where it is wrong.
#include <variant>

#include "simulator/play/Located.h"
#include "simulator/play/Script.h"
#include "tests/fuzz/Input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  Input input(data, size);
  Script script;
  script.file = "FILE";
  script.is_capture = (input.Byte() & 1) != 0;
  try {
    script.is_capture ? ReadCapture(input.Rest(), script) : ReadScenario(input.Rest(), script);
  } catch (const BadFile& problem) {
    Require(std::string(problem.what()).rfind("FILE:", 0) == 0);
    return 0;
  }
  Require(script.steps.size() <= kMostSteps && script.length >= 0 && script.length <= kLongest);
  double before = 0;
  for (const Step& step : script.steps) {
    Require(step.time >= before && step.time <= script.length && step.line > 0);
    before = step.time;
    if (script.is_capture)
      Require(std::holds_alternative<SetStep>(step.what) || std::holds_alternative<EmitStep>(step.what));
  }
  return 0;
}
