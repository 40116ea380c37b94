#include "simulator/MiscModel.h"

using namespace HLXSystemData;

void MiscModel::Boot() {
  if (Load(misc_.can_version[0]) == '\0') FieldNamed("misc.can_version").StoreText(unit_.records(), "CAN-SIM-1.0");
}

void MiscModel::SpeakerDetectStart() {
  for (auto& state : misc_.speaker_states) Store(state, static_cast<uint32_t>(SystemMisc::SPEAKER_STATE_NORMAL));
  unit_.Announce("SpeakerStateChangeSignal");
}

void MiscModel::SetRvcOffDelaySwitch(bool isDelayOff) {
  unit_.Save(PERSIST_ID_RVC_DELAY, isDelayOff);
  Store(misc_._is_rvc_delay, uint32_t{isDelayOff});
}

void MiscModel::SetHandbrakeCheckingSwitch(bool isChecked) { Store(misc_.is_handbrake_test_on, uint32_t{isChecked}); }

void MiscModel::SetGPSAntennaCheckingSwitch(bool isChecked) {
  Store(misc_.is_gps_ant_checking_on, uint32_t{isChecked});
}

void MiscModel::SetDrivePosition(bool isLeft) {
  unit_.Save(PERSIST_ID_DRIVE_POSITION, isLeft);
  Store(misc_._is_left_position, uint32_t{isLeft});
}

void MiscModel::SetLogoInfo(const SystemMisc::LogoInfo& /*nLogo*/) {}  // the boot logo is not simulated

void MiscModel::ResetFactoryMode() { unit_.Announce("OnFactoryResetModeSignal"); }

void MiscModel::EnableCanBoxModule(bool enable) {
  unit_.Save(PERSIST_ID_CAN_BOX_ENABLE, enable);
  Store(misc_._can_box_enble, uint32_t{enable});
}

void MiscModel::EnableScreenShotControl(bool enable) { Store(misc_._screen_shot_enble, uint32_t{enable}); }
