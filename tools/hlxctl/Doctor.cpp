#include "tools/hlxctl/Doctor.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "tools/common/ExitCode.h"
#include "tools/hlxctl/Verbs.h"

namespace {

struct Check {
  const char* name;
  Findings (*run)(Patient&);
};

constexpr Check kChecks[] = {
    {"bus", CheckBus},
    {"name", CheckOwner},
    {"answer", CheckLife},
    {"interface", CheckInterface},
    {"faults", CheckFaults},
    {"record", CheckSegments},
    {"values", CheckValues},
    {"motion", CheckMotion},
    {"zones", CheckZones},
    {"localtime", CheckLocalTime},
    {"configuration", CheckConfiguration},
    {"settings", CheckSettings},
    {"log", CheckLog},
    {"hmi", CheckHmi},
    {"programs", CheckPrograms},
};

constexpr const char* kHealths[] = {"ok", "warning", "failure"};
constexpr Tone kTones[] = {Tone::kGood, Tone::kWarning, Tone::kBad};

const char* NameOf(Health health) { return kHealths[static_cast<std::size_t>(health)]; }

void Print(const char* check, const Finding& finding) {
  std::string health = NameOf(finding.health);
  health.resize(9, ' ');
  std::string name = check;
  name.resize(15, ' ');
  Output::Line(Output::Paint(health, kTones[static_cast<std::size_t>(finding.health)]) + name +
               Printable(finding.text) + (finding.advice.empty() ? "" : " → ") + finding.advice);
  Output::Flush();  // some checks take their time
}

}  // namespace

std::string Enumerate(const std::vector<std::string>& words) {
  std::string text;
  for (std::size_t i = 0; i < words.size(); ++i) {
    text.append(i == 0 ? "" : i + 1 < words.size() ? ", " : " and ").append(words[i]);
  }
  return text;
}

int Doctor(const Request& request) {
  Patient patient;
  Health worst = Health::kOk;
  std::vector<std::string> failures;
  Json list = Json::array();
  for (const Check& check : kChecks) {
    for (const Finding& finding : check.run(patient)) {
      worst = std::max(worst, finding.health);
      if (finding.health == Health::kFailure) failures.push_back(finding.text);
      if (request.json) {
        list.push_back({{"check", check.name}, {"health", NameOf(finding.health)}, {"text", finding.text}});
        if (!finding.advice.empty()) list.back()["advice"] = finding.advice;
      } else {
        Print(check.name, finding);
      }
    }
  }
  const int code = failures.empty() ? kExitDone : kExitUnhealthy;
  if (request.json) {
    Json json = {{"ok", failures.empty()}};
    if (!failures.empty()) json.update({{"error", Enumerate(failures)}, {"code", code}});
    json.update({{"health", NameOf(worst)}, {"checks", list}});
    Output::JsonLine(json);
  }
  return code;
}
