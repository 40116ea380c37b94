// hlxctl doctor: each fault is named, by the check that is for it.
#include <functional>

#include "tests/support/Hlxctl.h"

namespace {

using Words = std::vector<std::string>;

/// The findings of `check`, as "health: text".
Words Findings(const json& diagnosis, const std::string& check) {
  Words findings;
  for (const json& finding : diagnosis["checks"]) {
    if (finding["check"] != check) continue;
    findings.push_back(finding["health"].get<std::string>() + ": " + finding["text"].get<std::string>());
  }
  return findings;
}

shmid_ds State(int record) {
  shmid_ds state{};
  shmctl(Segments::Id(record), IPC_STAT, &state);
  return state;
}

void Shell(const std::string& command) { ASSERT_EQ(0, Execute({"sh", "-c", command}).code) << command; }

class Doctor : public HlxctlTest {
 public:
  ~Doctor() override { setenv("PATH", path_.c_str(), 1); }
  const std::string path_ = getenv("PATH");
  std::unique_ptr<Process> other_;
};

TEST_F(Doctor, FindsNothingWrongWithASoundUnit) {
  Start();
  Shell("ln -sf /usr/share/zoneinfo/Europe/Berlin /etc/localtime; ln -sf \"$(command -v sleep)\" /tmp/hmi");
  const Process hmi({"/tmp/hmi", "60"});
  const json diagnosis = CtlJson("doctor", "doctor");
  EXPECT_EQ("ok", diagnosis["health"]) << diagnosis.dump(1);
  EXPECT_THAT(Findings(diagnosis, "interface"), testing::ElementsAre("ok: the same 54 methods and 76 signals"));
  EXPECT_EQ(4U, Findings(diagnosis, "record").size());
  EXPECT_THAT(Ctl("doctor").out, HasSubstr("ok       answer         the service answers\n"));
}

/// What the simulator is told | the check that names it | what it says.
constexpr char kFaults[] = R"(
SetLogo error | faults | warning: the simulated unit does this on purpose: SetLogo error
SetLogo delay 100 --times 3 | faults | warning: the simulated unit does this on purpose: SetLogo delay 100, 3 times more
SetLogo drop | faults | warning: the simulated unit does this on purpose: SetLogo drop
any hang | faults | warning: the simulated unit does this on purpose: any hang
signal AccStateChangeSignal drop | faults | warning: the simulated unit does this on purpose: signal AccStateChangeSignal drop
signal any double | faults | warning: the simulated unit does this on purpose: signal any double
signal any delay 9 | faults | warning: the simulated unit does this on purpose: signal any delay 9
signal any reorder | faults | warning: the simulated unit does this on purpose: signal any reorder
service hang | answer | failure: the system service does not answer: process
service vanish | name | failure: nobody owns com.vorn.linux.systemservice ; service crash | name | failure: nobody owns
service restart 60 | name | failure: nobody owns ; record time freeze | motion | warning:
record power freeze | faults | warning: the simulated unit does this on purpose: record power freeze
record misc garbage | values | warning: misc: misc.
segment power small | record | failure: power: 46 bytes, mode 0666 ; segment missing | record | failure: info: is not there
segment misc mode 600 | record | warning: misc: 232 bytes, mode 0600)";

TEST_F(Doctor, NamesWhatTheSimulatorDoesWrong) {
  Start();
  for (const auto& row : Rows(kFaults)) {
    ASSERT_EQ(0, Execute(Split(kSimulator + (" fault " + row[0]))).code) << row[0];
    const json diagnosis = CtlJson("doctor", "doctor");
    EXPECT_THAT(Findings(diagnosis, row[1]), testing::Contains(testing::StartsWith(row[2]))) << diagnosis.dump(1);
    EXPECT_EQ(0, Execute({kSimulator, "fault", "clear"}).code);
    for (int i = 0; i < 500 && Ctl("status").code != 0; ++i) usleep(20000);
  }
}

TEST_F(Doctor, NamesEachFault) {
  struct Fault {
    std::function<void()> make;
    const char* check;
    const char* finding;
    int code;
  };
  const std::string sample = HLX_SOURCE_DIR "/platform/host/platform.conf.sample";
  const Fault faults[] = {
      {[] { setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere", 1); }, "bus", "failure: the session bus cannot be",
       7},
      {[this] { simulator_.reset(); }, "name", "failure: nobody owns com.vorn.linux.systemservice", 7},
      {[this] { simulator_.reset(); }, "record", "warning: power: 92 bytes, mode 0666", 7},
      {[this] { simulator_->Signal(SIGSTOP); }, "answer", "failure: the system service does not answer: process", 7},
      {[] { shmctl(Segments::Id(3), IPC_RMID, nullptr); }, "record", "failure: info: is not there", 7},
      {[] {
         shmctl(Segments::Id(0), IPC_RMID, nullptr);
         EXPECT_NE(-1, shmget(static_cast<key_t>(HLX_SHM_POWER_DATA_KEY), 40, IPC_CREAT | 0666));
       },
       "record", "failure: power: 40 bytes, mode 0666", 7},
      {[] {
         shmid_ds state = State(1);
         state.shm_perm.mode = 0444;
         shmctl(Segments::Id(1), IPC_SET, &state);
       },
       "record", "warning: misc: 232 bytes, mode 0444", 0},
      {[] {
         auto* const power = static_cast<HLXSystemData::PowerShmData*>(shmat(Segments::Id(0), nullptr, 0));
         power->initialised = 0;
         shmdt(power);
       },
       "values", "failure: the power record (shared memory 0xA8800081, 92 bytes) is empty", 7},
      {[] { Emit("CarSpeedChangeSignal 70000"); }, "values", "warning: misc: misc.car_speed is 70000", 0},
      {[] { Shell("rm -f /etc/localtime"); }, "localtime", "warning: /etc/localtime is not there", 0},
      {[] { Shell("ln -sf /nowhere /etc/localtime"); }, "localtime", "failure: /etc/localtime leads nowhere", 7},
      {[] { Shell("ln -sf /usr/share/zoneinfo/Asia/Tokyo /etc/localtime"); }, "localtime",
       "warning: /etc/localtime is /usr/share/zoneinfo/Asia/Tokyo, the unit's zone Europe/Berlin", 0},
      {[] { setenv("HLX_HOST_CONFIG", "/nowhere.conf", 1); }, "configuration", "failure: configuration /nowhere.conf",
       7},
      {[sample] {
         Shell("(echo '[setting]'; echo default_time_zon=3; cat " + sample + ") >/tmp/unknown.conf");
         setenv("HLX_HOST_CONFIG", "/tmp/unknown.conf", 1);
       },
       "configuration", "warning: unknown keys: /setting/default_time_zon", 0},
      {[sample] {
         Shell("grep -v using_can_protocol " + sample + " >/tmp/missing.conf");
         setenv("HLX_HOST_CONFIG", "/tmp/missing.conf", 1);
       },
       "configuration", "warning: missing keys: /system/using_can_protocol", 0},
      {[] { Shell("echo rubbish >/tmp/hlxctl_test/persist.db"); }, "settings", "failure: cannot be read: PERSIST_ID_",
       7},
      {[] { setenv("HLX_HOST_LOG", "off", 1); }, "log", "warning: the log category is not up", 0},
      {[this] {
         other_ = std::make_unique<Process>(Words{"/tmp/hmi", "60"});
       },
       "hmi", "ok: process ", 0},
      {[] {
         Shell("mkdir -p /tmp/bin; ln -sf \"$(command -v pidof)\" \"$(command -v sh)\" /tmp/bin");
         setenv("PATH", "/tmp/bin", 1);
       },
       "programs", "failure: not in PATH: md5sum, unzip, ln, rm, mkdir, cat, sync and hwclock", 7},
  };
  for (const Fault& fault : faults) {
    setenv("PATH", path_.c_str(), 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", bus_.c_str(), 1);
    setenv("HLX_HOST_CONFIG", sample.c_str(), 1);
    unsetenv("HLX_HOST_LOG");
    simulator_.reset();
    Segments::Remove();
    Shell("rm -rf /tmp/hlxctl_test; ln -sf /usr/share/zoneinfo/Europe/Berlin /etc/localtime");
    Start();
    fault.make();
    const Result result = Ctl("doctor --json");
    EXPECT_EQ(fault.code, result.code) << fault.finding;
    const json diagnosis = json::parse(result.out);
    documents += "doctor\t" + result.out;
    EXPECT_THAT(Findings(diagnosis, fault.check), testing::Contains(testing::StartsWith(fault.finding)))
        << diagnosis.dump(1);
    if (simulator_ != nullptr) simulator_->Signal(SIGCONT);
  }
}

}  // namespace
