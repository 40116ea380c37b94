#include <fcntl.h>
#include <glib-unix.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <utility>

#include "cli/Arguments.h"
#include "dbus/GLibPtr.h"
#include "simulator/Configuration.h"
#include "simulator/Installed.h"
#include "simulator/cli/ControlClient.h"
#include "simulator/cli/Run.h"
#include "simulator/cli/Verbs.h"
#include "simulator/model/Timer.h"

namespace {

constexpr std::chrono::seconds kGraceTime{3};  ///< from SIGTERM to SIGKILL, for a command whose unit has died

/// What differs between the children.
struct Child {
  int out = -1;   ///< standard output; -1: this process's
  int keep = -1;  ///< a descriptor that it inherits; it has no input then
};

/// The pid; -1, with errno, when the program cannot be started.
pid_t Start(const std::vector<std::string>& words, const Child& child) {
  const std::vector<char*> argv = ArgumentsOf(words);
  int failed[2];
  if (pipe2(failed, O_CLOEXEC) != 0) return -1;
  const pid_t pid = fork();
  if (pid == 0) {
    for (int number = 1; number < NSIG; ++number) std::signal(number, SIG_DFL);
    if (child.out >= 0) dup2(child.out, STDOUT_FILENO);
    if (child.keep >= 0) {
      fcntl(child.keep, F_SETFD, 0);
      dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
    }
    execvp(argv[0], argv.data());
    const int problem = errno;
    _exit(write(failed[1], &problem, sizeof problem) == sizeof problem ? kExitNotFound : kExitNoUnit);
  }
  close(failed[1]);
  int problem = 0;
  const bool started = pid != -1 && read(failed[0], &problem, sizeof problem) != sizeof problem;
  close(failed[0]);
  if (started) return pid;
  if (pid != -1) waitpid(pid, nullptr, 0);
  errno = problem;
  return -1;
}

/// What a unit has that a desk has not.
void WriteVersionFiles() {
  if (!IsInSandbox() || access("/app/etc/sys_version.conf", F_OK) == 0) return;
  g_mkdir_with_parents("/app/etc", 0755);
  g_mkdir_with_parents("/etc/boot/boot-script", 0755);
  for (const auto& [sample, file] : {std::pair("sys_version.conf", "/app/etc/sys_version.conf"),
                                     std::pair("bsp_version.conf", "/etc/boot/boot-script/bsp_version.conf")}) {
    std::ifstream from(InstalledFile(sample));
    std::ofstream(file) << from.rdbuf();
  }
}

class Inside {
 public:
  explicit Inside(const RunOptions& options) : options_(options), loop_(g_main_loop_new(nullptr, FALSE)) {}

  int Run() {
    if (options_.fresh) {
      g_setenv("HLX_HOST_STATE", "/data/hlx", TRUE);
      g_unsetenv("HLX_HOST_PERSIST");
    }
    if (!options_.log.empty()) g_mkdir_with_parents(options_.log.c_str(), 0777);  // a failure shows with the first file
    FindConfiguration();
    WriteVersionFiles();
    if (!StartUnit()) return kExitNoUnit;
    StartCommand();
    if (command_ != -1) g_main_loop_run(loop_.get());
    EndUnit();
    return status_;
  }

 private:
  bool StartUnit() {
    std::vector<std::string> words = {OwnProgram()};
    std::string journal = "/dev/null";
    if (!options_.log.empty()) {
      journal = options_.log + "/journal.log";
      words.insert(words.end(), {"--log", options_.log});
    }
    if (!options_.scenario.empty()) words.insert(words.end(), {"--scenario", options_.scenario});
    Child child;
    child.out = open(journal.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (child.out == -1) {
      std::fprintf(stderr, "hlx-simulator: run: %s: %s\n", journal.c_str(), std::strerror(errno));
      return false;
    }
    int ready[2];
    if (pipe2(ready, O_CLOEXEC) != 0) return false;
    child.keep = ready[1];
    words.insert(words.end(), {"--ready-fd", std::to_string(ready[1])});
    unit_ = Start(words, child);
    close(ready[1]);
    char byte = 0;
    const bool there = unit_ != -1 && read(ready[0], &byte, 1) == 1;
    close(ready[0]);
    close(child.out);
    if (there) g_child_watch_add(unit_, OnUnitEnded, this);
    return there;
  }

  void StartCommand() {
    const char started = kCommandStarted;
    send(options_.channel, &started, 1, MSG_NOSIGNAL);
    command_ = Start(options_.command, {});
    if (command_ == -1) {
      std::fprintf(stderr, "hlx-simulator: run: %s: %s\n", options_.command[0].c_str(), std::strerror(errno));
      status_ = kExitNotFound;
      return;
    }
    g_child_watch_add(command_, OnCommandEnded, this);
    g_unix_fd_add(options_.channel, G_IO_IN, OnSignal, this);
  }

  void EndUnit() {
    if (unit_ == -1) return;
    kill(unit_, SIGTERM);
    while (unit_ != -1) g_main_context_iteration(nullptr, TRUE);
  }

  static gboolean OnSignal(gint channel, GIOCondition /*condition*/, gpointer inside) {
    char number = 0;
    if (recv(channel, &number, 1, 0) != 1) return G_SOURCE_REMOVE;
    const Inside& self = *static_cast<Inside*>(inside);
    if (self.command_ != -1) kill(self.command_, number);
    return G_SOURCE_CONTINUE;
  }

  static void OnCommandEnded(GPid /*pid*/, gint status, gpointer inside) {
    auto& self = *static_cast<Inside*>(inside);
    self.command_ = -1;
    if (self.status_ != kExitUnitDied) self.status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    g_main_loop_quit(self.loop_.get());
  }

  static void OnUnitEnded(GPid /*pid*/, gint /*status*/, gpointer inside) {
    auto& self = *static_cast<Inside*>(inside);
    self.unit_ = -1;
    if (self.command_ == -1) return;
    std::fprintf(stderr, "hlx-simulator: run: the unit has died\n");
    self.status_ = kExitUnitDied;
    kill(self.command_, SIGTERM);
    self.grace_.Start(kGraceTime, [&self] { kill(self.command_, SIGKILL); });
  }

  const RunOptions& options_;
  GLibPtr<GMainLoop> loop_;
  pid_t unit_ = -1;
  pid_t command_ = -1;
  int status_ = kExitNoUnit;
  Timer grace_;
};

}  // namespace

int RunInside(const RunOptions& options) {
  fcntl(options.channel, F_SETFD, FD_CLOEXEC);
  return Inside(options).Run();
}
