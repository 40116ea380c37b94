/// What the library starts by itself.
#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <optional>
#include <string>

/// Ends a child from any thread: the one that runs, and any that is started later.
class ChildStop {
 public:
  void Request();
  bool Requested() const;

 private:
  friend class Lifeline;
  void SetLifeline(int lifeline);

  mutable std::mutex mutex_;
  bool requested_ = false;
  int lifeline_ = -1;
};

constexpr std::chrono::minutes kChildUpperTime{30};

/// Runs a shell command and returns the first line that it writes: at most `limit` characters, the newline kept. It is
/// empty when the command wrote none before its end, before `stop`, or before `upper_time` was up. The command is not
/// waited for: with the line it is ended, as it is when this process ends. Nothing when it cannot be started.
std::optional<std::string> FirstLineOf(const std::string& command, std::size_t limit, ChildStop* stop = nullptr,
                                       std::chrono::milliseconds upper_time = kChildUpperTime);
