/// Values on their way between D-Bus, text and the catalogue's scalars.
#pragma once

#include <gio/gio.h>

#include <string>

#include "catalog/Reading.h"
#include "dbus/GLibPtr.h"

/// A number, boolean or text as a scalar; a record that travels as bytes as a text of its numbers, "2024 2 29 4".
catalog::Scalar ScalarOf(GVariant* value);

/// In its natural D-Bus type: x, d or s; an empty text for nothing. Floating.
GVariant* VariantOf(const catalog::Scalar& scalar);

/// `scalar`, a number, as the basic type `signature` (y, b, i, u or d); whole numbers keep their low bits. Floating.
GVariant* VariantOf(const catalog::Scalar& scalar, char signature);

/// Words and numbers that an argument of this type takes: the words of `reading`, and every number of the type.
catalog::Reading Widened(const catalog::Reading& reading, char signature);

/// A string as it is, any other value in GVariant's text form.
std::string TextOf(GVariant* value);

/// "SetScreenLightLevel(type=0, level=40)"
std::string Describe(const char* name, GDBusArgInfo* const* args, GVariant* tuple);
