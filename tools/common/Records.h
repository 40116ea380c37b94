/// The shared records as seen from outside. Nothing here makes, fills or changes one.
#pragma once

#include <optional>

#include "catalog/Value.h"

/// Maps a record for reading, once. @throws Failure that says why it is not to be had: missing, too small, or not
/// filled
const void* RecordOf(catalog::Record record);

/// The records that the library's client of `area` maps. A client would make a missing one and fill an empty one, and
/// one that it cannot map would end the process: look first.
catalog::View<catalog::Record> RecordsOf(catalog::Area area);

/// Makes sure that the clients of `area` find what they need. @throws Failure that names the record
void RequireRecords(catalog::Area area);

/// What the value is now, read from its record or, where it stands in none, asked of the info or update client.
/// @throws Failure when a record is missing, or the value is told by events alone
catalog::Scalar Read(const catalog::Value& value);

/// The same for looks that go on: nothing while a service that came back is filling the record.
std::optional<catalog::Scalar> ReadUnlessEmpty(const catalog::Value& value);
