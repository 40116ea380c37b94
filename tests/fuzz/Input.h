/// A fuzz input taken apart.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

/// What must hold for every input.
inline void Require(bool holds) {
  if (!holds) std::abort();
}

class Input {
 public:
  Input(const uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

  bool Empty() const { return at_ >= rest_.size(); }
  /// 0 behind the end.
  unsigned char Byte() { return Empty() ? 0 : static_cast<unsigned char>(rest_[at_++]); }
  /// At most `most` bytes.
  std::string Take(std::size_t most) {
    std::string taken = rest_.substr(at_, most);
    at_ += taken.size();
    return taken;
  }
  std::string Rest() { return Take(rest_.size()); }

  static std::vector<std::string> Lines(const std::string& text, char separator = '\n') {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line, separator);) lines.push_back(line);
    return lines;
  }

 private:
  std::string rest_;
  std::size_t at_ = 0;
};
