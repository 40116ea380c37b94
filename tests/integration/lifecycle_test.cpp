// A real application against a real service that is not there, dies in mid-call, and comes back.
#include <gmock/gmock.h>
#include <sys/shm.h>

#include <atomic>
#include <string>
#include <thread>

#include "HLXListenerBase.h"
#include "HLXSystemProxy.h"
#include "tests/support/MainContext.h"
#include "tests/support/Process.h"

using testing::HasSubstr;

namespace {

const char kSimulator[] = HLX_BINARY_DIR "/simulator/hlx-simulator";
const char kHmi[] = HLX_BINARY_DIR "/examples/hmi";

class Acc : public HLXPowerListenerBase {
 public:
  void OnAccStateChange(int on) override { states += on != 0 ? '1' : '0'; }
  std::string states;
};

class Lifecycle : public testing::Test {
 protected:
  void TearDown() override { HLX_ReleaseSystemProxy(); }

  static std::unique_ptr<Process> StartSimulator() {
    auto simulator = std::make_unique<Process>(std::vector<std::string>{kSimulator});
    EXPECT_TRUE(simulator->WaitForLine("ready"));
    return simulator;
  }
  static void SendAcc(const char* on) {
    EXPECT_EQ(Process({kSimulator, "emit", "AccStateChangeSignal", on}).Wait(), 0);
  }
};

TEST_F(Lifecycle, NoServiceAndNoBus) {
  EXPECT_FALSE(HLX_StartSystemProxy());
  Process without_service({kHmi});
  EXPECT_EQ(without_service.Wait(), 1);
  EXPECT_THAT(without_service.Err(), HasSubstr("hmi: the system service is not on the session bus"));

  Process without_bus({"env", "DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere", kHmi});
  EXPECT_EQ(without_bus.Wait(), 1);
  const std::string said = without_bus.Err();
  for (int retry = 0; retry <= 6; ++retry) EXPECT_THAT(said, HasSubstr(".retry->" + std::to_string(retry) + "\n"));
  EXPECT_THAT(said, testing::Not(HasSubstr("retry->7")));
}

TEST_F(Lifecycle, AFailedStartMayBeRepeated) {
  EXPECT_FALSE(HLX_StartSystemProxy());
  const auto simulator = StartSimulator();
  EXPECT_TRUE(HLX_StartSystemProxy());
}

TEST_F(Lifecycle, AServiceThatDiesInMidCallAndComesBack) {
  auto simulator = StartSimulator();
  ASSERT_TRUE(HLX_StartSystemProxy());
  IHLXSystemPower* const power = HLX_GetSystemPowerProxy();
  Acc acc;
  power->AddListener(&acc);
  power->SetScreenLightLevel(HLXPower::LIGHT_TYPE_DAY, 33);
  EXPECT_EQ(HLX_GetLastCallError(), nullptr);
  EXPECT_EQ(power->GetScreenLightLevel(HLXPower::LIGHT_TYPE_DAY), 33U);

  simulator->Signal(SIGSTOP);  // the call below hangs in it
  std::atomic<bool> calling{false};
  std::thread killer([&] {
    while (!calling) std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    simulator->Signal(SIGKILL);
  });
  calling = true;
  EXPECT_FALSE(HLX_GetSystemMiscProxy()->SetOnSourceChange(1));
  killer.join();
  ASSERT_NE(HLX_GetLastCallError(), nullptr);
  EXPECT_THAT(HLX_GetLastCallError(), HasSubstr("org.freedesktop.DBus.Error.NoReply"));
  simulator.reset();

  // While it is away commands fail, and reads go on.
  EXPECT_FALSE(HLX_GetSystemMiscProxy()->SetOnSourceChange(1));
  EXPECT_THAT(HLX_GetLastCallError(), HasSubstr("org.freedesktop.DBus.Error.ServiceUnknown"));
  EXPECT_EQ(power->GetScreenLightLevel(HLXPower::LIGHT_TYPE_DAY), 33U);

  simulator = StartSimulator();
  // The news of its return comes like an event: with the main loop.
  EXPECT_TRUE(RunUntil([] { return HLX_GetSystemMiscProxy()->SetOnSourceChange(1); }));
  SendAcc("false");
  EXPECT_TRUE(RunUntil([&] { return acc.states == "0"; })) << acc.states;
}

TEST_F(Lifecycle, TheExampleTellsOfEventsAndEndsWhenAsked) {
  auto simulator = StartSimulator();
  Process hmi({kHmi});
  ASSERT_TRUE(hmi.WaitForLine("state: ACC is o"));
  ASSERT_TRUE(hmi.WaitForLine("event: the screen's day brightness is 60"));
  ASSERT_TRUE(hmi.WaitForLine("command: sent"));
  SendAcc("false");
  ASSERT_TRUE(hmi.WaitForLine("event: ACC is off"));
  simulator->Signal(SIGKILL);
  ASSERT_TRUE(hmi.WaitForLine("service lost"));
  simulator = StartSimulator();
  ASSERT_TRUE(hmi.WaitForLine("service back"));
  ASSERT_TRUE(hmi.WaitForLine("state: ACC is o"));
  EXPECT_EQ(hmi.Terminate(), 0);
  EXPECT_THAT(hmi.Out(), HasSubstr("bye\n"));
}

TEST_F(Lifecycle, TheExampleTellsOfTheEndOfTheBus) {
  Process bus({"dbus-daemon", "--session", "--nofork", "--print-address"});
  ASSERT_TRUE(bus.WaitForLine("unix:"));
  const std::string at = "DBUS_SESSION_BUS_ADDRESS=" + bus.Out().substr(0, bus.Out().find('\n'));
  Process simulator({"env", at, kSimulator});
  ASSERT_TRUE(simulator.WaitForLine("ready"));
  Process hmi({"env", at, kHmi});
  ASSERT_TRUE(hmi.WaitForLine("command: sent"));
  bus.Signal(SIGKILL);
  ASSERT_TRUE(hmi.WaitForLine("bus lost"));
  EXPECT_EQ(hmi.Wait(), 0);  // it takes SIGTERM for a wish
  EXPECT_THAT(hmi.Err(), HasSubstr("the connection to the session bus is lost"));
}

}  // namespace
