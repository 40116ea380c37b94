#include "cli/ManualPage.h"
#include "tools/common/ExitCode.h"
#include "tools/common/Values.h"
#include "tools/hlxctl/CommandLine.h"
#include "tools/hlxctl/Verbs.h"

namespace {

constexpr char kDescription[] =
    "What does the unit say, what happens when, and why does it not work: hlxctl looks into a head unit, commands it "
    "and "
    "listens to it. Without a verb it shows the unit on one screen.\n"
    "\n"
    "Looking changes nothing on the unit: records are mapped read-only and never made, and nothing starts the "
    "service.\n"
    "\n"
    "Values are named AREA.NAME, the same everywhere. Switches take on and off, yes and no, true and false, 1 and 0; "
    "numbers may be hexadecimal; time zones go by number, by file or its last part, or by a part of their name.";

constexpr char kFiles[] =
    "  share/hlx-system-client/hlxctl.schema.json\n"
    "\n"
    "describes what --json prints.";

constexpr char kEnvironment[] =
    "DBUS_SESSION_BUS_ADDRESS names the bus of the service. NO_COLOR switches colours off. Where the locale is not "
    "UTF-8, "
    "the output is ASCII.";

/// Every value with its label and what it reads as.
std::string ValueList() {
  std::string text;
  for (const catalog::Value& value : catalog::Values()) {
    text += "  " + value.FullName() + "  " + value.label + (value.EventOnly() ? " (events alone tell it)" : "") + "\n";
    std::string words;
    for (const catalog::Word& word : value.reading.words) words.append(words.empty() ? "" : ", ").append(word.word);
    if (*value.reading.unit != '\0') words = value.reading.unit;
    if (!words.empty()) text += "      " + words + "\n";
  }
  return text;
}

}  // namespace

int Manual(const Request& /*request*/) {
  const CommandLine everything;
  cli::ManualExtras extras;
  extras.version = "hlxctl " HLX_VERSION;
  extras.name_line = "look into a head unit, command it and listen to it";
  extras.before = {{"Description", kDescription}};
  extras.after = {
      {"Values", ValueList()}, {"Environment", kEnvironment}, {"Files", kFiles}, {"See also", "hlx-simulator(1)"}};
  Output::Put(cli::ManualPage(everything.App(), extras));
  return kExitDone;
}
