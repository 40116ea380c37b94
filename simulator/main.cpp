/// hlx-simulator: the unit that is not there.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>

#include "cli/Failure.h"
#include "simulator/UnitProcess.h"
#include "simulator/cli/ControlClient.h"
#include "simulator/cli/Describe.h"
#include "simulator/cli/Run.h"
#include "simulator/cli/Verbs.h"

namespace {

constexpr char kAbout[] =
    "Plays a head unit on the session bus: its system service, its four shared-memory records, what it saves, and "
    "what\n"
    "happens by itself. Without a verb it runs until Ctrl-C and prints every call and signal; the verbs drive the one\n"
    "that runs.";
constexpr char kFooter[] =
    "Names are those of hlxctl: power.acc, misc.car_speed; see hlx-simulator list.\n"
    "Exit codes:\n"
    "    0  done\n"
    "    1  the unit cannot start or be reached, or something went wrong\n"
    "    2  a wrong command line, name or value\n"
    "  124  the time is up\n"
    "  125, 126, 127  no unit, no COMMAND: see hlx-simulator run --help\n"
    "Examples:\n"
    "  hlx-simulator --fresh &                     a unit that remembers nothing\n"
    "  hlx-simulator set power.head_lights on      it is getting dark\n"
    "  hlx-simulator get inbox.source misc.doors   what applications sent, what the record holds\n"
    "  hlx-simulator calls --wait SetScreenLightOn --timeout 5";

/// What is wrong with a text that is to be a time in seconds.
std::string IsTime(const std::string& text) {
  char* end = nullptr;
  const double seconds = g_ascii_strtod(text.c_str(), &end);
  const bool is_number = !text.empty() && *end == '\0';
  return is_number && seconds > 0 && seconds <= 86400 ? ""
                                                      : "'" + text + "' is no time above 0 and up to 86400 seconds";
}

struct CommandLine {
  CLI::App app{kAbout, "hlx-simulator"};
  UnitProcess::Options unit;
  bool silent = false;
  GetOptions get;
  Words get_names;
  std::string list_kind;
  bool list_markdown = false;
  CallsOptions calls;
  std::string reboot = "acc";
  Words fault;
  Words stick;
  PlayOptions play;
  bool play_json = false;
  unsigned int fault_times = 0;
  RunOptions run;
  Words typed;

  CommandLine() {
    app.failure_message(FailureMessage);
    app.require_subcommand(0, 1);
    app.set_version_flag("--version", "hlx-simulator " HLX_VERSION, "Print the version");
    app.add_flag("--fresh", unit.fresh, "Remember nothing: cleared records, settings in a scratch file");
    app.add_option("--mcu-version", unit.mcu_version, "Version text of the MCU, at most 255 bytes")
        ->capture_default_str();
    app.add_flag("--update-fails", unit.update_fails, "As set unit.update_fails yes");
    app.add_flag("--quiet", unit.quiet, "Print no calls and signals");
    app.add_flag("--verbose", unit.verbose, "Show the library's log records, too");
    app.add_option("--log", unit.log)->group("");  // these three for `run`
    app.add_option("--scenario", unit.scenario)->group("");
    app.add_option("--ready-fd", unit.ready_fd)->group("");
    AddVerbs();
    app.footer(kFooter);  // at last: the verbs need none of it
  }

  void AddVerbs() {
    // Everything behind these verbs is taken as it stands: values may begin with a minus.
    auto* verb = app.add_subcommand("set", "Change a value as the unit would: [--silent] NAME VALUE")->prefix_command();
    verb->add_flag("--silent", silent, "Record and saved setting alone: no signal, nothing follows");
    app.add_subcommand("emit", "Send a signal as it is: SIGNAL [ARGUMENT...]")->prefix_command();

    verb = app.add_subcommand("get", "Print values: [NAME | AREA]...");
    verb->add_option("name", get_names, "power.acc, or an area; all without one");
    verb->add_flag("--raw", get.raw, "As numbers");
    verb->add_flag("--json", get.json, "As one JSON object");

    verb = app.add_subcommand("list", "List what there is and what it takes");
    verb->add_option("kind", list_kind, "values, signals, methods, faults, scenarios or sticks; all without it");
    verb->add_flag("--markdown", list_markdown)->group("");  // for the documents

    verb = app.add_subcommand("calls", "Print the calls of applications, or wait for one");
    auto* const method = verb->add_option("method", calls.method, "Of this method only");
    verb->add_flag("--json", calls.json, "One JSON object a line");
    verb->add_flag("--clear", calls.clear, "Forget them");
    verb->add_option("--wait", calls.method, "Wait for a call of METHOD, unless one is kept")->excludes(method);
    verb->add_option("--timeout", calls.seconds, "How long to wait, in seconds")->capture_default_str();

    verb = app.add_subcommand("reboot", "Restart the unit: the service goes and comes back");
    std::vector<CLI::Option*> kinds;
    for (const auto& [kind, meaning] : {std::pair("cold", "Power was cut: all records anew"),
                                        {"acc", "ACC off and on (default): power and time anew"},
                                        {"reset", "The reset key: all records anew"}}) {
      auto* const flag = verb->add_flag_callback(
          std::string("--") + kind, [this, kind = kind] { reboot = kind; }, meaning);
      for (CLI::Option* const other : kinds) flag->excludes(other);
      kinds.push_back(flag);
    }
    AddFault();
    verb = app.add_subcommand("stick", "Insert an update stick, or take it out: insert DIRECTORY | KIND; remove");
    verb->add_option("words", stick, "What it holds: a directory, or a kind of list sticks; only inside run")
        ->required();
    AddPlay();
    AddRun();
    app.add_subcommand("complete")->group("")->add_option("word", typed);
    app.add_subcommand("manual")->group("");
  }

  void AddFault() {
    auto* const verb = app.add_subcommand("fault", "Let something go wrong: WORDS..., as in list faults; list; clear");
    verb->add_option("words", fault, "SetLogo hang, signal AccStateChangeSignal drop, service crash, ...")->required();
    verb->add_option("--times", fault_times, "End after it has struck so many times")->check(CLI::Range(1, 1000000));
  }

  void AddPlay() {
    auto* verb = app.add_subcommand("play", "Play a scenario or a capture");
    verb->add_option("file", play.file, "A file, or a scenario of list scenarios")->required();
    verb->add_option("--speed", play.speed, "2: twice as fast; 0: as fast as the bus takes it")->capture_default_str();
    verb->add_flag("--loop", play.loop, "Begin anew at the end");
    verb->add_flag("--wait", play.wait, "Wait for the end; exit code 1 when it fails");
    app.add_subcommand("stop", "Stop playing");
    verb = app.add_subcommand("status", "Print what is being played");
    verb->add_flag("--json", play_json, "As one JSON object");
  }

  void AddRun() {
    auto* const verb =
        app.add_subcommand("run", "Run a command with a unit of its own around it: [OPTION]... -- COMMAND...")
            ->prefix_command();
    verb->footer(
        "COMMAND has a bus, a unit, records, processes, /etc/localtime, /media and /data of its own; its files, "
        "network\n"
        "and display stay. Its exit status is passed on; 124: the time was up; 125: the unit could not start; 126: "
        "the\n"
        "unit died before COMMAND did; 127: COMMAND cannot be started.");
    verb->add_option("--timeout", run.timeout, "End COMMAND after so many seconds, at most 86400")->check(IsTime);
    verb->add_option("--log", run.log, "Leave journal.log, calls.jsonl and capture.jsonl in this directory");
    verb->add_flag("--display", run.display, "COMMAND needs a display: say so when there is none");
    verb->add_flag(
        "--on-this-machine", run.on_this_machine,
        "Go on without a sandbox where this machine grants none: the machine's records and time zone change");
    auto* const inside = app.add_subcommand("inside")->prefix_command()->group("");
    inside->add_option("--channel", run.channel);
    inside->add_option("--log", run.log);
    for (CLI::App* const either : {verb, inside}) {
      either->add_option("--scenario", run.scenario, "Play this while COMMAND runs: a file, or one of list scenarios");
      either->add_flag("--fresh", run.fresh, "Settings of earlier runs do not count");
    }
  }

  bool Is(const char* verb) const { return app.got_subcommand(verb); }

  /// What stands behind a "--" is the command of `run`, and nobody else's business.
  void Parse(int argc, char** argv) {
    char** const end = std::find_if(argv, argv + argc, [](const char* word) { return std::strcmp(word, "--") == 0; });
    const bool runs = argc > 1 && (std::strcmp(argv[1], "run") == 0 || std::strcmp(argv[1], "inside") == 0);
    if (!runs || end == argv + argc) return app.parse(argc, argv);
    app.parse(static_cast<int>(end - argv), argv);
    run.command.assign(end + 1, argv + argc);
  }

  /// What is for the unit's start says nothing to a verb: it must not be thought to.
  void RefuseUnitsOptions() const {
    if (app.get_subcommands().empty()) return;
    for (const CLI::Option* const option : app.get_options()) {
      if (option->count() == 0) continue;
      throw VerbError(kExitBadArgument, option->get_name() + " is for a unit that starts; options of " +
                                            app.get_subcommands()[0]->get_name() + " stand behind it");
    }
  }

  int RunVerb() {
    RefuseUnitsOptions();
    if (Is("complete")) return CompleteVerb(app, typed), 0;
    if (Is("manual")) return ManualVerb(app), 0;
    for (const char* const verb : {"run", "inside"}) {
      if (!Is(verb)) continue;
      const Words words = app.get_subcommand(verb)->remaining();
      if (run.command.empty()) run.command = words;
      if (run.command != words && !words.empty())
        throw VerbError(kExitBadArgument, "run: there is no option " + words[0]);
      return run.channel < 0 ? RunOutside(run) : RunInside(run);
    }
    UseUnit();
    return 0;
  }

  void UseUnit() {
    if (Is("set")) return SetVerb(app.get_subcommand("set")->remaining(), silent);
    if (Is("get")) return GetVerb(get_names, get);
    if (Is("emit")) return EmitVerb(app.get_subcommand("emit")->remaining());
    if (Is("list")) return ListVerb(list_kind, list_markdown);
    if (Is("calls")) {
      calls.wait = app.get_subcommand("calls")->count("--wait") > 0;
      return CallsVerb(calls);
    }
    if (Is("fault")) return FaultVerb(fault, fault_times);
    if (Is("stick")) return StickVerb(stick);
    if (Is("play")) return PlayVerb(play);
    if (Is("stop")) return StopVerb();
    if (Is("status")) return StatusVerb(play_json);
    if (Is("reboot")) return RebootVerb(reboot);
    UnitProcess(unit).Run();
  }
};

}  // namespace

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  try {
    CommandLine line;
    try {
      line.Parse(argc, argv);
    } catch (const CLI::ParseError& problem) {
      return line.app.exit(problem) == 0 ? 0 : kExitBadArgument;
    }
    const int code = line.RunVerb();
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return code;
    throw VerbError(kExitFailed, std::string("standard output: ") + std::strerror(errno));
  } catch (const VerbError& problem) {
    std::fprintf(stderr, "hlx-simulator: %s\n", problem.what());
    return problem.code;
  } catch (const catalog::BadValue& problem) {
    std::fprintf(stderr, "hlx-simulator: %s\n", problem.what());
    return kExitBadArgument;
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "hlx-simulator: %s\n", problem.what());
    return kExitFailed;
  }
}
