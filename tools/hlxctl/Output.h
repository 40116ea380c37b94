/// The tool's standard output and error, kept apart from what the library writes.
#pragma once

#include <string>

#include "tools/hlxctl/Value.h"

namespace Output {

/// Silences the library: its log records, and the few lines that it prints on standard output. `verbose` shows all of
/// it on standard error. Call it before the library is used; a platform that finds its configuration or database wrong
/// is heard in any case.
void TakeOver(bool verbose);

bool IsTerminal();

/// Writes and flushes. @throws Failure when it cannot be written
void Put(const std::string& text);
void Line(const std::string& text);
void JsonLine(const Json& json);

/// On one line; bytes that are no UTF-8 are replaced.
std::string Compact(const Json& json);

/// One line on standard error, whatever `text` holds.
void Note(const std::string& text);

}  // namespace Output
