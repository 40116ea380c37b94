/// Vehicle and peripherals of the simulated unit.
#pragma once

#include "HLXMiscTypes.h"
#include "simulator/Unit.h"

/// As PowerModel. The vehicle's values themselves come through the control interface.
class MiscModel {
 public:
  explicit MiscModel(Unit& unit) : unit_(unit), misc_(unit.records().misc) {}

  /// Names the CAN box, unless a version stands in the record.
  void Boot();

  /// All speakers pass the check at once.
  void SpeakerDetectStart();
  void SetRvcOffDelaySwitch(bool isDelayOff);
  void SetHandbrakeCheckingSwitch(bool isChecked);
  void SetGPSAntennaCheckingSwitch(bool isChecked);
  void SetDrivePosition(bool isLeft);
  void SetLogoInfo(const SystemMisc::LogoInfo& nLogo);
  /// Announced only: settings stay.
  void ResetFactoryMode();
  void EnableCanBoxModule(bool enable);
  void EnableScreenShotControl(bool enable);

 private:
  Unit& unit_;
  HLXSystemData::MiscShmData& misc_;
};
