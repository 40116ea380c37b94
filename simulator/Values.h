/// Values that come from outside, on their way into signals and record fields, and their readable form in the journal.
#pragma once

#include <gio/gio.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "dbus/GLibPtr.h"

/// An argument that cannot be taken; the text names it and says why. The caller gets it as a D-Bus error.
class BadArgument : public std::invalid_argument {
 public:
  using std::invalid_argument::invalid_argument;
};

/// The number in `text`, decimal or 0x..., and true, false, on and off as 1 and 0.
/// @throws BadArgument that names `what` when it is no whole number or not within `lowest` to `highest`
int64_t ParseInteger(const std::string& text, int64_t lowest, int64_t highest, const std::string& what);

/// @throws BadArgument that names `what`
double ParseDouble(const std::string& text, const std::string& what);

/// A string as it is, any other value in GVariant's text form.
std::string TextOf(GVariant* value);

/// `value`, a number, a boolean or either as text, as a variant of the basic type `signature` (y, b, i, u or d).
/// @throws BadArgument that names `what` when the type cannot hold it
GVariant* ConvertTo(const char* signature, GVariant* value, const std::string& what);

/// "SetScreenLightLevel(type=0, level=40)"
std::string Describe(const char* name, GDBusArgInfo* const* args, GVariant* tuple);
