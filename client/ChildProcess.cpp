#include "client/ChildProcess.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/FileDescriptor.h"
#include "platform/Shell.h"

namespace {

/// The command and all that it started end when the lifeline does, on whatever way: this shell is the leader of their
/// session. It gives its standard output away, so that the reader sees the command's end.
constexpr char kOnALifeline[] = R"(/bin/sh -c "$1" 3<&- & exec >&-; read -r _ <&3; kill -9 0)";

using Clock = std::chrono::steady_clock;

/// Reads until a line, `limit` characters or the output are complete; nothing when `deadline` comes first.
std::string ReadLine(int descriptor, std::size_t limit, Clock::time_point deadline) {
  std::string text(limit, '\0');
  std::size_t size = 0;
  while (size < limit) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    pollfd readable{descriptor, POLLIN, 0};
    const int ready = poll(&readable, 1, static_cast<int>(std::max<long long>(left.count(), 0)));
    if (ready == 0) return {};
    const ssize_t count = ready == -1 ? -1 : read(descriptor, &text[size], limit - size);
    if (count == -1 && errno == EINTR) continue;
    if (count <= 0) break;
    const std::size_t newline = text.find('\n', size);
    size += static_cast<std::size_t>(count);
    if (newline < size) return text.substr(0, newline + 1);
  }
  text.resize(size);
  return text;
}

}  // namespace

/// A socket, not a pipe: its end can be told whoever else holds a copy, and by any thread.
class Lifeline {
 public:
  explicit Lifeline(ChildStop* stop) : stop_(stop) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return;
    mine_ = FileDescriptor(ends[0]);
    childs_ = Shell::OutOfTheWay(ends[1]);
    if (stop_ != nullptr) stop_->SetLifeline(ends[0]);
  }
  Lifeline(const Lifeline&) = delete;
  Lifeline& operator=(const Lifeline&) = delete;
  ~Lifeline() {
    if (stop_ != nullptr) stop_->SetLifeline(-1);
    if (mine_) shutdown(mine_.Get(), SHUT_RDWR);
  }

  const FileDescriptor& Childs() const { return childs_; }

 private:
  ChildStop* const stop_;
  FileDescriptor mine_;
  FileDescriptor childs_;
};

void ChildStop::Request() {
  const std::lock_guard<std::mutex> lock(mutex_);
  requested_ = true;
  if (lifeline_ != -1) shutdown(lifeline_, SHUT_RDWR);
}

bool ChildStop::Requested() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return requested_;
}

void ChildStop::SetLifeline(int lifeline) {
  const std::lock_guard<std::mutex> lock(mutex_);
  lifeline_ = lifeline;
  if (requested_ && lifeline_ != -1) shutdown(lifeline_, SHUT_RDWR);
}

std::optional<std::string> FirstLineOf(const std::string& command, std::size_t limit, ChildStop* stop,
                                       std::chrono::milliseconds upper_time) {
  if (stop != nullptr && stop->Requested()) return std::string();
  Shell::Pipe output;
  pid_t process = -1;
  std::string line;
  {
    const Lifeline lifeline(stop);
    process = Shell::Start(kOnALifeline, command.c_str(), lifeline.Childs(), &output.childs);
    if (process == -1) return std::nullopt;
    output.childs = FileDescriptor();
    line = ReadLine(output.mine.Get(), limit, Clock::now() + upper_time);
  }
  Shell::Reap(process);
  return line.substr(0, line.find('\0'));
}
