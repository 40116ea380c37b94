#pragma once

/// Keeps signal handlers out of an object that is being released.
///
/// GLib may already be on its way into a handler while another thread disconnects it, so a handler cannot trust the
/// object that it was connected with: it asks here first. The gate is process-wide and outlives every object.
class DispatchGate {
 public:
  /// Lets handlers of `target` in from now on.
  static void Open(const void* target);

  /// Lets no more handlers of `target` in, and returns once those on other threads are out. Safe to repeat. Waits for
  /// ever when called from inside a handler of `target`.
  static void Close(const void* target);

  /// Held by a handler while it works; false when the target is closed or gone.
  class Pass {
   public:
    explicit Pass(const void* target);
    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;
    ~Pass();
    explicit operator bool() const { return target_ != nullptr; }

   private:
    const void* target_;
  };
};
