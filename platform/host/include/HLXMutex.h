/// The platform's plain mutex. Public because every listener registry holds one.
#ifndef HLX_MUTEX_H
#define HLX_MUTEX_H

#include <mutex>

/// Not recursive: locking it twice on one thread blocks for ever. Neither copyable nor movable.
class HLXMutex {
 public:
  HLXMutex() = default;
  HLXMutex(const HLXMutex&) = delete;
  HLXMutex& operator=(const HLXMutex&) = delete;

  void Lock() { mutex_.lock(); }
  void Unlock() { mutex_.unlock(); }

 private:
  std::mutex mutex_;
};

#endif
