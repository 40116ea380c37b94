/// A one-shot timer of the main loop that ends with its owner.
#pragma once

#include <glib.h>

#include <chrono>
#include <functional>
#include <iterator>
#include <list>
#include <utility>

class Timer {
 public:
  Timer() = default;
  ~Timer() { Stop(); }
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  /// Calls `what` once after `time`; what was set before is forgotten. `what` may start the timer again.
  void Start(std::chrono::milliseconds time, std::function<void()> what) {
    Stop();
    what_ = std::move(what);
    source_ = g_timeout_add(static_cast<guint>(time.count()), OnTime, this);
  }

  void Stop() {
    if (source_ != 0) g_source_remove(std::exchange(source_, 0));
  }

  bool IsRunning() const { return source_ != 0; }

 private:
  static gboolean OnTime(gpointer timer) {
    auto& self = *static_cast<Timer*>(timer);
    self.source_ = 0;
    const auto what = std::move(self.what_);
    what();
    return G_SOURCE_REMOVE;
  }

  std::function<void()> what_;
  guint source_ = 0;
};

/// Any number of one-shot timers that end with their owner.
class Delays {
 public:
  void Start(std::chrono::milliseconds time, std::function<void()> what) {
    timers_.emplace_back();
    const auto timer = std::prev(timers_.end());
    timer->Start(time, [this, timer, what = std::move(what)] {
      what();
      timers_.erase(timer);
    });
  }

 private:
  std::list<Timer> timers_;
};
