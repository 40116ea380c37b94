/// Values as JSON.
#pragma once

#include <glib.h>

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "catalog/Reading.h"

using Json = nlohmann::ordered_json;

/// A number is whole where its value is.
Json JsonOf(const catalog::Scalar& scalar);

/// Numbers, booleans, texts; arrays, tuples and dictionaries of them; a record, which travels as bytes, as its 32-bit
/// numbers, or as its bytes where it is no multiple of them; anything else as GVariant's text.
Json JsonOf(GVariant* value);

/// Without spaces; what is no UTF-8 is replaced.
std::string Compact(const Json& json);
