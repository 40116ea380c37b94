/// What a unit keeps over a restart.
#pragma once

#include <string>
#include <vector>

#include "catalog/Value.h"

/// Saves the value of a field, if it is one that a unit saves. A failure is told on standard error.
void SaveSetting(const catalog::Field& field, const catalog::Scalar& value);

/// Settings that nobody will miss: while it lives, the host platform keeps them in a scratch directory.
class ScratchSettings {
 public:
  ScratchSettings();
  ~ScratchSettings();
  ScratchSettings(const ScratchSettings&) = delete;
  ScratchSettings& operator=(const ScratchSettings&) = delete;

 private:
  std::string directory_;
  std::vector<std::pair<std::string, std::string>> before_;  ///< environment; empty: it was not set
};
