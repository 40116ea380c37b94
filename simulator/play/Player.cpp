#include "simulator/play/Player.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <nlohmann/json.hpp>
#include <utility>

#include "cli/Json.h"
#include "platform/LibConfigs.h"
#include "simulator/Simulator.h"
#include "simulator/model/Values.h"
#include "simulator/play/Located.h"

using catalog::BadValue;

namespace {

constexpr const char* kStates[] = {"idle", "playing", "done", "stopped", "failed"};
constexpr unsigned int kStepsAtOnce = 500;  ///< then the bus is waited for
constexpr std::chrono::milliseconds kReportPause{500};

/// The argument in words, or as a number.
bool Fits(const Json& argument, const std::string& wanted) {
  if (argument.is_string()) return argument == wanted;
  if (argument.is_boolean()) return wanted == (argument == true ? "true" : "false");
  return argument.dump() == wanted;
}

bool Fits(const Call& call, const ExpectStep& wanted) {
  if (call.method != wanted.method) return false;
  const Json arguments = JsonOf(call.arguments.get());
  return std::all_of(wanted.arguments.begin(), wanted.arguments.end(), [&](const auto& pair) {
    const auto found = arguments.find(pair.first);
    return found != arguments.end() && Fits(*found, pair.second);
  });
}

}  // namespace

Player::Player(Simulator& simulator) : simulator_(simulator) {
  simulator.calls().Listen([this](const Call& call) { OnCall(call); });
  simulator.wire().Listen([this](const catalog::Signal&, GVariant*) { events_ += state_ == State::kPlaying ? 1 : 0; });
}

void Player::Play(const std::string& name, double speed, bool loop) {
  if (!(speed >= 0 && speed <= 1e6)) throw BadValue("speed: a number from 0 to 1000000 is needed");
  Script script = ReadScript(name);
  Stop();
  script_ = std::move(script);
  speed_ = speed;
  loop_ = loop;
  label_.clear();
  error_.clear();
  events_ = 0;
  next_ = 0;
  held_at_ = 0;
  holds_ = true;
  heard_ = simulator_.calls().count();
  simulator_.Journal("play " + script_.file);
  const std::string protocol = GetLibConfigs()->GetString("/system/using_can_protocol");
  warning_.clear();
  if (!script_.can_protocol.empty() && script_.can_protocol != protocol) {
    warning_ = "made for the CAN box " + script_.can_protocol + ", this unit has " + protocol;
    simulator_.Journal("play: " + warning_);
  }
  if (script_.is_capture) simulator_.models().time.Hold(true);  // the capture has the clock's events
  Enter(State::kPlaying);
  Begin();
}

void Player::Stop() {
  if (state_ == State::kPlaying) Enter(State::kStopped);
}

void Player::Enter(State state) {
  if (state_ == State::kPlaying) {
    timer_.Stop();
    expected_ = nullptr;
    Hold();
    ++round_;
    if (script_.is_capture) simulator_.models().time.Hold(false);
  }
  state_ = state;
  Report();
}

/// Tells how it is, and again in a while as long as it plays.
void Player::Report() {
  if (on_change_) on_change_();
  if (state_ == State::kPlaying) {
    report_.Start(kReportPause, [this] { Report(); });
  } else {
    report_.Stop();
  }
}

void Player::Begin() {
  next_ = 0;
  held_at_ = 0;
  GoOn();
}

double Player::Now() const {
  if (holds_) return held_at_;
  return static_cast<double>(g_get_monotonic_time() - begin_) / G_USEC_PER_SEC * speed_;
}

void Player::Hold() {
  if (!holds_) held_at_ = Now();
  holds_ = true;
}

/// The clock goes on where it was held.
void Player::GoOn() {
  holds_ = false;
  const double gone = speed_ > 0 ? held_at_ / speed_ : 0;
  begin_ = g_get_monotonic_time() - static_cast<gint64>(gone * G_USEC_PER_SEC);
  timer_.Start(std::chrono::milliseconds(0), [this] { Go(); });
}

/// Does what is due.
void Player::Go() {
  while (state_ == State::kPlaying && next_ < script_.steps.size()) {
    const Step& step = script_.steps[next_];
    const double wait = speed_ > 0 ? (step.time - Now()) / speed_ : 0;
    if (wait > 0) {
      const auto pause = std::min<int64_t>(static_cast<int64_t>(std::ceil(wait * 1000)), G_MAXINT);
      return timer_.Start(std::chrono::milliseconds(pause), [this] { Go(); });
    }
    if (unsent_ >= kStepsAtOnce) return WaitForBus();
    ++next_;
    ++unsent_;
    Perform(step);
    if (holds_) return;
  }
  if (state_ != State::kPlaying) return;
  const double rest = speed_ > 0 ? (script_.length - Now()) / speed_ : 0;
  if (rest > 0) {
    return timer_.Start(std::chrono::milliseconds(static_cast<int64_t>(std::ceil(rest * 1000))), [this] { Go(); });
  }
  if (!loop_ || script_.steps.empty()) return Enter(State::kDone);
  if (unsent_ > 0) return WaitForBus();
  Begin();
}

/// At the highest speed nothing else keeps what is sent from growing in this process.
void Player::WaitForBus() {
  unsent_ = 0;
  simulator_.service().WhenSent([this, round = round_] {
    if (round == round_) timer_.Start(std::chrono::milliseconds(0), [this] { Go(); });
  });
}

void Player::Fail(const std::string& why) {
  error_ = why;
  simulator_.Journal("play failed: " + why);
  Enter(State::kFailed);
}

void Player::Perform(const Step& step) try {
  std::visit([this](const auto& what) { Perform(what); }, step.what);
} catch (const std::exception& problem) {
  Fail(BadFile(script_.file, step.line, problem.what()).what());
}

void Player::Perform(const SetStep& step) {
  if (!script_.is_capture) return Set(simulator_.unit(), step.value, step.scalar, step.silent);
  simulator_.unit().Write(*step.value.value, step.scalar);
}

void Player::Perform(const EmitStep& step) { simulator_.unit().Announce(*step.signal, step.arguments); }

void Player::Perform(const FaultStep& step) {
  if (step.words == std::vector<std::string>{"clear"}) return simulator_.ClearFaults();
  simulator_.AddFault(step.words, step.times);
}

void Player::Perform(const LabelStep& step) {
  label_ = step.text;
  simulator_.Journal("label " + label_);
  Report();
}

void Player::Perform(const RebootStep& step) {
  Hold();
  simulator_.models().life.Reboot(step.boot, [this, round = round_] {
    if (round == round_ && state_ == State::kPlaying) GoOn();
  });
}

void Player::Perform(const ExpectStep& step) {
  Hold();
  expected_ = &step;
  const CallLog& calls = simulator_.calls();
  for (; heard_ < calls.count(); ++heard_) {
    const Call* const call = calls.Added(heard_);
    if (call == nullptr || !Fits(*call, step)) continue;
    ++heard_;
    expected_ = nullptr;
    return GoOn();
  }
  const std::string place = BadFile(script_.file, script_.steps[next_ - 1].line, "").what();
  char text[64];
  std::snprintf(text, sizeof text, " within %g s", step.timeout);
  timer_.Start(std::chrono::milliseconds(static_cast<int64_t>(step.timeout * 1000)),
               [this, why = place + "expect: no call of " + step.method + text] { Fail(why); });
}

void Player::OnCall(const Call& call) {
  if (expected_ == nullptr) return;
  heard_ = simulator_.calls().count();
  if (!Fits(call, *expected_)) return;
  expected_ = nullptr;
  GoOn();
}

GVariant* Player::Status() const {
  const double position = state_ == State::kDone ? script_.length
                          : speed_ > 0           ? std::min(Now(), script_.length)
                          : next_ == 0           ? 0
                                                 : script_.steps[next_ - 1].time;
  GVariantDict status;
  g_variant_dict_init(&status, nullptr);
  const auto text = [&](const char* key, const std::string& value) {
    g_variant_dict_insert_value(&status, key, VariantOf(catalog::Scalar(value)));
  };
  text("state", kStates[static_cast<int>(state_)]);
  text("file", script_.file);
  text("label", label_);
  text("warning", warning_);
  text("error", error_);
  g_variant_dict_insert(&status, "position", "d", position);
  g_variant_dict_insert(&status, "length", "d", script_.length);
  g_variant_dict_insert(&status, "events", "x", static_cast<gint64>(events_));
  return g_variant_dict_end(&status);
}
