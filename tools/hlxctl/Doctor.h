/// What "doctor" looks at: each check is a function, and the table in Doctor.cpp is their order.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tools/common/Bus.h"

enum class Health { kOk, kWarning, kFailure };

struct Finding {
  Health health;
  std::string text;
  std::string advice = {};  ///< what to do
};
using Findings = std::vector<Finding>;

/// What later checks know from earlier ones.
struct Patient {
  std::unique_ptr<Bus> bus;  ///< null: cannot be reached
  bool lives = false;        ///< the service answers
};

// The service. What cannot be asked gives no finding: the check before it has told.
Findings CheckBus(Patient& patient);
Findings CheckOwner(Patient& patient);
Findings CheckLife(Patient& patient);
Findings CheckInterface(Patient& patient);
/// What goes wrong on purpose, where the unit is the simulated one.
Findings CheckFaults(Patient& patient);

// The records.
Findings CheckSegments(Patient& patient);
Findings CheckValues(Patient& patient);
/// Looks for up to two and a half seconds whether anything changes.
Findings CheckMotion(Patient& patient);

// The machine.
Findings CheckZones(Patient& patient);
Findings CheckLocalTime(Patient& patient);
Findings CheckConfiguration(Patient& patient);
Findings CheckSettings(Patient& patient);
Findings CheckLog(Patient& patient);
Findings CheckHmi(Patient& patient);
Findings CheckPrograms(Patient& patient);

/// "a, b and c"
std::string Enumerate(const std::vector<std::string>& words);
