/// One row for each D-Bus signal: which callbacks follow, and which values it writes.
#pragma once

#include <vector>

#include "catalog/Value.h"

namespace catalog {

struct Signal {
  Area area = Area::kPower;
  const char* name = "";       ///< on D-Bus: "AccStateChangeSignal"
  const char* arguments = "";  ///< D-Bus types: "yy"
  const char* callbacks[3] =
      {};  ///< of the listener interface, null behind the last; which of several, the client decides
};

/// All 76, in the order of the interface's description.
View<Signal> Signals();

/// A value and the argument of a signal that tells it.
struct Telling {
  const Value* value;
  int argument;  ///< -1: none, the value stands in the record
};

/// The values that `signal` announces, a byte of flags as a whole and bit by bit, and those known from events alone.
std::vector<Telling> AnnouncedBy(const Signal& signal);

/// Stores the arguments of `signal`, one for each of its types, in the fields that it stands for; a service does that
/// before it emits the signal. Signals that carry no value change nothing here.
/// @throws BadValue for a missing argument or one of a wrong kind
void StoreArguments(const Signal& signal, const std::vector<Scalar>& arguments, const RecordSet& records);

/// The arguments with which the signal that announces `value` tells what `records` hold: the value itself, what else
/// the signal tells, and 0 for what is not in the record. Empty where no signal announces it.
std::vector<Scalar> ArgumentsFor(const Value& value, const RecordSet& records);

/// How argument `index` of `signal` reads; also that which chooses a value: a light type, a pair of seats.
Reading ReadingOf(const Signal& signal, int index);

}  // namespace catalog
