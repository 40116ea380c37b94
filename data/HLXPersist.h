/// How the records and clients use the persist service.
#pragma once

#include "platform/Q4PersistService.h"

namespace HLXSystemData {

/// A saved setting: where it is kept, and its name as it appears in log records.
struct PersistItem {
  int module;
  int id;
  const char* name;
};

#define HLX_PERSIST_ITEM(name, module, id) \
  constexpr PersistItem name { module, id, #name }
HLX_PERSIST_ITEM(PERSIST_ID_POWER_SERVICE_DELAY_TIME, 2, 1000);
HLX_PERSIST_ITEM(PERSIST_ID_SCREEN_DAY_LEVEL, 2, 1001);
HLX_PERSIST_ITEM(PERSIST_ID_SCREEN_NIGHT_LEVEL, 2, 1002);
HLX_PERSIST_ITEM(PERSIST_ID_TIME_24_MODE, 2, 1003);
HLX_PERSIST_ITEM(PERSIST_ID_AUTO_SYNC, 2, 1004);
HLX_PERSIST_ITEM(PERSIST_ID_ENABLE_DIST, 2, 1005);
HLX_PERSIST_ITEM(PERSIST_ID_ZONE, 2, 1006);
HLX_PERSIST_ITEM(PERSIST_ID_RVC_DELAY, 2, 1007);
HLX_PERSIST_ITEM(PERSIST_ID_BUTTON_DAY_LEVEL, 2, 1009);
HLX_PERSIST_ITEM(PERSIST_ID_BUTTON_NIGHT_LEVEL, 2, 1010);
HLX_PERSIST_ITEM(PERSIST_ID_TIME_RESET_FLAG, 2, 1012);
HLX_PERSIST_ITEM(PERSIST_ID_BUTTON_LED_TYPE, 2, 1015);
HLX_PERSIST_ITEM(PERSIST_ID_RETAIN_ACC_SEC, 2, 1016);
HLX_PERSIST_ITEM(PERSIST_ID_BUTTON_LED_ANIMATION, 2, 1017);
HLX_PERSIST_ITEM(PERSIST_ID_LIGHT_AUTO_DETECT, 2, 1020);
HLX_PERSIST_ITEM(PERSIST_ID_FIX_LIGHT_DAY, 2, 1021);
HLX_PERSIST_ITEM(PERSIST_ID_DRIVE_POSITION, 18, 51);
HLX_PERSIST_ITEM(PERSIST_ID_CAN_BOX_ENABLE, 18, 52);
#undef HLX_PERSIST_ITEM

/// "PERSIST_ERROR_READ_FAIL" and so on for 1 to 12, "Unknown Error." for anything else. Static storage.
const char* PersistErrorName(int result);

/// Reads saved settings on behalf of the operation of that name, which the records of failures carry.
struct SavedSettings {
  const char* operation;

  /// Reads `item` straight into a record's field. A failure is logged at WARN, gives false, and may leave in `*field`
  /// what the persist service wrote there.
  bool Read(const PersistItem& item, unsigned char* field) const;
  bool Read(const PersistItem& item, int* field) const;
  bool Read(const PersistItem& item, unsigned int* field) const;
};

}  // namespace HLXSystemData
