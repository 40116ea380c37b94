// What a search does that something happens to: a newer report, a stick that is gone, a disk that takes nothing, the
// client's end. The checksum tool is a script that holds the search at its checksums for as long as a case needs.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "client/info/HLXInfoClient.h"
#include "client/update/PackageSearch.h"
#include "tests/support/FakePlatform.h"

using namespace HLXUpdate;
using testing::Contains;
using testing::StartsWith;

namespace {

const std::string kUnzip = "cd /media/usbstorage0/ && unzip";

/// Speaks the user's language if it has to, and is at work on the rest of the list for ever.
constexpr char kChecker[] = R"(#!/bin/sh
[ "$LC_ALL" = C ] || { echo 'update.zip: La suma coincide'; exit; }
echo $$ >>/tmp/checkers
while [ ! -e /tmp/go ]; do sleep 0.01; done
echo 'update.zip: OK'
exec sleep 1000
)";

int Shell(const std::string& command) { return std::system(command.c_str()); }
int Exec(const std::string& command) { return Shell(command) == 0 ? 1 : 0; }
bool Begins(const std::string& text, const std::string& start) { return text.rfind(start, 0) == 0; }
bool IsThere(const char* path) { return access(path, F_OK) == 0; }

/// On a busy machine too.
template <class Done>
bool InTime(const Done& done) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(2);
  while (!done()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

/// The unit's versions, and what happens while they are asked for.
class Info : public HLXInfoClient {
 public:
  std::function<void()> during_look = [] {};
  int GetLocalVersionInfo(SystemInfo::VersionInfo& version) override {
    during_look();
    return HLXInfoClient::GetLocalVersionInfo(version);
  }
};

/// A stick with a good package, and searches of it. The service's reports come from the cases.
struct Unit {
  std::function<void(int)> during_callback = [](int) {};
  std::unique_ptr<Info> info;
  std::shared_ptr<PackageSearch> search;

  explicit Unit(const std::string& unit_version = "V1.2.3.4") {
    fake::Reset();
    fake::RemoveSegments();
    setenv("PATH", "/tmp/bin:/usr/bin:/bin", 1);
    fake::Get().exec = [](const std::string& command, int) { return Exec(command); };
    Shell(
        "chmod 755 /data; rm -rf /data/update /media/usbstorage0 /tmp/app /tmp/go /tmp/checkers; "
        "mkdir -p /app/etc /media/usbstorage0 /tmp/app/etc /tmp/bin; touch /media/usbstorage0/md5.txt; "
        "echo 'ARM Version:V1.2.3.5' >/app/etc/sys_version.conf; "
        "cd / && zip -q /media/usbstorage0/update.zip app/etc/sys_version.conf");
    std::ofstream("/tmp/bin/md5sum") << kChecker;
    chmod("/tmp/bin/md5sum", 0755);
    std::ofstream("/app/etc/sys_version.conf") << "ARM Version:" << unit_version << "\n";
    info = std::make_unique<Info>();
    fake::Get().log.clear();
    search = std::make_shared<PackageSearch>(info.get(), [this](UpdateNotifyResult result) {
      during_callback(result);
      const std::lock_guard<std::mutex> lock(mutex_);
      results_.push_back(result);
    });
  }
  ~Unit() {
    Release();
    fake::RemoveSegments();
  }

  std::vector<int> Results() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return results_;
  }
  void Release() {
    EXPECT_TRUE(search->Detach());
    info.reset();
  }
  static bool AtChecksums() {
    return InTime([] { return IsThere("/tmp/checkers"); });
  }
  static void PassChecksums() { std::ofstream("/tmp/go"); }
  /// Searches are over when nobody but the test holds them, and then no checker is left.
  bool Ended() const {
    const bool ended = InTime([this] { return search.use_count() == 1; });
    std::ifstream checkers("/tmp/checkers");
    for (pid_t pid = 0; checkers >> pid;) {
      EXPECT_TRUE(InTime([pid] { return kill(pid, 0) != 0; })) << "still at it";
    }
    return ended;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<int> results_;
};

TEST(UpdateWorker, WhatMayHappenToASearch) {
  setenv("LC_ALL", "es_ES.UTF-8", 1);
  const auto nothing = [](Unit&) {};
  struct {
    const char* name;
    std::function<void(Unit&)> during_checksums;
    std::vector<int> results;
    std::string record;
    std::function<int(Unit&, const std::string&)> exec = nullptr;  ///< null: commands are just run
    const char* unit_version = "V1.2.3.4";
  } const cases[] = {
      {"nothing", nothing, {1}, "INFO get checksum result:update.zip: OK\n"},
      {"removal during checksums", [](Unit& u) { u.search->Withdraw(); }, {4}, "INFO get checksum result:"},
      {"a newer report during checksums",
       [](Unit& u) { u.search->Report(); },
       {4, 1},
       "INFO AnalysisSoftwareFile,session:2"},
      {"pulled out", [](Unit&) { Shell("rm -r /media/usbstorage0"); }, {}, "ERROR Exec command fail:" + kUnzip},
      {"released", [](Unit& u) { u.Release(); }, {}, "ERROR upgrade file md5 verify fail..."},
      {"read-only disk", [](Unit&) { Shell("chmod 555 /data"); }, {}, "ERROR Exec command fail:mkdir /data/update/"},
      {"full disk",
       nothing,
       {},
       "ERROR Exec command fail:" + kUnzip,
       [](Unit&, const std::string& command) { return Exec("ulimit -f 0; " + command); }},
      {"removal during mkdir",
       nothing,
       {},
       "ERROR Exec command fail:mkdir /data/update/",
       [](Unit& u, const std::string&) { return u.search->Withdraw(), 1; }},
      {"removal during extraction",
       nothing,
       {},
       "ERROR Exec command fail:" + kUnzip,
       [](Unit& u, const std::string& command) {
         if (Begins(command, kUnzip)) u.search->Withdraw();
         return Exec(command);
       }},
      {"removal during the comparison",
       nothing,
       {},
       "ERROR verify update availability fail.",
       [](Unit& u, const std::string& command) {
         if (Begins(command, kUnzip)) fake::Get().during_look_up = [&u] { u.search->Withdraw(); };
         return Exec(command);
       }},
      {"no clean-up",
       nothing,
       {1},
       "ERROR remove /media/usbstorage0/app fail:Permission denied",
       [](Unit&, const std::string& command) {
         errno = EACCES;
         return Begins(command, "rm") ? 0 : Exec(command);
       }},
      {"a version file that is a link to nothing",
       [](Unit&) {
         Shell(
             "ln -s nowhere /tmp/app/etc/sys_version.conf; rm /media/usbstorage0/update.zip; "
             "cd /tmp && zip -qy /media/usbstorage0/update.zip app/etc/sys_version.conf");
       },
       {},
       "ERROR Can not find version file in path:/data/update/app/etc/sys_version.conf.",
       [](Unit&, const std::string& command) { return Exec(command); }},
      {"no memory",
       nothing,
       {},
       "ERROR no memory for the package search",
       [](Unit&, const std::string&) -> int { throw std::bad_alloc(); }},
      {"a unit without a version", nothing, {}, "ERROR Get local version info fail.", {}, ""},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    Unit unit(test.unit_version);
    if (test.exec) {
      fake::Get().exec = [&](const std::string& command, int) { return test.exec(unit, command); };
    }
    unit.search->Report();
    ASSERT_TRUE(Unit::AtChecksums());
    test.during_checksums(unit);
    // One that was overtaken ends by itself.
    ASSERT_TRUE(InTime([&] { return test.results.empty() || unit.Results().size() + 1 >= test.results.size(); }));
    if (test.results != std::vector<int>{4}) Unit::PassChecksums();
    ASSERT_TRUE(unit.Ended());
    const fake::Platform platform = fake::Snapshot();
    EXPECT_EQ(unit.Results(), test.results);
    EXPECT_THAT(platform.LoggedAll(), Contains(StartsWith(test.record)));
    for (const auto& [command, flag] : platform.commands) EXPECT_EQ(flag, Begins(command, "rm") ? 0 : 1) << command;
    for (const auto& record : platform.log) {
      EXPECT_THAT(record.function,
                  testing::AnyOf("AnalysisSoftwareFile", "VerifyMD5Sum", "VerifyUpdateVersion", "CheckArmVersion",
                                 "CheckHwVersion", "CheckProject", "AnalysisCmpVersionInfo", "Run"));
    }
    EXPECT_TRUE(test.exec || !IsThere("/data/update/app")) << "left behind";
  }
}

TEST(UpdateWorker, WhatWasReadOfAPackageIsKeptThoughTheSearchIsOvertakenMeanwhile) {
  Unit unit;
  unit.info->during_look = [&unit] { unit.search->Withdraw(); };
  unit.search->Report();
  Unit::PassChecksums();
  ASSERT_TRUE(unit.Ended());
  EXPECT_THAT(unit.Results(), testing::IsEmpty());
  EXPECT_EQ(unit.search->PackageVersion().arm_version, "V1.2.3.5");
}

TEST(UpdateWorker, WithoutAThreadASearchIsGivenUpAndTheNextOneHasItsTurn) {
  Unit unit;
  pthread_attr_t usual;
  pthread_getattr_default_np(&usual);
  pthread_attr_t endless;
  pthread_attr_init(&endless);
  pthread_attr_setstacksize(&endless, SIZE_MAX / 16 * 15);
  pthread_setattr_default_np(&endless);
  unit.search->Report();
  pthread_setattr_default_np(&usual);
  EXPECT_THAT(fake::Snapshot().LoggedAll(), Contains(StartsWith("ERROR no thread for the package search: ")));
  unit.search->Report();
  Unit::PassChecksums();
  ASSERT_TRUE(unit.Ended());
  EXPECT_EQ(unit.Results(), std::vector<int>{1});
}

TEST(UpdateWorker, SearchesComeInTheOrderOfTheirReports) {
  Unit unit;
  for (int session = 1; session < 900; ++session) unit.search->Withdraw();
  std::vector<std::string> sessions;
  for (int number = 0; number < 200; ++number) {
    unit.search->Report();
    ASSERT_TRUE(Unit::AtChecksums());
    sessions.push_back("INFO AnalysisSoftwareFile,session:" + std::to_string((900 + number) % 1002));
  }
  std::vector<int> results(200, 4);
  results.back() = 1;
  ASSERT_TRUE(InTime([&] { return unit.Results().size() == results.size() - 1; })) << "no checker is waited for";
  Unit::PassChecksums();
  ASSERT_TRUE(unit.Ended());
  EXPECT_EQ(unit.Results(), results);
  std::vector<std::string> begun;
  for (const std::string& record : fake::Snapshot().LoggedAll()) {
    if (Begins(record, "INFO AnalysisSoftwareFile,")) begun.push_back(record);
  }
  EXPECT_EQ(begun, sessions);
}

TEST(UpdateWorker, AReleaseAndARemovalWaitForACallbackAndForNothingElse) {
  struct {
    const char* name;
    std::function<void(Unit&)> end;
    std::vector<int> results;
  } const cases[] = {{"release", [](Unit& u) { u.Release(); }, {3}},
                     {"removal", [](Unit& u) { u.search->Withdraw(); }, {3, 3}}};
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    Unit unit;
    std::promise<void> called;
    std::promise<void> go_on;
    std::once_flag once;
    unit.during_callback = [&](int) {
      EXPECT_FALSE(unit.search->Detach()) << "a callback cannot wait for itself";
      std::call_once(once, [&] { called.set_value(), go_on.get_future().wait(); });
    };
    Shell("touch /media/usbstorage0/CAN.upg");
    unit.search->Report();
    unit.search->Report();  // waits for the first, and must not say a word after a release
    called.get_future().wait();
    auto ended = std::async(std::launch::async, [&] { test.end(unit); });
    EXPECT_EQ(ended.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
    go_on.set_value();
    ended.get();
    ASSERT_TRUE(unit.Ended());
    EXPECT_EQ(unit.Results(), test.results);
  }
}

}  // namespace
