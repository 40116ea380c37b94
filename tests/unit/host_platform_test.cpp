// The desktop platform, with real files, databases, commands and processes.
#include <glib.h>
#include <gmock/gmock.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>

#include "platform/HLXLog.h"
#include "platform/HLXPlatform.h"
#include "platform/LibConfigs.h"
#include "platform/Q4PersistService.h"

HLX_LOG_SOURCE("tests/host");

namespace fs = std::filesystem;
using testing::AllOf;
using testing::Gt;
using testing::Lt;
using testing::MatchesRegex;

namespace {

std::map<std::string, std::string> record;  // the fields of the last one
std::string messages;                       // of all since the last look, one a line
std::string Messages() { return std::exchange(messages, {}); }

/// The process's log writer, which GLib lets be set once.
GLogWriterOutput Capture(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer /*data*/) {
  record = {{"level", std::to_string(level)}};
  for (const GLogField* field = fields; field != fields + count; ++field) {
    const auto* text = static_cast<const char*>(field->value);
    record[field->key] = field->length < 0 ? text : std::string(text, static_cast<std::size_t>(field->length));
  }
  messages += record["MESSAGE"] + "\n";
  return G_LOG_WRITER_HANDLED;
}

void Spit(const fs::path& file, const std::string& text) { std::ofstream(file) << text; }
std::string Slurp(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

/// The exit code of `child`, or 128 + the signal that ended it.
int Wait(pid_t child) {
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

/// SQLite's own file system, but while it stands nobody sleeps for a lock.
struct Sleepless {
  Sleepless() {
    vfs.zName = "sleepless";
    vfs.xSleep = [](sqlite3_vfs*, int us) { return waited_us += us, us; };
    sqlite3_vfs_register(&vfs, 1);
  }
  Sleepless(const Sleepless&) = delete;
  Sleepless& operator=(const Sleepless&) = delete;
  ~Sleepless() { sqlite3_vfs_unregister(&vfs); }

  static inline int waited_us = 0;
  static inline sqlite3_vfs vfs = *sqlite3_vfs_find(nullptr);  // files that were opened meanwhile keep to it
};

class HostPlatform : public testing::Test {
 protected:
  static void SetUpTestSuite() { g_log_set_writer_func(Capture, nullptr, nullptr); }
  void SetUp() override {
    fs::create_directory(dir);
    g_setenv("HLX_HOST_CONFIG", config.c_str(), TRUE);
    g_setenv("HLX_HOST_PERSIST", persist.c_str(), TRUE);
    g_setenv("HLX_HOST_STATE", state.c_str(), TRUE);
  }
  void TearDown() override { fs::remove_all(dir); }

  int Zone() const { return configs.GetInt("/setting/default_time_zone"); }
  int Read(int id) { return service.ReadInt(2, id, &value_read); }
  int Write(int id, int value) { return service.WriteInt(2, id, value, 1, 1, 0); }

  /// What reading and writing yield, each failure named once, and the file as it was if neither works.
  void ExpectUse(int read, int write, int times = 2) {
    const std::string before = Slurp(persist);
    for (int i = 0; i < times; ++i) EXPECT_TRUE(Read(1) == read && Write(1, 7) == write) << read << write;
    const std::string file = "settings file " + persist.string(), cause = ": [^\n]+\n";
    EXPECT_THAT(Messages(), MatchesRegex((read != 0 ? file + " cannot be read" + cause : "") +
                                         (write != 0 ? file + " cannot be written" + cause : "")));
    EXPECT_TRUE(read == 0 || write == 0 || Slurp(persist) == before);
  }

  /// What a new process is told of the boot, twice, as two digits.
  static int AskedTwice() {
    const pid_t child = fork();
    if (child == 0) _exit(10 * IsSystemColdBoot() + IsSystemColdBoot());
    return Wait(child);
  }

  const fs::path dir = fs::temp_directory_path() / ("host-" + std::to_string(getpid()));
  const fs::path config = dir / "platform.conf", persist = dir / "new" / "persist.db", state = dir / "state";
  const std::string about_config = "configuration file " + config.string() + ": ";
  LibConfigs& configs = *GetLibConfigs();
  Q4PersistService& service = *HLX_GetQ4PersistService();
  int value_read = 0;
};

TEST_F(HostPlatform, ConfigurationHasTypesAndNamesWrongValues) {
  Spit(config, "[setting]\nzone=-26\non=true\none=1\nhuge=4294967296\nbad=a\\qb\n");
  const std::tuple<std::string, int, bool, std::string, std::string> rows[] = {
      {"/setting/zone", -26, false, "-26", "=-26 is no boolean"},
      {"/setting/on", 0, true, "true", "=true is no 32-bit number"},
      {"/setting/one", 1, true, "1", ""},
      {"/setting/huge", 0, false, "4294967296", "=4294967296 is no 32-bit number"},
      {"/setting/bad", 0, false, "", "=a\\qb is no text"},
      {"/setting/missing", 0, false, "", ""},
      {"zone", 0, false, "", ""}};
  for (const auto& [key, number, boolean, text, complaint] : rows) {  // a key is complained of once
    EXPECT_TRUE(configs.GetString(key) == text && configs.GetInt(key) == number && configs.GetBool(key) == boolean);
    EXPECT_EQ(Messages(),
              complaint.empty() ? "" : std::string(about_config).append(key).append(complaint).append("\n"));
  }
}

TEST_F(HostPlatform, ConfigurationFollowsItsFile) {
  const auto no_key = MatchesRegex(about_config + "[^\n]*; no key is set\n");
  EXPECT_EQ(Zone() + Zone(), 0);
  EXPECT_THAT(Messages(), no_key) << "a named file is missing";
  for (const char* zone : {"5", "77", "78"}) {  // the last two differ by their time only
    Spit(config, std::string("[setting]\ndefault_time_zone=") + zone + "\n");
    EXPECT_EQ(Zone(), std::stoi(zone));
    g_usleep(20000);  // file systems count time in ticks of the kernel
  }
  Spit(config, "[setting]\nno line of a key file\n");
  EXPECT_EQ(Zone() + Zone(), 0);
  EXPECT_THAT(Messages(), no_key);
  g_setenv("HLX_HOST_CONFIG", "", TRUE);  // nobody asked for the default file: it may be missing
  EXPECT_EQ(Zone(), 0);
  EXPECT_EQ(Messages(), "");
}

TEST_F(HostPlatform, SampleAndDocumentHaveTheKeysAndItemsThatTheLibraryReads) {
  g_setenv("READ", (dir / "read").c_str(), TRUE);
  const char* const compare = "cd " HLX_SOURCE_DIR R"( && export LC_ALL=C &&
    grep -rhoE '"/(setting|system|q4system|project)/[a-z0-9_]+"' client data | tr -d '"' | sort -u >"$READ" &&
    awk -F= '/^\[/ {group = substr($1, 2, length($1) - 2)} /^[a-z]/ {print "/" group "/" $1}' \
      platform/host/platform.conf.sample | sort | diff -u "$READ" - &&
    awk -F'|' '/^[|] keys/ {split($2, part, "`"); group = part[2]}
               group && /^[|] `[a-z]/ {count = split($2, key, "`"); for (i = 2; i < count; i += 2) print group key[i]}' \
      docs/platform.md | sort | diff -u "$READ" - &&
    sed -nE 's/^HLX_PERSIST_ITEM\((PERSIST_ID_\w+, [0-9]+, [0-9]+)\);/\1/p' data/HLXPersist.h >"$READ" &&
    sed -nE 's/^[|] `(PERSIST_ID_\w+)` [|] ([0-9]+) [|] ([0-9]+) [|].*/\1, \2, \3/p' docs/platform.md |
      diff -u "$READ" -)";
  EXPECT_EQ(HLX_ExecSystemCmd(compare, 0), 1);
}

TEST_F(HostPlatform, PersistKeepsAnyNumberAndWaitsForALock) {
  EXPECT_EQ(Read(1), PERSIST_ERROR_DATA_NOT_FOUND);
  EXPECT_FALSE(fs::exists(persist)) << "a look makes no file";
  for (const int value : {0, 255, 256, -1, G_MAXINT32, G_MININT32}) {
    unsigned char byte = 0;
    EXPECT_TRUE(Write(1, value) == 0 && Read(1) == 0 && value_read == value) << value;
    const int result = service.ReadByte(2, 1, &byte);
    EXPECT_TRUE(value == byte ? result == 0 : result == PERSIST_ERROR_DATA_OVER_RANGE) << value;
  }
  const std::string file = Slurp(persist);
  EXPECT_EQ(Write(1, G_MININT32), 0);
  EXPECT_EQ(Slurp(persist), file) << "what is there already is not written";
  EXPECT_EQ(service.WriteInt(18, 1, 4, 1), 0);
  EXPECT_NE(Slurp(persist), file);
  EXPECT_TRUE(Read(1) == 0 && value_read == G_MININT32) << "modules do not share items";
  EXPECT_EQ(service.ReadInt(-1, 1, &value_read), PERSIST_ERROR_ILLEGAL_MODULE);
  EXPECT_EQ(service.WriteInt(-1, 1, 1, 1), PERSIST_ERROR_ILLEGAL_MODULE);

  const Sleepless sleepless;
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(persist.c_str(), &other), SQLITE_OK);
  const char* const sql = "INSERT INTO items VALUES (2, 3, 4294967296), (2, 4, 'x'); BEGIN IMMEDIATE";
  EXPECT_EQ(sqlite3_exec(other, sql, nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_EQ(Read(3), PERSIST_ERROR_DATA_OVER_RANGE);
  EXPECT_EQ(Read(4), PERSIST_ERROR_FORMAT_INCOMPATIBLE);
  ExpectUse(0, PERSIST_ERROR_DATABASE_NOT_READY, 1);  // once: a lock is waited for
  sqlite3_close(other);
  ExpectUse(0, 0);
}

TEST_F(HostPlatform, PersistKeepsWhatALockedFileHeld) {
  const Sleepless sleepless;
  for (int id = 1; id <= 10; ++id) EXPECT_EQ(Write(id, id), 0);
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(persist.c_str(), &other), SQLITE_OK);
  for (const char* const lock : {"BEGIN EXCLUSIVE", "BEGIN IMMEDIATE"}) {
    const bool readable = std::string(lock) == "BEGIN IMMEDIATE";
    ASSERT_EQ(sqlite3_exec(other, lock, nullptr, nullptr, nullptr), SQLITE_OK);
    Sleepless::waited_us = 0;
    for (int id = 1; id <= 10; ++id) {
      EXPECT_EQ(Read(id), readable ? 0 : PERSIST_ERROR_DATABASE_NOT_READY);
      EXPECT_EQ(Write(id, 99), PERSIST_ERROR_DATABASE_NOT_READY);
    }
    EXPECT_THAT(Sleepless::waited_us, AllOf(Gt(1900000), Lt(2500000))) << "one wait for the file";
    EXPECT_THAT(Messages(), MatchesRegex("settings file [^\n]+ cannot be (read|written): database is locked\n"));
    ASSERT_EQ(sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_EQ(Write(1, 99), readable ? 0 : PERSIST_ERROR_DATABASE_NOT_READY) << "it is not read yet";
    if (readable) Write(1, 1);
    for (int id = 1; id <= 10; ++id) EXPECT_TRUE(Read(id) == 0 && value_read == id && Write(id, id) == 0) << id;
  }
  sqlite3_close(other);
}

TEST_F(HostPlatform, PersistNamesAFileOfNoUseAndComesBack) {
  ASSERT_EQ(Write(1, 7), 0);
  const std::string sound = Slurp(persist);
  Spit(persist, std::string(5000, 'x'));
  ExpectUse(PERSIST_ERROR_FORMAT_INCOMPATIBLE, PERSIST_ERROR_FORMAT_INCOMPATIBLE);
  Spit(persist, sound.substr(0, sound.size() / 2));
  ExpectUse(PERSIST_ERROR_READ_FAIL, PERSIST_ERROR_WRITE_FAIL);
  fs::remove(persist);
  fs::create_directory(persist);
  ExpectUse(PERSIST_ERROR_SERVICE_NOT_AVAILABLE, PERSIST_ERROR_WRITE_FAIL);
  fs::remove(persist);
  Spit(persist, sound);
  fs::permissions(persist, fs::perms::owner_read);
  ExpectUse(0, access(persist.c_str(), W_OK) == 0 ? 0 : PERSIST_ERROR_WRITE_FAIL);  // root writes all the same
  fs::permissions(persist, fs::perms::owner_all);
  ExpectUse(0, 0);
}

TEST_F(HostPlatform, ProcessesWriteAtOnceAndLoseNothing) {
  const pid_t child = fork();
  const int first = child == 0 ? 100 : 0;
  bool wrote = true;
  for (int id = first; id < first + 100; ++id) wrote = Write(id, id) == 0 && wrote;
  if (child == 0) _exit(wrote ? kill(getpid(), SIGKILL) : 1);
  EXPECT_TRUE(wrote);
  EXPECT_EQ(Wait(child), 128 + SIGKILL) << "it wrote all, and had no chance to tidy up";
  for (int id = 0; id < 200; ++id) EXPECT_TRUE(Read(id) == 0 && value_read == id) << id;
}

TEST_F(HostPlatform, CommandsSucceedOnlyWithExitCodeZero) {
  EXPECT_EQ(HLX_ExecSystemCmd(("sleep 0.1; echo done >" + config.string()).c_str(), 1), 1);
  EXPECT_EQ(Slurp(config), "done\n") << "the end was waited for";
  EXPECT_EQ(HLX_ExecSystemCmd("exit 3", 0) + HLX_ExecSystemCmd("kill -9 $$", 0), 0);
  EXPECT_EQ(HLX_ExecSystemCmd("/no/such/program 2>/dev/null", 0) + HLX_ExecSystemCmd(nullptr, 0), 0);
  EXPECT_EQ(Messages(), "an empty command was to be run\n");
  rlimit usual{};
  getrlimit(RLIMIT_NOFILE, &usual);
  const rlimit none{0, usual.rlim_max};
  setrlimit(RLIMIT_NOFILE, &none);
  const int result = HLX_ExecSystemCmd("true", 0);
  setrlimit(RLIMIT_NOFILE, &usual);
  EXPECT_EQ(std::to_string(result) + Messages(), "0\"true\" was not run: Too many open files\n");
  sysv_signal(SIGALRM, [](int) {});  // without restarting what it interrupts
  ualarm(50000, 0);
  EXPECT_EQ(HLX_ExecSystemCmd("sleep 0.2", 0), 1);
  signal(SIGCHLD, SIG_IGN);
  EXPECT_EQ(HLX_ExecSystemCmd("sleep 0.1; true", 1), 1) << "though its status is not to be had";
  EXPECT_EQ(HLX_ExecSystemCmd("sleep 0.1; false", 1), 0);
  signal(SIGCHLD, SIG_DFL);
  EXPECT_EQ(Messages(), "");
}

TEST_F(HostPlatform, CommandsCannotAskAndSpeakEnglish) {
  g_setenv("LC_ALL", "es_ES.UTF-8", TRUE);
  const std::string own_session = "$(cut -d' ' -f6 /proc/self/stat) != " + std::to_string(getsid(0));
  for (const std::string& test : {std::string("$LC_ALL = C"), std::string("-z \"$(cat)\""), own_session}) {
    EXPECT_EQ(HLX_ExecSystemCmd(("[ " + test + " ]").c_str(), 0), 1) << test;
  }
  g_unsetenv("LC_ALL");
}

TEST_F(HostPlatform, ColdBootIsTheFirstProcessToAskInABoot) {
  EXPECT_EQ(AskedTwice(), 11) << "cold as long as the process lives";
  EXPECT_EQ(AskedTwice(), 0);
  Spit(state / "boot_id", "another boot\n");
  EXPECT_EQ(AskedTwice(), 11);
  fs::remove_all(state);
  Spit(state, "no directory");
  EXPECT_TRUE(AskedTwice() == 11 && AskedTwice() == 11) << "cannot be remembered";
}

TEST_F(HostPlatform, WhatIsNoFileIsNeitherWaitedForNorReadWhole) {
  const std::pair<const char*, const char*> rows[] = {
      {"mkdir ", "no regular file"}, {"mkfifo ", "no regular file"}, {"truncate -s 100G ", "more than 1 MiB"}};
  for (const auto& [make, problem] : rows) {
    for (const fs::path& file : {config, persist, state / "boot_id"}) {
      fs::remove_all(file);
      fs::create_directories(file.parent_path());
      EXPECT_EQ(HLX_ExecSystemCmd((make + file.string()).c_str(), 0), 1);
    }
    EXPECT_EQ(Zone() + Zone(), 0);
    EXPECT_EQ(Messages(), about_config + problem + "; no key is set\n");
    EXPECT_TRUE(Read(1) != 0 && Write(1, 7) != 0);
    EXPECT_THAT(Messages(), MatchesRegex("settings file [^\n]+ read: [^\n]+\nsettings file [^\n]+ written: [^\n]+\n"));
    EXPECT_EQ(AskedTwice(), 11);
  }
}

TEST_F(HostPlatform, GammaAndClock) {
  unsigned int gamma = 99;
  for (const std::string text : {"", "12", "x", "-1", "4294967296"}) {
    g_setenv("HLX_HOST_GAMMA", text.c_str(), TRUE);
    mwapi_gamma_get(&gamma);
    EXPECT_EQ(gamma, text == "12" ? 12U : 8U);
    EXPECT_THAT(Messages(), MatchesRegex(text.empty() || text == "12" ? "" : "HLX_HOST_GAMMA=" + text + ": .*\n"));
  }
  EXPECT_TRUE(HLX_SetSystemClock(-1) == -1 && errno == EINVAL) << "no clock takes that";
}

#ifdef HLX_HOST_ZLOG_H  // the stand-in
TEST_F(HostPlatform, LogRecordsReachGLib) {
  HLX_LOG_FATAL("must not %s the process", "end");
  const std::string line = std::to_string(__LINE__ - 1);
  EXPECT_EQ(record["PRIORITY"] + " " + record["level"] + " " + record["GLIB_DOMAIN"], "2 16 hlx-system-client");
  EXPECT_EQ(record["CODE_FILE"] + " " + record["CODE_FUNC"] + " " + record["CODE_LINE"], "tests/host TestBody " + line);
  EXPECT_EQ(Messages(), "must not end the process\n");
  const std::string long_text(5000, 'x');
  HLX_LOG_INFO("%s", long_text.c_str());
  EXPECT_EQ(Messages(), long_text + "\n");
  zlog_category_t* const category = std::exchange(liblog_category, nullptr);
  testing::internal::CaptureStderr();
  HLX_ExecSystemCmd("", 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "hlx: an empty command was to be run\n") << "no log system";
  liblog_category = category;
}
#endif

}  // namespace
