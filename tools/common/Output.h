/// The tool's standard output and error, kept apart from what the library writes.
#pragma once

#include <string>
#include <vector>

#include "cli/Json.h"
#include "cli/Printable.h"

enum class Color { kAuto, kAlways, kNever };

/// What a piece of text is to the reader; shown as a colour where there are colours.
enum class Tone { kPlain, kStrong, kDim, kGood, kWarning, kBad };

namespace Output {

/// Silences the library: its log records, and the few lines that it prints on standard output. `verbose` shows all of
/// it on standard error. Call it before the library is used; a platform that finds its configuration or database wrong
/// is heard in any case.
void Open(Color color, bool verbose);

bool IsTerminal();

/// Keeps `text` for the next Flush(). What the locale cannot show is replaced by what comes near.
void Put(const std::string& text);
void Line(const std::string& text);
/// On one line of its own; bytes that are no UTF-8 are replaced.
void JsonLine(const Json& json);

/// Writes what was kept, at once. @throws ClosedPipe, or Failure when it cannot be written
void Flush();

/// `text` in the colour of `tone`, if there are colours.
std::string Paint(const std::string& text, Tone tone);

/// One line on standard error, whatever `text` holds.
void Note(const std::string& text);

/// The file descriptor behind all this.
int Descriptor();

}  // namespace Output

struct Cell {
  Cell(std::string cell_text, Tone cell_tone = Tone::kPlain) : text(std::move(cell_text)), tone(cell_tone) {}  // NOLINT
  Cell(const char* cell_text) : text(cell_text) {}                                                             // NOLINT
  std::string text;
  Tone tone = Tone::kPlain;
};

/// Columns that line up.
class Table {
 public:
  /// A line above the rows that follow.
  void Heading(const std::string& text) { rows_.push_back({{text, Tone::kStrong}}); }
  void Row(std::vector<Cell> cells) { rows_.push_back(std::move(cells)); }
  std::vector<std::string> Lines() const;
  void Print() const;

 private:
  std::vector<std::vector<Cell>> rows_;  ///< a single cell is a heading
};
