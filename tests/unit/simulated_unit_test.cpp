// The state of the simulated unit: every signal, every value that can be set, every method, by the catalogue's rows.
#include <gmock/gmock.h>

#include <cstring>
#include <map>
#include <set>
#include <sstream>

#include "catalog/Catalog.h"
#include "data/HLXPersist.h"
#include "dbus/GLibPtr.h"
#include "dbus/VariantBuilder.h"
#include "dbus/VariantRecord.h"
#include "dbus_system.h"
#include "simulator/model/SignalTable.h"
#include "simulator/model/ValueNames.h"
#include "simulator/model/Values.h"
#include "simulator/service/MethodTable.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/MainContext.h"

using namespace catalog;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

using Bytes = std::vector<unsigned char>;
using Names = std::set<std::string>;

class SimulatedUnit : public testing::Test {
 protected:
  SimulatedUnit() {
    fake::Reset();
    fake::RemoveSegments();
    unit_ = std::make_unique<Unit>();
    LifeCycle::Hooks hooks;
    hooks.leave = [this] { life_ += "leave "; };
    hooks.arrive = [this] { life_ += "arrive "; };
    hooks.initialise = [this](bool all) { life_ += all ? "all " : "some "; };
    hooks.booted = [](bool) {};
    models_ = std::make_unique<Models>(*unit_, hooks);
    unit_->observers().announced.push_back([this](const Signal& signal, GVariant* tuple) {
      sent_.push_back(Describe(signal.name, InfoOf(signal).args, tuple));
      at_signal_ = Snapshot();
    });
  }

  Bytes Snapshot() const {
    Bytes all;
    for (const auto& record : unit_->records()) {
      const auto* const bytes = static_cast<const unsigned char*>(record->state());
      all.insert(all.end(), bytes, bytes + record->info().size);
    }
    return all;
  }

  /// Full names of the values, single bits aside, whose bytes differ; "?" for a byte that no value stands for.
  static Names Changed(const Bytes& before, const Bytes& after) {
    Names names;
    std::size_t i = 0;
    std::size_t start = 0;
    for (const RecordInfo& info : Records()) {
      for (; i < start + info.size; ++i) {
        if (before[i] == after[i]) continue;
        std::string name = "?";
        for (const Value& value : Values()) {
          const Field& field = value.field;
          const bool here =
              field.record == info.record && i - start >= field.offset && i - start < field.offset + field.size;
          if (here && !value.IsBit() && value.getter.name != std::string("GetDriveType")) name = value.FullName();
        }
        names.insert(name);
      }
      start += info.size;
    }
    return names;
  }

  std::vector<std::string> Call(const std::string& method, GVariant* arguments) {
    const GLibPtr<GVariant> owned(g_variant_ref_sink(arguments));
    GDBusMethodInfo* const info =
        g_dbus_interface_info_lookup_method(com_vorn_linux_system_interface_info(), method.c_str());
    GVariant* const answer = FindMethod(method)->run(*models_, owned.get(), info->in_args);
    if (answer != nullptr) g_variant_unref(g_variant_ref_sink(answer));
    return std::exchange(sent_, {});
  }
  int64_t Kept(const char* name) { return std::get<int64_t>(Get(*unit_, ValueNamed(name))); }
  void Set(const char* name, const std::string& text) {
    ::Set(*unit_, ValueNamed(name), ParseFor(ValueNamed(name), text), false);
  }

  std::unique_ptr<Unit> unit_;
  std::unique_ptr<Models> models_;
  std::vector<std::string> sent_;
  Bytes at_signal_;  ///< the records when the last signal went out
  std::string life_;
};

TEST_F(SimulatedUnit, SignalsWriteTheirFieldsAndNoOtherBeforeTheyGoOut) {
  int writing = 0;
  for (const Signal& signal : Signals()) {
    for (const int first : {0, 1}) {  // which of two levels, or pairs of seats, is meant
      SCOPED_TRACE(std::string(signal.name) + " " + std::to_string(first));
      std::vector<Scalar> arguments;
      for (std::size_t i = 0; signal.arguments[i] != '\0'; ++i) {
        arguments.emplace_back(signal.arguments[i] == 'd' ? Scalar(20.5 + first) : Scalar(int64_t{i == 0 ? first : 7}));
      }
      Names expected;
      for (const Telling& telling : AnnouncedBy(signal)) {
        const Value& value = *telling.value;
        using When = Announcement::When;
        const bool meant =
            value.announced.when == When::kAlways || (value.announced.when == When::kFirstIsZero) == (first == 0);
        if (telling.argument < 0 || !value.InRecord() || value.IsBit() || !meant) continue;
        // What is there must differ from what comes.
        unit_->Write(value,
                     Scalar(int64_t{
                         signal.arguments[telling.argument] == 'd' ? 0 : 1 - first + (telling.argument > 0 ? 8 : 0)}));
        expected.insert(value.FullName());
      }
      const Bytes before = Snapshot();
      unit_->Announce(signal, arguments);
      EXPECT_EQ(Changed(before, Snapshot()), expected);
      EXPECT_EQ(at_signal_, Snapshot());
      EXPECT_EQ(sent_.size(), 1U);
      sent_.clear();
      writing += expected.empty() ? 0 : 1;
    }
  }
  EXPECT_GE(writing, 2 * 48);
}

TEST_F(SimulatedUnit, ValuesAreSetSavedAndAnnounced) {
  int settable = 0;
  for (const NamedValue& named : HeldValues()) {
    if (!named.IsSettable() || named.value == nullptr) continue;
    SCOPED_TRACE(named.name());
    ++settable;
    const Value& value = *named.value;
    const std::string texts[] = {"2024-02-29T23:59:30", value.reading.kind == Reading::Kind::kText
                                                            ? "text"
                                                            : std::to_string(value.reading.most)};
    const Scalar scalar = ParseFor(named, texts[value.reading.kind == Reading::Kind::kMoment ? 0 : 1]);
    const Bytes before = Snapshot();
    sent_.clear();
    unit_->Change(value, scalar);
    EXPECT_EQ(Get(*unit_, named), scalar);
    const std::string signal = value.announced.signal;
    if (!signal.empty()) {
      ASSERT_FALSE(sent_.empty());
      EXPECT_EQ(sent_.front().substr(0, signal.size() + 1), signal + "(");
    }
    sent_.clear();
    // Silently the record alone changes.
    unit_->Write(value, value.reading.IsNumeric() ? Scalar(value.reading.least) : scalar);
    EXPECT_THAT(sent_, IsEmpty());
    EXPECT_EQ(Changed(before, Snapshot()).count("?"), 0U);
  }
  EXPECT_GT(settable, 100);
}

/// The signals that may follow a method, as the catalogue has it for its commands.
Names Following(const std::string& method) {
  Names names;
  for (const Command& command : Commands()) {
    if (command.method != method) continue;
    for (const char* const signal : command.follows) names.insert(signal == nullptr ? "" : signal);
  }
  return names;
}

TEST_F(SimulatedUnit, EveryMethodHasItsConsequence) {
  const std::map<std::string, std::string> special = {
      {"SetLogoInfo", std::string(20, '\1')}, {"SetCurDate", ""}, {"SetCurTime", ""}, {"SetGpsUTCTimeSync", ""}};
  Set("time.auto_sync", "on");
  int count = 0;
  for (GDBusMethodInfo** method = com_vorn_linux_system_interface_info()->methods; *method != nullptr; ++method) {
    const std::string name = (*method)->name;
    SCOPED_TRACE(name);
    const MethodRow* const row = FindMethod(name);
    ASSERT_NE(row, nullptr);
    EXPECT_STREQ(row->method, Methods()[static_cast<std::size_t>(count++)].method);  // in the interface's order
    Names changes;
    std::istringstream words(row->changes);
    for (std::string word; words >> word;) EXPECT_NO_THROW(changes.insert(ValueNamed(word).name())) << word;
    EXPECT_TRUE(!changes.empty() || *row->note != '\0');
    if (special.count(name) != 0 && name != "SetLogoInfo") continue;  // the clock has a test of its own
    std::map<std::string, std::set<std::string>> seen;
    const auto look = [&] {
      for (const std::string& change : changes) {
        seen[change].insert(InWords(ValueNamed(change).reading(), Get(*unit_, ValueNamed(change))));
      }
    };
    look();
    for (const int number : {0, 1}) {
      VariantBuilder builder(G_VARIANT_TYPE_TUPLE);
      for (GDBusArgInfo** arg = (*method)->in_args; arg != nullptr && *arg != nullptr; ++arg) {
        const char type = *(*arg)->signature;
        const std::string record(20, static_cast<char>(number));
        const int64_t argument = arg == (*method)->in_args ? number : number + 7;
        builder.Add(type == 's'   ? g_variant_new_string(number == 0 ? "a" : "b")
                    : type == 'v' ? build_variant_data(record.data(), record.size())
                                  : VariantOf(Scalar(argument), type));
      }
      const std::vector<std::string> sent = Call(name, builder.End());
      // The factory reset also announces each setting that was another.
      for (std::size_t at = 0; name != "ResetFactoryMode" && at < sent.size(); ++at) {
        EXPECT_EQ(Following(name).count(sent[at].substr(0, sent[at].find('('))), 1U) << sent[at];
      }
      look();
    }
    // What has an argument leads to different values.
    const bool has_arguments = (*method)->in_args != nullptr && *(*method)->in_args != nullptr;
    for (const auto& [value, states] : seen) {
      EXPECT_TRUE(!has_arguments || states.size() >= 2U) << value;
    }
  }
  EXPECT_EQ(static_cast<std::size_t>(count), Methods().size());
}

TEST_F(SimulatedUnit, HeadLightsAndStyleDriveTheLight) {
  Set("power.light_auto_detect", "on");
  sent_.clear();
  Set("power.head_lights", "on");
  EXPECT_THAT(sent_, ElementsAre("OnHeadLightStateChange(on=true)", "ScreenLightTypeChangedSignal(type=1)",
                                 "ButtonLightTypeChangedSignal(type=1)"));
  sent_.clear();
  EXPECT_THAT(Call("SetLightDetectStyle", g_variant_new("(y)", 0)), ElementsAre());
  EXPECT_EQ(Kept("power.screen_light"), 1);  // fixed to night
  Call("SetLightFixDayStyle", g_variant_new("(y)", 1));
  EXPECT_EQ(Kept("power.screen_light"), 0);
  Set("power.head_lights", "off");
  EXPECT_EQ(Kept("power.button_light"), 0);
}

TEST_F(SimulatedUnit, FullBrightnessEndsWhereItBegan) {
  Set("power.brightness_day", "40");
  sent_.clear();
  EXPECT_THAT(Call("SetTempMaxScreenLightLevel", g_variant_new("(b)", TRUE)),
              IsEmpty());  // for a while, and nobody is told
  EXPECT_EQ(Kept("power.brightness_day"), 255);
  EXPECT_THAT(Call("SetTempMaxScreenLightLevel", g_variant_new("(b)", FALSE)), IsEmpty());
  EXPECT_EQ(Kept("power.brightness_day"), 40);
  Call("SetTempMaxScreenLightLevel", g_variant_new("(b)", TRUE));
  Call("SetScreenLightLevel", g_variant_new("(yy)", 0, 60));
  EXPECT_THAT(Call("SetTempMaxScreenLightLevel", g_variant_new("(b)", FALSE)), IsEmpty());
  EXPECT_EQ(Kept("power.brightness_day"), 60);
}

TEST_F(SimulatedUnit, AnAutoTestFindsTheLinesAndThenTheSpeakersThatNobodyKnows) {
  unit_->Write(*FindValue("misc.gps_antenna"), Scalar(int64_t{SystemMisc::ANT_STATE_UNKNOWN}));
  Set("misc.dab_antenna", "short");
  for (const char* const speaker : {"front_left", "front_right", "rear_left", "rear_right"}) {
    Set((std::string("misc.speaker_") + speaker).c_str(), speaker[0] == 'r' ? "not-detected" : "open");
  }
  sent_.clear();
  Call("StartAutoTest", g_variant_new("()"));
  ASSERT_TRUE(RunUntil([this] { return Kept("inbox.speaker_detection") == 1; }));
  EXPECT_EQ(Kept("inbox.auto_test"), 1);
  EXPECT_EQ(Kept("misc.gps_antenna"), SystemMisc::ANT_STATE_NORMAL);
  ASSERT_TRUE(RunUntil([this] { return Kept("inbox.auto_test") == 2; }));
  EXPECT_EQ(Kept("inbox.speaker_detection"), 2);
  EXPECT_EQ(Kept("misc.speaker_rear_right"), SystemMisc::SPEAKER_STATE_NORMAL);
  EXPECT_EQ(Kept("misc.speaker_front_left"), SystemMisc::SPEAKER_STATE_OPEN) << "what is known stays";
  EXPECT_THAT(sent_, ElementsAre("RadioAntStateChangeSignal(state=0)", "GpsAntStateChangeSignal(state=0)",
                                 "DABAntStateChangeSignal(state=2)", "MicConnectStateChangeSignal(state=0)",
                                 "SpeakerStateChangeSignal()", "SpeakerStateChangeSignal()",
                                 "SpeakerStateChangeSignal()", "SpeakerStateChangeSignal()"));
}

TEST_F(SimulatedUnit, GoesOffAndWakesWithTheIgnition) {
  Set("power.power_off_delay", "0");
  Set("power.retain_acc", "1");
  sent_.clear();
  Set("power.acc", "off");
  ASSERT_TRUE(RunUntil([this] { return sent_.size() == 2; }));
  EXPECT_THAT(sent_, ElementsAre("AccStateChangeSignal(isAccOn=false)", "OnPowerPreRadioOffNotify()"));
  Set("power.acc", "on");  // in time
  EXPECT_EQ(InWords(ValueNamed("unit.state").reading(), Kept("unit.state")), "running");
  Set("power.acc", "off");
  ASSERT_TRUE(RunUntil([this] { return sent_.size() == 5; }));
  sent_.clear();
  EXPECT_THAT(Call("ConfirmPreRadioOffState", g_variant_new("(i)", 1)),
              ElementsAre("ScreenStateChangeSignal(isScreenOn=false)", "RadioStateChangeSignal(state=0)"));
  EXPECT_EQ(life_, "");
  ASSERT_TRUE(RunUntil([this] { return life_ == "leave "; }));
  Set("power.acc", "on");
  ASSERT_TRUE(RunUntil([this] { return Kept("unit.state") == 1; }));
  EXPECT_EQ(life_, "leave leave some arrive ");
  EXPECT_THAT(sent_, ElementsAre("AccStateChangeSignal(isAccOn=true)", "BatteryBootStateChangeSignal(isColdBoot=false)",
                                 "OnPowerWakeupTypeSignal(type=1)", "OnMcuBootTypeNotifySignal(reason=1)"));
  sent_.clear();
  EXPECT_THAT(Call("RequestPowerOffState", g_variant_new("(b)", TRUE)),
              ElementsAre("ScreenStateChangeSignal(isScreenOn=true)", "RadioStateChangeSignal(state=16)"));
  EXPECT_THAT(Call("RequestPowerOffState", g_variant_new("(b)", TRUE)), ElementsAre("OnPowerPreRadioOffNotify()"));
  EXPECT_THAT(Call("ConfirmPreRadioOffState", g_variant_new("(i)", 1)),
              ElementsAre("ScreenStateChangeSignal(isScreenOn=false)", "RadioStateChangeSignal(state=0)"));
  EXPECT_EQ(InWords(ValueNamed("unit.state").reading(), Kept("unit.state")), "standby") << "and not off: ACC is on";
}

TEST_F(SimulatedUnit, DaylightSavingFollowsTheZoneAndItsSwitch) {
  models_->time.Boot(true);
  const int32_t july[] = {2024, 7, 1, 0, 12, 30, 5};
  const auto now = [this] { return std::get<std::string>(Get(*unit_, ValueNamed("time.time"))); };
  const auto sync = [&] {
    return Call("SetGpsUTCTimeSync", g_variant_new("(@v)", build_variant_data(july, sizeof july)));
  };
  Set("time.zone", "Europe/Berlin");
  sent_.clear();
  EXPECT_THAT(sync(), testing::Not(testing::Contains("OnDateInfoChangeSignal(type=1)")));  // automatic time is off
  Set("time.auto_sync", "on");
  EXPECT_THAT(sync(), ElementsAre("OnDateInfoChangeSignal(type=1)"));
  EXPECT_EQ(now(), "13:30:05");
  Set("time.auto_dst", "on");
  EXPECT_EQ(now(), "14:30:05");
  EXPECT_EQ(Kept("time.dst"), 1);
  const int32_t evening[] = {20, 15, 0};
  sent_.clear();
  EXPECT_THAT(Call("SetCurTime", g_variant_new("(@v)", build_variant_data(evening, sizeof evening))),
              ElementsAre("OnDateInfoChangeSignal(type=1)"));
  EXPECT_EQ(now(), "20:15:00");
  EXPECT_EQ(std::get<std::string>(Get(*unit_, ValueNamed("time.date"))), "2024-07-01");
  sync();
  Set("time.zone", "Africa/Casablanca");  // standard time is that of the summer there
  EXPECT_EQ(now(), "13:30:05");
  Set("time.zone", "78");
  EXPECT_EQ(now(), "21:30:05");
  EXPECT_EQ(Kept("time.dst"), 0);
  EXPECT_EQ(Kept("time.weekday"), 1);
  EXPECT_EQ(Kept("time.clock_reset_needed"), 0);
}

TEST_F(SimulatedUnit, ShowsUTCWhereItHasNoZone) {
  unit_->Write(*FindValue("time.zone"), Scalar(int64_t{200}));  // as a damaged setting
  const auto hour = [] {
    const GLibPtr<GDateTime> utc(g_date_time_new_now_utc());
    return std::string(GLibPtr<gchar>(g_date_time_format(utc.get(), "%H:")).get());
  };
  const std::string before = hour();
  testing::internal::CaptureStderr();
  models_->time.Boot(true);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "hlx-simulator: time zone 200: there is no such zone; the clock shows UTC\n");
  EXPECT_THAT(std::get<std::string>(Get(*unit_, ValueNamed("time.time"))),
              testing::AnyOf(StartsWith(before), StartsWith(hour())));
}

TEST_F(SimulatedUnit, ReadsASettingAgainBeforeItOverwritesIt) {
  fake::Get().persist_write_result = PERSIST_ERROR_DATABASE_NOT_READY;
  fake::Get().persist_reads.clear();
  fake::Get().persist_writes.clear();
  Call("SetTimeZone", g_variant_new("(y)", 5));
  const auto& item = HLXSystemData::PERSIST_ID_ZONE;
  EXPECT_THAT(fake::Get().persist_reads, ElementsAre(std::pair(item.module, item.id)));
  const fake::PersistWrite write{item.module, item.id, 5, {1, 1, 0}};
  EXPECT_THAT(fake::Get().persist_writes, ElementsAre(write, write));
}

}  // namespace
