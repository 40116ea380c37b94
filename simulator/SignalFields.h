/// What each signal stands for in the records. A field is written before its signal goes out.
#pragma once

#include <gio/gio.h>

#include <string_view>

#include "simulator/RecordFields.h"

struct SignalFields {
  std::string_view signal;
  const RecordField* fields[5] = {};  ///< one per argument; null where an argument has no field
  /// Where a signal's arguments are not plainly its fields.
  void (*store)(Records& records, GVariant* arguments) = nullptr;

  void Store(Records& records, GVariant* arguments) const;
};

/// The row of a signal of the interface, or null for any other name.
const SignalFields* FindSignal(std::string_view name);
