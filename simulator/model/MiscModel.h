/// Vehicle and peripherals.
#pragma once

#include "HLXMiscTypes.h"
#include "simulator/model/Timer.h"
#include "simulator/model/Unit.h"

/// As PowerModel. The vehicle's values themselves come through the control interface.
class MiscModel {
 public:
  explicit MiscModel(Unit& unit) : unit_(unit) {}

  /// Names the CAN box, unless a version stands in the record.
  void Boot();

  /// One speaker after the other, half a second each. One whose state nobody has set is found to be normal.
  void SpeakerDetectStart();
  void SpeakerDetectStop();
  /// Antennas and microphone, then the speakers.
  void StartAutoTest();
  void SetScreenshot();

  void SetRvcOffDelaySwitch(bool isDelayOff) { unit_.Change(unit_.misc()._is_rvc_delay, isDelayOff); }
  void SetHandbrakeCheckingSwitch(bool isChecked) { unit_.Change(unit_.misc().is_handbrake_test_on, isChecked); }
  void SetGPSAntennaCheckingSwitch(bool isChecked) { unit_.Change(unit_.misc().is_gps_ant_checking_on, isChecked); }
  void SetDrivePosition(bool isLeft) { unit_.Change(unit_.misc()._is_left_position, isLeft); }
  void SetLogoInfo(const SystemMisc::LogoInfo& nLogo);
  void EnableCanBoxModule(bool enable) { unit_.Change(unit_.misc()._can_box_enble, enable); }
  void EnableScreenShotControl(bool enable) { unit_.Change(unit_.misc()._screen_shot_enble, enable); }

 private:
  void DetectNext();
  void EndDetection(int64_t result);

  Unit& unit_;
  Timer detection_;
  Timer auto_test_;
  int speaker_ = 0;  ///< that is looked at
  int screenshots_ = 0;
};
