/// JSON whose parts know the line that they stand on, for errors that people can follow.
#pragma once

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "cli/Json.h"

/// Where something is wrong in a file, and what: "FILE:LINE: what".
class BadFile : public std::runtime_error {
 public:
  BadFile(const std::string& file, int line, const std::string& what)
      : std::runtime_error(file + ":" + std::to_string(line) + ": " + what) {}
};

struct Located {  // NOLINT(bugprone-exception-escape): moving JSON checks what always holds
  enum class Kind { kScalar, kArray, kObject };

  Kind kind = Kind::kScalar;
  int line = 1;
  Json scalar;                                             ///< null, a boolean, a number or a text
  std::vector<Located> items;                              ///< of an array
  std::vector<std::pair<std::string, Located>> members{};  ///< of an object, in the file's order

  /// Null when there is none.
  const Located* Find(const std::string& key) const;
  bool IsNumber() const { return scalar.is_number(); }
  /// As people write it: a text bare, numbers and booleans as JSON has them.
  std::string Text() const;
};

/// At most so deep and so many parts: enough for any scenario, and not for the memory of the machine.
constexpr std::size_t kMostLevels = 64;
constexpr std::size_t kMostParts = 1000000;
constexpr std::size_t kMostMembers = 1000;  ///< of an object: they are looked up one by one

/// Parses all of `text`, which begins on line `line` of the file. @throws BadFile
Located ParseLocated(const std::string& file, const std::string& text, int line = 1);
