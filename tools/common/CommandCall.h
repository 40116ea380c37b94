/// A command of the catalogue as the D-Bus call that the library makes of it. Made here, it needs no client: the
/// library's time client would change the system.
#pragma once

#include <string>
#include <vector>

#include "catalog/Catalog.h"
#include "dbus/GLibPtr.h"

/// What `words` say, one for each of the command's parameters that travel. The last ones, which stay in the process of
/// a client, may be left out or say what they stand for.
/// @throws std::invalid_argument that names the parameter
std::vector<catalog::Scalar> ParseArguments(const catalog::Command& command, const std::vector<std::string>& words);

/// @return a floating reference
GVariant* ArgumentsOf(const catalog::Command& command, const std::vector<catalog::Scalar>& scalars);
