#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Runs a shell command, waits for its end, and returns the first line that it wrote: at most `limit` characters, the
/// newline kept, empty when it wrote nothing. Nothing when the command's pipe cannot be opened.
inline std::optional<std::string> FirstLineOf(const std::string& command, int limit) {
  struct Close {
    void operator()(std::FILE* pipe) const { pclose(pipe); }
  };
  const std::unique_ptr<std::FILE, Close> pipe(popen(command.c_str(), "r"));
  if (pipe == nullptr) return std::nullopt;
  std::vector<char> line(static_cast<std::size_t>(limit) + 1, '\0');
  if (std::fgets(line.data(), limit + 1, pipe.get()) == nullptr) return std::string();
  return std::string(line.data());
}
