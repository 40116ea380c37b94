#include "simulator/service/CallLog.h"

#include <utility>

GVariant* Call::ToVariant() const {
  return g_variant_new("(xss@a{sv})", time, sender.c_str(), method.c_str(), arguments.get());
}

void CallLog::Add(Call call) {
  calls_.push_back(std::move(call));
  if (calls_.size() > kMost) {
    calls_.pop_front();
    ++first_;
  }
  const Call& added = calls_.back();
  for (auto waiter = waiters_.begin(); waiter != waiters_.end();) {
    const auto next = std::next(waiter);
    if (waiter->method == added.method) End(waiter, &added);
    waiter = next;
  }
  for (const auto& listener : listeners_) listener(added);
}

void CallLog::Clear() {
  first_ += calls_.size();
  calls_.clear();
}

std::vector<const Call*> CallLog::Find(const std::string& method) const {
  std::vector<const Call*> found;
  for (const Call& call : calls_) {
    if (method.empty() || call.method == method) found.push_back(&call);
  }
  return found;
}

const Call* CallLog::Added(uint64_t number) const {
  return number < first_ || number >= count() ? nullptr : &calls_[static_cast<std::size_t>(number - first_)];
}

void CallLog::Wait(const std::string& method, double seconds, std::function<void(const Call*)> done) {
  const std::vector<const Call*> kept = Find(method);
  if (!kept.empty()) return done(kept.front());
  waiters_.emplace_back();
  const auto waiter = std::prev(waiters_.end());
  waiter->method = method;
  waiter->done = std::move(done);
  waiter->timer.Start(std::chrono::milliseconds(static_cast<int64_t>(seconds * 1000)),
                      [this, waiter] { End(waiter, nullptr); });
}

void CallLog::End(std::list<Waiter>::iterator waiter, const Call* call) {
  const auto done = std::move(waiter->done);
  waiters_.erase(waiter);
  done(call);
}
