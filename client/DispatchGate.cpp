#include "client/DispatchGate.h"

#include <unistd.h>

#include <condition_variable>
#include <cstdlib>
#include <map>
#include <mutex>
#include <thread>

#include "platform/HLXLog.h"

HLX_LOG_SOURCE("client/DispatchGate");

namespace {

struct Target {
  int inside = 0;
  bool open = true;
};

struct Holder {
  std::thread::id thread;
  int times = 0;
};

struct Gate {
  std::mutex mutex;
  std::condition_variable changed;
  std::map<const void*, Target> targets;
  std::map<const void*, Holder> turns;
  std::thread::id ended_by;

  bool Ending() const { return ended_by != std::thread::id(); }
};

/// Never destroyed: a callback may still be coming while the process's statics go.
Gate& TheGate() {
  static Gate& gate = *new Gate;
  return gate;
}

thread_local int passes_of_this_thread = 0;

}  // namespace

void DispatchGate::Open(const void* target) {
  Gate& gate = TheGate();
  const std::lock_guard<std::mutex> lock(gate.mutex);
  gate.targets[target].open = true;
}

bool DispatchGate::Refused() {
  if (passes_of_this_thread > 0) {
    HLX_LOG_ERROR("a callback cannot wait for its own end: nothing is released");
    return true;
  }
  Gate& gate = TheGate();
  const std::lock_guard<std::mutex> lock(gate.mutex);
  if (gate.Ending()) HLX_LOG_ERROR("the process is ending: nothing is released");
  return gate.Ending();
}

bool DispatchGate::Close(const void* target) {
  if (Refused()) return false;
  Gate& gate = TheGate();
  std::unique_lock<std::mutex> lock(gate.mutex);
  const auto entry = gate.targets.find(target);
  if (entry == gate.targets.end()) return true;
  entry->second.open = false;
  // Another thread may close it, too: who comes out first forgets it.
  gate.changed.wait(lock, [&gate, target] {
    const auto found = gate.targets.find(target);
    return found == gate.targets.end() || found->second.inside == 0 || gate.Ending();
  });
  if (gate.Ending()) return false;
  gate.targets.erase(target);
  return true;
}

DispatchGate::Pass::Pass(const void* target) : target_(nullptr) {
  Gate& gate = TheGate();
  const std::lock_guard<std::mutex> lock(gate.mutex);
  const auto entry = gate.targets.find(target);
  if (entry == gate.targets.end() || !entry->second.open || gate.Ending()) return;
  ++entry->second.inside;
  ++passes_of_this_thread;
  target_ = target;
}

DispatchGate::Pass::~Pass() {
  if (target_ == nullptr) return;
  --passes_of_this_thread;
  Gate& gate = TheGate();
  const std::lock_guard<std::mutex> lock(gate.mutex);
  if (--gate.targets[target_].inside == 0) gate.changed.notify_all();
}

DispatchGate::Turn::Turn(const void* what) : what_(nullptr) {
  Gate& gate = TheGate();
  std::unique_lock<std::mutex> lock(gate.mutex);
  const std::thread::id me = std::this_thread::get_id();
  const auto mine = [&gate, what, me] {
    const auto holder = gate.turns.find(what);
    return holder == gate.turns.end() || holder->second.thread == me;
  };
  gate.changed.wait(lock, [&] { return mine() || gate.Ending(); });
  if (!mine()) return;
  Holder& holder = gate.turns[what];
  holder.thread = me;
  ++holder.times;
  what_ = what;
}

DispatchGate::Turn::~Turn() {
  if (what_ == nullptr) return;
  Gate& gate = TheGate();
  const std::lock_guard<std::mutex> lock(gate.mutex);
  if (--gate.turns[what_].times > 0) return;
  gate.turns.erase(what_);
  gate.changed.notify_all();
}

void DispatchGate::Exit(int status) {
  {
    Gate& gate = TheGate();
    const std::lock_guard<std::mutex> lock(gate.mutex);
    const std::thread::id me = std::this_thread::get_id();
    // A second thread has no exit handlers to run, and must not wait for the first.
    if (gate.Ending() && gate.ended_by != me) _exit(status);
    gate.ended_by = me;
    gate.changed.notify_all();
  }
  std::exit(status);
}
