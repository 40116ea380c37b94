/// One row for each value of a unit: where it stands, how it is got, what it is called, how it reads, what announces
/// it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "catalog/Reading.h"

class IHLXSystemInfo;
class IHLXSystemMisc;
class IHLXSystemPower;
class IHLXSystemTime;
class IHLXSystemUpdate;

namespace catalog {

/// One for each client of the library.
enum class Area { kPower, kMisc, kTime, kInfo, kUpdate };
inline constexpr Area kAreas[] = {Area::kPower, Area::kMisc, Area::kTime, Area::kInfo, Area::kUpdate};

/// "power" and so on.
const char* NameOf(Area area);

/// The clients that getters and commands may ask. Only the row's own area need be set (for `info` and `update` their
/// own): the time client is never made because somebody looks at another area.
struct Clients {
  IHLXSystemPower* power = nullptr;
  IHLXSystemMisc* misc = nullptr;
  IHLXSystemTime* time = nullptr;
  IHLXSystemInfo* info = nullptr;
  IHLXSystemUpdate* update = nullptr;
};

/// The records of data/HLXSystemRecords.h.
enum class Record { kNone, kPower, kMisc, kTime, kInfo };

/// What Linux and the readers need of a record.
struct RecordInfo {
  Record record;
  const char* name;  ///< "power"
  unsigned long long key;
  std::size_t size;
  std::size_t initialised;  ///< offset of the word of that name
};
View<RecordInfo> Records();
const RecordInfo& InfoOf(Record record);

/// The four records, mapped; null where a caller has none.
struct RecordSet {
  void* power = nullptr;
  void* misc = nullptr;
  void* time = nullptr;
  void* info = nullptr;

  void* At(Record record) const;
};

enum class FieldType { kNone, kU8, kS8, kU32, kS32, kF64, kText, kDate, kClock, kMoment };

/// Where a value stands in a record. A byte of flags is one value as a whole, and one more for each bit.
struct Field {
  Record record = Record::kNone;  ///< kNone: the value stands in no record
  const char* name = "";          ///< of the member, "speaker_states[0]"
  std::size_t offset = 0;
  std::size_t size = 0;
  /// As the getter gives it: some unsigned fields hold signed numbers.
  FieldType type = FieldType::kNone;
  int bit = -1;  ///< -1: the whole field
};

/// The function of the public interface that tells the value.
struct Getter {
  const char* name = "";  ///< "GetScreenLightLevel"; empty: there is none
  const char* argument =
      "";  ///< what it is called with, or the member or out-parameter that is taken: "LIGHT_TYPE_DAY"
  Scalar (*get)(const Clients& clients) = nullptr;
  bool is_signed = false;
};

/// The signal that tells a change of the value.
struct Announcement {
  /// Under which first argument of the signal the value is meant.
  enum class When { kAlways, kFirstIsZero, kFirstIsNot };

  const char* signal = "";  ///< D-Bus name; empty: none, a change is to be looked for
  int argument = -1;        ///< that carries the value; -1: the signal says only that it stands in the record
  When when = When::kAlways;
};

struct Value {
  Area area = Area::kPower;
  bool settable = false;   ///< whether the simulated unit lets it be set
  const char* name = "";   ///< snake_case, unique in the area; with it "power.acc"
  const char* label = "";  ///< for people: "ACC"
  const char* group = "";  ///< heading under which it is shown
  Reading reading = {};
  Field field = {};
  Getter getter = {};
  Announcement announced = {};

  /// "power.acc"
  std::string FullName() const { return std::string(NameOf(area)) + "." + name; }
  bool InRecord() const { return field.record != Record::kNone; }
  bool IsBit() const { return field.bit >= 0; }
  /// Known from events alone: neither a record nor a getter tells it.
  bool EventOnly() const { return !InRecord() && getter.get == nullptr; }
};

/// The value as `record`, the mapped record of its field, holds it now: what the getter would say, without a client.
/// Each number is read in one access; a record that is mapped read-only will do.
Scalar ReadField(const Field& field, const Reading& reading, const void* record);
inline Scalar ReadField(const Value& value, const void* record) {
  return ReadField(value.field, value.reading, record);
}

/// Stores `scalar` in the field, scaled and rounded as the field needs it; whole numbers keep their low bits. Other
/// bits of a byte of flags stay. The reading's range is not looked at: Parse() does that.
/// @throws BadValue for text that does not fit, or a scalar of another kind
void StoreField(const Value& value, void* record, const Scalar& scalar);

/// Fields that no value stands for, and why.
struct ReservedField {
  Record record;
  const char* name;
  const char* why;
};
View<ReservedField> ReservedFields();

}  // namespace catalog
