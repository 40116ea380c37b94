/// Version files, of the unit and of update packages: a key, ":" and a value on each line.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/FileDescriptor.h"

/// A regular file that is larger is no version file: nothing of it is read.
constexpr std::size_t kVersionFileLimit = 65536;

/// All of a version file, just opened with O_NONBLOCK. Nothing, with `problem` saying why, when it could not be opened
/// (`errno` tells), is no regular file, or is larger than kVersionFileLimit.
std::optional<std::string> ReadVersionFile(const FileDescriptor& file, std::string* problem);

/// The value of the first line whose key is `key`; nothing when there is none. A line is split at its first ":", and
/// nothing is trimmed; lines without a ":" do not count.
std::optional<std::string> FindVersionValue(std::string_view text, std::string_view key);

/// The value of `key` in the unit's version file for `source` ("ARM", or anything else for the MCU); empty when the
/// file has no such key, or cannot be opened, which is said on standard output. One that is no regular file, or too
/// large, counts as one that cannot be opened; an ERROR record says why.
std::string AnalysisLocalVersionInfo(const std::string& key, const std::string& source);

/// An ARM version as it is shown: `value_of(key)`, where the unit is configured so with the project's id or the model's
/// name in front.
std::string PrefixedArmVersion(const std::string& key, const std::function<std::string(const std::string&)>& value_of);
