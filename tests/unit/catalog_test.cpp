// The catalogue against what it describes: records, public interfaces, the D-Bus interface, the real clients.
#include <gmock/gmock.h>
#include <sys/shm.h>

#include <cstring>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "catalog/Catalog.h"
#include "catalog/EveryEvent.h"
#include "client/HLXSystemClient.h"
#include "client/info/HLXInfoClient.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/misc/HLXMiscClient.h"
#include "client/power/HLXPowerClient.h"
#include "client/time/HLXTimeClient.h"
#include "dbus_system.h"
#include "tests/support/FakePlatform.h"

using namespace catalog;
using testing::IsEmpty;

namespace {

using Names = std::set<std::string>;

std::string FileText(const std::string& path) {
  std::ifstream file(HLX_SOURCE_DIR "/" + path);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

/// Everything that `pattern` finds; the group that stands for it.
std::vector<std::smatch> FindAll(const std::string& text, const char* pattern) {
  const std::regex regex(pattern);
  return {std::sregex_iterator(text.begin(), text.end(), regex), {}};
}

/// The virtual functions that a public header declares.
Names VirtualsOf(const std::string& header) {
  static std::string text;
  text = FileText("include/" + header);
  Names names;
  for (const std::smatch& found : FindAll(text, R"(\n  virtual [^~;(]*?(\w+)\()")) names.insert(found[1]);
  return names;
}

TEST(Catalog, HasARowForEachGetterAndCommand) {
  Names rows;
  for (const Value& value : Values()) rows.insert(value.getter.name);
  for (const Command& command : Commands()) rows.insert(command.function);
  const Names no_value = {"GetZoneNode"};  // an entry of the zone table
  for (const char* const header :
       {"IHLXSystemPower.h", "IHLXSystemMisc.h", "IHLXSystemTime.h", "IHLXSystemInfo.h", "IHLXSystemUpdate.h"}) {
    const Names functions = VirtualsOf(header);
    EXPECT_GT(functions.size(), 5U);
    for (const std::string& name : functions) EXPECT_TRUE(rows.count(name) + no_value.count(name)) << name;
  }
}

TEST(Catalog, CountsWhatThereIs) {
  const GDBusInterfaceInfo* const interface = com_vorn_linux_system_interface_info();
  Names methods, signals, callbacks, commanded;
  for (GDBusMethodInfo** method = interface->methods; *method != nullptr; ++method) methods.insert((*method)->name);
  for (GDBusSignalInfo** signal = interface->signals; *signal != nullptr; ++signal) {
    std::string types;
    for (GDBusArgInfo** a = (*signal)->args; a != nullptr && *a != nullptr; ++a) types += (*a)->signature;
    const Signal* const row = FindSignal((*signal)->name);
    ASSERT_NE(row, nullptr) << (*signal)->name;
    EXPECT_EQ(row->arguments, types) << row->name;
    signals.insert(row->name);
    for (const char* const callback : row->callbacks) {
      EXPECT_TRUE(callback == nullptr || callbacks.insert(callback).second) << callback;
    }
  }
  for (const Command& command : Commands()) commanded.insert(command.method);
  EXPECT_EQ(methods.size(), 54U);
  EXPECT_EQ(signals.size(), 76U);
  EXPECT_EQ(methods.size() + signals.size(), 130U);
  EXPECT_EQ(Signals().size(), 76U);
  EXPECT_EQ(commanded, methods);
  Names listened;
  for (const char* const header :
       {"IHLXPowerListener.h", "IHLXSystemMiscListener.h", "IHLXSystemTimeListener.h", "IHLXUpdateListener.h"}) {
    listened.merge(VirtualsOf(header));
  }
  EXPECT_EQ(listened.size(), 81U);
  EXPECT_EQ(callbacks, listened);
}

TEST(Catalog, CoversEveryFieldOfTheRecords) {
  const std::string text = FileText("data/HLXSystemRecords.h");
  std::map<std::string, Record> kinds = {{"PowerShmData", Record::kPower},
                                         {"MiscShmData", Record::kMisc},
                                         {"TimeShmData", Record::kTime},
                                         {"InfoShmData", Record::kInfo}};
  Names reserved;
  for (const ReservedField& field : ReservedFields())
    reserved.insert(InfoOf(field.record).name + std::string(field.name));
  int fields = 0;
  for (const std::smatch& found : FindAll(text, R"(\nHLX_FIELD_AT\((\w+), (\w+), (\d+)\))")) {
    const RecordInfo& record = InfoOf(kinds.at(found[1]));
    const std::string name = found[2];
    const std::size_t offset = std::stoul(found[3]);
    const bool has_row = std::any_of(Values().begin(), Values().end(), [&](const Value& value) {
      return value.field.record == record.record && value.field.offset == offset;
    });
    EXPECT_NE(has_row, reserved.erase(record.name + name) == 1) << record.name << "." << name;
    ++fields;
  }
  EXPECT_EQ(fields, 90);
  EXPECT_THAT(reserved, IsEmpty());
}

TEST(Catalog, HasAWordForEachEnumerator) {
  const std::string rows =
      FileText("catalog/Words.h") + FileText("catalog/Switches.h") + FileText("catalog/MiscValues.h");
  int enumerators = 0;
  for (const char* const header : {"HLXPowerTypes.h", "HLXMiscTypes.h", "HLXInfoTypes.h", "HLXUpdateTypes.h"}) {
    const std::string text = FileText(std::string("include/") + header);
    for (const std::smatch& found : FindAll(text, R"(\n  ([A-Z][A-Z0-9_]+) = \d+,)")) {
      EXPECT_NE(rows.find(found.str(1)), std::string::npos) << found[1];
      ++enumerators;
    }
  }
  EXPECT_GT(enumerators, 150);
}

TEST(Catalog, RowsAreComplete) {
  Names names;
  std::map<std::pair<Record, std::size_t>, std::string> signals;  // of a byte and of its bits it is the same one
  for (const Value& value : Values()) {
    SCOPED_TRACE(value.FullName());
    EXPECT_TRUE(names.insert(value.FullName()).second);
    const auto field = std::pair(value.field.record, value.field.offset);
    const std::string signal = value.announced.signal;
    EXPECT_TRUE(!value.InRecord() || signals.emplace(field, signal).first->second == signal);
    EXPECT_TRUE(std::regex_match(value.name, std::regex("[a-z0-9]+(_[a-z0-9]+)*")));
    EXPECT_STRNE(value.label, "");
    EXPECT_STRNE(value.group, "");
    using Kind = Reading::Kind;
    const Kind kind = value.reading.kind;
    EXPECT_TRUE(kind != Kind::kNumber || *value.reading.unit != '\0');
    EXPECT_TRUE((kind != Kind::kNamed && kind != Kind::kFlag) || !value.reading.words.empty());
    // Where it can be known from: a record, a getter, an event.
    EXPECT_TRUE(!value.EventOnly() || *value.announced.signal != '\0');
    EXPECT_EQ(FindValue(value.FullName()), &value);
  }
  for (const Command& command : Commands()) {
    SCOPED_TRACE(command.name);
    EXPECT_TRUE(names.insert(std::string(NameOf(command.area)) + " " + command.name).second);
    EXPECT_TRUE(std::regex_match(command.name, std::regex("[a-z0-9]+(-[a-z0-9]+)*")));
    EXPECT_STRNE(command.help, "");
    EXPECT_EQ(FindCommand(command.area, command.name), &command);
  }
}

/// The real clients on fresh segments, whose bytes the test writes.
class CatalogClients : public testing::Test {
 protected:
  void SetUp() override {
    fake::Reset();
    fake::RemoveSegments();
    auto adapter = std::make_shared<ClientIpcAdapter>();
    power_ = std::make_unique<HLXPowerClient>(adapter);
    misc_ = std::make_unique<HLXMiscClient>(adapter);
    time_ = std::make_unique<HLXTimeClient>(adapter);
    info_ = std::make_unique<HLXInfoClient>();
    clients_ = {power_.get(), misc_.get(), time_.get(), info_.get(), nullptr};
    for (const RecordInfo& info : Records()) {
      bytes_[info.record] = static_cast<unsigned char*>(shmat(shmget(static_cast<key_t>(info.key), 0, 0), nullptr, 0));
    }
    records_ = {bytes_[Record::kPower], bytes_[Record::kMisc], bytes_[Record::kTime], bytes_[Record::kInfo]};
  }
  void TearDown() override { fake::RemoveSegments(); }

  void FillAll(int byte) {
    for (const RecordInfo& info : Records()) std::memset(bytes_[info.record], byte, info.size);
  }

  std::unique_ptr<HLXPowerClient> power_;
  std::unique_ptr<HLXMiscClient> misc_;
  std::unique_ptr<HLXTimeClient> time_;
  std::unique_ptr<HLXInfoClient> info_;
  Clients clients_;
  std::map<Record, unsigned char*> bytes_;
  RecordSet records_;
};

TEST_F(CatalogClients, GettersReadTheirFieldAndNoOther) {
  int getters = 0;
  for (const Value& value : Values()) {
    if (!value.InRecord() || value.getter.get == nullptr) continue;
    SCOPED_TRACE(value.FullName());
    ++getters;
    unsigned char* const field = bytes_[value.field.record] + value.field.offset;
    const unsigned char mask = static_cast<unsigned char>(value.IsBit() ? 1U << value.field.bit : 0xFFU);
    const auto ask = [&] {
      // A getter may give 1 for any number that says yes.
      const auto same = [&value](const Scalar& scalar) {
        return value.reading.kind == Reading::Kind::kFlag ? Scalar(InWords(value.reading, scalar)) : scalar;
      };
      Scalar got = same(value.getter.get(clients_));
      EXPECT_EQ(same(ReadField(value, bytes_[value.field.record])), got);
      return got;
    };
    FillAll(0);
    const Scalar nothing = ask();
    for (std::size_t i = 0; i < value.field.size; ++i)
      field[i] = static_cast<unsigned char>(value.IsBit() ? mask : 0x81 + i);
    const Scalar something = ask();
    EXPECT_NE(something, nothing);
    // All else is turned round; the field stays.
    for (const RecordInfo& info : Records()) {
      for (std::size_t i = 0; i < info.size; ++i) {
        unsigned char& byte = bytes_[info.record][i];
        const bool own = &byte >= field && &byte < field + value.field.size;
        byte = static_cast<unsigned char>(own ? byte ^ static_cast<unsigned char>(~mask) : byte ^ 0xFF);
      }
    }
    EXPECT_EQ(ask(), something);
  }
  EXPECT_GT(getters, 80);
}

TEST_F(CatalogClients, EveryLightTypeButDayMeansTheNightLevels) {
  for (const int type : {1, 2, 256, -1}) {
    const auto light = static_cast<HLXPower::LightType>(type);
    FillAll(0);
    StoreField(*FindValue("power.brightness_night"), records_.power, int64_t{40});
    StoreField(*FindValue("power.button_brightness_night"), records_.power, int64_t{50});
    EXPECT_EQ(clients_.power->GetScreenLightLevel(light), 40U);
    EXPECT_EQ(clients_.power->GetCurButtonLightLevel(light), 50U);
  }
  EXPECT_EQ(power_->IHLXSystemPower::GetMcuBootType(), HLXPower::BOOT_REASON_UNKNOWN) << "of an older implementation";
}

TEST_F(CatalogClients, StoredValuesAreReadAgain) {
  for (const Value& value : Values()) {
    if (!value.InRecord()) continue;
    SCOPED_TRACE(value.FullName());
    const Reading& reading = value.reading;
    const auto text = [&]() -> std::string {
      switch (reading.kind) {
        case Reading::Kind::kText:
          return "V1.2";
        case Reading::Kind::kDate:
          return "2024-02-29";
        case Reading::Kind::kClock:
          return "23:59:30";
        case Reading::Kind::kMoment:
          return "2024-02-29T23:59:30";
        default:
          return std::to_string(reading.most);
      }
    }();
    FillAll(0);
    void* const record = records_.At(value.field.record);
    StoreField(value, record, Parse(reading, text));
    EXPECT_EQ(ReadField(value, record), Parse(reading, text));
    for (const Word& word : reading.words) {
      if (word.value < reading.least || word.value > reading.most) continue;
      StoreField(value, record, Parse(reading, word.word));
      EXPECT_EQ(InWords(reading, ReadField(value, record)), word.word);
    }
    if (reading.IsNumeric()) {
      EXPECT_THROW(Parse(reading, std::to_string(reading.most) + "0"), BadValue);
      EXPECT_THROW(Parse(reading, "dusk"), BadValue);
    }
  }
}

TEST_F(CatalogClients, SignalsAreToldAndStoredTheSameWay) {
  // For each value that a signal's argument tells: what ArgumentsFor() gives, StoreArguments() stores again.
  int told = 0;
  for (const Value& value : Values()) {
    if (!value.InRecord() || value.announced.argument < 0) continue;
    SCOPED_TRACE(value.FullName());
    ++told;
    FillAll(0);
    void* const record = records_.At(value.field.record);
    StoreField(value, record, Parse(value.reading, std::to_string(value.reading.most)));
    const Scalar stored = ReadField(value, record);
    const std::vector<Scalar> arguments = ArgumentsFor(value, records_);
    FillAll(0);
    StoreArguments(*FindSignal(value.announced.signal), arguments, records_);
    EXPECT_EQ(ReadField(value, record), stored);
  }
  EXPECT_GT(told, 60);
  EXPECT_THROW(StoreArguments(*FindSignal("AccStateChangeSignal"), {}, records_), BadValue);
  EXPECT_THROW(StoreArguments(*FindSignal("AccStateChangeSignal"), {std::string("on")}, records_), BadValue);
}

TEST(Catalog, ReadsWhatPeopleType) {
  const Reading sw = Flag(words::kOnOff), light = Named(words::kLight), degrees = Decimal("°", 1).In(-50, 100);
  const Reading any = Count().In(-5, 300), text = Plain(Reading::Kind::kText), date = Plain(Reading::Kind::kDate);
  const Reading clock = Plain(Reading::Kind::kClock), moment = Plain(Reading::Kind::kMoment);
  struct {
    const Reading& reading;
    std::string text;
    std::string shown;  ///< empty: refused
  } const rows[] = {
      {sw, "ON", "on"},
      {sw, "True", "on"},
      {sw, "no", "off"},
      {sw, "1", "on"},
      {sw, "2", ""},
      {sw, "", ""},
      {light, "Night", "night"},
      {light, "0x7", "unnamed (7)"},
      {light, "256", ""},
      {light, "dusk", ""},
      {degrees, "21.5", "21.5 °"},
      {degrees, "-50", "-50.0 °"},
      {degrees, "100.1", ""},
      {degrees, "nan", ""},
      {degrees, "21,5", ""},
      {degrees, " 1", ""},
      {any, "-5", "-5"},
      {any, "-6", ""},
      {any, "0x12C", "300"},
      {any, "0x", ""},
      {any, "1e2", ""},
      {any, "+7", "7"},
      {any, " 7", ""},
      {any, "7 ", ""},
      {any, "99999999999999999999", ""},
      {any, std::string("7\0", 2), ""},
      {text, "Ä", "Ä"},
      {text, "\xff", ""},
      {date, "2024-02-29", "2024-02-29"},
      {date, "2023-02-29", ""},
      {date, "2024-2-9", "2024-02-09"},
      {date, "2024-02", ""},
      {clock, "23:59", "23:59:00"},
      {clock, "24:00", ""},
      {clock, "-1:00", ""},
      {moment, "2024-02-29 23:59:30", "2024-02-29T23:59:30"},
      {moment, "2024-02-29", ""},
  };
  for (const auto& row : rows) {
    std::string shown;
    try {
      shown = WithUnit(row.reading, Parse(row.reading, row.text));
    } catch (const BadValue& problem) {
      EXPECT_THAT(problem.what(), testing::HasSubstr("allowed: " + Allowed(row.reading)));
    }
    EXPECT_EQ(shown, row.shown) << row.text;
  }
}

TEST(Catalog, EventsCarryTheNamesOfValues) {
  std::vector<std::string> told;
  EveryEvent listener([&told](const Event& event) {
    std::string text = NameOf(event.area) + std::string(" ") + event.callback;
    for (const EventArgument& argument : event.arguments) {
      text += " " + argument.name + "=" + WithUnit(argument.reading, argument.scalar);
    }
    told.push_back(text);
  });
  listener.OnDetectValidUpdateFileNotify(HLXUpdate::UPDATE_NOTIFY_VALID);
  listener.OnScreenLightLevelChanged(static_cast<HLXPower::LightType>(7), 40);
  listener.OnGeneralLeftTempChange(SystemMisc::SEAT_TYPE_REAR, 21.5);
  listener.OnDoorStateChange({{SystemMisc::DOOR_TRUNK, 1}, {static_cast<SystemMisc::DoorState>(9), 1}});
  listener.OnRaiseGacAcStateChange({});
  SystemTime::DateTime now{{2024, 2, 29, 4}, {23, 59, 30}};
  listener.OnDateInfoChange(now);
  EXPECT_THAT(told,
              testing::ElementsAre("update OnDetectValidUpdateFileNotify search_result=valid",
                                   "power OnScreenLightLevelChanged light=unnamed (7) brightness_night=40",
                                   "misc OnGeneralLeftTempChange seats=rear rear_left_temperature=21.5 °",
                                   "misc OnDoorStateChange door_trunk=open switch_9=1", "misc OnRaiseGacAcStateChange",
                                   "time OnDateInfoChange date=2024-02-29 weekday=Thursday time=23:59:30"));
}

TEST(Catalog, KnowsTheNearestNames) {
  EXPECT_THAT(NearestValues("power.ac"), testing::Contains("power.acc"));
  EXPECT_THAT(NearestValues("misc.dor_trunk"), testing::Contains("misc.door_trunk"));
  EXPECT_THAT(NearestValues(std::string(100000, 'x')), IsEmpty());
  EXPECT_THAT(NearestCommands(Area::kPower, "brigthness"), testing::Contains("brightness"));
  EXPECT_THAT(NearestSignals("AccStateSignal"), testing::Contains("AccStateChangeSignal"));
  EXPECT_THAT(NearestValues("zzz"), IsEmpty());
  EXPECT_EQ(FindValue("power.power-off-delay"), FindValue("power.power_off_delay"));
  EXPECT_EQ(FindValue("acc"), nullptr);
  EXPECT_EQ(FindSignal(""), nullptr);
  EXPECT_STREQ(SignalOf("OnRaiseGacKnobKeyChange")->name, "KeyStateChangeSignal");
}

}  // namespace
