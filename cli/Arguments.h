/// Command lines for those who start programs.
#pragma once

#include <string>
#include <vector>

/// As exec() takes them, null at the end. `words` must outlive it.
inline std::vector<char*> ArgumentsOf(const std::vector<std::string>& words) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  return arguments;
}
