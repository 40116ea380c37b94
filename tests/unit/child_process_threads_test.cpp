// What the library starts by itself: with which surroundings, for how long, and who can end it.
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <future>
#include <optional>
#include <string>
#include <thread>

#include "client/ChildProcess.h"

namespace {

using testing::Optional;

constexpr char kPidFile[] = "/tmp/pid";
const std::string kNeverEnds = "echo $$ >/tmp/new && mv /tmp/new /tmp/pid && exec sleep 1000";

/// The process that kNeverEnds has become; -1 when it did not get so far.
pid_t Written() {
  pid_t pid = -1;
  if (!(std::ifstream(kPidFile) >> pid)) return -1;
  unlink(kPidFile);
  return pid;
}

pid_t NeverEnding() {
  pid_t pid = -1;
  while ((pid = Written()) == -1) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  return pid;
}

bool Ends(pid_t pid) {
  for (int i = 0; i < 10000 && kill(pid, 0) == 0; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  return kill(pid, 0) != 0;
}

TEST(ChildProcess, GivesItsFirstLine) {
  setenv("LC_ALL", "es_ES.UTF-8", 1);
  struct {
    std::string command;
    std::string line;
  } const cases[] = {
      {"echo one; echo two", "one\n"},
      {"echo 'a longer one'", "a lon"},
      {"printf part; sleep 0.1; printf ial", "parti"},
      {"printf end", "end"},
      {R"(printf 'a\0b\n')", "a"},
      {"echo silent >&2; exit 3", ""},
      {"/no/such/program 2>/dev/null", ""},
      {"echo 1st; exec sleep 1000", "1st\n"},
      {"cat; echo $?", "0\n"},  // standard input is empty
      {"echo $LC_ALL", "C\n"},
      {"[ ! -e /proc/$$/fd/3 ] && echo no", "no\n"},  // the lifeline is not for the command
      {"[ $(cut -d' ' -f6 /proc/self/stat) != " + std::to_string(getsid(0)) + " ] && echo own", "own\n"},
  };
  for (const bool ignored : {false, true}) {
    signal(SIGCHLD, ignored ? SIG_IGN : SIG_DFL);
    for (const auto& test : cases) EXPECT_THAT(FirstLineOf(test.command, 5), Optional(test.line)) << test.command;
  }
  signal(SIGCHLD, SIG_DFL);
}

TEST(ChildProcess, IsEndedFromOutside) {
  pid_t late = -1;
  for (int ms = 100; late == -1; ms *= 2) {  // a busy machine may need longer to start it
    EXPECT_THAT(FirstLineOf("printf part; " + kNeverEnds, 9, nullptr, std::chrono::milliseconds(ms)),
                Optional(std::string()));
    late = Written();
  }
  EXPECT_TRUE(Ends(late)) << "its time was up";

  ChildStop stop;
  auto line = std::async(std::launch::async, [&stop] { return FirstLineOf(kNeverEnds, 9, &stop); });
  const pid_t pid = NeverEnding();
  stop.Request();
  EXPECT_THAT(line.get(), Optional(std::string()));
  EXPECT_TRUE(Ends(pid)) << "it was stopped";
  EXPECT_THAT(FirstLineOf("exec sleep 1000", 9, &stop), Optional(std::string())) << "it was stopped before";

  const pid_t application = fork();
  if (application == 0) {
    FirstLineOf(kNeverEnds, 9);
    _exit(1);
  }
  const pid_t orphan = NeverEnding();
  kill(application, SIGKILL);
  waitpid(application, nullptr, 0);
  EXPECT_TRUE(Ends(orphan)) << "the application is gone";
}

/// With the standard descriptors closed, those of the child's pipes are low.
TEST(ChildProcess, IsStartedWithoutStandardDescriptors) {
  const auto close_all = [] {
    for (const int descriptor : {0, 1, 2}) close(descriptor);
    _exit(FirstLineOf("echo x", 9) == std::string("x\n") ? 0 : 1);
  };
  EXPECT_EXIT(close_all(), testing::ExitedWithCode(0), "");
}

}  // namespace
