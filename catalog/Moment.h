/// Dates and times as text, which is how the catalogue carries them.
#pragma once

#include <string>

#include "HLXTimeTypes.h"

namespace catalog {

std::string TextOf(const SystemTime::DateInfo& date);    ///< "2024-02-29"; the day of the week is not in it
std::string TextOf(const SystemTime::TimeInfo& time);    ///< "23:59:30"
std::string TextOf(const SystemTime::DateTime& moment);  ///< "2024-02-29T23:59:30"

// Read what TextOf() writes; seconds may be missing, and the day of the week is worked out. False, with the result
// untouched, for anything that is no day or time.
bool ReadDate(const std::string& text, SystemTime::DateInfo* date);
bool ReadTime(const std::string& text, SystemTime::TimeInfo* time);
bool ReadMoment(const std::string& text, SystemTime::DateTime* moment);

}  // namespace catalog
