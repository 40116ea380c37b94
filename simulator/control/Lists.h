/// What there is to set, emit, hear, play and break.
#pragma once

#include <string>
#include <vector>

struct ListEntry {
  std::string kind;   ///< "value"
  std::string name;   ///< "power.acc"
  std::string takes;  ///< in words: "on or off (1 or 0)"
};

/// Of one kind, or of all with an empty one. @throws catalog::BadValue for another kind
std::vector<ListEntry> ListOf(const std::string& kind);

/// "methods" or "signals": the table for the documents, in Markdown. @throws catalog::BadValue for another name
std::string MarkdownTable(const std::string& which);
