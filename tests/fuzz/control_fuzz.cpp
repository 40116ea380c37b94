// Fuzz target over what people and programs ask of a simulated unit: lines of "set NAME VALUE", "emit SIGNAL
// ARGUMENT…", "fault WORD…" and "command AREA NAME ARGUMENT…". All of it is done or refused in words, and a value that
// was set reads back as the words that set it again.
#include "catalog/Catalog.h"
#include "dbus/GLibPtr.h"
#include "simulator/model/SignalTable.h"
#include "simulator/model/ValueNames.h"
#include "simulator/service/Faults.h"
#include "simulator/service/MethodTable.h"
#include "tests/fuzz/Input.h"
#include "tests/support/FakePlatform.h"

namespace {

using Words = std::vector<std::string>;

void SetValue(Unit& unit, const Words& words) {
  if (words.size() < 3) return;
  const NamedValue named = ValueNamed(words[1]);
  const catalog::Scalar scalar = ParseFor(named, words[2]);
  Set(unit, named, scalar, false);
  const std::string told = InWords(named, Get(unit, named));
  if (named.reading().kind == catalog::Reading::Kind::kText) return;
  Require(told.empty() || told == InWords(named, ParseFor(named, told)));
}

void Emit(Unit& unit, const Words& words) {
  if (words.size() < 2) return;
  std::vector<GLibPtr<GVariant>> arguments;
  for (std::size_t i = 2; i < words.size(); ++i) {
    if (g_utf8_validate(words[i].c_str(), -1, nullptr) == FALSE) return;  // no bus carries it
    arguments.emplace_back(g_variant_ref_sink(g_variant_new_string(words[i].c_str())));
  }
  const catalog::Signal& signal = SignalNamed(words[1]);
  unit.Announce(signal, ScalarsOf(signal, arguments));
}

void Command(const Words& words) {
  if (words.size() < 3) return;
  const auto area = catalog::FindArea(words[1]);
  if (!area) return;
  const catalog::Command* const command = catalog::FindCommand(*area, words[2]);
  if (command == nullptr) return void(catalog::NearestCommands(*area, words[2]));
  const auto parameters = command->Parameters();
  for (std::size_t i = 0; i < parameters.size() && i + 3 < words.size(); ++i) {
    catalog::Parse(parameters[i].reading, words[i + 3]);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  static Unit unit;
  static Models models(unit, LifeCycle::Hooks{[] {}, [] {}, [](bool) {}, [](bool) {}});
  fake::Reset();
  for (const std::string& line : Input::Lines(Input(data, size).Rest())) {
    const Words words = Input::Lines(line, ' ');
    if (words.empty()) continue;
    try {
      if (words[0] == "set") SetValue(unit, words);
      if (words[0] == "emit") Emit(unit, words);
      if (words[0] == "fault") Require(!ParseFault({words.begin() + 1, words.end()}, 1).words.empty());
      if (words[0] == "command") Command(words);
    } catch (const std::exception& problem) {
      Require(*problem.what() != '\0');
    }
  }
  return 0;
}
