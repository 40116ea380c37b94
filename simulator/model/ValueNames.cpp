#include "simulator/model/ValueNames.h"

#include "catalog/Catalog.h"
#include "data/ZoneTable.h"
#include "simulator/model/Names.h"

using namespace catalog;

namespace {

constexpr char kZonePath[] = "/usr/share/zoneinfo/";

std::vector<NamedValue> Collect() {
  std::vector<NamedValue> all;
  for (const Value& value : Values()) {
    if (NamedValue{&value, nullptr}.IsHeld()) all.push_back({&value, nullptr});
  }
  for (const OwnValue& own : OwnValues()) all.push_back({nullptr, &own});
  return all;
}

}  // namespace

bool NamedValue::IsHeld() const { return own != nullptr || value->InRecord() || value->EventOnly(); }

bool NamedValue::IsSettable() const {
  if (own != nullptr) return own->settable;
  const bool told_by_argument = value->EventOnly() && value->announced.argument >= 0;
  return value->settable || told_by_argument || value->reading.kind == Reading::Kind::kZone;
}

std::vector<NamedValue> HeldValues() { return Collect(); }

NamedValue ValueNamed(const std::string& name) {
  if (const OwnValue* const own = FindOwnValue(name)) return {nullptr, own};
  const Value* const value = FindValue(name);
  if (value != nullptr && NamedValue{value, nullptr}.IsHeld()) return {value, nullptr};
  if (value != nullptr) throw BadValue(name + " comes from the unit's configuration and files, not from its service");
  std::vector<std::string> names;
  for (const NamedValue& held : HeldValues()) names.push_back(held.name());
  throw Unknown("value", name, Nearest(name, names));
}

std::vector<NamedValue> ValuesNamed(const std::string& name) {
  if (name.find('.') != std::string::npos) return {ValueNamed(name)};
  std::vector<NamedValue> values;
  for (const NamedValue& held : HeldValues()) {
    if (name.empty() || held.name().compare(0, name.size() + 1, name + ".") == 0) values.push_back(held);
  }
  if (values.empty())
    throw Unknown("area", name, Nearest(name, {"power", "misc", "time", "info", "update", "inbox", "unit"}));
  return values;
}

Scalar Get(const Unit& unit, const NamedValue& value) {
  return value.own != nullptr ? unit.Kept(value.own->id) : unit.Get(*value.value);
}

std::string InWords(const NamedValue& value, const Scalar& scalar) {
  const auto* const zone = std::get_if<int64_t>(&scalar);
  const bool known = value.reading().kind == Reading::Kind::kZone && zone != nullptr && *zone >= 0 &&
                     *zone < SystemTime::kTimeZoneCount;
  if (!known) return catalog::InWords(value.reading(), scalar);
  return HLXSystemData::kZones[*zone].path + sizeof kZonePath - 1;
}

Scalar ParseFor(const NamedValue& value, const std::string& text) {
  if (value.reading().kind == Reading::Kind::kZone) {
    for (int zone = 0; zone < SystemTime::kTimeZoneCount; ++zone) {
      if (kZonePath + text == HLXSystemData::kZones[zone].path) return int64_t{zone};
    }
  }
  try {
    return Parse(value.reading(), text);
  } catch (const BadValue& problem) {
    throw BadValue(value.name() + ": " + problem.what());
  }
}

void Set(Unit& unit, const NamedValue& value, const Scalar& scalar, bool silent) {
  if (!value.IsSettable()) throw BadValue(value.name() + " cannot be set: the unit decides it");
  try {
    if (value.own != nullptr) return unit.Keep(value.own->id, scalar);
    return silent ? unit.Write(*value.value, scalar) : unit.Change(*value.value, scalar);
  } catch (const BadValue& problem) {
    throw BadValue(value.name() + ": " + problem.what());
  }
}
