/// Dates and times in the shared record, field by field.
#pragma once

#include "HLXTimeTypes.h"
#include "data/SharedField.h"

inline SystemTime::DateInfo LoadDate(const SystemTime::DateInfo& field) {
  using HLXSystemData::Load;
  return {Load(field.year), Load(field.month), Load(field.day), Load(field.week)};
}

inline SystemTime::TimeInfo LoadTime(const SystemTime::TimeInfo& field) {
  using HLXSystemData::Load;
  return {Load(field.hour), Load(field.minute), Load(field.second)};
}

inline SystemTime::DateTime LoadDateTime(const SystemTime::DateTime& field) {
  return {LoadDate(field.date), LoadTime(field.time)};
}

inline void StoreDate(SystemTime::DateInfo& field, const SystemTime::DateInfo& date) {
  using HLXSystemData::Store;
  Store(field.year, date.year);
  Store(field.month, date.month);
  Store(field.day, date.day);
  Store(field.week, date.week);
}

inline void StoreTime(SystemTime::TimeInfo& field, const SystemTime::TimeInfo& time) {
  using HLXSystemData::Store;
  Store(field.hour, time.hour);
  Store(field.minute, time.minute);
  Store(field.second, time.second);
}
