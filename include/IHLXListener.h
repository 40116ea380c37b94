#ifndef I_HLX_LISTENER_H
#define I_HLX_LISTENER_H

#include <HLXMutex.h>

#include <set>

#include "HLXExport.h"

/// @defgroup listeners Listeners
/// @{

/// The listener registry that every client with events is. `T` is the client's listener interface.
///
/// Listeners are held by plain pointer, each at most once, in ascending order of their addresses, which is also the
/// order of notification. The registry never deletes a listener: keep it alive until it is removed or the client is
/// released, whichever comes first.
///
/// Threads: registration takes no lock. Add and remove listeners on the thread whose main context delivers the events
/// (the one that called HLX_StartSystemProxy()), or before the start. The update client also notifies on its search
/// thread, and the misc client on the thread that asks for GetSteelMateRadarInfo(): put LockListener() and
/// UnlockListener() around a registration with these two. A callback must not add or remove listeners of the same
/// client: the registry is being walked at that time, with its mutex held.
///
/// The order of the virtual functions is part of the binary interface.
template <class T>
class HLX_API IHLXListener {
 public:
  IHLXListener() = default;
  IHLXListener(const IHLXListener&) = delete;
  IHLXListener& operator=(const IHLXListener&) = delete;
  virtual ~IHLXListener() = default;

  /// Registers `listener`; null is ignored, a listener that is already there stays once. Runs OnListenerAdded() for
  /// every non-null listener, new or not.
  /// @param listener stays the caller's; must live until it is removed or the client is released
  virtual void AddListener(T* listener) {
    if (listener == nullptr) return;
    listeners_.insert(listener);
    OnListenerAdded(listener);
  }

  /// Forgets `listener`; null is ignored. Runs OnListenerRemoved() for every non-null listener, known or not.
  /// @param listener the one to forget
  virtual void RemoveListener(T* listener) {
    if (listener == nullptr) return;
    listeners_.erase(listener);
    OnListenerRemoved(listener);
  }

  /// @return the live set, not a copy; look at it under the same rules as registration
  virtual std::set<T*>& GetListeners() { return listeners_; }

  /// @return number of listeners held
  virtual unsigned int GetListenerCount() { return static_cast<unsigned int>(listeners_.size()); }

  /// Locks the mutex that is held for the whole of each notification. While you hold it no callback runs; release it
  /// on the same thread. Locking it twice on one thread, or from a callback, blocks for ever.
  /// Callable from any thread.
  virtual void LockListener() { mutex_.Lock(); }
  /// Unlocks what LockListener() of the same thread locked.
  virtual void UnlockListener() { mutex_.Unlock(); }

  /// Hook for implementations, empty by default: `listener` was registered, perhaps not for the first time.
  virtual void OnListenerAdded(T* /*listener*/) {}
  /// Hook for implementations, empty by default: `listener` was removed, perhaps without having been there.
  virtual void OnListenerRemoved(T* /*listener*/) {}

 protected:
  /// Calls `callback` with `args` on every listener, lowest address first, holding the mutex. The mutex is released
  /// also when a listener throws.
  /// @param callback member of the listener interface @param args what it is called with
  template <class... Params, class... Args>
  void Notify(void (T::*callback)(Params...), Args&&... args) {
    const Guard guard(mutex_);
    for (T* const listener : listeners_) (listener->*callback)(args...);
  }

 private:
  class Guard {
   public:
    explicit Guard(HLXMutex& mutex) : mutex_(mutex) { mutex_.Lock(); }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
    ~Guard() { mutex_.Unlock(); }

   private:
    HLXMutex& mutex_;
  };

  std::set<T*> listeners_;
  HLXMutex mutex_;
};

/// @}

#endif
