/// "hlxctl update check": examines a package without a service and without being the process that may.
#pragma once

#include <string>

/// Prints what was compared and what came out. @return the exit code
int CheckPackage(const std::string& directory, bool json);
