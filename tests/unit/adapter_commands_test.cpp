// Every command of the adapter against a real skeleton on a real bus: what arrives, what comes back, what is logged.
#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <future>
#include <set>
#include <string>
#include <thread>

#include "catalog/Catalog.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/ipc/LastCallError.h"
#include "client/misc/HLXMiscClient.h"
#include "client/power/HLXPowerClient.h"
#include "client/time/HLXTimeClient.h"
#include "client/update/HLXUpdateClient.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/TestService.h"
#include "zlog.h"

using testing::ElementsAre;

namespace {

using Adapter = ClientIpcAdapter;

/// What a command returned, for the tests' sake.
enum Result { kNone, kTrue, kFalse };
Result AsResult(bool value) { return value ? kTrue : kFalse; }

struct Command {
  const char* log_name;  ///< as the command calls itself in its error record
  std::function<Result(Adapter&)> run;
  std::string call;      ///< as the service receives it
  bool returns = false;  ///< a command with a bool result
};

#define NONE(expression) \
  [](Adapter& a) {       \
    a.expression;        \
    return kNone;        \
  }
#define BOOL(expression) [](Adapter& a) { return AsResult(a.expression); }
#define TEXT(method, value)          \
  [](Adapter& a) {                   \
    std::string text = value;        \
    return AsResult(a.method(text)); \
  }

SystemTime::DateInfo Date() { return {2026, 11, 24, 2}; }
SystemTime::TimeInfo Time() { return {1, 258, 3}; }

const char kDateBytes[] =
    "0xea, 0x07, 0x00, 0x00, 0x0b, 0x00, 0x00, 0x00, 0x18, 0x00, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00";
const char kTimeBytes[] = "0x01, 0x00, 0x00, 0x00, 0x02, 0x01, 0x00, 0x00, 0x03, 0x00, 0x00, 0x00";

std::string RecordCall(const std::string& method, const std::string& bytes) {
  return method + " (<[byte " + bytes + "]>,)";
}

constexpr auto kUpdate = static_cast<HLXUpdate::UpdateType>(-3);
constexpr auto kBigLight = static_cast<HLXPower::LightType>(0x101);

std::vector<Command> Commands() {
  static const std::string logo_bytes = [] {
    std::string text;
    for (int i = 1; i <= 20; ++i)
      text += (i == 1 ? "0x" : ", 0x") + std::string(i < 16 ? "0" : "1") + "0123456789abcdef"[i % 16];
    return text;
  }();
  return {
      {"ApplyExternalMcuUpdate", NONE(ApplyExternalMcuUpdate()), "ApplyExternalMcuUpdate ()"},
      {"ApplyUpdateAll", NONE(ApplyUpdateAll()), "ApplyUpdateAll ()"},
      {"ApplyMpuUpdate", NONE(ApplyMpuUpdate()), "ApplyMpuUpdate ()"},
      {"ApplyUpdate",
       [](Adapter& a) {
         a.ApplyUpdate(kUpdate);
         return kNone;
       },
       "ApplyUpdate (-3,)"},
      {"SetCanUpdata", NONE(SetCanUpdata(-70000)), "CanUpdate (-70000,)"},
      {"ShutDown", NONE(ShutDown()), "ShutDown ()"},
      {"Reset", NONE(Reset()), "Reset ()"},
      {"RequestPowerOffState", NONE(RequestPowerOffState(2)), "RequestPowerOffState (true,)"},
      {"SetPowerOffDelayTime", NONE(SetPowerOffDelayTime(255)), "SetPowerOffDelayTime (byte 0xff,)"},
      {"SetRetainACCSec", NONE(SetRetainACCSec(0xFFFFFFFFU)), "SetRetainACCSec (-1,)"},
      {"SetBtCallState", NONE(SetBtCallState(static_cast<HLXPower::CallState>(0x203))), "SetBtCallState (byte 0x03,)"},
      {"SetCarPlayPhoneState", NONE(SetCarPlayPhoneState(static_cast<HLXPower::CpPhoneStateType>(0x102))),
       "SetCarPlayPhoneState (byte 0x02,)"},
      {"SetScreenLightOn", NONE(SetScreenLightOn(-1)), "SetScreenLightOn (true,)"},
      {"SetScreenLightLevel",
       [](Adapter& a) {
         a.SetScreenLightLevel(kBigLight, 200);
         return kNone;
       },
       "SetScreenLightLevel (byte 0x01, byte 0xc8)"},
      {"SetColorType", NONE(SetColorType(HLXPower::COLOR_TYPE_CUSTOM)), "SetColorType (byte 0x09,)"},
      {"SetLedAnimation", NONE(SetLedAnimation(-1)), "SetLedAnimation (byte 0xff,)"},
      {"SetLightDetectStyle", NONE(SetLightDetectStyle(0x101)), "SetLightDetectStyle (byte 0x01,)"},
      {"SetLightFixDayStyle", NONE(SetLightFixDayStyle(0x100)), "SetLightFixDayStyle (byte 0x00,)"},
      {"ResetScreenBackLight", NONE(ResetScreenBackLight()), "ResetScreenBackLight ()"},
      {"SetTempMaxScreenLightLevel", NONE(SetTempMaxScreenLightLevel(0)), "SetTempMaxScreenLightLevel (false,)"},
      {"ConfirmPreRadioOffState", NONE(ConfirmPreRadioOffState(0x7FFFFFFF)), "ConfirmPreRadioOffState (2147483647,)"},
      {"SetButtonLightState", NONE(SetButtonLightState(256)), "SetButtonLightState (false,)"},
      {"SetButtonLightValue",
       [](Adapter& a) {
         a.SetButtonLightValue(kBigLight, 0);
         return kNone;
       },
       "SetButtonLightValue (byte 0x01, byte 0x00)"},
      {"SetGammaValue", NONE(SetGammaValue(-5)), "SetGammaValue (-5,)"},
      {"ResetButtonBackLight", NONE(ResetButtonBackLight()), "ResetButtonBackLight ()"},
      {"SetPowerRvcStatus", NONE(SetPowerRvcStatus(1)), "SetRvcStatus (true,)"},
      {"SpeakerDetectStart", NONE(SpeakerDetectStart()), "SpeakerDetectStart ()"},
      {"ResetFactoryMode", NONE(ResetFactoryMode()), "ResetFactoryMode ()"},
      {"EnableCanBoxModule", NONE(EnableCanBoxModule(2)), "EnableCanBoxModule (true,)"},
      {"EnableScreenShotControl", NONE(EnableScreenShotControl(0)), "EnableScreenShotControl (false,)"},
      {"SetScreenshot", NONE(SetScreenshot()), "SetScreenshot ()"},
      {"StartAutoTest", NONE(StartAutoTest()), "StartAutoTest ()"},
      {"SpeakerDetectStop", NONE(SpeakerDetectStop()), "SpeakerDetectStop ()"},
      {"SetRvcOffDelaySwitch", NONE(SetRvcOffDelaySwitch(1)), "SetRvcOffDelaySwitch (true,)"},
      {"SetDrivePosition", NONE(SetDrivePosition(1)), "SetDrivePosition (true,)"},
      {"ClientIpcAdapter::SetOnSourceChange", BOOL(SetOnSourceChange(-9)), "SetOnSourceChange (-9,)", true},
      {"com_vorn_linux_system_call_set_logo_sync::SetLogo", BOOL(SetLogo(0xFFFFFFFFU)), "SetLogo (uint32 4294967295,)",
       true},
      {"com_vorn_linux_system_call_set_logo_info_sync",
       [](Adapter& a) {
         SystemMisc::LogoInfo logo{};
         for (unsigned char i = 0; i < 20; ++i)
           reinterpret_cast<unsigned char*>(&logo)[i] = static_cast<unsigned char>(i + 1);
         a.SetLogo(logo);
         return kNone;
       },
       RecordCall("SetLogoInfo", logo_bytes)},
      {"ClientIpcAdapter::SetOnTimeChange", TEXT(SetOnTimeChange, "12:00"), "SetOnTimeChange ('12:00',)", true},
      {"ClientIpcAdapter::SetOnRadioChange", TEXT(SetOnRadioChange, "FM 101,7"), "SetOnRadioChange ('FM 101,7',)",
       true},
      {"ClientIpcAdapter::SetOnTouchInfo", TEXT(SetOnTouchInfo, std::string(1, '\0')), "SetOnTouchInfo ('',)", true},
      {"ClientIpcAdapter::SetOnPSChange", TEXT(SetOnPSChange, "ÖR1"), "SetOnPSChange ('ÖR1',)", true},
      {"ClientIpcAdapter::SetOnMediaInfoChange", TEXT(SetOnMediaInfoChange, std::string("a\0b", 3)),
       "SetOnMediaInfoChange ('a',)", true},
      {"ClientIpcAdapter::SetOnPhoneInfoChange", TEXT(SetOnPhoneInfoChange, "+49"), "SetOnPhoneInfoChange ('+49',)",
       true},
      {"ClientIpcAdapter::SetOnVolChange", BOOL(SetOnVolChange(31)), "SetOnVolChange (31,)", true},
      {"SetHandbrakeCheckingSwitch", NONE(SetHandbrakeCheckingSwitch(1)), "SetHandbrakeCheckingSwitch (true,)"},
      {"SetGPSAntennaCheckingSwitch", NONE(SetGPSAntennaCheckingSwitch(0)), "SetGPSAntennaCheckingSwitch (false,)"},
      {"SetTime24Mode", NONE(SetTime24Mode(1)), "SetTime24Mode (true,)"},
      {"SetAutoSyncMode", NONE(SetAutoSyncMode(1)), "SetAutoSyncMode (true,)"},
      {"SetAutoAdjustDstMode", NONE(SetAutoAdjustDstMode(0)), "SetAutoAdjustDstMode (false,)"},
      {"SetCurDate",
       [](Adapter& a) {
         auto date = Date();
         a.SetCurDate(date);
         return kNone;
       },
       RecordCall("SetCurDate", kDateBytes)},
      {"SetCurTime",
       [](Adapter& a) {
         auto time = Time();
         a.SetCurTime(time);
         return kNone;
       },
       RecordCall("SetCurTime", kTimeBytes)},
      {"SetGpsUTCTimeSync",
       [](Adapter& a) {
         SystemTime::DateTime utc = {Date(), Time()};
         return AsResult(a.SetGpsUTCTimeSync(utc));
       },
       RecordCall("SetGpsUTCTimeSync", std::string(kDateBytes) + ", " + kTimeBytes), true},
      {"SetTimeZone", NONE(SetTimeZone(static_cast<SystemTime::TimeZone>(0x14E))), "SetTimeZone (byte 0x4e,)"},
  };
}

class AdapterCommands : public testing::Test {
 protected:
  void SetUp() override { fake::Reset(); }
  fake::Platform& platform = fake::Get();
};

/// The record and the kept error of a command that failed for `reason`.
void ExpectFailure(const Command& command, const std::string& reason) {
  EXPECT_THAT(fake::Get().Logged(ZLOG_LEVEL_ERROR),
              ElementsAre(std::string(command.log_name) + ": Failed to call dbus method. Reason: " + reason + "."));
  EXPECT_EQ(fake::Get().log.back().source, "client/ipc/ClientIpcAdapter");
  EXPECT_EQ(LastCallError::Text(), reason);
}

TEST_F(AdapterCommands, ReachTheServiceAndReportItsAnswer) {
  TestService service;
  Adapter adapter;
  ASSERT_TRUE(adapter.Init());
  const std::vector<Command> commands = Commands();
  std::set<std::string> missing;
  for (const catalog::Command& row : catalog::Commands()) missing.insert(row.method);
  for (const Command& command : commands) {
    SCOPED_TRACE(command.call);
    missing.erase(command.call.substr(0, command.call.find(" (")));
    platform.log.clear();
    service.SetAnswer(TestService::Answer::kOk);
    EXPECT_EQ(command.run(adapter), command.returns ? kTrue : kNone);
    EXPECT_THAT(service.TakeCalls(), ElementsAre(command.call));
    EXPECT_TRUE(platform.log.empty());
    EXPECT_EQ(LastCallError::Text(), nullptr) << "the failure of the command before";

    service.SetAnswer(TestService::Answer::kError);
    EXPECT_EQ(command.run(adapter), command.returns ? kFalse : kNone);
    ExpectFailure(command, "GDBus.Error:com.vorn.linux.Error.Refused: not today");
    service.TakeCalls();
  }
  EXPECT_THAT(missing, testing::IsEmpty());
}

/// Something to give for a parameter; the numbers of a command differ.
catalog::Scalar SampleOf(const catalog::Reading& reading, int64_t number) {
  using Kind = catalog::Reading::Kind;
  if (reading.kind == Kind::kText) return std::string("x");
  if (reading.kind == Kind::kDate) return std::string("2024-02-29");
  if (reading.kind == Kind::kClock) return std::string("23:59:30");
  return number;
}

TEST_F(AdapterCommands, AreSentByThePublicFunctionsOfTheirNames) {
  fake::RemoveSegments();
  TestService service;
  const auto adapter = std::make_shared<Adapter>();
  ASSERT_TRUE(adapter->Init());
  HLXPowerClient power(adapter);
  HLXMiscClient misc(adapter);
  HLXTimeClient time(adapter);
  HLXUpdateClient update(adapter, nullptr);
  const catalog::Clients clients{&power, &misc, &time, nullptr, &update};
  for (const catalog::Command& command : catalog::Commands()) {
    const std::string method = command.method;
    const bool is_record =
        method.find("Cur") != method.npos || method == "SetLogoInfo" || method == "SetGpsUTCTimeSync";
    std::vector<catalog::Scalar> arguments;
    std::string pattern = method;
    pattern += is_record ? " \\(<.*>" : " \\(";
    for (const catalog::Parameter& parameter : command.Parameters()) {
      const auto number = static_cast<int64_t>(arguments.size() + 1);
      arguments.push_back(SampleOf(parameter.reading, number));
      if (is_record) continue;
      if (number > 1) pattern += ", ";
      const bool is_number = std::holds_alternative<int64_t>(arguments.back());
      pattern += is_number ? "((byte 0x0|uint32 )?" + std::to_string(number) + (number == 1 ? "|true)" : ")") : "'x'";
    }
    pattern += ",?\\)";
    EXPECT_TRUE(command.call(clients, arguments)) << command.function;
    EXPECT_THAT(service.TakeCalls(), ElementsAre(testing::MatchesRegex(pattern))) << command.function;
  }
}

TEST_F(AdapterCommands, GpsTimeReturnsWhatTheServiceSays) {
  TestService service;
  Adapter adapter;
  ASSERT_TRUE(adapter.Init());
  SystemTime::DateTime utc{};
  service.SetAnswer(TestService::Answer::kFalse);
  EXPECT_FALSE(adapter.SetGpsUTCTimeSync(utc));
  EXPECT_TRUE(platform.Logged(ZLOG_LEVEL_ERROR).empty());
}

TEST_F(AdapterCommands, BeforeTheStartNothingIsSentAndBoolCommandsSayTrue) {
  TestService service;
  Adapter adapter;
  for (const Command& command : Commands()) {
    SCOPED_TRACE(command.call);
    const Result expected = std::string(command.log_name) == "SetGpsUTCTimeSync" ? kFalse
                            : command.returns                                    ? kTrue
                                                                                 : kNone;
    LastCallError::Clear();
    EXPECT_EQ(command.run(adapter), expected);
    EXPECT_STREQ(LastCallError::Text(), "not sent: no start of the library has reached the bus");
  }
  EXPECT_TRUE(service.TakeCalls().empty());
  EXPECT_TRUE(platform.log.empty());
}

TEST_F(AdapterCommands, WaitNoLongerThanTheyAreAllowedTo) {
  EXPECT_FALSE(Adapter::SetCallTimeout(0));
  EXPECT_FALSE(Adapter::SetCallTimeout(-2));
  TestService service;
  Adapter adapter;
  ASSERT_TRUE(adapter.Init());
  service.SetAnswer(TestService::Answer::kNone);
  EXPECT_TRUE(Adapter::SetCallTimeout(20));
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_FALSE(adapter.SetOnSourceChange(1));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20)) << "the bus's own 25 s";
  ExpectFailure({"ClientIpcAdapter::SetOnSourceChange", nullptr, ""}, "Timeout was reached");

  EXPECT_TRUE(Adapter::SetCallTimeout(-1));
  service.TakeCalls();
  auto patient = std::async(std::launch::async, [&adapter] { return adapter.SetOnSourceChange(2); });
  while (service.TakeCalls().empty()) std::this_thread::yield();
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  service.AnswerAll();
  EXPECT_TRUE(patient.get());
}

TEST_F(AdapterCommands, TextThatIsNotUtf8IsRefusedByName) {
  TestService service;
  Adapter adapter;
  ASSERT_TRUE(adapter.Init());
  platform.log.clear();
  std::string text = "ab\xff";
  EXPECT_FALSE(adapter.SetOnRadioChange(text));
  ExpectFailure({"ClientIpcAdapter::SetOnRadioChange", nullptr, ""}, "the text is not valid UTF-8 from byte 2 on");
  EXPECT_TRUE(service.TakeCalls().empty());
}

}  // namespace
