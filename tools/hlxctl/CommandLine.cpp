#include "tools/hlxctl/CommandLine.h"

#include <map>

#include "catalog/Catalog.h"
#include "tools/common/Failure.h"
#include "tools/common/Values.h"
#include "tools/hlxctl/Verbs.h"

namespace {

const std::map<std::string, Color> kColors = {
    {"auto", Color::kAuto}, {"always", Color::kAlways}, {"never", Color::kNever}};

std::string ExitCodes() {
  std::string text = "Exit codes:\n";
  for (const ExitCodeRow& row : kExitCodes) {
    const std::string code = std::to_string(row.code);
    text.append("  ").append(std::string(3 - code.size(), ' ')).append(code).append("  ").append(row.meaning) += "\n";
  }
  return text;
}

std::string Footer(const std::vector<Example>& examples) {
  std::size_t width = 0;
  for (const Example& example : examples) width = std::max(width, std::string(example.command).size());
  std::string text = "Examples:\n";
  for (const Example& example : examples) {
    std::string command = example.command;
    command.resize(width, ' ');
    text.append("  hlxctl ").append(command).append("  ").append(example.what) += "\n";
  }
  return text;
}

/// The words of a command line that are no options.
std::vector<std::string> Ahead(const std::vector<std::string>& arguments) {
  std::vector<std::string> words;
  for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
    if (arguments[i] == "--color" || arguments[i] == "--timeout") {
      ++i;  // and its value
    } else if (arguments[i].empty() || arguments[i][0] != '-') {
      words.push_back(arguments[i]);
    }
  }
  return words;
}

std::vector<std::string> Subcommands(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* const sub : app.get_subcommands([](const CLI::App*) { return true; })) {
    if (!sub->get_group().empty()) names.push_back(sub->get_name());
  }
  return names;
}

std::vector<std::string> OptionNames(const CLI::App* app) {
  std::vector<std::string> names;
  for (; app != nullptr; app = app->get_parent()) {
    for (const CLI::Option* const option : app->get_options()) {
      for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
  }
  return names;
}

/// Where a word that is not known in its place is at home.
std::vector<std::string> HomesOf(const std::string& word) {
  std::vector<std::string> homes;
  if (word == "help") homes.emplace_back("--help");
  if (word == "zones") homes.emplace_back("time zones");
  if (word == "check") homes.emplace_back("update check");
  if (catalog::FindValue(word) != nullptr) homes.push_back("get " + word);
  for (const catalog::Area area : catalog::kAreas) {
    const std::string name = NameOf(area);
    const catalog::Command* const command = catalog::FindCommand(area, word);
    if (command != nullptr) homes.emplace_back(name).append(" set ").append(command->name);
    if (catalog::FindValue(area, word) != nullptr) homes.emplace_back("get ").append(name).append(".").append(word);
  }
  return homes;
}

/// What may have been meant instead of `unknown`.
std::string Advice(const CLI::App& app, const std::string& unknown) {
  if (unknown[0] == '-') return Suggest(catalog::Nearest(unknown.substr(0, unknown.find('=')), OptionNames(&app)));
  if (app.get_parent() == nullptr && unknown == "set") return "; the area comes first, as in \"power set screen on\"";
  const std::optional<catalog::Area> area = catalog::FindArea(app.get_name());
  if (area && unknown == "get") return "; get comes first, as in \"get " + catalog::Values(*area)[0].FullName() + "\"";
  std::vector<std::string> homes = HomesOf(unknown);
  if (homes.empty()) return DidYouMean(unknown, Subcommands(app));
  for (const std::string& near : catalog::Nearest(unknown, Subcommands(app))) homes.push_back(near);
  return Suggest(homes);
}

const CLI::Option* MissingArgument(const CLI::App& app) {
  for (const CLI::Option* const option : app.get_options()) {
    if (option->get_positional() && option->get_required() && option->count() == 0) return option;
  }
  return nullptr;
}

}  // namespace

CommandLine::CommandLine() : app_("Looks into a head unit, commands it and listens to it.", "hlxctl") { Add(nullptr); }

CommandLine::CommandLine(int argc, char** argv)
    : arguments_(argv + (argc > 0 ? 1 : 0), argv + argc),
      app_("Looks into a head unit, commands it and listens to it.", "hlxctl") {
  for (const std::string& argument : arguments_) {
    if (argument == "--") break;
    json_ = json_ || argument == "--json";
  }
  const std::vector<std::string> ahead = Ahead(arguments_);
  Add(&ahead);
}

void CommandLine::Add(const std::vector<std::string>* ahead) {
  app_.set_version_flag("--version", "hlxctl " HLX_VERSION, "Print the version and exit");
  app_.add_flag("--json", request_.json, "Write JSON, also for failures");
  app_.add_option("--color", request_.color, "auto, always or never; NO_COLOR in the environment counts, too")
      ->transform(CLI::Transformer(kColors).description(""))
      ->type_name("WHEN");
  app_.add_flag("-v,--verbose", request_.verbose, "Show the library's log records on standard error");
  app_.require_subcommand(0, 1)->fallthrough();
  app_.footer(ExitCodes());
  for (const Verb& verb : Verbs()) {
    CLI::App* const app = app_.add_subcommand(verb.name, verb.about)->group(verb.group)->fallthrough();
    if (ahead != nullptr && (ahead->empty() || ahead->front() != verb.name)) continue;
    if (!verb.examples.empty()) app->footer(Footer(verb.examples));
    std::vector<std::string> behind;
    if (ahead != nullptr) behind.assign(ahead->begin() + 1, ahead->end());
    verb.add(*app, request_, ahead == nullptr ? nullptr : &behind);
  }
}

int CommandLine::Run() {
  try {
    app_.parse(std::vector<std::string>(arguments_.rbegin(), arguments_.rend()));
  } catch (const CLI::ParseError& problem) {
    if (problem.get_exit_code() != 0) Explain(problem);
    std::ostringstream text;
    app_.exit(problem, text, text);
    Output::Put(text.str());
    return kExitDone;
  }
  Output::Open(request_.color, request_.verbose);
  return request_.action ? request_.action(request_) : Status(request_);
}

void CommandLine::Explain(const CLI::ParseError& problem) const {
  const std::vector<std::string> left = app_.remaining(true);
  const std::string unknown = left.empty() ? "" : left.front();
  std::string place;
  const CLI::App* app = &app_;
  for (const std::string& word : Ahead(arguments_)) {
    const auto subs = app->get_subcommands([&word](const CLI::App* sub) { return sub->get_name() == word; });
    if (word == unknown || subs.empty()) break;
    app = subs.front();
    place += word + ": ";
  }
  std::string text = problem.what();
  if (!unknown.empty()) {
    text = "'" + unknown + "' is not known here" + Advice(*app, unknown);
  } else if (const CLI::Option* const missing = MissingArgument(*app)) {
    text = missing->get_name(true) + " is missing: " + missing->get_description();
  } else if (dynamic_cast<const CLI::RequiredError*>(&problem) != nullptr) {
    text = "what is missing" + ThereAre(Subcommands(*app));
  }
  throw Failure(kExitUsage, place + text);
}
