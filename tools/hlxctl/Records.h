/// Looks at the shared records from outside. Nothing here makes or changes a segment.
#pragma once

#include "tools/hlxctl/Area.h"
#include "tools/hlxctl/Failure.h"

/// Maps a record for reading. @throws Failure that says why it is not to be had
const void* MapForReading(const Record& record);

/// Makes sure that a client can map what it needs: without a record the client would make it, and one that it cannot
/// map would end the process. @throws Failure that names the record
void RequireRecords(const std::vector<Record>& records);
