/// Version files, of the unit and of update packages: a key, ":" and a value on each line.
#pragma once

#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

/// The value of the first line whose key is `key`; nothing when there is none. A line is split at its first ":", and
/// nothing is trimmed; lines without a ":" do not count.
std::optional<std::string> FindVersionValue(std::FILE* file, const std::string& key);

/// The value of `key` in the unit's version file for `source` ("ARM", or anything else for the MCU); empty when the
/// file cannot be opened, which is said on standard output, or has no such key.
std::string AnalysisLocalVersionInfo(const std::string& key, const std::string& source);

/// An ARM version as it is shown: `value_of(key)`, where the unit is configured so with the project's id or the model's
/// name in front.
std::string PrefixedArmVersion(const std::string& key, const std::function<std::string(const std::string&)>& value_of);
