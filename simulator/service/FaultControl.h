/// Brings faults about, and ends them.
#pragma once

#include "simulator/model/Timer.h"
#include "simulator/model/Unit.h"
#include "simulator/service/Faults.h"
#include "simulator/service/Service.h"

class FaultControl {
 public:
  /// Faults of calls and signals go to `faults`, where they wait for their moment.
  FaultControl(Unit& unit, Service& service, Faults& faults) : unit_(unit), service_(service), faults_(faults) {}
  /// No segment stays behind that nobody could use.
  ~FaultControl() { EndOfRecords(); }
  FaultControl(const FaultControl&) = delete;
  FaultControl& operator=(const FaultControl&) = delete;

  /// A new fault takes the place of one with the same target. @throws std::runtime_error when it cannot be had
  void Add(const Fault& fault);
  /// Everything is as it should be again, the service is there.
  void Clear();
  /// The unit boots: what was wrong with the old service process is gone.
  void OnBoot();

 private:
  void AddToService(const Fault& fault);
  void EndOfService();
  void EndOfRecords();
  template <class Do>
  void ForRecords(const Fault& fault, Do what);

  Unit& unit_;
  Service& service_;
  Faults& faults_;
  Timer restart_;
};
