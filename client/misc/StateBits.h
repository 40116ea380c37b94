/// The state bytes that the CAN box reports: one bit for each door or switch.
#pragma once

#include <map>

#include "data/SharedField.h"

/// 0 also for a bit number outside 0 to 7.
inline int BitOf(int byte, int number) { return number >= 0 && number < 8 ? (byte >> number) & 1 : 0; }

/// The bits of `byte` that differ from `last`, from bit `first` on; the key is the bit's number.
template <class Key>
std::map<Key, int> Changes(unsigned char byte, unsigned char last, int first = 0) {
  std::map<Key, int> changes;
  for (int bit = first; bit < 8; ++bit) {
    if (BitOf(byte ^ last, bit) != 0) changes[static_cast<Key>(bit)] = BitOf(byte, bit);
  }
  return changes;
}

inline void StoreIfChanged(unsigned char& field, unsigned char value) {
  if (HLXSystemData::Load(field) != value) HLXSystemData::Store(field, value);
}
