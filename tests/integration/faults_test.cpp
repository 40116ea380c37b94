// What an application sees when something goes wrong: the test is the application, and hlx-simulator has the faults.
#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "HLXListenerBase.h"
#include "HLXSystemProxy.h"
#include "dbus/GLibPtr.h"
#include "tests/support/MainContext.h"
#include "tests/support/Process.h"

using testing::HasSubstr;
using Words = std::vector<std::string>;

namespace {

const char kSimulator[] = HLX_BINARY_DIR "/simulator/hlx-simulator";
const char kHlxctl[] = HLX_BINARY_DIR "/tools/hlxctl/hlxctl";
constexpr auto kDay = HLXPower::LIGHT_TYPE_DAY;

std::string Simulate(const std::string& line, int code = 0) {
  Words words = {kSimulator};
  std::istringstream stream(line);
  for (std::string word; stream >> word;) words.push_back(word);
  Process process(words);
  EXPECT_EQ(process.Wait(), code) << line << ": " << process.Err();
  return process.Out() + process.Err();
}

/// Without the time that a process takes.
void Set(const char* name, const char* value) {
  const GLibPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  const char* const simulator = "com.vorn.linux.simulator";
  const GLibPtr<GVariant> answer(
      g_dbus_connection_call_sync(bus.get(), simulator, "/com/vorn/linux/simulator", simulator, "Set",
                                  g_variant_new("(svb)", name, g_variant_new_string(value), FALSE), nullptr,
                                  G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
  EXPECT_NE(answer, nullptr) << name;
}

/// Everything that it hears, in order.
class Application : public HLXPowerListenerBase, public IHLXConnectionListener {
 public:
  void OnAccStateChange(int on) override { heard += on != 0 ? "acc-on " : "acc-off "; }
  void OnHeadLightStateChange(int on) override { heard += on != 0 ? "lights-on " : "lights-off "; }
  void OnServiceLost() override { heard += "lost "; }
  void OnServiceBack() override { heard += "back "; }
  void OnBusLost() override { heard += "bus-lost "; }
  std::string heard;
};

class Faults : public testing::Test {
 public:
  Faults() : simulator_({kSimulator, "--fresh", "--quiet"}) {
    EXPECT_TRUE(simulator_.WaitForLine("ready", Process::Seconds(60))) << simulator_.Err();
    HLX_SetCallTimeout(1000);
    EXPECT_TRUE(HLX_StartSystemProxy());
    power_ = HLX_GetSystemPowerProxy();
    power_->AddListener(&application_);
    HLX_AddConnectionListener(&application_);
  }
  ~Faults() override {
    HLX_RemoveConnectionListener(&application_);
    HLX_ReleaseSystemProxy();
    EXPECT_EQ(simulator_.Terminate(), 0) << simulator_.Err();
  }

  /// The error of a command that sets the brightness; empty when it arrived.
  std::string Send(int level) {
    power_->SetScreenLightLevel(kDay, static_cast<unsigned char>(level));
    const char* const error = HLX_GetLastCallError();
    return error == nullptr ? "" : error;
  }
  int Level() const { return static_cast<int>(power_->GetScreenLightLevel(kDay)); }
  bool Hears(const std::string& events) {
    return RunUntil([&] { return application_.heard == events; });
  }

  Process simulator_;
  IHLXSystemPower* power_ = nullptr;
  Application application_;
};

TEST_F(Faults, OfCalls) {
  const struct {
    const char* fault;
    const char* error;  ///< of the first call, "" for none
    int level;          ///< after it
    int more;           ///< level after another call
  } kRows[] = {{"SetScreenLightLevel error --times 1", "com.vorn.linux.Error.Injected: an injected fault", 10, 30},
               {"SetScreenLightLevel error org.example.Busy wait", "org.example.Busy: wait", 10, 10},
               {"SetScreenLightLevel delay 3000 --times 1", "Timeout was reached", 20, 30},
               {"SetScreenLightLevel delay 1", "", 20, 30},
               {"SetScreenLightLevel hang --times 1", "Timeout was reached", 10, 30},
               {"any drop --times 1", "", 10, 30},
               {"SetLogo error", "", 20, 30},
               {"hang", "Timeout was reached", 10, 10}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.fault);
    ASSERT_EQ(Send(10), "");
    Simulate(std::string("fault ") + row.fault);
    const std::string error = Send(20);
    EXPECT_EQ(error.empty(), *row.error == '\0');
    EXPECT_THAT(error, HasSubstr(row.error));
    EXPECT_EQ(Level(), row.level);
    Send(30);
    EXPECT_EQ(Level(), row.more);
    Simulate("fault clear");
  }
  Simulate("fault SetTimeZone delay 70 --times 3");
  Simulate("fault SetTimeZone hang");
  Simulate("fault signal AccStateChangeSignal drop --times 2");
  EXPECT_EQ(Simulate("fault list"), "SetTimeZone hang\nsignal AccStateChangeSignal drop --times 2\n");
}

TEST_F(Faults, OfSignals) {
  const std::pair<const char*, const char*> kRows[] = {
      {"signal AccStateChangeSignal drop", "lights-on "},
      {"signal AccStateChangeSignal double", "acc-off acc-off lights-on "},
      {"signal AccStateChangeSignal reorder", "lights-on acc-off "},
      {"signal AccStateChangeSignal delay 1000", "lights-on acc-off "},
      {"signal any double --times 1", "acc-off acc-off lights-on "}};
  for (const auto& [fault, heard] : kRows) {
    SCOPED_TRACE(fault);
    Simulate(std::string("fault ") + fault);
    Set("power.acc", "off");
    Set("power.head_lights", "on");
    EXPECT_TRUE(Hears(heard)) << application_.heard;
    EXPECT_EQ(power_->IsAccOnState(), 0);  // the record tells the truth
    Simulate("fault clear");
    application_.heard.clear();
    Simulate("set power.acc on");
    ASSERT_TRUE(Hears("acc-on ")) << application_.heard;
    application_.heard.clear();
  }
}

TEST_F(Faults, OfTheService) {
  const struct {
    const char* fault;
    const char* error;  ///< of a command meanwhile
    const char* end;    ///< what brings it back; "" for nothing
  } kRows[] = {{"service crash", "ServiceUnknown", "fault clear"},
               {"service vanish", "ServiceUnknown", "fault clear"},
               {"service crash", "ServiceUnknown", "reboot --acc"},
               {"service restart 0.5", "", ""}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.fault);
    application_.heard.clear();
    Simulate(std::string("fault ") + row.fault);
    EXPECT_TRUE(RunUntil([this] { return application_.heard.rfind("lost ", 0) == 0; })) << application_.heard;
    if (*row.error != '\0') {
      EXPECT_THAT(Send(1), HasSubstr(row.error));
    }
    if (*row.end != '\0') Simulate(row.end);
    EXPECT_TRUE(RunUntil([this] { return application_.heard.find("back ") != std::string::npos; }));
    EXPECT_EQ(Send(50), "");
    EXPECT_EQ(Level(), 50);
    EXPECT_EQ(Simulate("fault list"), "");
  }
}

TEST_F(Faults, OfRecordsStrikeThoseAttached) {
  Send(10);
  Simulate("fault record power freeze");
  EXPECT_EQ(Send(20), "");
  EXPECT_EQ(Level(), 10);
  EXPECT_EQ(Simulate("get power.brightness_day"), "20\n");
  Simulate("fault record power garbage");
  EXPECT_NE(Level(), 10);
  EXPECT_NE(Level(), 20);
  Simulate("fault clear");
  EXPECT_EQ(Level(), 20);
}

TEST_F(Faults, OfSegmentsStrikeThoseThatComeLater) {
  const std::pair<const char*, const char*> kRows[] = {
      {"small", "46 bytes, mode 0666"}, {"power missing", "power: is not there"}, {"power mode 600", "mode 0600"}};
  for (const auto& [fault, told] : kRows) {
    SCOPED_TRACE(fault);
    Simulate(std::string("fault segment ") + fault);
    Process doctor({kHlxctl, "doctor"});
    doctor.Wait();
    EXPECT_THAT(doctor.Out(), HasSubstr(told));
    EXPECT_EQ(Send(30), "");
    EXPECT_EQ(Level(), 30);  // what is attached stays served
    Simulate("fault clear");
    EXPECT_EQ(Process({kHlxctl, "get", "power.brightness_day"}).Wait(), 0);
    Send(40);
    EXPECT_EQ(Level(), 40);
  }
}

TEST_F(Faults, AreRefusedWithWhatWouldBeRight) {
  const std::pair<const char*, const char*> kRows[] = {
      {"", "words is required"},
      {"SetLogos hang", "there is no method 'SetLogos'; did you mean SetLogo"},
      {"SetLogo", "fault SetLogo takes what is to go wrong"},
      {"SetLogo explode", "there is no fault 'explode' here; there are: error, delay, hang, drop"},
      {"SetLogo delay soon", "soon"},
      {"SetLogo delay 1 2", "fault takes METHOD delay MILLISECONDS"},
      {"SetLogo error busy", "'busy' is no name of a D-Bus error"},
      {"signal AccStateChangeSignl drop", "did you mean AccStateChangeSignal"},
      {"signal", "fault signal takes a name"},
      {"service restart -1", "-1"},
      {"record pover freeze", "there is no record 'pover'; did you mean power"},
      {"segment mode 999", "'999' is no mode from 000 to 777"},
      {"segment small --times 2", "--times is for faults of methods and signals"}};
  for (const auto& [words, told] : kRows) {
    EXPECT_THAT(Simulate(std::string("fault ") + words, 2), HasSubstr(told)) << words;
  }
  // Each is described.
  std::ifstream file(HLX_SOURCE_DIR "/docs/faults.md");
  const std::string document{std::istreambuf_iterator<char>(file), {}};
  std::istringstream list(Simulate("list faults"));
  for (std::string line; std::getline(list, line);) {
    EXPECT_THAT(document, HasSubstr("| `" + line.substr(0, line.find("  ")) + "` | "));
  }
}

}  // namespace
