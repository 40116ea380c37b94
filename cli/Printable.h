#pragma once

#include <string>

/// What a terminal can show: valid UTF-8, and "?" for each control character, which could steer it.
std::string Printable(const std::string& raw);
