/// The main loop of the verbs that go on until something ends them.
#pragma once

#include <atomic>
#include <exception>
#include <functional>
#include <list>
#include <string>

#include "dbus/GLibPtr.h"

class Bus;

/// Ends at SIGINT and SIGTERM, when the time is up, when nobody reads the output any more, and when the bus is gone.
class Loop {
 public:
  enum class End { kDone, kTimeUp, kInterrupted };

  /// @param seconds 0: as long as it takes
  Loop(const Bus& bus, double seconds);
  Loop(const Loop&) = delete;
  Loop& operator=(const Loop&) = delete;
  ~Loop();

  /// @throws what `Guard()` met, Failure when the bus is gone
  End Run();

  /// Ends the loop: what was asked for is done. Callable from any thread.
  void Done() { Quit(End::kDone); }

  /// Runs `work`; what it throws must not travel through the main loop and ends it. Callable from any thread, by one at
  /// a time.
  template <class Work>
  void Guard(Work work) {
    if (failure_ != nullptr) return;
    try {
      work();
    } catch (...) {
      failure_ = std::current_exception();
      Quit(End::kDone);
    }
  }

  /// Runs `work`, guarded, every so many milliseconds.
  void Every(unsigned ms, std::function<void()> work);

  /// The same for what must come about before it ends. @throws Failure with `missing`, when the time is up or a signal
  /// came first
  template <class Missing>
  void RunUntilDone(Missing missing) {
    const End end = Run();
    if (end != End::kDone) Fail(end, missing());
  }

 private:
  using Work = std::function<void()>;

  void Quit(End end);
  [[noreturn]] void Fail(End end, const std::string& missing) const;
  /// From here on `work` is what the source does.
  void Attach(GSource* source, Work work);
  static gboolean Dispatch(gpointer work);

  GLibPtr<GMainLoop> loop_;
  GDBusConnection* connection_;
  gulong closed_;
  std::list<Work> works_;
  std::list<guint> sources_;
  std::exception_ptr failure_;
  End end_ = End::kDone;
  std::atomic<bool> over_{false};
  int signal_ = 0;
};
