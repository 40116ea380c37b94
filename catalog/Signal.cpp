#include "catalog/Signal.h"

#include <cstring>
#include <string_view>

#include "catalog/SignalRows.h"

namespace catalog {

namespace {

using When = Announcement::When;

bool IsTold(const Value& value, const Signal& signal) { return std::strcmp(value.announced.signal, signal.name) == 0; }

/// Whether `arguments` are about this value, and not about its counterpart for the other light or the other seats.
bool IsMeant(const Value& value, const std::vector<Scalar>& arguments) {
  if (value.announced.when == When::kAlways) return true;
  const auto* const first = std::get_if<int64_t>(&arguments.at(0));
  return first != nullptr && (*first == 0) == (value.announced.when == When::kFirstIsZero);
}

/// Arguments that are no value of their own: what they choose, or the box's own bytes.
struct SpecialArgument {
  const char* signal = "";
  int index = 0;
  Reading reading = {};
};
constexpr Reading kLight = Named(words::kLight);
constexpr Reading kSeats = Named(words::kSeat);
constexpr Reading kByte = Plain(Reading::Kind::kBits).In(0, 255);
constexpr Reading kRadar = Count(words::kDistance).In(0, 255);
constexpr SpecialArgument kSpecial[] = {
    {"ScreenLightLevelChangedSignal", 0, kLight},    {"ButtonLightLevelChangedSignal", 0, kLight},
    {"OnGeneralAirLevelChangeSignal", 0, kSeats},    {"OnGeneralLeftTempChangeSignal", 0, kSeats},
    {"OnGeneralRightTempChangeSignal", 0, kSeats},   {"OnGeneralAcStateChangeSignal", 0, Named(words::kAcGroup)},
    {"OnGeneralAcStateChangeSignal", 1, kByte},      {"RaiseGacAcStateChangeSignal", 0, kByte},
    {"RaiseGacAcStateChangeSignal", 1, kByte},       {"OnRaiseGacRadarInfoChangedSignal", 1, kRadar},
    {"OnRaiseGacRadarInfoChangedSignal", 2, kRadar}, {"OnRaiseGacRadarInfoChangedSignal", 3, kRadar},
    {"OnRaiseGacRadarInfoChangedSignal", 4, kRadar},
};

constexpr bool AreSpecialArgumentsThere() {
  for (const SpecialArgument& special : kSpecial) {
    if (special.index >= rows::ArgumentsOf(special.signal)) return false;
  }
  return true;
}
static_assert(AreSpecialArgumentsThere());

}  // namespace

View<Signal> Signals() { return rows::kSignals; }

std::vector<Telling> AnnouncedBy(const Signal& signal) {
  std::vector<Telling> tellings;
  for (const Value& value : rows::kAllValues) {
    if (IsTold(value, signal)) tellings.push_back({&value, value.announced.argument});
  }
  return tellings;
}

void StoreArguments(const Signal& signal, const std::vector<Scalar>& arguments, const RecordSet& records) {
  const std::size_t count = std::strlen(signal.arguments);
  RequireArity(signal.name, {count, count}, arguments.size());
  for (const Telling& telling : AnnouncedBy(signal)) {
    const Value& value = *telling.value;
    if (telling.argument < 0 || !value.InRecord() || value.IsBit() || !IsMeant(value, arguments)) continue;
    StoreField(value, records.At(value.field.record), arguments[static_cast<std::size_t>(telling.argument)]);
  }
}

std::vector<Scalar> ArgumentsFor(const Value& value, const RecordSet& records) {
  const Signal* const signal = rows::SignalNamed(value.announced.signal);
  if (signal == nullptr) return {};
  std::vector<Scalar> arguments(std::strlen(signal->arguments), int64_t{0});
  const When when = value.announced.when;
  if (when != When::kAlways) arguments[0] = int64_t{when == When::kFirstIsZero ? 0 : 1};
  for (const Telling& telling : AnnouncedBy(*signal)) {
    const Value& told = *telling.value;
    if (telling.argument < 0 || !told.InRecord() || told.IsBit() || told.announced.when != when) continue;
    // Two values may share an argument, the outside temperature does: the one that is asked for counts.
    Scalar& argument = arguments[static_cast<std::size_t>(telling.argument)];
    if (value.IsBit() || &told == &value || told.announced.argument != value.announced.argument) {
      argument = ReadField(told, records.At(told.field.record));
    }
  }
  return arguments;
}

Reading ReadingOf(const Signal& signal, int index) {
  for (const SpecialArgument& special : kSpecial) {
    if (special.index == index && std::strcmp(special.signal, signal.name) == 0) return special.reading;
  }
  for (const Telling& telling : AnnouncedBy(signal)) {
    if (telling.argument == index && !telling.value->IsBit()) return telling.value->reading;
  }
  const char type = signal.arguments[index];
  if (type == 'd') return Decimal("", 2);
  return type == 'b' ? Flag(words::kOnOff) : Count();
}

}  // namespace catalog
