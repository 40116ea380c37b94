/// The simulated unit as a whole: its state, the service on the bus, and what happens between the two.
#pragma once

#include <string>
#include <vector>

#include "simulator/model/Unit.h"
#include "simulator/play/Player.h"
#include "simulator/service/CallLog.h"
#include "simulator/service/FaultControl.h"
#include "simulator/service/Faults.h"
#include "simulator/service/MethodTable.h"
#include "simulator/service/Service.h"
#include "simulator/service/Wire.h"

class Simulator {
 public:
  struct Options {
    std::string mcu_version = "SIM-MCU-1.04.27";
    bool quiet = false;
    bool fresh = false;  ///< the records are cleared, whatever somebody left in them
  };

  /// Maps the records and looks what a factory-new unit holds; nobody is told yet. @throws std::runtime_error that
  /// names the segment that is not to be had
  explicit Simulator(const Options& options);
  Simulator(const Simulator&) = delete;
  Simulator& operator=(const Simulator&) = delete;

  /// Owns the service's name and answers its calls from here on. @throws std::runtime_error when somebody else owns it
  void Start();

  Unit& unit() { return unit_; }
  Models& models() { return models_; }
  CallLog& calls() { return calls_; }
  Service& service() { return service_; }
  /// What goes over the bus.
  Wire& wire() { return wire_; }
  const Faults& faults() const { return faults_; }
  Player& player() { return player_; }

  /// From here on, or until it has struck so many times. @throws catalog::BadValue
  void AddFault(const std::vector<std::string>& words, unsigned int times);
  void ClearFaults();

  /// One line for the person who watches.
  void Journal(const std::string& line) const;

 private:
  LifeCycle::Hooks Hooks();
  void Booted(bool cold);
  void OnCall(GDBusMethodInvocation* call);
  void Answer(GDBusMethodInvocation* call, const Fault* fault);

  const Options options_;
  Unit unit_;
  CallLog calls_;
  Service service_;
  Faults faults_;
  Wire wire_;
  FaultControl fault_control_;
  Models models_;
  Delays answers_;
  Player player_;
};
