#include "tools/common/ExitCode.h"
#include "tools/common/Values.h"
#include "tools/common/Wire.h"
#include "tools/common/ZoneNames.h"
#include "tools/hlxctl/CommandLine.h"
#include "tools/hlxctl/Verbs.h"

using catalog::Area;

namespace {

/// Says to the shell that files are meant.
constexpr char kFiles[] = "\tfiles";

struct Candidate {
  std::string word;
  std::string what;
};
using Candidates = std::vector<Candidate>;

Candidates Plain(const std::vector<std::string>& words) {
  Candidates candidates;
  for (const std::string& word : words) candidates.push_back({word, ""});
  return candidates;
}

/// What a value or an argument may be.
Candidates WordsOf(const catalog::Reading& reading, const std::string& prefix = "") {
  Candidates candidates;
  for (const catalog::Word& word : reading.words) candidates.push_back({prefix + word.word, ""});
  for (int zone = 0; reading.kind == catalog::Reading::Kind::kZone && zone <= reading.most; ++zone) {
    candidates.push_back({prefix + ZoneFile(zone), ZoneName(zone)});
  }
  return candidates;
}

Candidates ValueNames(const char* suffix) {
  Candidates candidates;
  for (const catalog::Value& value : catalog::Values()) candidates.push_back({value.FullName() + suffix, value.label});
  return candidates;
}

/// "power.screen=" is completed with the words of the screen; without an operator there are names and events.
Candidates Conditions(const std::string& current) {
  const std::size_t at = current.find('=');
  if (at != std::string::npos) {
    const std::size_t end = at > 0 && current[at - 1] == '!' ? at - 1 : at;
    const catalog::Value* const value = catalog::FindValue(current.substr(0, end));
    return value == nullptr ? Candidates() : WordsOf(value->reading, current.substr(0, at + 1));
  }
  Candidates candidates = ValueNames("=");
  for (const catalog::Signal& signal : catalog::Signals()) {
    for (const char* const callback : signal.callbacks) {
      if (callback != nullptr) candidates.push_back({callback, ""});
    }
  }
  return candidates;
}

Candidates Areas() {
  Candidates candidates;
  for (const Area area : catalog::kAreas) candidates.push_back({NameOf(area), ""});
  return candidates;
}

/// For a positional argument of a verb, by its type; `index` counts from the verb.
Candidates Argument(const CLI::App& app, std::size_t index, const std::string& current) {
  const auto options = app.get_options([](const CLI::Option* option) { return option->get_positional(); });
  if (options.empty()) return {};
  const CLI::Option& option = *options[std::min(index, options.size() - 1)];
  const std::string type = option.get_type_name();
  if (index >= options.size() && option.get_expected_max() <= 1) return {};
  if (type == "AREA") return Areas();
  if (type == "AREA.NAME") return ValueNames("");
  if (type == "CONDITION") return Conditions(current);
  if (type == "SIGNAL") return Plain(wire::SignalNames());
  if (type == "METHOD ARGUMENT" && index == 0) return Plain(wire::MethodNames());
  if (type == "FILE" || type == "DIR") return {{kFiles, ""}};
  return {};
}

/// For an argument of a command.
Candidates CommandArgument(const CLI::App& app, std::size_t index) {
  const CLI::App* area = app.get_parent();
  if (area != nullptr && area->get_name() == "set") area = area->get_parent();
  const auto known = area == nullptr ? std::nullopt : catalog::FindArea(area->get_name());
  const catalog::Command* const command = known ? catalog::FindCommand(*known, app.get_name()) : nullptr;
  if (command == nullptr || index >= command->Parameters().size()) return {};
  return WordsOf(command->Parameters()[index].reading);
}

Candidates Options(const CLI::App* app) {
  Candidates candidates;
  for (; app != nullptr; app = app->get_parent()) {
    for (const CLI::Option* const option : app->get_options()) {
      for (const std::string& name : option->get_lnames())
        candidates.push_back({"--" + name, option->get_description()});
    }
  }
  return candidates;
}

/// The option of `app` or one above it that is written so, if it takes a value.
const CLI::Option* TakesValue(const CLI::App* app, const std::string& word) {
  for (; app != nullptr; app = app->get_parent()) {
    const CLI::Option* const option = word.size() > 2 ? app->get_option_no_throw(word) : nullptr;
    if (option != nullptr) return option->get_expected_max() > 0 ? option : nullptr;
  }
  return nullptr;
}

Candidates For(const std::vector<std::string>& words) {
  const CommandLine everything;
  const CLI::App* app = &everything.App();
  std::size_t index = 0;
  for (std::size_t i = 0; i + 1 < words.size(); ++i) {
    const std::string& word = words[i];
    if (!word.empty() && word[0] == '-') {
      const CLI::Option* const option = TakesValue(app, word);
      if (option != nullptr && i + 2 == words.size()) {
        return option->get_type_name() == "WHEN" ? Plain({"auto", "always", "never"}) : Candidates();
      }
      if (option != nullptr) ++i;
      continue;
    }
    const auto subs = app->get_subcommands([&word](const CLI::App* sub) { return sub->get_name() == word; });
    if (!subs.empty()) {
      app = subs.front();
      index = 0;
    } else {
      ++index;
    }
  }
  const std::string& current = words.back();
  if (!current.empty() && current[0] == '-') return Options(app);
  Candidates candidates;
  for (const CLI::App* const sub : app->get_subcommands([](const CLI::App* s) { return !s->get_group().empty(); })) {
    if (index == 0) candidates.push_back({sub->get_name(), sub->get_description()});
  }
  for (const Candidates& more : {CommandArgument(*app, index), Argument(*app, index, current)}) {
    candidates.insert(candidates.end(), more.begin(), more.end());
  }
  return candidates;
}

}  // namespace

int Complete(const Request& request) {
  const std::vector<std::string> words = request.words.empty() ? std::vector<std::string>{""} : request.words;
  const std::string& current = words.back();
  for (const Candidate& candidate : For(words)) {
    if (candidate.word == kFiles || candidate.word.compare(0, current.size(), current) == 0) {
      Output::Line(candidate.word + (candidate.what.empty() ? "" : "\t" + candidate.what));
    }
  }
  return kExitDone;
}
