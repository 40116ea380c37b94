/// The bare interface: methods, signals and what they carry, checked against the built-in description.
#pragma once

#include <string>
#include <vector>

#include "dbus/GLibPtr.h"

namespace wire {

/// @throws std::invalid_argument with the nearest right name
const GDBusMethodInfo& MethodNamed(const std::string& name);
const GDBusSignalInfo& SignalNamed(const std::string& name);

std::vector<std::string> MethodNames();
std::vector<std::string> SignalNames();

/// The argument that `text` says: a number, on or off, text, or for a record its 32-bit numbers: "2024,2,29,4".
/// @throws std::invalid_argument that names the argument
GLibPtr<GVariant> Argument(const GDBusArgInfo& info, const std::string& text);

/// @return a floating reference
GVariant* Tuple(const std::vector<GLibPtr<GVariant>>& arguments);

/// "type=1, level=40"; `infos` may be null or too short for what came.
std::string Describe(GDBusArgInfo* const* infos, GVariant* tuple);

/// How many there are; null counts as none.
std::size_t Count(GDBusArgInfo* const* infos);

/// "(yy)": what `infos` describe.
std::string Signature(GDBusArgInfo* const* infos);

}  // namespace wire
