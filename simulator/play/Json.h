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

/// One line; what is no UTF-8 is replaced.
std::string LineOf(const Json& json);
