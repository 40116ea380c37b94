#include "data/HLXPersist.h"

#include "platform/HLXLog.h"

HLX_LOG_SOURCE("data/HLXSystemData");

namespace HLXSystemData {

namespace {

bool Report(const char* operation, const PersistItem& item, int result) {
  if (result == PERSIST_OK) return true;
  HLX_LOG_AT(ZLOG_LEVEL_WARN, operation, __LINE__, "Read %s fail:%s", item.name, PersistErrorName(result));
  return false;
}

}  // namespace

const char* PersistErrorName(int result) {
  static constexpr const char* kNames[] = {
      "PERSIST_ERROR_SERVICE_NOT_AVAILABLE",
      "PERSIST_ERROR_DATABASE_LOST_AND_REBASE",
      "PERSIST_ERROR_READ_FAIL",
      "PERSIST_ERROR_WRITE_FAIL",
      "PERSIST_ERROR_IPC_FAIL",
      "PERSIST_ERROR_DATA_NOT_FOUND",
      "PERSIST_ERROR_DATABASE_NOT_READY",
      "PERSIST_ERROR_FORMAT_INCOMPATIBLE",
      "PERSIST_ERROR_DATA_OVER_RANGE",
      "PERSIST_ERROR_ILLEGAL_PARAM_COMBINATION",
      "PERSIST_ERROR_ILLEGAL_MODULE",
      "PERSIST_ERROR_DATA_REMOVE_FAIL",
  };
  constexpr int kCount = sizeof(kNames) / sizeof(kNames[0]);
  return result >= 1 && result <= kCount ? kNames[result - 1] : "Unknown Error.";
}

bool SavedSettings::Read(const PersistItem& item, unsigned char* field) const {
  return Report(operation, item, HLX_GetQ4PersistService()->ReadByte(item.module, item.id, field));
}

bool SavedSettings::Read(const PersistItem& item, int* field) const {
  return Report(operation, item, HLX_GetQ4PersistService()->ReadInt(item.module, item.id, field));
}

bool SavedSettings::Read(const PersistItem& item, unsigned int* field) const {
  return Read(item, reinterpret_cast<int*>(field));
}

}  // namespace HLXSystemData
