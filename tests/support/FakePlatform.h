/// The platform that unit tests put below the library.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace fake {

struct LogRecord {
  int level;  ///< ZLOG_LEVEL_*
  std::string source;
  std::string function;
  std::string text;
};

struct PersistWrite {
  int module, id, value;
  std::vector<int> extra;  ///< the arguments behind the value
  bool operator==(const PersistWrite& other) const {
    return module == other.module && id == other.id && value == other.value && extra == other.extra;
  }
};

struct Platform {
  std::map<std::string, std::string> config;   ///< by key; "1" or "true" is true; a missing key is "", 0 and false
  std::vector<std::string> config_reads;       ///< keys in the order of the look-ups
  std::function<void()> during_look_up;        ///< runs with every look-up, without a lock
  std::map<std::pair<int, int>, int> persist;  ///< saved settings by module and id; an absent one reads as 6
  int persist_read_result = 0;                 ///< non-zero: every read writes rubbish and fails with it
  int persist_write_result = 0;                ///< non-zero: every write fails with it
  std::vector<PersistWrite> persist_writes;    ///< all that were asked for
  std::vector<std::pair<int, int>> persist_reads;
  std::function<int(const std::string& command, int flag)> exec;  ///< unset: every command succeeds
  std::vector<std::pair<std::string, int>> commands;
  int cold_boot = 0;
  unsigned int gamma = 7;
  std::vector<int64_t> clock_settings;
  int clock_errno = 0;  ///< non-zero: setting the clock fails with it
  std::vector<LogRecord> log;

  /// Texts of the records at `level`, in order.
  std::vector<std::string> Logged(int level) const;
  /// The functions whose names the records carry.
  std::set<std::string> Loggers() const;
  /// Level and text of every record, as "WARN text", in order.
  std::vector<std::string> LoggedAll() const;
};

/// The one platform of the process. Guarded inside for the library's calls; look at it when no other thread runs.
Platform& Get();

/// A copy of it, taken while other threads run.
Platform Snapshot();

/// Everything back to the start, with the log system up.
void Reset();

/// Takes the log system down (liblog_category is null) or up.
void SetLogUp(bool up);

/// Removes the four shared-memory segments, so that the next client finds fresh ones.
void RemoveSegments();

}  // namespace fake
