// Every signal of the simulated service: it writes the fields that it stands for, and no other, before it goes out, and
// arrives at a listener of the real library with its values unchanged. One walk over the catalogue, under each protocol
// of the CAN box.
#include <gmock/gmock.h>
#include <sys/shm.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "HLXSystemProxy.h"
#include "catalog/Catalog.h"
#include "catalog/EveryEvent.h"
#include "dbus/GLibPtr.h"
#include "dbus/VariantBuilder.h"
#include "tests/support/MainContext.h"
#include "tests/support/Process.h"

using namespace catalog;

namespace {

constexpr char kMark[] = "OnPowerPreRadioOffNotify";  ///< signal and callback that end each step
constexpr const char* kProtocols[] = {"",         "raise",        "raise_gac", "raise_renault",
                                      "raise_vw", "raise_toyota", "raise_ford"};

/// Events that also tell what another signal announces: a GAC box has switches and radars of the others.
const std::set<std::string> kTellOthersToo = {"OnRaiseGacAcStateChange", "OnRaiseGacRadarInfoChange"};

/// What events read in the records, and no signal carries.
const std::set<std::string> kInNoSignal = {"misc.raise_current_mile"};

/// What a signal is sent with: extremes, and no two alike.
GVariant* Extreme(char type, int index, bool high) {
  switch (type) {
    case 'y':
      return g_variant_new_byte(static_cast<guchar>(high ? 255 - index : index));
    case 'b':
      return g_variant_new_boolean(high == (index == 0));
    case 'i':
      return g_variant_new_int32(high ? G_MAXINT32 - index : G_MININT32 + index);
    case 'u':
      return g_variant_new_uint32(high ? G_MAXUINT32 - static_cast<guint>(index) : static_cast<guint>(index));
    default:
      return g_variant_new_double(high ? 123.25 : -40.5);
  }
}

Scalar ToScalar(GVariant* value) {
  switch (g_variant_classify(value)) {
    case G_VARIANT_CLASS_BYTE:
      return int64_t{g_variant_get_byte(value)};
    case G_VARIANT_CLASS_BOOLEAN:
      return int64_t{g_variant_get_boolean(value)};
    case G_VARIANT_CLASS_INT32:
      return int64_t{g_variant_get_int32(value)};
    case G_VARIANT_CLASS_UINT32:
      return int64_t{g_variant_get_uint32(value)};
    default:
      return g_variant_get_double(value);
  }
}

class Signals : public testing::Test {
 protected:
  Signals() {
    setenv("HLX_HOST_CONFIG", "/tmp/signals.conf", 1);
    UseProtocol("");
  }

  static void UseProtocol(const std::string& name) {
    std::ofstream("/tmp/signals.conf.new") << "[system]\nusing_can_protocol=" << name << "\n";
    std::rename("/tmp/signals.conf.new", "/tmp/signals.conf");
  }

  void Map() {
    for (const RecordInfo& info : Records()) {
      void* const bytes = shmat(shmget(static_cast<key_t>(info.key), 0, 0), nullptr, 0);
      (info.record == Record::kPower  ? records_.power
       : info.record == Record::kMisc ? records_.misc
       : info.record == Record::kTime ? records_.time
                                      : records_.info) = bytes;
    }
  }

  /// All bytes of the records, but for those that the simulated clock turns on its own.
  std::map<Record, std::string> Bytes() const {
    std::map<Record, std::string> bytes;
    for (const RecordInfo& info : Records()) {
      bytes[info.record].assign(static_cast<const char*>(records_.At(info.record)), info.size);
    }
    for (const char* const name : {"date", "time", "dst"}) {
      const Field& field = FindValue(Area::kTime, name)->field;
      bytes[Record::kTime].replace(field.offset, field.size, field.size, '\0');
    }
    return bytes;
  }

  /// Has the simulator send a signal.
  void Emit(const char* signal, const std::vector<GLibPtr<GVariant>>& arguments) {
    VariantBuilder values(G_VARIANT_TYPE("av"));
    for (const auto& argument : arguments) values.Add("v", argument.get());
    GError* failure = nullptr;
    GVariant* const answer = g_dbus_connection_call_sync(
        bus_.get(), "com.vorn.linux.simulator", "/com/vorn/linux/simulator", "com.vorn.linux.simulator", "Emit",
        g_variant_new("(s@av)", signal, values.End()), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &failure);
    if (answer != nullptr) g_variant_unref(answer);
    const GLibPtr<GError> error(failure);
    ASSERT_EQ(error, nullptr) << error->message;
  }

  /// Whether `value` is meant by these arguments: of the levels for day and night one, of the two pairs of seats one.
  static bool IsMeant(const Value& value, const std::vector<Scalar>& sent) {
    using When = Announcement::When;
    return value.announced.when == When::kAlways ||
           (std::get<int64_t>(sent[0]) == 0) == (value.announced.when == When::kFirstIsZero);
  }

  /// What stands in the record is what was sent, as the field can hold it: scaled, rounded, or its low bits.
  void ExpectStored(const Value& value, const Scalar& sent) const {
    const Scalar stored = ReadField(value, records_.At(value.field.record));
    if (const auto* const number = std::get_if<double>(&sent)) {
      const double room = value.field.type == FieldType::kF64 ? 0 : 0.5;
      const bool fits = value.field.type != FieldType::kU32 || *number >= 0;
      const double got = std::holds_alternative<double>(stored) ? std::get<double>(stored)
                                                                : static_cast<double>(std::get<int64_t>(stored));
      EXPECT_NEAR(got, fits ? *number : 0, room) << value.name;
      return;
    }
    const uint64_t mask = value.field.size == 1 ? 0xFF : 0xFFFFFFFF;
    EXPECT_EQ(static_cast<uint64_t>(std::get<int64_t>(stored)) & mask,
              static_cast<uint64_t>(std::get<int64_t>(sent)) & mask)
        << value.name;
  }

  /// Called for each event while the records stand as its signal found them.
  void OnEvent(const Event& event) {
    if (std::string(event.callback) == kMark) marked_ = true;
    const Signal* const signal = SignalOf(event.callback);
    ASSERT_NE(signal, nullptr);
    seen_.insert(event.callback);
    if (signal != signal_) return;  // the clock
    ++events_;
    for (const EventArgument& argument : event.arguments) {
      if (argument.value == nullptr) continue;
      told_.insert(argument.value);
      if (argument.value->announced.signal != std::string(signal->name)) {
        if (*argument.value->announced.signal == '\0' && kInNoSignal.count(argument.value->FullName()) == 1) continue;
        EXPECT_EQ(kTellOthersToo.count(event.callback), 1U) << event.callback << " tells " << argument.name;
        continue;
      }
      const int index = argument.value->announced.argument;
      if (index < 0 || argument.value->IsBit()) continue;
      // What the interface tells as unsigned is so: a remaining range of -1 is 4294967295.
      const Scalar& sent = sent_[static_cast<std::size_t>(index)];
      const bool same =
          argument.scalar == sent ||
          (std::holds_alternative<int64_t>(sent) &&
           std::get<int64_t>(argument.scalar) == static_cast<int64_t>(static_cast<uint32_t>(std::get<int64_t>(sent))));
      EXPECT_TRUE(same) << argument.name << ": " << InWords(argument.reading, argument.scalar);
    }
    for (const Telling& telling : AnnouncedBy(*signal)) {
      if (telling.argument < 0 || !telling.value->InRecord() || telling.value->IsBit()) continue;
      if (IsMeant(*telling.value, sent_))
        ExpectStored(*telling.value, sent_[static_cast<std::size_t>(telling.argument)]);
    }
  }

  void Step(const Signal& signal, bool high) {
    std::vector<GLibPtr<GVariant>> arguments;
    sent_.clear();
    for (int i = 0; signal.arguments[i] != '\0'; ++i) {
      arguments.emplace_back(g_variant_ref_sink(Extreme(signal.arguments[i], i, high)));
      sent_.push_back(ToScalar(arguments.back().get()));
    }
    if (std::string(signal.name) == "OnExternalMcuTimeChangeSignal") {  // what it tells is in the record alone
      StoreField(*FindValue("time.vehicle_24_hour"), records_.time, int64_t{high});
      StoreField(*FindValue("time.vehicle_zone"), records_.time, int64_t{high ? 7 : 8});
    }
    std::map<Record, std::string> before = Bytes();
    signal_ = &signal;
    events_ = 0;
    told_.clear();
    marked_ = false;
    Emit(signal.name, arguments);
    Emit(kMark, {});
    ASSERT_TRUE(RunUntil([this] { return marked_; }));
    signal_ = nullptr;
    for (const Telling& telling : AnnouncedBy(signal)) {
      const bool told =
          told_.count(telling.value) == 1 || telling.argument < 0 || !IsMeant(*telling.value, sent_) ||
          telling.value->reading.kind == Reading::Kind::kBits || telling.value->IsBit() ||
          telling.value->FullName() == "misc.outside_degrees";  // the getter's; the event has the decimals
      EXPECT_TRUE(told || events_ == 0) << "not told: " << telling.value->name;
    }
    // Everything but the signal's own fields is as it was.
    std::map<Record, std::string> after = Bytes();
    for (const Telling& telling : AnnouncedBy(signal)) {
      const Field& field = telling.value->field;
      if (!telling.value->InRecord() || telling.argument < 0 || !IsMeant(*telling.value, sent_)) continue;
      for (auto* const bytes : {&before, &after})
        (*bytes)[field.record].replace(field.offset, field.size, field.size, '\0');
    }
    EXPECT_EQ(before, after);
  }

  GLibPtr<GDBusConnection> bus_{g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr)};
  RecordSet records_;
  std::vector<Scalar> sent_;
  const Signal* signal_ = nullptr;  ///< under test
  int events_ = 0;
  std::set<const Value*> told_;  ///< by these events
  bool marked_ = false;
  std::set<std::string> seen_;
};

TEST_F(Signals, WriteTheirFieldsAndArriveUnchanged) {
  Process simulator({HLX_BINARY_DIR "/simulator/hlx-simulator"});
  ASSERT_TRUE(simulator.WaitForLine("ready"));
  ASSERT_TRUE(HLX_StartSystemProxy());
  EveryEvent listener([this](const Event& event) { OnEvent(event); });
  HLX_GetSystemPowerProxy()->AddListener(&listener);
  HLX_GetSystemMiscProxy()->AddListener(&listener);
  HLX_GetSystemTimeProxy()->AddListener(&listener);
  HLX_GetSystemUpdateProxy()->AddListener(&listener);
  Map();

  for (const char* const protocol : kProtocols) {
    UseProtocol(protocol);
    for (const Signal& signal : catalog::Signals()) {
      for (const bool high : {false, true}) {
        if (*protocol != '\0' && (signal.area != Area::kMisc || !high)) continue;  // the box matters to misc alone
        SCOPED_TRACE(std::string(protocol) + " " + signal.name + (high ? " high" : " low"));
        ASSERT_NO_FATAL_FAILURE(Step(signal, high));
        // Some are for the process named hmi, or for one kind of box, alone.
        const std::string name = signal.name;
        const bool silent = name == "DetectValidUpdateFileNotifySignal" || name == "OnGeneralAcStateChangeSignal";
        EXPECT_GE(events_, silent ? 0 : 1);
      }
    }
    // A GAC box has four keys with callbacks of their own.
    const Signal& key = *FindSignal("KeyStateChangeSignal");
    for (const guchar code : {0xA2, 0xAE}) {
      sent_ = {int64_t{code}, int64_t{1}};
      signal_ = &key;
      marked_ = false;
      std::vector<GLibPtr<GVariant>> arguments;
      arguments.emplace_back(g_variant_ref_sink(g_variant_new_byte(code)));
      arguments.emplace_back(g_variant_ref_sink(g_variant_new_byte(1)));
      Emit(key.name, arguments);
      Emit(kMark, {});
      ASSERT_TRUE(RunUntil([this] { return marked_; }));
    }
  }
  seen_.insert("OnDetectValidUpdateFileNotify");  // told to the process named hmi alone
  for (const Signal& signal : catalog::Signals()) {
    for (const char* const callback : signal.callbacks) {
      EXPECT_TRUE(callback == nullptr || seen_.count(callback) == 1) << callback;
    }
  }
  HLX_ReleaseSystemProxy();
}

}  // namespace
