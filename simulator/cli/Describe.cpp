#include "simulator/cli/Describe.h"

#include <algorithm>
#include <cstdio>

#include "catalog/Catalog.h"
#include "cli/ManualPage.h"
#include "simulator/control/Lists.h"
#include "simulator/service/Faults.h"

namespace {

using Words = std::vector<std::string>;

constexpr char kFiles[] = "\tfiles";  ///< says to the shell that files are meant

constexpr char kDescription[] =
    "hlx-simulator plays a head unit on the session bus: its system service, its four shared-memory records, what it "
    "saves, and what happens by itself. Without a verb it runs until Ctrl-C and prints every call and signal; the "
    "verbs "
    "drive the one that runs.";

Words NamesOf(const std::string& kind) {
  Words names;
  for (const ListEntry& entry : ListOf(kind)) names.push_back(entry.name);
  return names;
}

Words Verbs(const CLI::App& app) {
  Words names;
  for (const CLI::App* const verb : app.get_subcommands([](const CLI::App* v) { return !v->get_group().empty(); })) {
    names.push_back(verb->get_name());
  }
  return names;
}

Words Options(const CLI::App& app) {
  Words names;
  for (const CLI::Option* const option : app.get_options()) {
    if (option->get_group().empty()) continue;
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

/// The arguments of `verb`; `before`: those that stand already.
Words Arguments(const std::string& verb, const Words& before) {
  if (verb == "set" && !before.empty()) {
    const catalog::Value* const value = catalog::FindValue(before.back());
    Words words;
    if (value == nullptr) return words;
    for (const catalog::Word& word : value->reading.words) words.emplace_back(word.word);
    return words;
  }
  if (verb == "set" || verb == "get") return NamesOf("value");
  if (verb == "emit") return before.empty() ? NamesOf("signal") : Words();
  if (verb == "calls") return NamesOf("method");
  if (verb == "list") return {"values", "signals", "methods", "faults", "scenarios", "sticks"};
  if (verb == "stick" && before.empty()) return {"insert", "remove"};
  if (verb == "stick" && before == Words{"insert"}) return NamesOf("stick");
  if (verb == "play") {
    Words words = before.empty() ? NamesOf("scenario") : Words();
    words.emplace_back(kFiles);
    return words;
  }
  if (verb == "reboot") return {"--cold", "--acc", "--reset"};
  if (verb != "fault") return {kFiles};
  Words words = NextFaultWords(before);
  if (before.empty()) words.insert(words.end(), {"list", "clear", "hang"});
  return words;
}

Words Candidates(const CLI::App& app, const Words& words) {
  const std::string& current = words.back();
  const Words verbs = Verbs(app);
  const auto verb = std::find_first_of(words.begin(), words.end() - 1, verbs.begin(), verbs.end());
  if (verb == words.end() - 1) return current.rfind('-', 0) == 0 ? Options(app) : verbs;
  if (current.rfind('-', 0) == 0 && *verb != "reboot") return Options(*app.get_subcommand(*verb));
  Words before;
  std::copy_if(verb + 1, words.end() - 1, std::back_inserter(before),
               [](const std::string& word) { return word.rfind('-', 0) != 0; });
  return Arguments(*verb, before);
}

}  // namespace

void CompleteVerb(const CLI::App& app, Words words) {
  if (words.empty()) words.emplace_back();
  for (const std::string& word : Candidates(app, words)) {
    if (word == kFiles || word.rfind(words.back(), 0) == 0) std::printf("%s\n", word.c_str());
  }
}

void ManualVerb(const CLI::App& app) {
  cli::ManualExtras extras;
  extras.version = "hlx-simulator " HLX_VERSION;
  extras.name_line = "the simulated unit: service, records, and what happens by itself";
  extras.before = {{"Description", kDescription}};
  extras.after = {
      {"Environment", "DBUS_SESSION_BUS_ADDRESS names the bus. HLX_HOST_CONFIG names the unit's configuration."},
      {"See also", "hlxctl(1)"}};
  std::fputs(cli::ManualPage(app, extras).c_str(), stdout);
}
