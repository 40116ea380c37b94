/* The platform's plain mutex. Installed with the public headers, since every listener registry holds one: C++11,
 * without GLib, and of the same size for ever. */
#ifndef HLX_MUTEX_H
#define HLX_MUTEX_H

#include <pthread.h>

/** Not recursive: locking it twice on one thread blocks for ever. Neither copyable nor movable. */
class HLXMutex {
 public:
  HLXMutex() : mutex_() { pthread_mutex_init(&mutex_, nullptr); }
  HLXMutex(const HLXMutex&) = delete;
  HLXMutex& operator=(const HLXMutex&) = delete;
  ~HLXMutex() { pthread_mutex_destroy(&mutex_); }

  void Lock() { pthread_mutex_lock(&mutex_); }
  void Unlock() { pthread_mutex_unlock(&mutex_); }

 private:
  pthread_mutex_t mutex_;
};

#endif
