#include <fcntl.h>
#include <poll.h>
#include <sys/shm.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "catalog/Value.h"
#include "cli/Arguments.h"
#include "simulator/Installed.h"
#include "simulator/cli/ControlClient.h"
#include "simulator/cli/Run.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kGraceTime{3};  ///< from SIGTERM to SIGKILL

/// Signals that are meant for the command.
constexpr int kPassedOn[] = {SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGUSR1, SIGUSR2};

/// The first line of what a program prints; empty when it prints nothing or cannot be started.
std::string OutputOf(const std::string& command) {
  std::string text;
  FILE* const pipe = popen(command.c_str(), "re");
  for (int c; pipe != nullptr && (c = std::fgetc(pipe)) != EOF;) text.push_back(c == '\n' ? ';' : static_cast<char>(c));
  if (pipe != nullptr) pclose(pipe);
  while (!text.empty() && text.back() == ';') text.pop_back();
  return text;
}

bool IsAnotherUnitAttached() {
  const auto records = catalog::Records();
  return std::any_of(records.begin(), records.end(), [](const catalog::RecordInfo& info) {
    shmid_ds status{};
    const int id = shmget(static_cast<key_t>(info.key), 0, 0);
    return id != -1 && shmctl(id, IPC_STAT, &status) == 0 && status.shm_nattch > 0;
  });
}

/// How the inside is started: the words in front of it. @throws VerbError where that would touch the machine
std::vector<std::string> Surroundings(const RunOptions& options) {
  const std::string sandbox = InstalledProgram("sandbox");
  if (sandbox.empty()) throw VerbError(kExitNoUnit, "run: the program sandbox was not installed with this one");
  const std::string missing = OutputOf("'" + sandbox + "' --missing");
  if (missing.empty()) return {sandbox, "--around"};
  if (options.on_this_machine) return {"dbus-run-session", "--"};
  throw VerbError(kExitNoUnit, "run: this machine does not give " + missing + ". The command would share " +
                                   (IsAnotherUnitAttached() ? "the records of the unit that is attached here, and "
                                                            : "the machine's records, processes and ") +
                                   "/etc/localtime. --on-this-machine runs it all the same");
}

std::vector<std::string> CommandLine(const RunOptions& options, int channel) {
  std::vector<std::string> words = Surroundings(options);
  words.insert(words.end(), {OwnProgram(), "inside", "--channel", std::to_string(channel)});
  if (options.fresh) words.emplace_back("--fresh");
  if (!options.log.empty()) words.insert(words.end(), {"--log", options.log});
  if (!options.scenario.empty()) words.insert(words.end(), {"--scenario", options.scenario});
  words.emplace_back("--");
  words.insert(words.end(), options.command.begin(), options.command.end());
  return words;
}

/// Nothing between here and the command reacts to the terminal's signals: the command does.
pid_t Start(const std::vector<std::string>& words, int other_end) {
  const std::vector<char*> argv = ArgumentsOf(words);
  const pid_t child = fork();
  if (child == -1) throw VerbError(kExitNoUnit, std::string("run: ") + std::strerror(errno));
  if (child != 0) return child;
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  for (const int number : kPassedOn) std::signal(number, SIG_IGN);
  fcntl(other_end, F_SETFD, 0);
  execvp(argv[0], argv.data());
  std::fprintf(stderr, "hlx-simulator: run: %s: %s\n", argv[0], std::strerror(errno));
  _exit(kExitNoUnit);
}

class Outside {
 public:
  explicit Outside(const RunOptions& options) : options_(options) {
    sigset_t watched;
    sigemptyset(&watched);
    for (const int number : kPassedOn) sigaddset(&watched, number);
    sigaddset(&watched, SIGCHLD);
    sigprocmask(SIG_BLOCK, &watched, nullptr);
    signals_ = signalfd(-1, &watched, SFD_CLOEXEC | SFD_NONBLOCK);
    int ends[2];
    if (signals_ == -1 || socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
      throw VerbError(kExitNoUnit, std::string("run: ") + std::strerror(errno));
    }
    channel_ = ends[0];
    child_ = Start(CommandLine(options, ends[1]), ends[1]);
    close(ends[1]);
  }

  Outside(const Outside&) = delete;
  Outside& operator=(const Outside&) = delete;
  ~Outside() {
    close(signals_);
    close(channel_);
  }

  int Wait() {
    if (options_.timeout > 0) {
      deadline_ = Clock::now() + std::chrono::milliseconds(static_cast<int64_t>(options_.timeout * 1000));
    }
    int status = 0;
    while (waitpid(child_, &status, WNOHANG) != child_) Look();
    char byte = 0;
    const bool started = recv(channel_, &byte, 1, MSG_DONTWAIT) == 1 && byte == kCommandStarted;
    if (timed_out_) return kExitTimeIsUp;
    if (!started) return kExitNoUnit;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }

 private:
  void Look() {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline_ - Clock::now()).count() + 1;
    pollfd watched = {signals_, POLLIN, 0};
    poll(&watched, 1, static_cast<int>(std::clamp<int64_t>(left, 0, 1000000)));
    signalfd_siginfo info{};
    while (read(signals_, &info, sizeof info) == sizeof info) {
      // What the terminal sends, it has sent to the command as well.
      if (info.ssi_signo != SIGCHLD && info.ssi_code != SI_KERNEL) Pass(static_cast<int>(info.ssi_signo));
    }
    if (Clock::now() >= deadline_) EndIt();
  }

  void EndIt() {
    if (timed_out_) kill(child_, SIGKILL);  // and with it everything inside
    deadline_ = timed_out_ ? Clock::time_point::max() : Clock::now() + kGraceTime;
    if (std::exchange(timed_out_, true)) return;
    std::fprintf(stderr, "hlx-simulator: run: %g s are over\n", options_.timeout);
    Pass(SIGTERM);
  }

  void Pass(int number) const {
    const char byte = static_cast<char>(number);
    send(channel_, &byte, 1, MSG_NOSIGNAL);
  }

  const RunOptions& options_;
  int signals_ = -1;
  int channel_ = -1;
  pid_t child_ = -1;
  bool timed_out_ = false;
  Clock::time_point deadline_ = Clock::time_point::max();
};

}  // namespace

int RunOutside(const RunOptions& options) {
  if (options.command.empty()) throw VerbError(kExitBadArgument, "run takes -- COMMAND [ARGUMENT...]");
  if (options.display && std::getenv("DISPLAY") == nullptr && std::getenv("WAYLAND_DISPLAY") == nullptr) {
    throw VerbError(kExitNoUnit, "run: there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set");
  }
  return Outside(options).Wait();
}
