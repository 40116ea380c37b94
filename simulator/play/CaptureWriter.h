/// What a unit was told and told, in files.
#pragma once

#include <glib.h>

#include <cstdio>
#include <memory>
#include <string>

#include "cli/Json.h"
#include "simulator/Simulator.h"

/// Writes capture.jsonl (signals, silent changes and calls, in the format of `hlxctl record`) and calls.jsonl (a line
/// for each call, as `hlx-simulator calls --json` prints it) into a directory while it lives.
class CaptureWriter {
 public:
  /// @throws std::runtime_error that names the file that cannot be written
  CaptureWriter(Simulator& simulator, const std::string& directory);

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  using File = std::unique_ptr<std::FILE, Close>;

  static File Open(const std::string& name);
  void Write(const Json& what);

  const gint64 start_ = g_get_monotonic_time();
  File capture_;
  File calls_;
};

/// A call with its arguments by their names, as `calls --json` has it.
Json JsonOf(const Call& call);
