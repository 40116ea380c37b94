/// Events as they come.
#pragma once

#include <glib.h>

#include <exception>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "tools/hlxctl/Area.h"

struct MonitorOptions {
  unsigned count = 0;    ///< end after so many events; 0: never
  unsigned seconds = 0;  ///< end after so long; 0: never
  bool json = false;
};

/// Writes each event as a line. Callable from the library's threads, too.
class EventLog {
 public:
  using Values = std::vector<std::pair<std::string, Value>>;

  EventLog(const MonitorOptions& options, GMainLoop* loop);

  /// `event`: the callback's name. `nothing`: what it says to people when there are no values.
  void Write(const char* area, const char* event, const Values& values, const char* nothing = "");

  /// As Write(); on a terminal a bar that grows in its place.
  void WriteProgress(const char* area, const char* event, const char* what, int64_t percent);

  /// To be called when the loop has ended. @throws Failure when something could not be written
  void Finish();

 private:
  void WriteLine(const char* area, const char* event, const Values& values, const char* nothing);
  void Put(const std::string& text);
  void EndBar();
  void Count();

  const MonitorOptions& options_;
  GMainLoop* loop_;
  bool bars_;
  std::mutex mutex_;
  std::string bar_;  ///< the event whose bar is the terminal's last line; empty: none
  unsigned events_ = 0;
  std::exception_ptr failure_;
};

/// Prints the events of `areas` until SIGINT, SIGTERM, or what the options say.
void Monitor(const std::vector<const Area*>& areas, const MonitorOptions& options);
