#include "client/ipc/DispatchGate.h"

#include <condition_variable>
#include <map>
#include <mutex>

namespace {

struct Gate {
  struct Target {
    int inside = 0;
    bool open = true;
  };
  std::mutex mutex;
  std::condition_variable left;
  std::map<const void*, Target> targets;
};

/// Never destroyed: a handler may still be coming while the process's statics go.
Gate& TheGate() {
  static Gate& gate = *new Gate;
  return gate;
}

}  // namespace

void DispatchGate::Open(const void* target) {
  Gate& gate = TheGate();
  const std::lock_guard<std::mutex> lock(gate.mutex);
  gate.targets[target];
}

void DispatchGate::Close(const void* target) {
  Gate& gate = TheGate();
  std::unique_lock<std::mutex> lock(gate.mutex);
  const auto entry = gate.targets.find(target);
  if (entry == gate.targets.end()) return;
  entry->second.open = false;
  gate.left.wait(lock, [&entry] { return entry->second.inside == 0; });
  gate.targets.erase(entry);
}

DispatchGate::Pass::Pass(const void* target) : target_(nullptr) {
  Gate& gate = TheGate();
  const std::lock_guard<std::mutex> lock(gate.mutex);
  const auto entry = gate.targets.find(target);
  if (entry == gate.targets.end() || !entry->second.open) return;
  ++entry->second.inside;
  target_ = target;
}

DispatchGate::Pass::~Pass() {
  if (target_ == nullptr) return;
  Gate& gate = TheGate();
  const std::lock_guard<std::mutex> lock(gate.mutex);
  if (--gate.targets[target_].inside == 0) gate.left.notify_all();
}
