/// What commands take: each argument knows its name, what it allows, and how to read it.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <variant>

#include "HLXTimeTypes.h"
#include "tools/hlxctl/Value.h"

using ArgumentValue = std::variant<int64_t, std::string, SystemTime::DateInfo, SystemTime::TimeInfo>;

struct Argument {
  std::string name;
  std::string allowed;  ///< for help and errors
  /// @throws std::invalid_argument for what is not allowed, with a text only if `allowed` does not say it all
  std::function<ArgumentValue(const std::string& text)> read;
  std::string otherwise;  ///< what an argument that was left out stands for; empty: it must be there

  /// @throws std::invalid_argument that names the argument, the input and what is allowed
  ArgumentValue Read(const std::string& text) const;
};

/// A whole number, also in hexadecimal ("0x1f").
Argument Range(const std::string& name, int64_t least, int64_t most);

/// A byte with names for some values.
Argument Choice(const std::string& name, Words words, int64_t most = 255);

Argument Switch(const std::string& name = "on");

/// UTF-8, as D-Bus demands.
Argument TextArgument(const std::string& name);

/// "2024-02-29"; the day of the week is worked out.
Argument DateArgument();

/// "23:59" or "23:59:30"
Argument TimeArgument();

template <class T>
Argument Whole(const std::string& name) {
  return Range(name, std::numeric_limits<T>::min(), std::numeric_limits<T>::max());
}
