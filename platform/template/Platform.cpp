// A platform that has nothing. Each function keeps the promise that its header makes, in the simplest way there is;
// what a port puts in its place is said above it. docs/platform.md lists the keys and items that are asked for.
#include <cerrno>

#include "platform/HLXLog.h"
#include "platform/HLXPlatform.h"
#include "platform/LibConfigs.h"
#include "platform/Q4PersistService.h"

namespace {

/// Put your configuration store here. A missing key is no error: it has the type's empty value.
class NoConfigs : public LibConfigs {
 public:
  int GetInt(const std::string& /*key*/) override { return 0; }
  bool GetBool(const std::string& /*key*/) override { return false; }
  std::string GetString(const std::string& /*key*/) override { return {}; }
};

/// Put your persistent storage here. Results other than these codes are logged as "Unknown Error.".
class NoPersistService : public Q4PersistService {
 public:
  int ReadByte(int /*module*/, int /*id*/, unsigned char* /*value*/) override { return kResult; }
  int ReadInt(int /*module*/, int /*id*/, int* /*value*/) override { return kResult; }
  int WriteInt(int /*module*/, int /*id*/, int /*value*/, int /*flag*/) override { return kResult; }
  int WriteInt(int /*module*/, int /*id*/, int /*value*/, int /*a*/, int /*b*/, int /*c*/) override { return kResult; }

 private:
  static constexpr int kResult = PERSIST_ERROR_SERVICE_NOT_AVAILABLE;
};

}  // namespace

// Your log system sets it when it is up; a static initialiser of the platform may do so. As long as it is null every
// record becomes one line "Log system not init." on standard output.
zlog_category_s* liblog_category = nullptr;

// Asked for during static initialisation and by threads that outlive main(): made on first use, never destroyed.
LibConfigs* GetLibConfigs() {
  static NoConfigs& configs = *new NoConfigs;
  return &configs;
}

Q4PersistService* HLX_GetQ4PersistService() {
  static NoPersistService& persist = *new NoPersistService;
  return &persist;
}

// Put your command runner here. Here no command is run, so none succeeds.
int HLX_ExecSystemCmd(const char* /*command*/, int /*flag*/) {
  errno = ENOSYS;
  return 0;
}

// Ask your power management.
int IsSystemColdBoot() { return 0; }

// Ask your display driver. It is always stored.
void mwapi_gamma_get(unsigned int* gamma) { *gamma = 0; }

// Set your clock. What calls stime() or settimeofday() counts with a time_t of this platform's size: refuse what is
// beyond.
int HLX_SetSystemClock(int64_t /*seconds*/) {
  errno = ENOSYS;
  return -1;
}
