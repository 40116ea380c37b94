/// What the kernel tells of the unit.
#pragma once

#include <string>

namespace DeviceIdentity {

/// All lines of the file joined; empty, with an ERROR record, when it cannot be opened.
std::string GetEmmcId(const char* path);

/// The serial number in a kernel command line: up to 32 characters behind the first "uuid=", in groups of four joined
/// by ":". Empty when there is none, or the line ends less than 32 characters behind the "u" of "uuid=".
std::string SerialNumberFrom(const std::string& command_line);

/// The hexadecimal number that `text` begins with. Throws what std::stoi throws when there is none, or one beyond 32
/// bits.
unsigned int MachineSampleFrom(const std::string& text);

/// Reads a hexadecimal number of at most 32 characters from an attribute of sysfs. 0, or -1 when `value` is null, the
/// file cannot be opened (`*value` is unchanged) or not be read (`*value` is then 0).
/// Throws as MachineSampleFrom() does.
int GetMachineSample(const char* path, unsigned int* value);

}  // namespace DeviceIdentity
