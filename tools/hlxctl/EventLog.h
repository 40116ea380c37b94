/// Events as lines, for people and for programs.
#pragma once

#include <functional>
#include <mutex>

#include "catalog/Catalog.h"
#include "tools/hlxctl/Request.h"

class Loop;

namespace catalog {
struct Event;
}

/// Runs `loop`; with --count it must end for that. @return the exit code
int Follow(Loop& loop, const Request& request, const std::function<unsigned()>& count, const char* what);

class EventLog {
 public:
  /// `request.count` events end `loop`, as does what goes wrong when writing.
  EventLog(const Request& request, Loop& loop);

  /// Callable from the library's threads, too.
  void Write(const catalog::Event& event);

  /// The service's name has got or lost its owner. Does not count as an event.
  void WriteService(bool there);

  unsigned Count() const { return count_; }

 private:
  std::string When() const;
  void WriteLine(const char* area, const char* event, const std::string& what);
  void WriteJson(const char* area, const char* event, const Json& values);
  void WriteReadings(const catalog::Event& event);

  const Request& request_;
  Loop& loop_;
  const int64_t start_;
  std::mutex mutex_;
  unsigned count_ = 0;
};
