// Doors, speakers, keys, steering wheel and mileage.

#include "client/misc/CanProtocol.h"
#include "client/misc/HLXMiscClient.h"
#include "client/misc/StateBits.h"
#include "data/SharedField.h"
#include "platform/HLXLog.h"

HLX_LOG_SOURCE("client/misc/HLXMiscClient");

using namespace SystemMisc;
using HLXSystemData::Load;

namespace {

constexpr int kFirstReportedDoor = 2;

/// `raw` counts in percent of `full`. The single-precision quotient and the truncation at the end are part of the
/// interface.
int Percent(int raw, float full) {
  return static_cast<int>(static_cast<double>(static_cast<float>(raw) / full) * 100.0);
}

int SteeringAngle(int raw) {
  const std::string protocol = CanProtocol();
  if (protocol == "raise_vw") return Percent(raw <= 64995 ? -raw : 65536 - raw, 540.0F);
  if (protocol == "raise_toyota") return Percent(raw >= 3716 && raw <= 4095 ? 4096 - raw : -raw, 380.0F);
  return 0;
}

}  // namespace

void HLXMiscClient::ReadSpeakers(SpeakerStates& states) const {
  for (const Speaker speaker : {SPEAKER_REAR_LEFT, SPEAKER_REAR_RIGHT, SPEAKER_FRONT_LEFT, SPEAKER_FRONT_RIGHT}) {
    states[speaker] = static_cast<SpeakerState>(Load(data_->speaker_states[speaker - 1]));
  }
}

void HLXMiscClient::OnSpeakerStateChange() {
  SpeakerStates states;
  ReadSpeakers(states);
  Notify(&IHLXSystemMiscListener::OnSpeakerStateChange, states);
}

void HLXMiscClient::OnDoorStateChange(unsigned char state) {
  std::map<DoorState, int> changes = Changes<DoorState>(state, last_door_.exchange(state), kFirstReportedDoor);
  for (const auto& [door, open] : changes) HLX_LOG_DEBUG("doorState[%d] change:%d", door, open);
  StoreIfChanged(data_->door_state_bits, state);
  Notify(&IHLXSystemMiscListener::OnDoorStateChange, changes);
}

void HLXMiscClient::OnKeyStateChange(unsigned char key, unsigned char state) {
  const bool gac = CanProtocol() == "raise_gac";
  if (gac && (key == 0xA2 || key == 0xA3)) {
    Notify(&IHLXSystemMiscListener::OnRaiseGacPanelKeyChange, key, state);
  } else if (gac && (key == 0xAE || key == 0xAF)) {
    Notify(&IHLXSystemMiscListener::OnRaiseGacKnobKeyChange, key, state);
  } else {
    KeyEvent event = {state, key};
    Notify(&IHLXSystemMiscListener::OnKeyStateChange, event);
  }
}

void HLXMiscClient::OnRaiseVWSteeringWheelAngelChange(unsigned char low, unsigned char high) {
  Notify(&IHLXSystemMiscListener::OnRaiseVWSteeringWheelAngelChange, SteeringAngle(low + 256 * high));
}

void HLXMiscClient::OnTotalMileChange_Raise(unsigned int value) {
  const unsigned int current = Load(data_->raise_current_mile);
  HLX_LOG_DEBUG("HLXMiscClient::OnTotalMileChange_Raise mCurMile:%d ,value:%d", static_cast<int>(current),
                static_cast<int>(value));
  std::map<unsigned int, unsigned int> mile = {{current, value}};
  Notify(&IHLXSystemMiscListener::OnTotalMileChange_Raise, mile);
}

void HLXMiscClient::OnEnduranceMileChange_Raise(unsigned int value) {
  std::map<unsigned int, unsigned int> mile = {{Load(data_->raise_current_mile), value}};
  Notify(&IHLXSystemMiscListener::OnEnduranceMileChange_Raise, mile);
}
