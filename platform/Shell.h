/// How a shell command is started, by the library itself and by platforms that keep what HLX_ExecSystemCmd() promises.
#pragma once

#include <fcntl.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): sigfillset() is no standard C++
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>
#include <string>

#include "platform/FileDescriptor.h"

namespace Shell {

/// The descriptor under which a script finds what it was given.
constexpr int kGiven = 3;

/// `descriptor` as one that no descriptor of a child gets in the way of.
inline FileDescriptor OutOfTheWay(int descriptor) {
  const FileDescriptor original(descriptor);
  return FileDescriptor(fcntl(descriptor, F_DUPFD_CLOEXEC, kGiven + 1));
}

/// What a child writes, `mine` reads. Both are none, with errno set, when there is no pipe to be had.
struct Pipe {
  FileDescriptor mine;
  FileDescriptor childs;

  Pipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    mine = FileDescriptor(ends[0]);
    childs = OutOfTheWay(ends[1]);
  }
};

/// A process that is being started bears this one's name until its program runs. Whoever looks for processes by name
/// holds this meanwhile: nothing is started then but by the same thread.
inline std::recursive_mutex starting;

/// Starts /bin/sh with `script`, whose "$1" is `command`: LC_ALL is C, standard input is /dev/null, the session is its
/// own, signals are as a new program expects them. `given` becomes descriptor 3, `output` standard output (null: it
/// stays the process's). Both must have come OutOfTheWay() and be closed on exec, as all of the process's should be.
/// @return the process, which is to be reaped; -1 with errno set
inline pid_t Start(const char* script, const char* command, const FileDescriptor& given,
                   const FileDescriptor* output = nullptr) {
  if (!given || (output != nullptr && !*output)) return -1;
  struct Spawn {
    posix_spawnattr_t attributes = {};
    posix_spawn_file_actions_t actions = {};
    Spawn() {
      posix_spawnattr_init(&attributes);
      posix_spawn_file_actions_init(&actions);
    }
    Spawn(const Spawn&) = delete;
    Spawn& operator=(const Spawn&) = delete;
    ~Spawn() {
      posix_spawnattr_destroy(&attributes);
      posix_spawn_file_actions_destroy(&actions);
    }
  } spawn;
  sigset_t all;
  sigset_t none;
  sigfillset(&all);
  sigemptyset(&none);
  posix_spawnattr_setflags(&spawn.attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
  posix_spawnattr_setsigdefault(&spawn.attributes, &all);
  posix_spawnattr_setsigmask(&spawn.attributes, &none);
  posix_spawn_file_actions_addopen(&spawn.actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&spawn.actions, given.Get(), kGiven);
  if (output != nullptr) posix_spawn_file_actions_adddup2(&spawn.actions, output->Get(), STDOUT_FILENO);

  const std::string whole_script = std::string("export LC_ALL=C; ") + script;
  const char* const arguments[] = {"/bin/sh", "-c", whole_script.c_str(), "/bin/sh", command, nullptr};
  pid_t pid = -1;
  const std::lock_guard<std::recursive_mutex> until_the_program_runs(starting);
  errno = posix_spawn(&pid, arguments[0], &spawn.actions, &spawn.attributes, const_cast<char**>(arguments), environ);
  return errno == 0 ? pid : -1;
}

/// Waits for the end of `process`. Its status is not to be had in an application that ignores SIGCHLD or waits for
/// children that are not its own: a script tells it by itself.
inline void Reap(pid_t process) {
  while (waitpid(process, nullptr, 0) == -1 && errno == EINTR) {
  }
}

}  // namespace Shell
