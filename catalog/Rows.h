/// What the rows are written with. Included by the tables of values only.
#pragma once

#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>

#include "HLXSystemProxy.h"
#include "catalog/Moment.h"
#include "catalog/Value.h"
#include "catalog/Words.h"
#include "data/HLXSystemRecords.h"

namespace catalog::rows {

inline IHLXSystemPower& ClientOf(const Clients& clients, const IHLXSystemPower*) { return *clients.power; }
inline IHLXSystemMisc& ClientOf(const Clients& clients, const IHLXSystemMisc*) { return *clients.misc; }
inline IHLXSystemTime& ClientOf(const Clients& clients, const IHLXSystemTime*) { return *clients.time; }
inline IHLXSystemInfo& ClientOf(const Clients& clients, const IHLXSystemInfo*) { return *clients.info; }
inline IHLXSystemUpdate& ClientOf(const Clients& clients, const IHLXSystemUpdate*) { return *clients.update; }

template <class Client>
Client& In(const Clients& clients) {
  return ClientOf(clients, static_cast<const Client*>(nullptr));
}

inline Scalar ToScalar(double number) { return number; }
inline Scalar ToScalar(const std::string& text) { return text.empty() ? Scalar() : Scalar(text); }
inline Scalar ToScalar(const SystemTime::DateInfo& date) { return date.month == 0 ? Scalar() : TextOf(date); }
inline Scalar ToScalar(const SystemTime::TimeInfo& time) { return TextOf(time); }
inline Scalar ToScalar(const SystemTime::DateTime& moment) {
  return moment.date.month == 0 ? Scalar() : TextOf(moment);
}
template <class T, class = std::enable_if_t<std::is_integral_v<T> || std::is_enum_v<T>>>
Scalar ToScalar(T number) {
  return static_cast<int64_t>(number);
}

/// Asks a getter: with `Fixed` arguments, or for what it writes behind its one reference.
template <auto Function, auto... Fixed>
struct Ask;
template <class Client, class Result, class... Params, Result (Client::*Function)(Params...), auto... Fixed>
struct Ask<Function, Fixed...> {
  static constexpr bool kSigned = std::is_enum_v<Result> || std::is_same_v<Result, int>;
  static Scalar Run(const Clients& clients) {
    if constexpr (std::is_void_v<Result>) {
      std::tuple<std::decay_t<Params>...> out{};
      (In<Client>(clients).*Function)(std::get<0>(out));
      return ToScalar(std::get<0>(out));
    } else {
      return ToScalar((In<Client>(clients).*Function)(Fixed...));
    }
  }
};

/// One member of the structure that a getter fills. A screen has no size of 0: the unit does not provide it.
template <auto Function, auto Member>
struct AskMember;
template <class Client, class Result, class Struct, Result (Client::*Function)(Struct&), class T, T Struct::*Member>
struct AskMember<Function, Member> {
  static Scalar Run(const Clients& clients) {
    Struct out{};
    (In<Client>(clients).*Function)(out);
    if constexpr (std::is_same_v<Struct, SystemInfo::ScreenInfo>) {
      if (out.*Member == 0) return {};
    }
    return ToScalar(out.*Member);
  }
};

template <class T>
constexpr FieldType TypeOf() {
  using Plain = std::remove_reference_t<T>;
  if (std::is_array_v<Plain>) return FieldType::kText;
  if (std::is_same_v<Plain, double>) return FieldType::kF64;
  if (std::is_same_v<Plain, SystemTime::DateInfo>) return FieldType::kDate;
  if (std::is_same_v<Plain, SystemTime::TimeInfo>) return FieldType::kClock;
  if (std::is_same_v<Plain, SystemTime::DateTime>) return FieldType::kMoment;
  if (sizeof(Plain) == 1) return std::is_signed_v<Plain> ? FieldType::kS8 : FieldType::kU8;
  return std::is_signed_v<Plain> ? FieldType::kS32 : FieldType::kU32;
}

/// What the field can hold, where the row does not say what is sensible.
constexpr Reading Limited(Reading reading, FieldType type) {
  if (reading.HasRange() || !reading.IsNumeric()) return reading;
  switch (type) {
    case FieldType::kU8:
      return reading.In(0, 0xFF);
    case FieldType::kS8:
      return reading.In(-128, 127);
    case FieldType::kU32:
      return reading.In(0, 0xFFFFFFFF);
    case FieldType::kS32:
      return reading.In(std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max());
    default:
      return reading;
  }
}

constexpr Announcement By(const char* signal, int argument = 0, Announcement::When when = Announcement::When::kAlways) {
  return {signal, argument, when};
}
/// `signal` says that the value has changed; it stands in the record.
constexpr Announcement Told(const char* signal) { return {signal, -1}; }

constexpr Value Make(Area area, const char* group, Field field, Getter getter, const char* name, const char* label,
                     Reading reading, Announcement announced = {}) {
  // Several unsigned fields hold what the interface tells as a signed number, enumerations among them.
  const bool is_signed = getter.is_signed || reading.kind == Reading::Kind::kNamed;
  if (field.type == FieldType::kU32 && is_signed) field.type = FieldType::kS32;
  const bool settable = field.record != Record::kNone;
  return {area, settable, name, label, group, Limited(reading, field.type), field, getter, announced};
}

/// A value that the simulated unit's own clock or another field decides.
constexpr Value Derived(Value value) {
  value.settable = false;
  return value;
}

// A misspelt member or function does not compile.
#define HLX_FIELD_OF(record, type, member)                                \
  Field {                                                                 \
    Record::record, #member, offsetof(HLXSystemData::type, member),       \
        sizeof(std::declval<HLXSystemData::type&>().member),              \
        TypeOf<decltype((std::declval<HLXSystemData::type&>().member))>() \
  }
#define HLX_BIT_OF(record, type, member, bit) \
  Field { Record::record, #member, offsetof(HLXSystemData::type, member), 1, FieldType::kU8, bit }
#define HLX_ASK(client, function) \
  Getter { #function, "", &Ask < &client::function> ::Run, Ask < &client::function> ::kSigned }
#define HLX_ASK_WITH(client, function, fixed) \
  Getter { #function, #fixed, &Ask < &client::function, fixed> ::Run, Ask < &client::function, fixed> ::kSigned }
#define HLX_ASK_MEMBER(client, function, type, member) \
  Getter { #function, #member, &AskMember < &client::function, &type::member> ::Run }
/// For a getter whose result `special` makes a value of.
#define HLX_ASK_SPECIAL(client, function, argument, special) \
  Getter { (static_cast<void>(&client::function), #function), argument, special }

}  // namespace catalog::rows
