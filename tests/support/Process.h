/// A child process of a test: what it writes is kept, and it ends with the object at the latest.
#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

class Process {
 public:
  using Seconds = std::chrono::seconds;

  /// Starts `args[0]` (looked up in PATH) with the test's environment and an empty standard input.
  explicit Process(const std::vector<std::string>& args) {
    std::vector<char*> argv;
    argv.reserve(args.size() + 1);
    for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out_.fd, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err_.fd, STDERR_FILENO);
    const int failure = posix_spawnp(&pid_, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) throw std::system_error(failure, std::generic_category(), args[0]);
  }

  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  ~Process() {
    if (Wait(Seconds(0)) != kRunning) return;
    Signal(SIGKILL);
    Wait();
  }

  pid_t Pid() const { return pid_; }
  void Signal(int number) const { kill(pid_, number); }

  /// Everything that the process has written so far.
  std::string Out() const { return out_.Text(); }
  std::string Err() const { return err_.Text(); }

  /// Waits for a whole line on standard output that contains `part`. Lines up to the one found by the last call do not
  /// count again. False when the time is up, or the process ends, without such a line.
  bool WaitForLine(const std::string& part, Seconds limit = Seconds(10)) {
    bool found = false;
    Poll(limit, [&] {
      const bool ended = Wait(Seconds(0)) != kRunning;  // asked first: what it wrote before its end is all there
      const std::string text = Out();
      for (std::size_t end; !found && (end = text.find('\n', seen_)) != std::string::npos; seen_ = end + 1) {
        found = text.substr(seen_, end - seen_).find(part) != std::string::npos;
      }
      return found || ended;
    });
    return found;
  }

  static constexpr int kRunning = -1;

  /// Waits for the end: the exit code, 128 + the signal that ended it, or kRunning when the time is up.
  int Wait(Seconds limit = Seconds(30)) {
    Poll(limit, [this] {
      int status = 0;
      if (code_ == kRunning && waitpid(pid_, &status, WNOHANG) == pid_) {
        code_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
      }
      return code_ != kRunning;
    });
    return code_;
  }

  /// Asks it to end with SIGTERM and waits.
  int Terminate() {
    if (Wait(Seconds(0)) == kRunning) Signal(SIGTERM);
    return Wait();
  }

 private:
  /// A file without a name: unlike a pipe it never makes the writer wait for the test.
  struct Capture {
    const int fd = memfd_create("output", MFD_CLOEXEC);
    Capture() {
      if (fd < 0) throw std::system_error(errno, std::generic_category(), "memfd_create");
    }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;
    ~Capture() { close(fd); }

    std::string Text() const {
      std::string text;
      char buffer[4096];
      for (ssize_t n; (n = pread(fd, buffer, sizeof(buffer), static_cast<off_t>(text.size()))) > 0;) {
        text.append(buffer, static_cast<std::size_t>(n));
      }
      return text;
    }
  };

  template <class Condition>
  static bool Poll(Seconds limit, Condition condition) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
      if (std::chrono::steady_clock::now() >= deadline) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
  }

  Capture out_;
  Capture err_;
  std::size_t seen_ = 0;
  pid_t pid_ = -1;
  int code_ = kRunning;
};
