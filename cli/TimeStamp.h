/// Now, and other moments, as lines carry them: local time.
#pragma once

#include <cstdint>
#include <string>

/// "2024-02-29 23:59:30.123"
std::string TimeStamp();

/// "2024-02-29T23:59:30.123456+01:00"
std::string JsonTimeStamp();
/// The same of a moment, in microseconds since 1970 UTC.
std::string JsonTimeStamp(std::int64_t microseconds);
