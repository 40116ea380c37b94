// hlxctl: the verbs that go on, and how they end.
#include "tests/support/Hlxctl.h"

namespace {

TEST_F(HlxctlTest, MonitorsOverTheServicesEnd) {
  Start();
  const auto monitor = Begin("monitor power time --since-start --json");
  Emit("AccStateChangeSignal false");
  EXPECT_TRUE(monitor->WaitForLine("\"acc\":{\"value\":0,\"text\":\"off\""));
  simulator_->Signal(SIGKILL);
  EXPECT_TRUE(monitor->WaitForLine("\"connection\",\"event\":\"OnServiceLost\"")) << monitor->Out();
  const auto early = Begin("wait-for OnServiceBack");
  Start();
  EXPECT_EQ(0, early->Wait());
  EXPECT_TRUE(monitor->WaitForLine("OnServiceBack"));
  Emit("AccStateChangeSignal true");
  EXPECT_TRUE(monitor->WaitForLine("\"acc\":{\"value\":1,\"text\":\"on\""));
  Emit("OnDstStatusChangeSignal true");
  EXPECT_TRUE(monitor->WaitForLine("\"dst\":{\"value\":1"));
  monitor->Signal(SIGINT);
  EXPECT_EQ(0, monitor->Wait());
  for (const std::string& line : Cut(monitor->Out(), "\n")) {
    if (!line.empty()) documents += "monitor\t" + line + "\n";
  }

  const auto counted = Begin("monitor power --values --count 2 --timeout 60");
  for (const char* const on : {"true", "false"}) Emit(std::string("AccStateChangeSignal ") + on);
  EXPECT_EQ(0, counted->Wait());
  EXPECT_THAT(counted->Out(), MatchesRegex("[0-9-]+ [0-9:.]+  power.acc  on\n[0-9-]+ [0-9:.]+  power.acc  off\n"));
  const auto since = Begin("monitor power --since-start --count 1 --timeout 60");
  const auto values = Begin("monitor power --values --count 1 --timeout 60 --json");
  Emit("AccStateChangeSignal false");
  EXPECT_EQ(0, since->Wait());
  EXPECT_THAT(since->Out(), MatchesRegex(" +[0-9]+[.][0-9]{3}  power  OnAccStateChange  acc: off\n"));
  EXPECT_EQ(0, values->Wait());
  EXPECT_THAT(values->Out(), HasSubstr(R"("event":"OnAccStateChange","values":{"power.acc":{"value":0,"text":"off",)"));
  documents += "monitor\t" + values->Out();
  EXPECT_THAT(Ctl("monitor power --count 1 --timeout 0.1").err, HasSubstr("the time is up: 0 of 1 events came"));
  EXPECT_EQ(kExitTimeUp, CtlJson("monitor power --count 1 --timeout 0.1", "failure")["code"]);
  for (const auto& [number, code] : {std::pair{SIGINT, kExitInterrupted}, {SIGTERM, kExitTerminated}}) {
    for (const char* const line :
         {"monitor power --count 1 --json", "listen --count 1 --json", "wait-for power.acc=on --json"}) {
      const auto interrupted = Begin(line);
      interrupted->Signal(number);
      EXPECT_EQ(code, interrupted->Wait()) << line;
      EXPECT_THAT(interrupted->Out(), HasSubstr("\"code\":" + std::to_string(code)));
    }
  }

  // A bus of its own, which then goes away.
  Process bus({"dbus-daemon", "--session", "--nofork", "--address=unix:path=/tmp/hlxctl_bus"});
  for (int i = 0; i < 5000 && !std::filesystem::exists("/tmp/hlxctl_bus"); ++i) usleep(2000);
  setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/tmp/hlxctl_bus", 1);
  Start();
  const auto orphan = Begin("monitor --json");
  const auto listener = Begin("listen --json");
  const auto recorder = Begin("record /tmp/orphan.jsonl");
  Emit("CarSpeedChangeSignal 5");
  EXPECT_TRUE(orphan->WaitForLine("OnCarSpeedChange"));
  EXPECT_TRUE(listener->WaitForLine("CarSpeedChangeSignal"));
  documents += "listen\t" + Cut(listener->Out(), "\n")[0] + "\n";
  bus.Signal(SIGKILL);
  for (Process* const process : {orphan.get(), listener.get(), recorder.get()}) {
    EXPECT_EQ(kExitNoService, process->Wait());
    EXPECT_THAT(process->Err(), HasSubstr("hlxctl: the session bus is gone: "));
  }
  EXPECT_EQ(1, simulator_->Wait());
  EXPECT_THAT(simulator_->Err(), HasSubstr("the session bus went away"));
  simulator_.reset();
  documents += "failure\t" + orphan->Out().substr(orphan->Out().find("{\"ok\""));
  std::ifstream file("/tmp/orphan.jsonl");
  for (std::string line; std::getline(file, line);) documents += "capture\t" + line + "\n";
}

TEST_F(HlxctlTest, WaitsForValuesAndEvents) {
  Start();
  EXPECT_EQ("power.screen on\n", Ctl("wait-for power.screen=on").out);
  CtlJson("wait-for power.power_off_delay>19", "wait-for");
  const auto value = Begin("wait-for misc.car_speed>50 --json");
  const auto told = Begin("wait-for misc.steering_angle=100");
  const auto event = Begin("wait-for OnDateInfoChange --timeout 60 --json");
  const auto back = Begin("wait-for OnServiceBack");
  for (const char* const line :
       {"CarSpeedChangeSignal 51", "RaiseVWSteeringWheelAngelChangeSignal 0x84 0x0E", "OnDateInfoChangeSignal 1"}) {
    Emit(line);
  }
  for (Process* const process : {value.get(), told.get(), event.get()}) EXPECT_EQ(0, process->Wait());
  simulator_->Signal(SIGKILL);
  simulator_->Wait();
  Start();
  EXPECT_EQ(0, back->Wait());
  documents += "wait-for\t" + event->Out();
  EXPECT_EQ("{\"misc.car_speed\":{\"value\":51,\"text\":\"51\",\"unit\":null}}\n", value->Out());
  EXPECT_THAT(told->Out(), HasSubstr("OnRaiseVWSteeringWheelAngelChange  steering_angle: 100 %"));
  EXPECT_THAT(Ctl("wait-for power.screen=off --timeout 0.1").err,
              HasSubstr("the time is up: power.screen=off; it is on"));
}

TEST_F(HlxctlTest, Records) {
  Start();
  const auto recorder = Begin("record /tmp/capture.jsonl --interval 20");
  Emit("ScreenLightLevelChangedSignal 1 9");
  auto* const power = static_cast<HLXSystemData::PowerShmData*>(shmat(Segments::Id(0), nullptr, 0));
  power->initialised = 0;  // a service fills it anew
  usleep(100000);
  power->initialised = 1;
  shmdt(power);
  EXPECT_EQ(0, Ctl("power set gamma 12").code);
  EXPECT_EQ(0, Ctl("wait-for power.gamma=12").code);
  usleep(100000);
  recorder->Signal(SIGINT);
  EXPECT_EQ(0, recorder->Wait());
  std::ifstream file("/tmp/capture.jsonl");
  std::string text;
  for (std::string line; std::getline(file, line); text += line) documents += "capture\t" + line + "\n";
  for (const char* const part :
       {"\"can_protocol\":\"raise_toyota\",\"values\":{\"power.acc\":1,",
        "\"signal\":\"ScreenLightLevelChangedSignal\",\"args\":[1,9]", "\"values\":{\"power.brightness_night\":9",
        "\"call\":\"SetGammaValue\",\"args\":[12]", "\"power.gamma\":12"}) {
    EXPECT_THAT(text, HasSubstr(part));
  }
  CtlJson("record /tmp/capture.jsonl --timeout 0.1", "record");
  EXPECT_EQ(0, Execute({"mkfifo", "/tmp/pipe.jsonl"}).code);
  EXPECT_THAT(Ctl("record /tmp/pipe.jsonl").err, HasSubstr("'/tmp/pipe.jsonl': No such device or address"));
  const Result full = Ctl("record /dev/full");
  EXPECT_EQ(kExitInternal, full.code);
  EXPECT_THAT(full.err, HasSubstr("'/dev/full': No space left on device after 0 lines, which are kept"));
}

TEST_F(HlxctlTest, GoesOnWhileTheUnitRestarts) {
  Start();
  const auto recorder = Begin("record /tmp/restart.jsonl --interval 1");
  const auto waiter = Begin("wait-for misc.car_speed=77");
  const std::string watch = std::string(kTool) + " watch misc";
  Process screen({"script", "-qec", "stty rows 60 cols 200; echo $$ >/tmp/watch; exec " + watch, "/dev/null"});
  EXPECT_TRUE(screen.WaitForLine("Car speed"));
  for (const char* const how : {"--cold", "--acc", "--reset"}) {
    EXPECT_EQ(0, Execute({kSimulator, "reboot", how}).code) << how;
  }
  for (int i = 0; i < 500 && Ctl("status").code != 0; ++i) usleep(20000);
  Emit("CarSpeedChangeSignal 77");
  EXPECT_EQ(0, waiter->Wait());
  EXPECT_THAT(waiter->Out(), HasSubstr("OnServiceLost"));
  EXPECT_TRUE(screen.WaitForLine("77"));
  EXPECT_THAT(screen.Out(), testing::Not(HasSubstr("100 %")));
  Emit("RaiseVWSteeringWheelAngelChangeSignal 0x84 0x0E");
  EXPECT_TRUE(screen.WaitForLine("100 %"));  // which stands in no record
  pid_t tool = 0;
  std::ifstream("/tmp/watch") >> tool;
  ASSERT_LT(0, tool);
  kill(tool, SIGTERM);
  EXPECT_EQ(0, screen.Wait());
  EXPECT_THAT(screen.Out(), testing::EndsWith("\x1b[?25h\x1b[?1049l"));
  recorder->Signal(SIGINT);
  EXPECT_EQ(0, recorder->Wait()) << recorder->Err();
}

TEST_F(HlxctlTest, EndsQuietlyWhenNobodyReads) {
  Start();
  const std::string closed =
      "import os, subprocess, sys; r, w = os.pipe(); os.close(r);"
      "sys.exit(subprocess.run(sys.argv[1:], stdout=w).returncode)";
  for (const char* const line : {"",
                                 "power",
                                 "get power.acc",
                                 "get power.acc --live --json",
                                 "get nothing --json",
                                 "names",
                                 "--help",
                                 "--version",
                                 "monitor",
                                 "listen",
                                 "listen --count 1 --timeout 1",
                                 "power set gamma 1",
                                 "call SetGammaValue 1",
                                 "doctor",
                                 "wait-for power.acc=on",
                                 "wait-for power.acc=off",
                                 "record /tmp/unread",
                                 "time zones",
                                 "update check /tmp",
                                 "complete pow",
                                 "manual"}) {
    std::vector<std::string> words = Split(line);
    words.insert(words.begin(), {"python3", "-c", closed, kTool});
    const Result result = Execute(words);
    EXPECT_EQ(kExitClosedPipe, result.code) << line;
    EXPECT_THAT(result.err,
                testing::AnyOf("", MatchesRegex("hlxctl: (listening|waiting|recording|there is no) [^\n]*\n")))
        << line;
  }
  for (const char* const line :
       {"power >/dev/full", "get nothing --json >/dev/full", "power >&-", "get nothing --json >&-", "--help >&-"}) {
    const Result result = Execute({"sh", "-c", std::string(kTool) + " " + line});
    EXPECT_EQ(kExitInternal, result.code) << line;
    EXPECT_THAT(result.err, HasSubstr("hlxctl: standard output: ")) << line;
  }
  Process screen(
      {"script", "-qec", "trap '' HUP; " + std::string(kTool) + " watch misc; echo $? >/tmp/ended", "/dev/null"});
  EXPECT_TRUE(screen.WaitForLine("Car speed"));
  screen.Signal(SIGKILL);  // and its terminal
  int code = -1;
  for (int i = 0; i < 500 && !(std::ifstream("/tmp/ended") >> code); ++i) usleep(20000);
  EXPECT_THAT(code, testing::AnyOf(kExitClosedPipe, kExitInternal));  // by what it notices first
}

}  // namespace
