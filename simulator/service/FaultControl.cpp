#include "simulator/service/FaultControl.h"

#include "simulator/model/LifeCycle.h"

using On = Fault::On;
using Kind = Fault::Kind;

template <class Do>
void FaultControl::ForRecords(const Fault& fault, Do what) {
  for (const auto& record : unit_.records()) {
    if (fault.name.empty() || fault.name == record->info().name) what(*record);
  }
}

void FaultControl::Add(const Fault& fault) {
  faults_.Replace(fault);
  if (fault.on == On::kService) return AddToService(fault);
  if (fault.on == On::kRecord) {
    ForRecords(fault, [&fault](UnitRecord& record) {
      record.Recover();
      fault.kind == Kind::kFreeze ? record.Freeze() : record.Garble();
    });
  } else if (fault.on == On::kSegment) {
    ForRecords(fault, [&fault](UnitRecord& record) {
      record.Restore();
      if (fault.kind == Kind::kSmall) return record.ReplaceSmall();
      if (fault.kind == Kind::kMissing) return record.Remove();
      record.SetMode(fault.mode);
    });
  }
}

void FaultControl::AddToService(const Fault& fault) {
  restart_.Stop();
  service_.SetHanging(false);
  switch (fault.kind) {
    case Kind::kVanish:
      return service_.ReleaseItsName();
    case Kind::kHang:
      return service_.SetHanging(true);
    case Kind::kRestart:
      restart_.Start(fault.time, [this] {
        faults_.Remove(On::kService);
        EndOfService();
      });
      [[fallthrough]];
    default:
      return service_.Close();
  }
}

void FaultControl::EndOfService() {
  restart_.Stop();
  service_.SetHanging(false);
  const auto state = static_cast<LifeCycle::State>(unit_.KeptNumber(Own::kState));
  if (state == LifeCycle::State::kOff || state == LifeCycle::State::kBooting) return;  // it is not to be there
  service_.ComeBack();
}

void FaultControl::EndOfRecords() {
  for (const auto& record : unit_.records()) {
    record->Recover();
    record->Restore();
  }
}

void FaultControl::Clear() {
  const bool service = faults_.Has(On::kService);
  faults_.Clear();
  if (service) EndOfService();
  EndOfRecords();
}

void FaultControl::OnBoot() {
  faults_.Remove(On::kService);
  restart_.Stop();
  service_.SetHanging(false);
}
