#include "tests/support/FakePlatform.h"

#include <sys/shm.h>
#include <zlog.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <mutex>

#include "platform/HLXLog.h"
#include "platform/HLXPlatform.h"
#include "platform/LibConfigs.h"
#include "platform/Q4PersistService.h"

namespace {

std::mutex mutex;
using Lock = std::lock_guard<std::mutex>;

/// Stands for a category: never looked into.
char category_storage;

class FakeConfigs : public LibConfigs {
 public:
  int GetInt(const std::string& key) override {
    return static_cast<int>(std::strtol(GetString(key).c_str(), nullptr, 0));
  }
  bool GetBool(const std::string& key) override {
    const std::string text = GetString(key);
    return text == "1" || text == "true";
  }
  std::string GetString(const std::string& key) override {
    const auto during = [] {
      const Lock lock(mutex);
      return fake::Get().during_look_up;
    }();
    if (during) during();
    const Lock lock(mutex);
    fake::Get().config_reads.push_back(key);
    const auto entry = fake::Get().config.find(key);
    return entry == fake::Get().config.end() ? std::string() : entry->second;
  }
};

class FakePersist : public Q4PersistService {
 public:
  int ReadByte(int module, int id, unsigned char* value) override { return Read(module, id, value); }
  int ReadInt(int module, int id, int* value) override { return Read(module, id, value); }
  int WriteInt(int module, int id, int value, int flag) override { return Write({module, id, value, {flag}}); }
  int WriteInt(int module, int id, int value, int a, int b, int c) override {
    return Write({module, id, value, {a, b, c}});
  }

 private:
  template <class T>
  static int Read(int module, int id, T* value) {
    const Lock lock(mutex);
    fake::Platform& platform = fake::Get();
    platform.persist_reads.emplace_back(module, id);
    if (platform.persist_read_result != 0) {
      *value = static_cast<T>(0x5A5A5A5A);
      return platform.persist_read_result;
    }
    const auto item = platform.persist.find({module, id});
    if (item == platform.persist.end()) return PERSIST_ERROR_DATA_NOT_FOUND;
    *value = static_cast<T>(item->second);
    return PERSIST_OK;
  }

  static int Write(const fake::PersistWrite& write) {
    const Lock lock(mutex);
    fake::Platform& platform = fake::Get();
    platform.persist_writes.push_back(write);
    if (platform.persist_write_result != 0) return platform.persist_write_result;
    platform.persist[{write.module, write.id}] = write.value;
    return PERSIST_OK;
  }
};

std::string LevelName(int level) {
  switch (level) {
    case ZLOG_LEVEL_DEBUG:
      return "DEBUG";
    case ZLOG_LEVEL_INFO:
      return "INFO";
    case ZLOG_LEVEL_NOTICE:
      return "NOTICE";
    case ZLOG_LEVEL_WARN:
      return "WARN";
    case ZLOG_LEVEL_ERROR:
      return "ERROR";
    case ZLOG_LEVEL_FATAL:
      return "FATAL";
    default:
      return std::to_string(level);
  }
}

}  // namespace

zlog_category_s* liblog_category = reinterpret_cast<zlog_category_s*>(&category_storage);

extern "C" void zlog(zlog_category_t* /*category*/, const char* file, size_t filelen, const char* func, size_t funclen,
                     long /*line*/, int level, const char* format, ...) {
  char text[4096];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  const Lock lock(mutex);
  fake::Get().log.push_back({level, std::string(file, filelen), std::string(func, funclen), text});
}

LibConfigs* GetLibConfigs() {
  static FakeConfigs& configs = *new FakeConfigs;
  return &configs;
}

Q4PersistService* HLX_GetQ4PersistService() {
  static FakePersist& persist = *new FakePersist;
  return &persist;
}

int HLX_ExecSystemCmd(const char* command, int flag) {
  std::function<int(const std::string&, int)> exec;
  {
    const Lock lock(mutex);
    fake::Get().commands.emplace_back(command, flag);
    exec = fake::Get().exec;
  }
  return exec ? exec(command, flag) : 1;
}

int IsSystemColdBoot() { return fake::Get().cold_boot; }

void mwapi_gamma_get(unsigned int* gamma) { *gamma = fake::Get().gamma; }

int HLX_SetSystemClock(int64_t seconds) {
  const Lock lock(mutex);
  fake::Get().clock_settings.push_back(seconds);
  errno = fake::Get().clock_errno;
  return errno == 0 ? 0 : -1;
}

namespace fake {

std::vector<std::string> Platform::Logged(int level) const {
  std::vector<std::string> texts;
  for (const LogRecord& record : log) {
    if (record.level == level) texts.push_back(record.text);
  }
  return texts;
}

std::set<std::string> Platform::Loggers() const {
  std::set<std::string> functions;
  for (const LogRecord& record : log) functions.insert(record.function);
  return functions;
}

std::vector<std::string> Platform::LoggedAll() const {
  std::vector<std::string> texts;
  for (const LogRecord& record : log) texts.push_back(LevelName(record.level) + " " + record.text);
  return texts;
}

Platform& Get() {
  static Platform& platform = *new Platform;
  return platform;
}

Platform Snapshot() {
  const Lock lock(mutex);
  return Get();
}

void Reset() {
  {
    const Lock lock(mutex);
    Get() = Platform();
  }
  SetLogUp(true);
}

void SetLogUp(bool up) { liblog_category = up ? reinterpret_cast<zlog_category_s*>(&category_storage) : nullptr; }

void RemoveSegments() {
  for (const unsigned int key : {0xA8800081U, 0xA8800082U, 0xA8800083U, 0xA8800084U}) {
    const int id = shmget(static_cast<key_t>(key), 0, 0);
    if (id != -1) shmctl(id, IPC_RMID, nullptr);
  }
}

}  // namespace fake
