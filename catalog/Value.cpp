#include "catalog/Value.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "catalog/Rows.h"
#include "data/SharedField.h"

namespace catalog {

namespace {

using HLXSystemData::Load;
using HLXSystemData::Store;
using namespace SystemTime;

constexpr RecordInfo kRecords[] = {
#define RECORD(kind, type, name, key) \
  { Record::kind, name, HLXSystemData::key, sizeof(HLXSystemData::type), offsetof(HLXSystemData::type, initialised) }
    RECORD(kPower, PowerShmData, "power", SHM_POWER_DATA_KEY_ID),
    RECORD(kMisc, MiscShmData, "misc", SHM_MISC_DATA_KEY_ID),
    RECORD(kTime, TimeShmData, "time", SHM_TIME_DATA_KEY_ID),
    RECORD(kInfo, InfoShmData, "info", SHM_INFO_DATA_KEY_ID),
#undef RECORD
};

constexpr ReservedField kReserved[] = {
#define RESERVED(kind, type, member, why) \
  { Record::kind, (static_cast<void>(sizeof(HLXSystemData::type::member)), #member), why }
    RESERVED(kPower, PowerShmData, reserved_12, "not used"),
    RESERVED(kPower, PowerShmData, initialised, "who fills the record"),
    RESERVED(kPower, PowerShmData, reserved_80, "not used"),
    RESERVED(kMisc, MiscShmData, reserved_32, "not used"),
    RESERVED(kMisc, MiscShmData, initialised, "who fills the record"),
    RESERVED(kMisc, MiscShmData, reserved_107, "not used"),
    RESERVED(kMisc, MiscShmData, reserved_188, "not used"),
    RESERVED(kTime, TimeShmData, initialised, "who fills the record"),
    RESERVED(kInfo, InfoShmData, initialised, "who fills the record"),
#undef RESERVED
};

/// A field of a record that another process may be writing. The pointer is to what the row's type says.
template <class T>
const T& At(const Field& field, const void* record) {
  return *reinterpret_cast<const T*>(static_cast<const char*>(record) + field.offset);
}
template <class T>
T& At(const Field& field, void* record) {
  return *reinterpret_cast<T*>(static_cast<char*>(record) + field.offset);
}

std::string LoadText(const Field& field, const void* record) {
  const char* const bytes = &At<char>(field, record);
  std::string text;
  for (std::size_t i = 0; i < field.size; ++i) {
    const char byte = Load(bytes[i]);
    if (byte == '\0') break;
    text.push_back(byte);
  }
  return text;
}

/// From the end, so that a reader meets a terminator at any moment.
void StoreText(const Field& field, void* record, const std::string& text) {
  if (text.size() >= field.size) {
    throw BadValue("a text of " + std::to_string(text.size()) + " bytes does not fit, at most " +
                   std::to_string(field.size - 1));
  }
  char* const bytes = &At<char>(field, record);
  for (std::size_t i = field.size; i-- > 0;) Store(bytes[i], i < text.size() ? text[i] : '\0');
}

DateInfo LoadDate(const DateInfo& date) { return {Load(date.year), Load(date.month), Load(date.day), Load(date.week)}; }
TimeInfo LoadTime(const TimeInfo& time) { return {Load(time.hour), Load(time.minute), Load(time.second)}; }

void StoreDate(DateInfo& field, const std::string& text) {
  DateInfo date{};
  if (!ReadDate(text, &date)) throw BadValue("'" + text + "' is no date");
  Store(field.year, date.year);
  Store(field.month, date.month);
  Store(field.day, date.day);
  Store(field.week, date.week);
}

void StoreTime(TimeInfo& field, const std::string& text) {
  TimeInfo time{};
  if (!ReadTime(text, &time)) throw BadValue("'" + text + "' is no time of day");
  Store(field.hour, time.hour);
  Store(field.minute, time.minute);
  Store(field.second, time.second);
}

int64_t LoadWhole(const Field& field, const void* record) {
  switch (field.type) {
    case FieldType::kU8:
      return Load(At<uint8_t>(field, record));
    case FieldType::kS8:
      return Load(At<int8_t>(field, record));
    case FieldType::kU32:
      return Load(At<uint32_t>(field, record));
    default:
      return Load(At<int32_t>(field, record));
  }
}

template <class T>
void StoreAs(const Field& field, void* record, int64_t number) {
  Store(At<T>(field, record), static_cast<T>(number));
}

void StoreWhole(const Field& field, void* record, int64_t number) {
  if (field.size == 1) return StoreAs<uint8_t>(field, record, number);
  StoreAs<uint32_t>(field, record, number);
}

/// The nearest number that the field can hold.
int64_t Nearest(const Field& field, double number) {
  if (std::isnan(number)) return 0;
  double lowest = 0;
  double highest = field.size == 1 ? 255 : std::numeric_limits<uint32_t>::max();
  if (field.type == FieldType::kS8 || field.type == FieldType::kS32) {
    highest = std::floor(highest / 2);
    lowest = -highest - 1;
  }
  return static_cast<int64_t>(std::clamp(std::round(number), lowest, highest));
}

const std::string& TextIn(const Scalar& scalar) {
  const auto* const text = std::get_if<std::string>(&scalar);
  if (text == nullptr) throw BadValue("a text is needed");
  return *text;
}

void StoreNumber(const Value& value, void* record, const Scalar& scalar) {
  const Field& field = value.field;
  const double number = NumberIn(scalar);
  const auto* const whole = std::get_if<int64_t>(&scalar);
  if (value.IsBit()) {
    const unsigned mask = 1U << static_cast<unsigned>(field.bit);
    const unsigned byte = Load(At<uint8_t>(field, record));
    return StoreAs<uint8_t>(field, record, number != 0 ? byte | mask : byte & ~mask);
  }
  if (field.type == FieldType::kF64) return Store(At<double>(field, record), number);
  if (whole != nullptr && value.reading.scale == 1) return StoreWhole(field, record, *whole);
  StoreWhole(field, record, Nearest(field, number * value.reading.scale));
}

}  // namespace

const char* NameOf(Area area) {
  constexpr const char* kNames[] = {"power", "misc", "time", "info", "update"};
  return kNames[static_cast<std::size_t>(area)];
}

View<RecordInfo> Records() { return kRecords; }

const RecordInfo& InfoOf(Record record) {
  return *std::find_if(std::begin(kRecords), std::end(kRecords),
                       [record](const RecordInfo& info) { return info.record == record; });
}

View<ReservedField> ReservedFields() { return kReserved; }

void* RecordSet::At(Record record) const {
  switch (record) {
    case Record::kPower:
      return power;
    case Record::kMisc:
      return misc;
    case Record::kTime:
      return time;
    case Record::kInfo:
      return info;
    default:
      return nullptr;
  }
}

Scalar ReadField(const Field& field, const Reading& reading, const void* record) {
  switch (field.type) {
    case FieldType::kNone:
      return {};
    case FieldType::kText:
      return rows::ToScalar(LoadText(field, record));
    case FieldType::kDate:
      return rows::ToScalar(LoadDate(At<DateInfo>(field, record)));
    case FieldType::kClock:
      return rows::ToScalar(LoadTime(At<TimeInfo>(field, record)));
    case FieldType::kMoment: {
      const auto& moment = At<DateTime>(field, record);
      return rows::ToScalar(DateTime{LoadDate(moment.date), LoadTime(moment.time)});
    }
    case FieldType::kF64:
      return Load(At<double>(field, record));
    default:
      break;
  }
  const int64_t number = LoadWhole(field, record);
  if (field.bit >= 0) return (number >> field.bit) & 1;
  if (reading.scale != 1) return static_cast<double>(number) / reading.scale;
  return number;
}

void StoreField(const Value& value, void* record, const Scalar& scalar) {
  const Field& field = value.field;
  switch (field.type) {
    case FieldType::kNone:
      throw BadValue(value.FullName() + " stands in no record");
    case FieldType::kText:
      return StoreText(field, record, TextIn(scalar));
    case FieldType::kDate:
      return StoreDate(At<DateInfo>(field, record), TextIn(scalar));
    case FieldType::kClock:
      return StoreTime(At<TimeInfo>(field, record), TextIn(scalar));
    case FieldType::kMoment: {
      auto& moment = At<DateTime>(field, record);
      DateTime read{};
      if (!ReadMoment(TextIn(scalar), &read)) throw BadValue("'" + TextIn(scalar) + "' is no day and time");
      StoreDate(moment.date, TextOf(read.date));
      return StoreTime(moment.time, TextOf(read.time));
    }
    default:
      return StoreNumber(value, record, scalar);
  }
}

}  // namespace catalog
