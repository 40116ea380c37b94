// Fuzz target over the files of the host platform: a configuration file (the first byte is odd), or the settings. What
// they hold never ends a process, and a setting that was written can be read again.
#include <glib.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "platform/LibConfigs.h"
#include "platform/Q4PersistService.h"
#include "tests/fuzz/Input.h"

namespace {

constexpr char kConfig[] = "/tmp/fuzzed.conf";
constexpr char kSettings[] = "/tmp/fuzzed.db";

/// A new file each time, as an editor makes it.
void Store(const char* path, const std::string& bytes) {
  std::remove(path);
  std::ofstream(path, std::ios::binary) << bytes;
}

void Configuration(const std::string& text) {
  Store(kConfig, text);
  LibConfigs* const configs = GetLibConfigs();
  for (const char* const key : {"/system/using_can_protocol", "/setting/default_time_zone", "/a/b", "//", ""}) {
    const std::string value = configs->GetString(key);
    Require(configs->GetString(key) == value);
    Require(configs->GetInt(key) == configs->GetInt(key) && configs->GetBool(key) == configs->GetBool(key));
  }
}

void Settings(const std::string& bytes) {
  Store(kSettings, bytes);
  Q4PersistService* const persist = HLX_GetQ4PersistService();
  for (const int id : {0, 1, 7}) {
    int value = 0;
    unsigned char byte = 0;
    const int read = persist->ReadInt(1, id, &value);
    if (persist->ReadByte(1, id, &byte) == PERSIST_OK) Require(read == PERSIST_OK && value == byte);
    if (persist->WriteInt(1, id, 40 + id, 0) == PERSIST_OK) {
      Require(persist->ReadInt(1, id, &value) == PERSIST_OK && value == 40 + id);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  static const bool prepared = [] {
    g_log_set_writer_func([](GLogLevelFlags, const GLogField*, gsize, gpointer) { return G_LOG_WRITER_HANDLED; },
                          nullptr, nullptr);
    return setenv("HLX_HOST_CONFIG", kConfig, 1) == 0 && setenv("HLX_HOST_PERSIST", kSettings, 1) == 0;
  }();
  Require(prepared);
  Input input(data, size);
  const bool configuration = (input.Byte() & 1) != 0;
  configuration ? Configuration(input.Rest()) : Settings(input.Rest());
  return 0;
}
