/// Values by the names that people use: the catalogue's, and the unit's own.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "simulator/model/Unit.h"

/// A value of the catalogue or one of the unit's own; exactly one of the two is set.
struct NamedValue {
  const catalog::Value* value = nullptr;
  const OwnValue* own = nullptr;

  std::string name() const { return value != nullptr ? value->FullName() : own->name; }
  const catalog::Reading& reading() const { return value != nullptr ? value->reading : own->reading; }
  /// Whether `set` may change it.
  bool IsSettable() const;
  /// Whether the unit can hold it: the versions of a unit, say, it cannot.
  bool IsHeld() const;
};

/// All that the unit can hold, in the catalogue's order, its own at the end.
std::vector<NamedValue> HeldValues();

/// @throws catalog::BadValue that names the nearest ones
NamedValue ValueNamed(const std::string& name);

/// The values of "power", all of them for an empty name, or one. @throws catalog::BadValue
std::vector<NamedValue> ValuesNamed(const std::string& name);

catalog::Scalar Get(const Unit& unit, const NamedValue& value);

/// In words, without unit; a time zone as "Europe/Berlin".
std::string InWords(const NamedValue& value, const catalog::Scalar& scalar);

/// What `text` says, in words or numbers; a time zone also as "Europe/Berlin". @throws catalog::BadValue that names it
catalog::Scalar ParseFor(const NamedValue& value, const std::string& text);

/// @throws catalog::BadValue when it cannot be set
void Set(Unit& unit, const NamedValue& value, const catalog::Scalar& scalar, bool silent);
