// Update packages as a unit meets them: the service reports a stick on the bus, and the process named hmi searches it
// with the real pidof, md5sum and unzip. The whole set of packages that the project ships.
#include <gmock/gmock.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "HLXListenerBase.h"
#include "HLXSystemProxy.h"
#include "dbus/GLibPtr.h"
#include "tests/support/Hmi.h"
#include "tests/support/MainContext.h"
#include "tests/support/Process.h"

using namespace HLXUpdate;

namespace {

const char kSimulator[] = HLX_BINARY_DIR "/simulator/hlx-simulator";

int Shell(const std::string& command) { return std::system(command.c_str()); }

/// What the search's thread and the main loop's say, and when: results as numbers, records as text.
class Told : public HLXUpdateListenerBase {
 public:
  std::function<void()> during_callback = [] {};
  void OnDetectValidUpdateFileNotify(UpdateNotifyResult result) override {
    during_callback();
    Add(&results_, static_cast<int>(result));
  }
  void OnPackageStateChangeNotify(UpdatePackageState state) override { Add(&results_, 100 + state); }
  void AddRecord(const std::string& text) { Add(&records_, text); }

  std::vector<int> Results() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return results_;
  }
  bool Said(const std::string& start) {
    const std::lock_guard<std::mutex> lock(mutex_);
    for (const std::string& record : records_) {
      if (record.rfind(start, 0) == 0) return true;
    }
    return false;
  }
  void Forget() {
    const std::lock_guard<std::mutex> lock(mutex_);
    results_.clear();
    records_.clear();
  }

 private:
  template <class T>
  void Add(std::vector<T>* list, const T& entry) {
    const std::lock_guard<std::mutex> lock(mutex_);
    list->push_back(entry);
  }

  std::mutex mutex_;
  std::vector<int> results_;
  std::vector<std::string> records_;
};

Told told;

GLogWriterOutput Keep(GLogLevelFlags /*level*/, const GLogField* fields, gsize count, gpointer /*data*/) {
  for (gsize i = 0; i < count; ++i) {
    if (std::string(fields[i].key) == "MESSAGE") told.AddRecord(static_cast<const char*>(fields[i].value));
  }
  return G_LOG_WRITER_HANDLED;
}

void Emit(const std::string& signal, const std::string& value) {
  ASSERT_EQ(Process({kSimulator, "emit", signal, value}).Wait(), 0);
}

void Insert(const std::string& package) {
  ASSERT_EQ(Shell("rm -rf /data/update /media/usbstorage0; cp -r /tmp/packages/" + package + " /media/usbstorage0"), 0);
  told.Forget();
}

/// A search ends with a result, or with one of these records.
bool Ended() { return !told.Results().empty() || told.Said("Can not find") || told.Said("Exec command fail"); }

class UpdateOnTheBus : public testing::Test {
 protected:
  static void SetUpTestSuite() { ASSERT_EQ(Shell(HLX_SOURCE_DIR "/tests/packages/make-packages /tmp/packages"), 0); }
  void SetUp() override { ASSERT_TRUE(simulator.WaitForLine("ready")); }
  void TearDown() override { HLX_ReleaseSystemProxy(); }

  /// Starts afresh on a unit of this project.
  static void Start(const std::string& project) {
    HLX_ReleaseSystemProxy();
    ASSERT_EQ(Shell("mkdir -p /app/etc; sed 's/^Project Name:.*/Project Name:" + project +
                    "/' /tmp/packages/unit-version.conf >/app/etc/sys_version.conf"),
              0);
    ASSERT_TRUE(HLX_StartSystemProxy());
    HLX_GetSystemUpdateProxy()->AddListener(&told);
  }

  Process simulator{{kSimulator, "--quiet"}};
};

TEST_F(UpdateOnTheBus, EveryPackageOfTheSet) {
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
      {"older", {5}, "valid arm version fail..."},
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
      {"huge-version-file",
       {5},
       "open /data/update/app/etc/sys_version.conf failed:65537 bytes are too many, 65536 allowed"},
      {"pipe-package", {}, "Can not find update file in path:/media/usbstorage0/update.zip."},
      {"pipe-checksum", {4}, "no md5 text file found in usb0 path."},
      {"endless-checksum", {1}, "get checksum result:update.zip: OK"},
      {"symbolic-link", {5}, "open /data/update/app/etc/sys_version.conf failed:"},
      {"escaping", {1}},
      {"can-file", {3}},
  };
  for (const auto& test : packages) {
    SCOPED_TRACE(test.package);
    Start(test.project);
    Insert(test.package);
    Emit("DetectValidUpdateFileNotifySignal", "1");
    ASSERT_TRUE(RunUntil(Ended));
    EXPECT_TRUE(RunUntil([] { return access("/data/update/app", F_OK) != 0; })) << "left behind";
    EXPECT_EQ(told.Results(), test.results);
    EXPECT_TRUE(told.Said(test.record)) << test.record;
    EXPECT_TRUE(RunUntil([] { return Shell("pidof md5sum >/dev/null") != 0; }));
    for (const char* escaped : {"/escaped", "/data/escaped", "/data/update/escaped"}) {
      EXPECT_NE(access(escaped, F_OK), 0) << escaped;
    }
    SystemInfo::VersionInfo version;
    EXPECT_EQ(HLX_GetSystemUpdateProxy()->GetUpdateVersionInfo(version), 1);
    const bool read = test.results == std::vector<int>{1} || std::string(test.record).rfind("valid ", 0) == 0;
    EXPECT_EQ(version.drawing_code, read ? "D-4711" : "");
    EXPECT_EQ(version.mcu_version, "");
  }
}

void Stick(std::vector<std::string> words, int code = 0, const std::string& problem = "") {
  words.insert(words.begin(), {kSimulator, "stick"});
  Process process(words);
  EXPECT_EQ(process.Wait(Process::Seconds(120)), code) << process.Err();  // a bomb is packed for long
  EXPECT_THAT(process.Err(), testing::HasSubstr(problem));
}

TEST_F(UpdateOnTheBus, EveryKindOfStick) {
  constexpr int kInserted = 100 + UPDATE_PACKAGE_INSERTED;
  const struct {
    std::string what;
    std::vector<int> results;
    const char* record;  ///< that must have been logged
  } sticks[] = {
      {"good", {kInserted, 1}, "usb file project:Aster"},
      {"older", {kInserted, 5}, "valid arm version fail..."},
      {"wrong-hardware", {kInserted, 6}, "valid hardware version fail..."},
      {"wrong-project", {kInserted, 7}, "valid project name fail fail..."},
      {"bad-checksum", {kInserted, 4}, "get checksum result:update.zip: FAILED"},
      {"can-file", {kInserted, 3}, ""},
      {"empty", {kInserted}, "Can not find update file in path:/media/usbstorage0/update.zip."},
      {"bomb", {kInserted, 5}, "open /data/update/app/etc/sys_version.conf failed:104857600 bytes are too many"},
      {"/tmp/packages/truncated", {kInserted}, "Exec command fail:cd /media/usbstorage0/ && unzip"},
  };
  Shell("rm -rf /media/usbstorage0");
  Start("Aster");
  for (const auto& stick : sticks) {
    SCOPED_TRACE(stick.what);
    told.Forget();
    Stick({"insert", stick.what});
    EXPECT_TRUE(RunUntil([&] { return told.Results().size() == stick.results.size() && told.Said(stick.record); }));
    EXPECT_TRUE(RunUntil([] { return access("/data/update/app", F_OK) != 0; })) << "left behind";
    EXPECT_THAT(told.Results(), testing::UnorderedElementsAreArray(stick.results));
    told.Forget();
    Stick({"remove"});
    EXPECT_NE(access("/media/usbstorage0", F_OK), 0);
    ASSERT_TRUE(RunUntil([] { return told.Results().size() == 2; }));
    EXPECT_EQ(told.Results(), std::vector<int>({100 + UPDATE_PACKAGE_REMOVED, UPDATE_NOTIFY_REMOVED}));
  }
  Process list({kSimulator, "list", "sticks"});
  ASSERT_EQ(list.Wait(), 0);
  std::size_t kinds = 0;
  for (const char c : list.Out()) kinds += c == '\n' ? 1 : 0;
  EXPECT_EQ(kinds, std::size(sticks) - 1) << list.Out();

  Stick({"insert", "empty"});
  ASSERT_TRUE(RunUntil([] { return told.Said("Can not find update file"); }));
  told.Forget();
  Stick({"insert", "can-file"});
  EXPECT_TRUE(RunUntil([] { return told.Results().size() == 2; }));
  EXPECT_THAT(told.Results(), testing::UnorderedElementsAre(100 + UPDATE_PACKAGE_CHANGED, 3));
  Stick({"remove"});
  Stick({"remove"}, 1, "stick: there is none");
  Stick({"insert"}, 2, "stick takes insert DIRECTORY | KIND, or remove");
  Stick({"insert", "god"}, 2, "there is no kind of stick 'god'; did you mean good?");
  Stick({"insert", "./nowhere"}, 2, "stick: there is no directory /");
  Stick({"insert", "/"}, 2, "stick: / holds the unit's own /media");
  ASSERT_EQ(rename("/app/etc/sys_version.conf", "/tmp/sys_version.conf"), 0);
  Stick({"insert", "good"}, 1, "there is no version file /app/etc/sys_version.conf of a unit");
  ASSERT_EQ(unlink("/media/.hlx-sandbox"), 0);
  Stick({"insert", "empty"}, 1, "/media is the machine's here");
  Stick({"remove"}, 1, "/media is the machine's here");
  EXPECT_EQ(Shell("[ -z \"$(ls -A /media)\" ]"), 0);
  EXPECT_EQ(symlink("hlx-sandbox", "/media/.hlx-sandbox"), 0);
}

TEST_F(UpdateOnTheBus, StatesOfTheStick) {
  Start("Aster");
  Insert("can-file");
  const auto results = [](std::size_t count) { return [count] { return told.Results().size() == count; }; };
  Emit("OnPackageStateChangeNotify", "1");
  ASSERT_TRUE(RunUntil(results(1)));
  Emit("OnPackageStateChangeNotify", "2");
  ASSERT_TRUE(RunUntil(results(3)));
  EXPECT_THAT(told.Results(), testing::UnorderedElementsAre(101, 102, 3));
  Emit("DetectValidUpdateFileNotifySignal", "3");  // nothing that a client hears of
  Emit("DetectValidUpdateFileNotifySignal", "2");
  ASSERT_TRUE(RunUntil(results(4)));
  EXPECT_EQ(told.Results().back(), 2);
}

TEST_F(UpdateOnTheBus, AReleaseWaitsForACallbackAndNotForChecksums) {
  Start("Aster");
  Insert("good");
  ASSERT_EQ(Shell("cd /media/usbstorage0 && mkfifo pipe && sed 's/update.zip/pipe/' -i md5.txt"), 0);
  Emit("DetectValidUpdateFileNotifySignal", "1");
  ASSERT_TRUE(RunUntil([] { return Shell("pidof md5sum >/dev/null") == 0; }));
  HLX_ReleaseSystemProxy();
  EXPECT_TRUE(RunUntil([] { return Shell("pidof md5sum >/dev/null") != 0; }));

  Start("Aster");
  Insert("can-file");
  std::promise<void> called;
  told.during_callback = [&called] {
    HLX_ReleaseSystemProxy();  // does nothing
    called.set_value();
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    HLX_GetSystemPowerProxy()->IsScreenOnState();  // made while the release waits
    HLX_GetSystemUpdateProxy()->GetListenerCount();
  };
  Emit("DetectValidUpdateFileNotifySignal", "1");
  auto is_called = called.get_future();
  ASSERT_TRUE(RunUntil([&] { return is_called.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
  HLX_ReleaseSystemProxy();
  told.during_callback = [] {};
  EXPECT_EQ(told.Results(), std::vector<int>{3}) << "the search before said nothing, and this one all it had to say";
  EXPECT_TRUE(told.Said("a callback cannot wait for its own end: nothing is released"));
}

}  // namespace

int main(int argc, char** argv) {
  GoOnAsHmi(argv);
  g_log_set_writer_func(Keep, nullptr, nullptr);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
