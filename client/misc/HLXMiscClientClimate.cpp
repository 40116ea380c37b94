// The climate bytes of the CAN boxes. How each box lays them out is data; reading them is one loop.
#include <utility>

#include "client/misc/CanProtocol.h"
#include "client/misc/HLXMiscClient.h"
#include "client/misc/StateBits.h"
#include "platform/HLXLog.h"

HLX_LOG_SOURCE("client/misc/HLXMiscClient");

using namespace SystemMisc;

namespace {

constexpr char kRenault[] = "raise_renault";

/// A switch that a byte reports: the map's key and the bit.
struct KeyBit {
  int key;
  int bit;
};

template <class Key, std::size_t N>
void Read(unsigned char byte, const KeyBit (&layout)[N], std::map<Key, int>& states) {
  for (const KeyBit& entry : layout) states[static_cast<Key>(entry.key)] = BitOf(byte, entry.bit);
}

constexpr KeyBit kGacOne[] = {{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7}};
constexpr KeyBit kGacTwo[] = {{8, 4}, {9, 5}, {10, 6}, {11, 7}};
constexpr KeyBit kRaiseOne[] = {{0, 0}, {13, 1}, {12, 2}, {7, 3}, {2, 4}};
constexpr KeyBit kRaiseTwo[] = {{10, 0}, {5, 1}, {6, 2}};

/// A switch of a box that reports one group of switches at a time.
struct GroupKeyBit {
  int group;
  int key;
  int bit;
};

constexpr GroupKeyBit kToyota[] = {
    {1, 0, 7},  {1, 1, 6},  {1, 2, 5},  {1, 3, 4},  {1, 4, 3},  {1, 5, 2},  {1, 6, 1},   //
    {2, 8, 7},  {2, 9, 6},  {2, 10, 5}, {2, 11, 4},                                      //
    {3, 12, 7}, {3, 13, 6}, {3, 14, 5}, {3, 15, 4}, {3, 16, 3}, {3, 17, 2}, {3, 18, 1},  //
    {4, 20, 7}, {4, 21, 6}, {4, 22, 5}, {4, 23, 4},
};

constexpr GroupKeyBit kFord[] = {
    {1, 0, 7},  {1, 1, 6},  {1, 2, 5},  {1, 27, 3}, {1, 5, 2}, {1, 6, 1}, {1, 13, 0},  //
    {2, 8, 7},  {2, 9, 6},  {2, 10, 5},                                                //
    {4, 20, 7}, {4, 21, 1}, {4, 22, 0},
};

/// The switches of `group`; none for a group that the box does not have.
template <std::size_t N>
std::map<AC_State_Type, int> ReadGroup(AC_State_Data group, unsigned char byte, const GroupKeyBit (&layout)[N]) {
  std::map<AC_State_Type, int> states;
  for (const GroupKeyBit& entry : layout) {
    if (entry.group == group) states[static_cast<AC_State_Type>(entry.key)] = BitOf(byte, entry.bit);
  }
  return states;
}

// Under "raise_renault" three of the air-mode switches are always reported with a fixed value.
constexpr KeyBit kRenaultAirMode[] = {{5, 2}, {6, 1}, {9, 4}, {10, 5}, {11, 6}};
constexpr std::pair<SimpleAirMode, int> kRenaultFixedAirMode[] = {
    {SIMPLE_AIR_AUTO, 1}, {SIMPLE_AIR_FEET, 0}, {SIMPLE_AIR_AVAILABLE, 1}};
constexpr int kFirstAirModeBit = 4;

}  // namespace

void HLXMiscClient::OnAcStateChange(unsigned char state) {
  std::map<Raise_Renault_ACState, int> renault;
  std::map<ACState, int> general;
  const unsigned char last = last_ac_.exchange(state);
  if (CanProtocol() == kRenault) {
    renault = Changes<Raise_Renault_ACState>(state, last);
  } else {
    general = Changes<ACState>(state, last);
  }
  StoreIfChanged(data_->ac_state_bits, state);
  // Asked again: the protocol may have changed in between, and the other map is then empty.
  if (CanProtocol() == kRenault) {
    Notify(&IHLXSystemMiscListener::OnRaiseRenaultAcStateChange, renault);
  } else {
    Notify(&IHLXSystemMiscListener::OnAcStateChange, general);
  }
}

void HLXMiscClient::OnRaiseGacAcStateChange(unsigned char one, unsigned char two) {
  HLX_LOG_INFO("OnRaiseGacAcStateChange, acState_one = %d, acState_two = %d", one, two);
  std::map<Raise_GAC_ACState, int> states;
  const std::string protocol = CanProtocol();
  if (protocol == "raise_gac") {
    Read(one, kGacOne, states);
    Read(two, kGacTwo, states);
  } else if (protocol == "raise") {
    Read(one, kRaiseOne, states);
    Read(two, kRaiseTwo, states);
  }
  Notify(&IHLXSystemMiscListener::OnRaiseGacAcStateChange, states);
}

void HLXMiscClient::OnSimpleAirModeChange(unsigned char mode) {
  std::map<SimpleAirMode, int> modes;
  const unsigned char last = last_air_mode_.exchange(mode);
  if (CanProtocol() == kRenault) {
    modes.insert(std::begin(kRenaultFixedAirMode), std::end(kRenaultFixedAirMode));
    Read(mode, kRenaultAirMode, modes);
  } else {
    modes = Changes<SimpleAirMode>(mode, last, kFirstAirModeBit);
    for (const auto& [bit, on] : modes) HLX_LOG_INFO("airMode[%d] change:%d", bit, on);
  }
  StoreIfChanged(data_->simple_air_mode_bits, mode);
  Notify(&IHLXSystemMiscListener::OnSimpleAirModeChange, modes);
}

void HLXMiscClient::OnGeneralAcStateChange(AC_State_Data group, unsigned char value) {
  HLX_LOG_INFO("OnGeneralAcStateChange, acState_type = %d, acState_value = %d", group, value);
  const std::string protocol = CanProtocol();
  if (protocol == "raise_toyota") {
    OnToyotaAcStateChange(group, value);
  } else if (protocol == "raise_ford") {
    OnFordAcStateChange(group, value);
  }
}

void HLXMiscClient::OnToyotaAcStateChange(AC_State_Data group, unsigned char value) {
  Notify(&IHLXSystemMiscListener::OnGeneralAcStateChange, ReadGroup(group, value, kToyota));
}

void HLXMiscClient::OnFordAcStateChange(AC_State_Data group, unsigned char value) {
  HLX_LOG_DEBUG("OnFordAcStateChange, acStateData = %d", group);
  Notify(&IHLXSystemMiscListener::OnGeneralAcStateChange, ReadGroup(group, value, kFord));
}
