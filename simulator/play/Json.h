/// Values as JSON.
#pragma once

#include <gio/gio.h>

#include <nlohmann/json.hpp>
#include <string>

#include "catalog/Reading.h"

using Json = nlohmann::ordered_json;

Json JsonOf(const catalog::Scalar& scalar);

/// Numbers, booleans, texts; arrays, tuples and dictionaries of them; a record that travels as bytes as its 32-bit
/// numbers.
Json JsonOf(GVariant* value);

/// "2026-01-31T23:59:59.123456+01:00" of microseconds since 1970.
std::string TimeStamp(gint64 time);

/// One line; what is no UTF-8 is replaced.
std::string LineOf(const Json& json);
