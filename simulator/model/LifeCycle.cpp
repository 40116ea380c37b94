#include "simulator/model/LifeCycle.h"

#include <utility>

#include "HLXPowerTypes.h"
#include "catalog/Reading.h"
#include "data/SharedField.h"
#include "platform/HLXPlatform.h"

using namespace HLXSystemData;
using std::chrono::milliseconds;
using std::chrono::seconds;

namespace {

constexpr seconds kConfirmationTime{3};
constexpr seconds kShutdownTime{2};
constexpr milliseconds kBootTime{300};

}  // namespace

LifeCycle::LifeCycle(Unit& unit, Hooks hooks) : unit_(unit), hooks_(std::move(hooks)) {
  unit_.Follow([this](const void* field) { Follow(field); });
}

LifeCycle::Boot LifeCycle::BootNamed(const std::string& name) {
  if (name == "cold") return Boot::kCold;
  if (name == "acc") return Boot::kAcc;
  if (name == "reset") return Boot::kReset;
  throw catalog::BadValue("'" + name + "' is not allowed; allowed: cold, acc, reset");
}

void LifeCycle::Start() {
  const bool cold = IsSystemColdBoot() != 0;
  Report(cold ? HLXPower::BOOT_REASON_COLD : HLXPower::BOOT_REASON_ACC, cold, HLXPower::POWER_WAKEUP_ACC, false);
  hooks_.booted(cold);
}

void LifeCycle::Enter(State state) { unit_.Keep(Own::kState, static_cast<int64_t>(state)); }

void LifeCycle::Report(int boot_reason, bool cold, int wakeup, bool tell) {
  const PowerShmData& power = unit_.power();
  if (!tell) {
    unit_.Write(power.is_cold_boot, cold);
    unit_.Write(power.power_wakeup_type, wakeup);
    return unit_.Write(power.mcu_boot_type, boot_reason);
  }
  unit_.Change(power.is_cold_boot, cold);
  unit_.Change(power.power_wakeup_type, wakeup);
  unit_.Change(power.mcu_boot_type, boot_reason);
}

void LifeCycle::Follow(const void* field) {
  if (field != &unit_.power().is_acc_on) return;
  const bool on = Load(unit_.power().is_acc_on) != 0;
  const State state = Now();
  if (on && state == State::kOff) return Reboot(Boot::kAcc, [] {});
  if (on && state == State::kAccOff) {
    timer_.Stop();
    after_confirmation_ = nullptr;
    return Enter(State::kRunning);
  }
  if (on && state == State::kStandby) return SwitchOn(true);
  if (!on && state == State::kStandby) return GoToStandby();  // the driver's radio-off becomes the ignition's
  if (on || state != State::kRunning) return;
  Enter(State::kAccOff);
  timer_.Start(seconds(Load(unit_.power()._power_delay_time)),
               [this] { AskBeforeRadioOff([this] { GoToStandby(); }); });
}

void LifeCycle::AskBeforeRadioOff(std::function<void()> then) {
  after_confirmation_ = std::move(then);
  unit_.Announce("OnPowerPreRadioOffNotify");
  timer_.Start(kConfirmationTime, [this] { ConfirmPreRadioOffState(1); });
}

void LifeCycle::ConfirmPreRadioOffState(int /*param*/) {
  if (!after_confirmation_) return;
  timer_.Stop();
  std::exchange(after_confirmation_, nullptr)();
}

void LifeCycle::SwitchOn(bool on) {
  timer_.Stop();
  unit_.Change(unit_.power().is_screen_on, on);
  unit_.Change(unit_.power().radio_on_state, on ? HLXPower::RADIO_STATE_ON : HLXPower::RADIO_STATE_OFF);
  Enter(on ? State::kRunning : State::kStandby);
}

/// The ignition is off: the unit stays on for the time that it was told, and goes.
void LifeCycle::GoToStandby() {
  SwitchOn(false);
  timer_.Start(seconds(Load(unit_.power()._power_retain_acc_sec)), [this] { GoOff(); });
}

void LifeCycle::GoOff() {
  timer_.Stop();
  Enter(State::kOff);
  hooks_.leave();
}

void LifeCycle::ShutDown() {
  after_confirmation_ = nullptr;
  SwitchOn(false);
  timer_.Start(kShutdownTime, [this] { GoOff(); });
}

void LifeCycle::Reset() {
  // The call is answered first.
  timer_.Start(milliseconds(50), [this] { Reboot(Boot::kReset, [] {}); });
}

void LifeCycle::RequestPowerOffState(bool isKeyShortPress) {
  if (Load(unit_.power().radio_on_state) != HLXPower::RADIO_STATE_OFF) {
    AskBeforeRadioOff([this] { SwitchOn(false); });
  } else if (isKeyShortPress) {
    SwitchOn(true);
  }
}

void LifeCycle::Reboot(Boot boot, std::function<void()> done) {
  after_boot_.push_back(std::move(done));
  after_confirmation_ = nullptr;
  hooks_.leave();
  Enter(State::kBooting);
  hooks_.initialise(boot != Boot::kAcc);
  hooks_.booted(boot == Boot::kCold);
  timer_.Start(kBootTime, [this, boot] {
    Enter(State::kRunning);
    hooks_.arrive();
    const bool cold = boot == Boot::kCold;
    const int reason = cold                 ? HLXPower::BOOT_REASON_COLD
                       : boot == Boot::kAcc ? HLXPower::BOOT_REASON_ACC
                                            : HLXPower::BOOT_REASON_RESET;
    Report(reason, cold, cold ? HLXPower::POWER_WAKEUP_UNKNOWN : HLXPower::POWER_WAKEUP_ACC, true);
    for (const auto& then : std::exchange(after_boot_, {})) then();
  });
}
