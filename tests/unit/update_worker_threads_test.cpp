// What a search does that something happens to: a newer report, a stick that is gone, a disk that takes nothing, the
// client's end. A checksum list that names a pipe holds the search at its checksums for as long as a case needs.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "HLXListenerBase.h"
#include "client/info/HLXInfoClient.h"
#include "client/update/HLXUpdateClient.h"
#include "client/update/PackageSearch.h"
#include "tests/support/FakePlatform.h"

using namespace HLXUpdate;
using testing::Contains;
using testing::StartsWith;

namespace {

constexpr char kPipe[] = "/media/usbstorage0/slow";
const std::string kUnzip = "cd /media/usbstorage0/ && unzip";

int Shell(const std::string& command) { return std::system(command.c_str()); }
int Exec(const std::string& command) { return Shell(command) == 0 ? 1 : 0; }
bool Begins(const std::string& text, const std::string& start) { return text.rfind(start, 0) == 0; }

template <class Done>
bool Within30Seconds(const Done& done) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!done()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

class Results : public HLXUpdateListenerBase {
 public:
  std::function<void()> during_callback = [] {};
  void OnDetectValidUpdateFileNotify(UpdateNotifyResult result) override {
    during_callback();
    const std::lock_guard<std::mutex> lock(mutex_);
    results_.push_back(result);
  }
  std::vector<int> Get() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return results_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<int> results_;
};

/// A stick with a good package, and searches of it. The service's reports come from the cases.
struct Unit {
  Results results;
  std::unique_ptr<HLXInfoClient> info;
  std::unique_ptr<HLXUpdateClient> client;
  std::shared_ptr<PackageSearch> search;

  explicit Unit(const char* unit_version = "V1.2.3.4") {
    fake::Reset();
    fake::RemoveSegments();
    fake::Get().exec = [](const std::string& command, int) { return Exec(command); };
    Shell(std::string("chmod 755 /data; rm -rf /data/update /media/usbstorage0; mkdir -p /app/etc /media/usbstorage0; "
                      "cd /media/usbstorage0 && mkfifo slow && echo x | md5sum | sed 's/-/slow/' >md5.txt; "
                      "printf 'ARM Version:V1.2.3.5\\n' >/app/etc/sys_version.conf; "
                      "cd / && zip -q /media/usbstorage0/update.zip app/etc/sys_version.conf; "
                      "printf 'ARM Version:%s\\n' '") +
          unit_version + "' >/app/etc/sys_version.conf");
    info = std::make_unique<HLXInfoClient>();
    client = std::make_unique<HLXUpdateClient>(nullptr, info.get());
    client->AddListener(&results);
    search = std::make_shared<PackageSearch>(client.get(), info.get());
  }
  ~Unit() {
    Release();
    fake::RemoveSegments();
  }

  void Report() { search->Start(search->NewSession()); }
  void Release() {
    search->Detach();
    client.reset();
    info.reset();
  }
  /// Returns once a search is at its checksums; they are right when the pipe is closed after what the list expects.
  static int Checksums() { return open(kPipe, O_WRONLY | O_CLOEXEC); }
  static void PassChecksums(int pipe) {
    EXPECT_EQ(write(pipe, "x\n", 2), 2);
    close(pipe);
  }
  /// Searches are over when nobody but the test holds them.
  bool Ended() const {
    return Within30Seconds([this] { return search.use_count() == 1; });
  }
};

TEST(UpdateWorker, WhatMayHappenToASearch) {
  const auto nothing = [](Unit&) {};
  std::vector<int> nineteen_overtaken(20, 4);
  nineteen_overtaken.back() = 1;
  struct {
    const char* name;
    std::function<void(Unit&)> during_checksums;
    std::vector<int> results;
    std::string record;
    std::function<int(Unit&, const std::string&)> exec = nullptr;  ///< null: commands are just run
    const char* unit_version = "V1.2.3.4";
  } const cases[] = {
      {"removal during checksums", [](Unit& u) { u.search->NewSession(); }, {4}, "INFO verify md5 success."},
      {"a newer report during checksums", [](Unit& u) { u.Report(); }, {4, 1}, "INFO AnalysisSoftwareFile,session:2"},
      {"twenty reports",
       [](Unit& u) {
         for (int i = 1; i < 20; ++i) u.Report();
       },
       nineteen_overtaken, "INFO AnalysisSoftwareFile,session:20"},
      {"pulled out", [](Unit&) { Shell("rm -r /media/usbstorage0"); }, {}, "ERROR Exec command fail:" + kUnzip},
      {"released", [](Unit& u) { u.Report(), u.Release(); }, {}, "ERROR upgrade file md5 verify fail..."},
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
       [](Unit& u, const std::string&) { return u.search->NewSession(); }},
      {"removal during extraction",
       nothing,
       {},
       "ERROR Exec command fail:" + kUnzip,
       [](Unit& u, const std::string& command) {
         if (Begins(command, kUnzip)) u.search->NewSession();
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
      {"a unit without a version", nothing, {}, "ERROR Get local version info fail.", {}, ""},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    Unit unit(test.unit_version);
    if (test.exec) {
      fake::Get().exec = [&](const std::string& command, int) { return test.exec(unit, command); };
    }
    unit.Report();
    const int pipe = Unit::Checksums();
    test.during_checksums(unit);
    Unit::PassChecksums(pipe);
    for (std::size_t told = 1; told < test.results.size(); ++told) {  // the next search begins when the last has spoken
      ASSERT_TRUE(Within30Seconds([&] { return unit.results.Get().size() == told; }));
      Unit::PassChecksums(Unit::Checksums());
    }
    ASSERT_TRUE(unit.Ended());
    const fake::Platform platform = fake::Snapshot();
    EXPECT_THAT(unit.results.Get(), testing::UnorderedElementsAreArray(test.results));
    EXPECT_THAT(platform.LoggedAll(), Contains(StartsWith(test.record)));
    for (const auto& [command, flag] : platform.commands) EXPECT_EQ(flag, Begins(command, "rm") ? 0 : 1) << command;
    EXPECT_TRUE(test.exec || access("/data/update/app", F_OK) != 0) << "left behind";
  }
}

TEST(UpdateWorker, AReleaseWaitsForACallbackAndForNothingElse) {
  Unit unit;
  std::promise<void> called;
  std::promise<void> go_on;
  unit.results.during_callback = [&] {
    called.set_value();
    go_on.get_future().wait();
  };
  Shell("touch /media/usbstorage0/CAN.upg");
  unit.Report();
  unit.Report();  // waits for the first, and must not say a word after the release
  called.get_future().wait();
  auto released = std::async(std::launch::async, [&] { unit.Release(); });
  EXPECT_EQ(released.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
  go_on.set_value();
  released.get();
  ASSERT_TRUE(unit.Ended());
  EXPECT_EQ(unit.results.Get(), std::vector<int>{3});
}

}  // namespace
