/// What applications have sent.
#pragma once

#include <gio/gio.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "dbus/GLibPtr.h"
#include "simulator/model/Timer.h"

struct Call {
  gint64 time = 0;  ///< microseconds since 1970
  std::string sender;
  std::string method;
  GLibPtr<GVariant> arguments;  ///< "a{sv}"

  /// "(xssa{sv})", floating.
  GVariant* ToVariant() const;
};

class CallLog {
 public:
  static constexpr std::size_t kMost = 10000;

  void Add(Call call);
  void Clear();
  /// Of every method with an empty name.
  std::vector<const Call*> Find(const std::string& method) const;

  /// Calls `done` with the first kept call of the method, at once or when it comes; with null when `seconds` are over.
  void Wait(const std::string& method, double seconds, std::function<void(const Call*)> done);

  /// How many calls have been added; Added(n) is the call that came as number n, from 0, null when it is not kept.
  uint64_t count() const { return first_ + calls_.size(); }
  const Call* Added(uint64_t number) const;

  void Listen(std::function<void(const Call&)> listener) { listeners_.push_back(std::move(listener)); }

 private:
  struct Waiter {
    std::string method;
    std::function<void(const Call*)> done;
    Timer timer;
  };
  void End(std::list<Waiter>::iterator waiter, const Call* call);

  std::deque<Call> calls_;
  uint64_t first_ = 0;  ///< number of the oldest that is kept
  std::list<Waiter> waiters_;
  std::vector<std::function<void(const Call&)>> listeners_;
};
