#pragma once

/// Where threads of the library wait for each other, and so the one place that knows when they must not.
///
/// It keeps callbacks out of an object that is being released: GLib may already be on its way into a handler while
/// another thread disconnects it, and a worker thread may be about to tell its outcome. Neither can trust the object it
/// was made for; it asks here first. The gate is process-wide and outlives every object.
class DispatchGate {
 public:
  /// Lets callbacks of `target` in from now on.
  static void Open(const void* target);

  /// Lets no more callbacks of `target` in, and returns once those on other threads are out. Safe to repeat, and from
  /// several threads at once.
  /// @return false when Refused(); nothing may be torn down then
  [[nodiscard]] static bool Close(const void* target);

  /// Whether the calling thread must not wait for callbacks: it is inside one, or the process ends. Logged as an ERROR.
  static bool Refused();

  /// Held while a callback runs, on the thread that runs it; false when the target is closed or gone.
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

  /// Held while one thread at a time does `what`; the same thread may take it again. Once the process ends nobody waits
  /// for it any more.
  class Turn {
   public:
    explicit Turn(const void* what);
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn();

   private:
    const void* what_;
  };

  /// Runs the exit handlers and ends the process. They run on this thread, whatever pass or turn it holds, and may wait
  /// for other threads: from now on no pass is given, and whoever waits here goes on.
  [[noreturn]] static void Exit(int status);
};
