/// For what must be tidied up before a signal ends the tool.
#pragma once

#include <signal.h>  // NOLINT(modernize-deprecated-headers): sigwait() is no standard C++

#include <functional>
#include <thread>
#include <utility>

/// Holds back the signals that end the tool, but for those that it was told to ignore. Make it before what is to be
/// tidied up: one that came ends the tool when this goes.
class HeldSignals {
 public:
  HeldSignals() {
    sigemptyset(&signals_);
    for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
      struct sigaction action = {};
      if (sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) sigaddset(&signals_, number);
    }
    sigaddset(&signals_, kDone);
    pthread_sigmask(SIG_BLOCK, &signals_, &before_);
  }
  HeldSignals(const HeldSignals&) = delete;
  HeldSignals& operator=(const HeldSignals&) = delete;
  ~HeldSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

 private:
  friend class Interruption;
  static constexpr int kDone = SIGUSR1;

  sigset_t signals_ = {};
  sigset_t before_ = {};
};

/// Calls `interrupt`, on a thread of its own, when one of the held signals comes.
class Interruption {
 public:
  Interruption(const HeldSignals& held, std::function<void()> interrupt)
      : thread_([this, &held, interrupt = std::move(interrupt)] {
          sigwait(&held.signals_, &caught_);
          if (caught_ != HeldSignals::kDone) interrupt();
        }) {}
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  ~Interruption() {
    pthread_kill(thread_.native_handle(), HeldSignals::kDone);
    thread_.join();
    if (caught_ != HeldSignals::kDone) raise(caught_);  // held again
  }

 private:
  int caught_ = HeldSignals::kDone;
  std::thread thread_;
};
