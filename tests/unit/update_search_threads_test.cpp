// Real searches over the whole set of packages, in a process that is named hmi: real pidof, md5sum and unzip.
#include <gmock/gmock.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "HLXListenerBase.h"
#include "client/info/HLXInfoClient.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/update/HLXUpdateClient.h"
#include "tests/support/FakePlatform.h"

using namespace HLXUpdate;

namespace {

int Shell(const std::string& command) { return std::system(command.c_str()); }

class Results : public HLXUpdateListenerBase {
 public:
  void OnDetectValidUpdateFileNotify(UpdateNotifyResult result) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    results_.push_back(result);
  }
  void OnPackageStateChangeNotify(UpdatePackageState state) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    results_.push_back(100 + state);
  }
  std::vector<int> Get() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return results_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<int> results_;
};

template <class Done>
bool Within30Seconds(const Done& done) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!done()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

class Search : public testing::Test {
 protected:
  static void SetUpTestSuite() { ASSERT_EQ(Shell(HLX_SOURCE_DIR "/tests/packages/make-packages /tmp/packages"), 0); }

  void SetUp() override {
    fake::Reset();
    fake::RemoveSegments();
    fake::Get().exec = [](const std::string& command, int) { return Shell(command) == 0 ? 1 : 0; };
    Shell(
        "rm -rf /data/update /media/usbstorage0; mkdir -p /app/etc; cp /tmp/packages/unit-version.conf "
        "/app/etc/sys_version.conf");
  }
  void TearDown() override { fake::RemoveSegments(); }

  void Insert(const std::string& package) {
    ASSERT_EQ(Shell("rm -rf /media/usbstorage0; cp -r /tmp/packages/" + package + " /media/usbstorage0"), 0);
  }

  void Make() {
    info = std::make_unique<HLXInfoClient>();
    client = std::make_unique<HLXUpdateClient>(std::make_shared<ClientIpcAdapter>(), info.get());
    client->AddListener(&results);
  }

  /// How often a record with this text was logged, or a command was run.
  static int Seen(const std::string& text) {
    int count = 0;
    const fake::Platform platform = fake::Snapshot();
    for (const auto& record : platform.log) count += record.text.rfind(text, 0) == 0;
    for (const auto& command : platform.commands) count += command.first == text;
    return count;
  }
  static bool Ends(int count = 1) {
    return Within30Seconds([count] {
      return Seen("rm -rf /data/update/app") + Seen("Can not find") + Seen("Exec command fail") +
                 Seen("upgrade file md5 verify fail") + Seen("OnDetectValidUpdateFileNotify:result(3)") >=
             count;
    });
  }

  Results results;
  std::unique_ptr<HLXInfoClient> info;
  std::unique_ptr<HLXUpdateClient> client;
};

TEST_F(Search, EveryPackageOfTheSet) {
  struct {
    const char* package;
    std::vector<int> results;
    const char* record = "";        ///< that must have been logged
    const char* project = "Aster";  ///< of the unit
  } const packages[] = {
      {"good",
       {1},
       "Extract update software package success:cd /media/usbstorage0/ && unzip -o update.zip "
       "app/etc/sys_version.conf -d /data/update/ && sync"},
      {"same", {1}},
      {"newer", {1}, "/data/update/ is not exist,create a new one."},
      {"older", {5}, "verify update availability fail."},
      {"wrong-hardware", {6}, "valid hardware version fail..."},
      {"wrong-project", {7}, "valid project name fail fail..."},
      {"any-project", {1}, "local project:T268ZF", "T268ZF"},
      {"bad-checksum", {4}, "get checksum result:update.zip: FAILED"},
      {"no-checksum", {4}, "no md5 text file found in usb0 path."},
      {"truncated", {}, "Exec command fail:cd /media/usbstorage0/ && unzip"},
      {"no-version-file", {}, "Exec command fail:cd /media/usbstorage0/ && unzip"},
      {"no-package", {}, "Can not find update file in path:/media/usbstorage0/update.zip."},
      {"empty-version-file", {5}, "AnalysisCmpVersionInfo[ARM Version]:fail to extract version info."},
      {"rubbish", {5}},
      {"long-line", {1}},
      {"symbolic-link", {5}, "open /data/update/app/etc/sys_version.conf failed:"},
      {"escaping", {1}},
      {"can-file", {3}},
  };
  for (const auto& test : packages) {
    SCOPED_TRACE(test.package);
    SetUp();
    Insert(test.package);
    Shell(std::string("sed -i 's/^Project Name:.*/Project Name:") + test.project + "/' /app/etc/sys_version.conf");
    results.~Results();
    new (&results) Results;
    Make();
    client->OnAsyncDetectValidUpdateFileNotify(UPDATE_NOTIFY_VALID);
    ASSERT_TRUE(Ends());
    ASSERT_TRUE(Within30Seconds([&] { return results.Get().size() >= test.results.size(); }));
    EXPECT_EQ(results.Get(), test.results);
    EXPECT_NE(Seen(test.record), 0) << test.record;
    EXPECT_TRUE(Within30Seconds([] { return access("/data/update/app", F_OK) != 0; })) << "left behind";
    EXPECT_NE(access("/data/escaped", F_OK), 0);
    EXPECT_NE(access("/escaped", F_OK), 0);
    SystemInfo::VersionInfo version;
    EXPECT_EQ(client->GetUpdateVersionInfo(version), 1);
    EXPECT_EQ(version.drawing_code, test.results == std::vector<int>{1} ||
                                            std::string(test.record).find("valid ") == 0 ||
                                            std::string(test.package) == "older"
                                        ? "D-4711"
                                        : "");
    EXPECT_EQ(version.mcu_version, "");
    client.reset();
  }
}

TEST_F(Search, PackageStatesAndRemoval) {
  Insert("can-file");
  Make();
  client->OnPackageStateChangeNotify(UPDATE_PACKAGE_REMOVED);
  client->OnPackageStateChangeNotify(UPDATE_PACKAGE_CHANGED);
  ASSERT_TRUE(Within30Seconds([&] { return results.Get().size() == 3; }));
  EXPECT_THAT(results.Get(), testing::UnorderedElementsAre(101, 102, 3));
  client->OnAsyncDetectValidUpdateFileNotify(UPDATE_NOTIFY_REMOVED);
  client->OnAsyncDetectValidUpdateFileNotify(UPDATE_NOTIFY_CAN_FILE);
  EXPECT_EQ(results.Get().size(), 4U);
  EXPECT_EQ(results.Get().back(), 2);
}

}  // namespace

/// Only the process named hmi searches: the test goes on as a copy of itself of that name.
int main(int argc, char** argv) {
  if (std::string(program_invocation_short_name) != "hmi") {
    if (Shell("cp /proc/" + std::to_string(getpid()) + "/exe /tmp/hmi") != 0) return 1;
    static char name[] = "/tmp/hmi";
    argv[0] = name;
    execv(name, argv);
    return 1;
  }
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
