// hlxctl doctor: each fault is named, by the check that is for it.
#include <gio/gio.h>

#include <functional>

#include "dbus/GLibPtr.h"
#include "tests/support/Hlxctl.h"
#include "tests/support/MainContext.h"

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

void SetMode(int record, unsigned short mode) {
  shmid_ds state = State(record);
  state.shm_perm.mode = mode;
  shmctl(Segments::Id(record), IPC_SET, &state);
}

void Shell(const std::string& command) { ASSERT_EQ(0, Execute({"sh", "-c", command}).code) << command; }

class Doctor : public HlxctlTest {
 public:
  ~Doctor() override { setenv("PATH", path_.c_str(), 1); }
  const std::string path_ = getenv("PATH");
  std::unique_ptr<Process> other_;
  std::unique_ptr<Process> third_;
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
         shmctl(Segments::Id(0), IPC_RMID, nullptr);
         EXPECT_NE(-1, shmget(static_cast<key_t>(HLX_SHM_POWER_DATA_KEY), 100, IPC_CREAT | 0666));
       },
       "record", "warning: power: 100 bytes, mode 0666", 7},
      {[] { SetMode(1, 0444); }, "record", "warning: misc: 232 bytes, mode 0444", 0},
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
      {[] {
         Shell("mkfifo /tmp/pipe.conf");
         setenv("HLX_HOST_CONFIG", "/tmp/pipe.conf", 1);
       },
       "configuration", "failure: configuration /tmp/pipe.conf: no regular file", 7},
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
      {[this] {
         third_ = std::make_unique<Process>(Words{"/tmp/hmi", "60"});
       },
       "hmi", "warning: processes ", 0},
      {[] { setenv("PATH", "/nowhere", 1); }, "hmi", "warning: pidof finds no process named hmi", 7},
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

TEST_F(Doctor, SaysThatThisUserMayNotLook) {
  Start();
  SetMode(1, 0);
  const auto ctl = [](const std::string& line) {  // without the sandbox's one privilege
    return Execute(Split("setpriv --reuid 65534 --inh-caps=-all --ambient-caps=-all " + (kTool + (" " + line))));
  };
  const json diagnosis = json::parse(ctl("doctor --json").out);
  EXPECT_THAT(Findings(diagnosis, "record"), testing::Contains("failure: misc: Permission denied"));
  EXPECT_EQ(3U, Findings(diagnosis, "values").size()) << diagnosis.dump(1);
  EXPECT_THAT(ctl("get misc.car_speed").err,
              HasSubstr("the misc record (shared memory 0xA8800082, 232 bytes) cannot be mapped: Permission denied"));
}

TEST_F(Doctor, NamesZonesWithoutAFile) {
  if (!Execute({HLX_SOURCE_DIR "/scripts/sandbox", "--missing"}).out.empty())
    GTEST_SKIP() << "no file can be hidden here";
  const auto ctl = [](const std::string& line) {
    return Execute(Split("setpriv --ambient-caps -all bwrap --dev-bind / / --tmpfs /usr/share/zoneinfo/Africa " +
                         (kTool + (" " + line))));
  };
  EXPECT_THAT(Findings(json::parse(ctl("doctor --json").out), "zones"),
              testing::ElementsAre(testing::StartsWith("warning: without a file: Africa/Casablanca (22), ")));
  EXPECT_THAT(ctl("time zones").out, testing::AllOf(HasSubstr("   22  missing  Africa/Casablanca "),
                                                    HasSubstr("\n6 zone files are missing on this machine.\n")));
  const Result zones = ctl("time zones --json");
  documents += "zones\t" + zones.out;
  EXPECT_TRUE(json::parse(zones.out)[22]["utc_offset"].is_null());
}

/// A piece of the interface's description | what another service has there | what is said of it.
constexpr char kOthers[] = R"(
<method name="SetGammaValue"> | <method name="SetGamma"> | failure: SetGammaValue is missing
<method name="SetGammaValue"><arg name="value" type="i" | <method name="SetGammaValue"><arg name="value" type="u" | failure: SetGammaValue is (u)(), not (i)()
<signal name="AccStateChangeSignal"><arg name="isAccOn" type="b"/> | <signal name="AccStateChangeSignal"> | failure: AccStateChangeSignal is (), not (b)
<method name="Reset"/> | <method name="Reset"/><method name="Sleep"/><signal name="Awake"/> | warning: it also has Sleep and Awake
<interface name="com.vorn.linux.system"> | <interface name="com.vorn.linux.other"> | failure: /com/vorn/linux/systemservice does not have the interface com.vorn.linux.system)";

TEST_F(Doctor, ComparesWhatTheServiceSaysOfItself) {
  std::stringstream ours;
  ours << std::ifstream(HLX_SOURCE_DIR "/dbus/com.vorn.linux.system.xml").rdbuf();
  const GLibPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  const auto names = [&bus](const char* method, GVariant* arguments) {
    g_variant_unref(g_dbus_connection_call_sync(bus.get(), "org.freedesktop.DBus", "/", "org.freedesktop.DBus", method,
                                                arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
  };
  const auto diagnose = [] {
    Process doctor({kTool, "doctor", "--json"});
    EXPECT_TRUE(RunUntil([&doctor] { return doctor.Wait(Process::Seconds(0)) != Process::kRunning; }));
    documents += "doctor\t" + doctor.Out();
    return Findings(json::parse(doctor.Out()), "interface");
  };
  names("RequestName", g_variant_new("(su)", "com.vorn.linux.systemservice", 0U));
  for (const auto& row : Rows(kOthers)) {
    std::string xml = ours.str();
    xml.replace(xml.find(row[0]), row[0].size(), row[1]);
    GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(xml.c_str(), nullptr);
    ASSERT_NE(nullptr, node) << row[0];
    const guint object = g_dbus_connection_register_object(bus.get(), "/com/vorn/linux/systemservice",
                                                           node->interfaces[0], nullptr, nullptr, nullptr, nullptr);
    EXPECT_THAT(diagnose(), testing::ElementsAre(row[2]));
    g_dbus_connection_unregister_object(bus.get(), object);
    g_dbus_node_info_unref(node);
  }
  const auto refuse = [](GDBusConnection* connection, GDBusMessage* message, gboolean incoming, gpointer) {
    if (incoming == FALSE || g_strcmp0(g_dbus_message_get_member(message), "Introspect") != 0) return message;
    const GLibPtr<GDBusMessage> call(message);
    const GLibPtr<GDBusMessage> answer(g_dbus_message_new_method_error_literal(message, "a.b.C", "not today"));
    g_dbus_connection_send_message(connection, answer.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
    return static_cast<GDBusMessage*>(nullptr);
  };
  const guint filter = g_dbus_connection_add_filter(bus.get(), refuse, nullptr, nullptr);
  EXPECT_THAT(diagnose(), testing::ElementsAre(
                              testing::MatchesRegex("warning: the service does not describe itself: .*not today")));
  g_dbus_connection_remove_filter(bus.get(), filter);
  names("ReleaseName", g_variant_new("(s)", "com.vorn.linux.systemservice"));
}

}  // namespace
