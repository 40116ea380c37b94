// hlxctl: help, documents and the check of packages.
#include <regex>

#include "cli/ManualPage.h"
#include "tests/support/Hlxctl.h"

namespace {

/// Exit code | packages.
constexpr char kOutcomes[] = R"(
0 | good same newer long-line endless-checksum escaping ; 13 | can-file
14 | bad-checksum no-checksum pipe-checksum ; 16 | wrong-hardware
15 | older rubbish empty-version-file huge-version-file symbolic-link ; 17 | wrong-project any-project
18 | no-package pipe-package
19 | truncated no-version-file)";

TEST_F(HlxctlTest, ChecksPackages) {
  const std::string packages = "/tmp/set of 'packages'; exit";  // a name that no shell may see
  ASSERT_EQ(0, Execute({HLX_SOURCE_DIR "/tests/packages/make-packages", packages}).code);
  const auto check = [&packages](const std::string& name, const char* option = "-v") {
    return Execute({kTool, option, "update", "check", std::string(packages).append("/").append(name)});
  };
  EXPECT_EQ(20, check("good").code);
  std::filesystem::create_directories("/app/etc");
  std::filesystem::copy_file(packages + "/unit-version.conf", "/app/etc/sys_version.conf");
  for (const auto& row : Rows(kOutcomes)) {
    const int code = std::stoi(row[0]);
    for (const std::string& name : Split(row[1])) {
      const Result result = check(name, "--json");
      documents += "check\t" + result.out;
      EXPECT_EQ(code, result.code) << name << result.err;
      EXPECT_EQ(code == 0 ? json(1) : code < 18 ? json(code - 10) : json(), json::parse(result.out)["listeners_get"]);
    }
  }
  EXPECT_THAT(check("older").out, HasSubstr("software    failed   unit \"V1.2.3.4\" <= package \"V1.2.2.9\"\n"));
  std::ofstream("/app/etc/sys_version.conf") << "ARM Version:V1.0\nHardware Version:V1.0.3\nProject Name:T268ZF\n";
  EXPECT_EQ(0, check("any-project").code);
  for (const auto& entry : std::filesystem::directory_iterator("/tmp")) {
    EXPECT_EQ(std::string::npos, entry.path().string().find("/hlxctl-")) << "left behind";
  }
  for (int record = 0; record < 4; ++record) EXPECT_EQ(-1, Segments::Id(record));
}

TEST_F(HlxctlTest, ChecksPackagesWithTheBoardsVersion) {
  ASSERT_EQ(0, Execute({HLX_SOURCE_DIR "/tests/packages/make-packages", "/tmp/board"}).code);
  std::filesystem::create_directories("/app/etc");
  std::filesystem::copy_file("/tmp/board/unit-version.conf", "/app/etc/sys_version.conf");
  const auto configure = [](const std::string& changes) {
    Execute(
        {"sh", "-c", "sed '" + changes + "' " HLX_SOURCE_DIR "/platform/host/platform.conf.sample >/tmp/board.conf"});
  };
  setenv("HLX_HOST_CONFIG", "/tmp/board.conf", 1);
  configure("s/enable_auto_hw_version=false/enable_auto_hw_version=true/");
  const Result early = Ctl("update check /tmp/board/good");
  EXPECT_EQ(kExitNoService, early.code);
  EXPECT_THAT(early.err, HasSubstr("hlxctl: the misc record "));
  Start();
  const json refused = CtlJson("update check /tmp/board/good", "check");
  EXPECT_EQ(16, refused["code"]);  // there is no strap here
  EXPECT_EQ(R"(unit "" = package "V1.0.3")", refused["checks"][5]["compared"]);
  configure(
      "s/enable_auto_hw_version=false/enable_auto_hw_version=true/; s/hw_version_compat=false/hw_version_compat=true/");
  const json skipped = CtlJson("update check /tmp/board/good", "check");
  EXPECT_EQ(true, skipped["ok"]);
  EXPECT_EQ("/q4system/allow_hw_version_compat", skipped["checks"][5]["skipped_by"]);
  EXPECT_THAT(Ctl("update check /tmp/board/good").out, HasSubstr("(/q4system/allow_hw_version_compat)\n"));
}

/// The examples in `text`: "    hlxctl get power.screen  # what it is", also behind a "$ " or a path, and the same of
/// hlx-simulator; not those with placeholders.
std::vector<std::string> Examples(const std::string& text) {
  std::vector<std::string> examples;
  const std::regex example(R"(\n +(?:\$ )?(?:\S+/)?((?:hlxctl|hlx-simulator) [a-z](?: ?[^ \n#])*)(?=  |\n| +#))");
  const std::regex placeholder(R"([A-Z]{3}|\[|…|my_hmi)");
  for (std::sregex_iterator i(text.begin(), text.end(), example); i != std::sregex_iterator(); ++i) {
    const std::string command = (*i)[1];
    if (!std::regex_search(command, placeholder)) examples.push_back(command);
  }
  return examples;
}

TEST_F(HlxctlTest, EveryExampleRuns) {
  Start();
  const std::string package = "/media/usbstorage0";
  ASSERT_EQ(0, Execute({HLX_SOURCE_DIR "/tests/packages/make-packages", "/tmp/packages"}).code);
  std::filesystem::create_directory_symlink("/tmp/packages/good", package);
  std::filesystem::create_directories("/app/etc");
  std::filesystem::copy_file("/tmp/packages/unit-version.conf", "/app/etc/sys_version.conf");
  std::string text = Ctl("--help").out;
  const std::regex verb(R"(\n  ([a-z-]+)  )");
  const std::string help = text;
  for (std::sregex_iterator i(help.begin(), help.end(), verb); i != std::sregex_iterator(); ++i) {
    text += Ctl((*i)[1].str() + " --help").out;
  }
  const std::size_t in_help = Examples(text).size();
  text += Execute({kSimulator, "--help"}).out;
  for (const char* const file :
       {"README.md", "docs/hlxctl.md", "docs/packages.md", "docs/simulator.md", "docs/faults.md"}) {
    std::stringstream content;
    content << std::ifstream(std::string(HLX_SOURCE_DIR "/") + file).rdbuf();
    text += content.str();
  }
  const std::vector<std::string> examples = Examples(text);
  EXPECT_LT(30U, in_help);
  EXPECT_LT(in_help + 30, examples.size());
  for (const std::string& example : examples) {
    // What goes on is interrupted; what draws gets a terminal.
    const std::vector<std::string> command = {
        "script", "-qec",
        "PATH=" HLX_BINARY_DIR "/tools/hlxctl:" HLX_BINARY_DIR
        "/simulator:$PATH; cd /tmp/packages/good; timeout --foreground --preserve-status -s INT 0.3 " +
            example,
        "/dev/null"};
    Result result = Execute(command);
    // An example before restarts the unit: it is not there, or goes while it is asked.
    for (int i = 0; i < 20 && (result.code == 3 || result.code == 4); ++i) result = Execute(command);
    EXPECT_THAT(result.code, testing::AnyOf(0, 130)) << example << "\n" << result.out;
  }
  // The list of exit codes is the same everywhere.
  for (const ExitCodeRow& row : kExitCodes) {
    EXPECT_THAT(help, HasSubstr(std::to_string(row.code) + "  " + row.meaning));
    EXPECT_THAT(text, HasSubstr("| " + std::to_string(row.code) + " | " + row.meaning + " |"));
  }
}

TEST_F(HlxctlTest, ManualIsWhatTheToolSays) {
  const std::string page = HLX_SOURCE_DIR "/docs/man/hlxctl.1";
  std::stringstream checked_in;
  checked_in << std::ifstream(page).rdbuf();
  EXPECT_EQ(Ctl("manual").out, checked_in.str()) << "stale: hlxctl manual >docs/man/hlxctl.1";
  EXPECT_EQ(0, Execute({"sh", "-c", std::string(kSimulator) + " manual >/tmp/hlx-simulator.1"}).code);
  for (const std::string& name : {page, std::string("/tmp/hlx-simulator.1")}) {
    // The sandbox has no /etc/groff with its man.local.
    const Result result = Execute(
        {"sh", "-c", "man --warnings -E UTF-8 -l -Tutf8 -Z '" + name + "' 2>&1 >/dev/null | grep -v man.local"});
    EXPECT_EQ("", result.out + result.err);
  }
}

TEST(ManualPage, ShowsWhatRoffWouldTakeForItsOwn) {
  CLI::App app("", "odd");
  app.add_flag("--path", "C:\\new");
  app.add_flag("--lines", ".so what\n'tis a line - of its `own' ~^");
  std::ofstream("/tmp/odd.1") << cli::ManualPage(app, {"odd 1", "odd texts", {}, {}});
  const Result shown = Execute({"sh", "-c", "MANWIDTH=100 man -E UTF-8 -l -P cat /tmp/odd.1 2>&1"});
  for (const char* const text : {" C:\\new.\n", " .so what 'tis a line - of its `own' ~^.\n"}) {
    EXPECT_THAT(shown.out, HasSubstr(text));
  }
}

/// What stands on the command line | what may stand behind it, among others; "!" before what may not.
constexpr char kCompletions[] = R"(
hlxctl pow | power ; hlxctl  | status ; hlxctl  | doctor ; hlxctl  | !complete ; hlxctl power  | set ; hlxctl power  | reset
hlxctl power set bri | brightness ; hlxctl power set brightness  | night ; hlxctl power set brightness night  | !night
hlxctl power set screen  | on ; hlxctl time set zone Europe/Be | Europe/Berlin ; hlxctl get power.scr | power.screen
hlxctl get power.acc misc.c | misc.can_box ; hlxctl --json get power.scr | power.screen ; hlxctl --col | --color
hlxctl --color  | always ; hlxctl monitor  | time ; hlxctl monitor power --timeout  | !power ; hlxctl power --js | --json
hlxctl wait-for power.scre | power.screen= ; hlxctl wait-for power.screen=o | off ; hlxctl wait-for OnAcc | OnAccStateChange
hlxctl call SetGamma | SetGammaValue ; hlxctl listen Acc | AccStateChangeSignal ; hlxctl record /etc/local | /etc/localtime
hlxctl names gam | !gamma ; hlxctl -v pow | power ; hlxctl --moon pow | power ; hlxctl moon  | !status
hlx-simulator re | reboot ; hlx-simulator  | !complete ; hlx-simulator --fr | --fresh ; hlx-simulator reboot -- | --cold
hlx-simulator set power.scr | power.screen ; hlx-simulator set --silent power.screen  | off ; hlx-simulator get --r | --raw
hlx-simulator emit AccSt | AccStateChangeSignal ; hlx-simulator calls --wait SetGam | SetGammaValue
hlx-simulator fault signal AccSt | AccStateChangeSignal ; hlx-simulator fault SetGam | SetGammaValue ; hlx-simulator fault ser | service
hlx-simulator fault SetLogo  | hang ; hlx-simulator fault SetLogo hang  | !hang ; hlx-simulator fault service  | restart
hlx-simulator fault segment  | power ; hlx-simulator fault segment  | missing ; hlx-simulator fault record misc  | garbage
hlx-simulator fault signal any  | reorder ; hlx-simulator fault  | any ; hlx-simulator fault any  | !any
hlx-simulator play city | city-drive ; hlx-simulator play /etc/local | /etc/localtime ; hlx-simulator play city-drive ci | !city-drive
hlx-simulator run --log /etc/local | /etc/localtime)";

TEST_F(HlxctlTest, CompletesInBash) {
  setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere", 1);
  for (const auto& row : Rows(kCompletions)) {
    const Result result =
        Execute({"bash", "-c",
                 "hlxctl() { " + std::string(kTool) + " \"$@\"; }; hlx-simulator() { " + kSimulator +
                     " \"$@\"; }; source " HLX_SOURCE_DIR "/cli/completion/hlx.bash; COMP_LINE='" + row[0] +
                     "'; COMP_POINT=${#COMP_LINE}; _hlx; printf '%s\\n' \"${COMPREPLY[@]}\""});
    const bool not_there = row[1][0] == '!';
    const std::vector<std::string> found = Cut(result.out, "\n");
    EXPECT_EQ(not_there ? 0 : 1, std::count(found.begin(), found.end(), row[1].substr(not_there ? 1 : 0)))
        << row[0] << "\n"
        << result.out << result.err;
  }
}

TEST_F(HlxctlTest, CompletesInZsh) {
  // What zsh itself would bring.
  const std::string zsh =
      "_describe() { print -l -- ${(P)2}; }; compadd() { print -l -- $@; }; _files() { print files; }; ";
  const auto complete = [&zsh](const std::string& words, const std::string& current, const char* tool = kTool) {
    return Execute({"zsh", "-fc",
                    zsh + "words=(" + tool + " " + words + "); CURRENT=" + current +
                        "; source " HLX_SOURCE_DIR "/cli/completion/_hlx"});
  };
  const Result verb = complete("doc", "2");
  EXPECT_EQ("doctor:Why does it not work: bus, service, records, machine\n", verb.out) << verb.err;
  EXPECT_THAT(complete("wait-for power.scre", "3").out, HasSubstr("power.screen=\n"));
  EXPECT_EQ("files\n", complete("record ''", "3").out);
  EXPECT_THAT(complete("play city", "3", kSimulator).out, HasSubstr("city-drive:\nfiles\n"));
}

}  // namespace
