/// What every value, signal, event and command of a unit is called, means and belongs to: one row each, and the few
/// functions that look them up. No state, no input or output; nothing here links the client library.
///
///     for (const catalog::Value& value : catalog::Values(catalog::Area::kPower))  // or Values() for all areas
///       show(value.label, catalog::WithUnit(value.reading, catalog::ReadField(value, power_record)));
///
///     const catalog::Value* acc = catalog::FindValue("power.acc");                // null: see NearestValues()
///     catalog::StoreField(*acc, records.At(acc->field.record), catalog::Parse(acc->reading, "on"));
///     emit(acc->announced.signal, catalog::ArgumentsFor(*acc, records));
///
/// - Value.h: rows of values; mapped records read and written by row. Where a value stands in a record, read it there
///   (ReadField()): getters are for what has no field, like the versions. The rows themselves are in PowerValues.h,
///   MiscValues.h and OtherValues.h, the words of enumerations in Words.h.
/// - Reading.h: a value's text for people, and text from people as a value.
/// - Signal.h: signal to callbacks and to values, and back.
/// - Command.h: the commands, each with a typed call of the public interface.
/// - EveryEvent.h: one listener for all callbacks; events carry the names of values.
///
/// A byte of flags (doors, climate switches, air mode) is one row as a whole ("misc.doors", kBits) and one for each bit
/// ("misc.door_trunk"). What is known from events alone (a steering angle, the progress of an update) has a row without
/// field and getter. The CAN box's protocol is configuration, not a value.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalog/Command.h"
#include "catalog/Reading.h"
#include "catalog/Signal.h"
#include "catalog/Value.h"

namespace catalog {

View<Value> Values();
View<Value> Values(Area area);
View<Command> Commands(Area area);

/// "power" and so on.
std::optional<Area> FindArea(std::string_view name);

// Look-ups by name; null where there is none. A hyphen and an underscore count as the same character.

const Value* FindValue(std::string_view full_name);  ///< "power.acc"
const Value* FindValue(Area area, std::string_view name);
const Command* FindCommand(Area area, std::string_view name);
const Signal* FindSignal(std::string_view name);    ///< as on D-Bus
const Signal* SignalOf(std::string_view callback);  ///< the signal that OnAccStateChange follows

// "Did you mean": the right names that are nearest to a wrong one, best first, at most three; none when nothing is
// near.

std::vector<std::string> NearestValues(std::string_view wrong);  ///< full names
std::vector<std::string> NearestCommands(Area area, std::string_view wrong);
std::vector<std::string> NearestSignals(std::string_view wrong);
std::vector<std::string> Nearest(std::string_view wrong, const std::vector<std::string>& right);

}  // namespace catalog
