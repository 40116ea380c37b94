/// Values of the catalogue as the tool shows and takes them.
#pragma once

#include <string>
#include <vector>

#include "catalog/Catalog.h"
#include "cli/Json.h"

/// The value called "power.acc". @throws std::invalid_argument with the nearest right names
const catalog::Value& ValueNamed(const std::string& name);

/// In words, without unit, fit for a terminal; empty where the unit does not provide it. Zones go by their names.
std::string Bare(const catalog::Reading& reading, const catalog::Scalar& scalar);

/// For people: with the unit, and a dash for what the unit does not provide.
std::string ForPeople(const catalog::Reading& reading, const catalog::Scalar& scalar);

/// {"value", "text", "unit"}
Json ToJson(const catalog::Reading& reading, const catalog::Scalar& scalar);

/// What `text` says, zones by number, name, file or a part of the name. @throws std::invalid_argument
catalog::Scalar ParseValue(const catalog::Reading& reading, const std::string& text);

/// "; did you mean 'power'?", else "; there are: …", else nothing.
std::string DidYouMean(const std::string& wrong, const std::vector<std::string>& right);
/// "; there are: …", or nothing.
std::string ThereAre(const std::vector<std::string>& names);
std::string Suggest(const std::vector<std::string>& nearest);
