/// What was installed with this program, found from where the program itself is.
#pragma once

#include <string>

/// A file or directory of the project's data directory; empty when it is not there.
std::string InstalledFile(const std::string& name);

/// Where this program is.
std::string OwnProgram();

/// A program that belongs to this one; empty when it is not there.
std::string InstalledProgram(const std::string& name);
