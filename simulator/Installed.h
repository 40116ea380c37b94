/// What was installed with this program, found from where the program itself is; and what is around it.
#pragma once

#include <string>

/// A file or directory of the project's data directory; empty when it is not there.
std::string InstalledFile(const std::string& name);

/// Where this program is.
std::string OwnProgram();

/// A program that belongs to this one; empty when it is not there.
std::string InstalledProgram(const std::string& name);

/// A program for users, beside this one; empty when it is not there.
std::string SiblingProgram(const std::string& name);

/// /media, /data and /app are scratch: scripts/sandbox made them, and leaves a mark in /media, which it alone makes.
bool IsInSandbox();
