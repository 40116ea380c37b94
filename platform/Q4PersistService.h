/// The maker's persistent storage, as the library uses it.
#pragma once

/// Result codes of the persist service; 0 is success.
enum Q4PersistError : int {
  PERSIST_OK = 0,
  PERSIST_ERROR_SERVICE_NOT_AVAILABLE = 1,
  PERSIST_ERROR_DATABASE_LOST_AND_REBASE = 2,
  PERSIST_ERROR_READ_FAIL = 3,
  PERSIST_ERROR_WRITE_FAIL = 4,
  PERSIST_ERROR_IPC_FAIL = 5,
  PERSIST_ERROR_DATA_NOT_FOUND = 6,
  PERSIST_ERROR_DATABASE_NOT_READY = 7,
  PERSIST_ERROR_FORMAT_INCOMPATIBLE = 8,
  PERSIST_ERROR_DATA_OVER_RANGE = 9,
  PERSIST_ERROR_ILLEGAL_PARAM_COMBINATION = 10,
  PERSIST_ERROR_ILLEGAL_MODULE = 11,
  PERSIST_ERROR_DATA_REMOVE_FAIL = 12,
};

/// Items are addressed by module and id. Every call returns 0 or a persist error code; a failed read may or may not
/// have written `*value`. Callable from any thread and from several processes at once.
class Q4PersistService {
 public:
  virtual ~Q4PersistService() = default;
  virtual int ReadByte(int module, int id, unsigned char* value) = 0;
  virtual int ReadInt(int module, int id, int* value) = 0;
  /// The trailing arguments of both writes belong to the maker's interface; the library passes fixed values.
  virtual int WriteInt(int module, int id, int value, int flag) = 0;
  virtual int WriteInt(int module, int id, int value, int a, int b, int c) = 0;
};

/// The process's persist service; never null, owned by the platform.
Q4PersistService* HLX_GetQ4PersistService();
