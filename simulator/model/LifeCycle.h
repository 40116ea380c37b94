/// On, off and everything between: ACC, the power key, delays, shutdown, reboot.
#pragma once

#include <functional>
#include <vector>

#include "simulator/model/Timer.h"
#include "simulator/model/Unit.h"

/// What the unit does stands in `unit.state`:
///
///     running --ACC off--> acc-off --power-off delay--> standby --retain time--> off (the service is gone)
///        ^                    |                            |                      |
///        +------- ACC on -----+----------------------------+------ boots ---------+
///
/// Before the radio goes off, applications are told (OnPowerPreRadioOffNotify) and have three seconds to confirm.
class LifeCycle {
 public:
  /// How the service comes and goes, and what every boot sets.
  struct Hooks {
    std::function<void()> leave;               ///< the service goes
    std::function<void()> arrive;              ///< it is there again
    std::function<void(bool all)> initialise;  ///< power and time records, or all four
    std::function<void(bool cold)> booted;     ///< before it is there again: what the unit says of itself
  };

  /// As `unit.state` has it.
  enum class State : int { kOff, kRunning, kAccOff, kStandby, kBooting };

  enum class Boot { kCold, kAcc, kReset };
  /// "cold", "acc" or "reset". @throws catalog::BadValue
  static Boot BootNamed(const std::string& name);

  LifeCycle(Unit& unit, Hooks hooks);

  /// What the MCU reports of this start.
  void Start();

  /// The service goes, the records are initialised in place, the service comes back and tells how it was woken.
  /// `done` is called then.
  void Reboot(Boot boot, std::function<void()> done);

  // As on D-Bus.
  void ShutDown();
  void Reset();
  /// With the radio on: tells the applications and waits. With the radio off: a short press brings radio and screen
  /// back.
  void RequestPowerOffState(bool isKeyShortPress);
  /// Lets the awaited radio-off happen. Without one, nothing.
  void ConfirmPreRadioOffState(int param);

 private:
  void Enter(State state);
  State Now() const { return static_cast<State>(unit_.KeptNumber(Own::kState)); }
  void Follow(const void* field);
  void AskBeforeRadioOff(std::function<void()> then);
  void SwitchOn(bool on);
  void GoToStandby();
  void GoOff();
  void Report(int boot_reason, bool cold, int wakeup, bool tell);

  Unit& unit_;
  Hooks hooks_;
  Timer timer_;
  std::function<void()> after_confirmation_;
  std::vector<std::function<void()>> after_boot_;
};
