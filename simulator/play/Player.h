/// Plays scenarios and captures.
#pragma once

#include <functional>
#include <string>

#include "simulator/model/Timer.h"
#include "simulator/play/Script.h"

class Simulator;
struct Call;

class Player {
 public:
  explicit Player(Simulator& simulator);
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  /// Stops what is being played, and plays this one; see ReadScript(). `speed`: 1 is the file's own, 0 as fast as the
  /// bus takes it. @throws BadFile, catalog::BadValue
  void Play(const std::string& name, double speed, bool loop);
  void Stop();

  /// "a{sv}", floating, as the control interface describes it.
  GVariant* Status() const;
  /// `listener` is called when the state or the label has changed, and twice a second while it plays.
  void OnChange(std::function<void()> listener) { on_change_ = std::move(listener); }

 private:
  enum class State { kIdle, kPlaying, kDone, kStopped, kFailed };

  void Enter(State state);
  void Report();
  void Begin();
  void Go();
  void WaitForBus();
  void OnCall(const Call& call);
  void Fail(const std::string& why);
  void Perform(const Step& step);
  void Perform(const SetStep& step);
  void Perform(const EmitStep& step);
  void Perform(const FaultStep& step);
  void Perform(const ExpectStep& step);
  void Perform(const LabelStep& step);
  void Perform(const RebootStep& step);
  double Now() const;
  void Hold();
  void GoOn();

  Simulator& simulator_;
  std::function<void()> on_change_;
  State state_ = State::kIdle;
  Script script_;
  double speed_ = 1;
  bool loop_ = false;
  std::string label_;
  std::string warning_;
  std::string error_;
  uint64_t events_ = 0;  ///< signals that went out
  std::size_t next_ = 0;
  gint64 begin_ = 0;    ///< when the first step was due, by the monotonic clock
  double held_at_ = 0;  ///< position while the clock is held
  bool holds_ = false;
  unsigned int unsent_ = 0;  ///< steps since the bus was waited for
  unsigned int round_ = 0;   ///< of waiting: an answer to an older one does not count
  uint64_t heard_ = 0;       ///< calls up to this one have been expected
  const ExpectStep* expected_ = nullptr;
  Timer timer_;
  Timer report_;
};
