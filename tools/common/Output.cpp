#include "tools/common/Output.h"

#include <glib.h>
#include <langinfo.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string_view>

#include "tools/common/Failure.h"

namespace {

constexpr std::string_view kLibraryDomain = "hlx-system-client";
constexpr std::string_view kPlatformSource = "platform/";

int out = STDOUT_FILENO;
bool show_library = false;
bool colors = false;
std::string kept;

std::string_view FieldOf(const GLogField* fields, gsize count, std::string_view key) {
  for (const GLogField* field = fields; field != fields + count; ++field) {
    if (field->key != key) continue;
    const auto* const text = static_cast<const char*>(field->value);
    return field->length < 0 ? std::string_view(text) : std::string_view(text, static_cast<std::size_t>(field->length));
  }
  return {};
}

GLogWriterOutput WriteRecord(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer /*data*/) {
  if (FieldOf(fields, count, "GLIB_DOMAIN") != kLibraryDomain)
    return g_log_writer_default(level, fields, count, nullptr);
  const bool from_platform = FieldOf(fields, count, "CODE_FILE").substr(0, kPlatformSource.size()) == kPlatformSource;
  if (!show_library && !(from_platform && level <= G_LOG_LEVEL_WARNING)) return G_LOG_WRITER_HANDLED;
  return g_log_writer_standard_streams(level, fields, count, nullptr);
}

bool IsAscii(const std::string& text) {
  return std::none_of(text.begin(), text.end(), [](unsigned char c) { return c >= 0x80; });
}

bool LocaleIsUtf8() {
  static const bool utf8 = std::setlocale(LC_CTYPE, "") != nullptr && std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0;
  return utf8;
}

std::string Ascii(std::string text) {
  constexpr struct {
    std::string_view sign;
    std::string_view ascii;
  } kSigns[] = {{"–", "-"}, {"°", "deg "}, {"…", "..."}, {"→", "->"}};
  for (const auto& [sign, ascii] : kSigns) {
    for (std::size_t at; (at = text.find(sign)) != std::string::npos;) text.replace(at, sign.size(), ascii);
  }
  gchar* const ascii = g_str_to_ascii(text.c_str(), nullptr);
  text = ascii;
  g_free(ascii);
  return text;
}

std::string ForLocale(const std::string& text) { return IsAscii(text) || LocaleIsUtf8() ? text : Ascii(text); }

std::size_t Width(const std::string& text) { return static_cast<std::size_t>(g_utf8_strlen(text.c_str(), -1)); }

}  // namespace

void Output::Open(Color color, bool verbose) {
  show_library = verbose;
  g_log_writer_default_set_use_stderr(TRUE);
  g_log_set_writer_func(WriteRecord, nullptr, nullptr);
  if (verbose) g_setenv("G_MESSAGES_DEBUG", kLibraryDomain.data(), FALSE);  // its own threshold, too
  // From here on file descriptor 1 is the library's.
  out = dup(STDOUT_FILENO);
  FILE* const elsewhere = std::freopen("/dev/null", "w", stdout);
  if (out < 0 || elsewhere == nullptr || (verbose && dup2(STDERR_FILENO, STDOUT_FILENO) < 0)) {
    throw Failure(kExitInternal, std::string("standard output: ") + std::strerror(errno));
  }
  const char* const no_color = std::getenv("NO_COLOR");
  const char* const term = std::getenv("TERM");
  const bool wanted = (no_color == nullptr || *no_color == '\0') && term != nullptr && std::strcmp(term, "dumb") != 0;
  colors = color == Color::kAlways || (color == Color::kAuto && wanted && IsTerminal());
}

bool Output::IsTerminal() { return isatty(out) != 0; }

int Output::Descriptor() { return out; }

void Output::Put(const std::string& text) { kept += ForLocale(text); }

void Output::Line(const std::string& text) { Put(text + "\n"); }

void Output::JsonLine(const Json& json) {
  kept += json.dump(-1, ' ', !LocaleIsUtf8(), Json::error_handler_t::replace) + "\n";
}

void Output::Flush() {
  std::string text;
  text.swap(kept);
  for (std::size_t done = 0; done < text.size();) {
    const ssize_t n = write(out, text.data() + done, text.size() - done);
    if (n >= 0) {
      done += static_cast<std::size_t>(n);
    } else if (errno == EPIPE) {
      throw ClosedPipe();
    } else if (errno != EINTR) {
      throw Failure(kExitInternal, std::string("standard output: ") + std::strerror(errno));
    }
  }
}

std::string Output::Paint(const std::string& text, Tone tone) {
  constexpr const char* kCodes[] = {"", "1", "2", "32", "33", "31"};
  const char* const code = kCodes[static_cast<std::size_t>(tone)];
  return colors && *code != '\0' && !text.empty() ? std::string("\x1b[") + code + "m" + text + "\x1b[0m" : text;
}

void Output::Note(const std::string& text) { std::fprintf(stderr, "hlxctl: %s\n", ForLocale(Printable(text)).c_str()); }

std::vector<std::string> Table::Lines() const {
  std::vector<std::size_t> widths;
  for (const auto& row : rows_) {
    if (row.size() == 1) continue;
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], Width(row[i].text));
  }
  std::vector<std::string> lines;
  for (const auto& row : rows_) {
    std::string line;
    std::size_t blanks = 0;
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (!row[i].text.empty())
        line += std::string(std::exchange(blanks, 0), ' ') + Output::Paint(row[i].text, row[i].tone);
      if (row.size() > 1) blanks += widths[i] - Width(row[i].text) + 2;
    }
    lines.push_back(line);
  }
  return lines;
}

void Table::Print() const {
  for (const std::string& line : Lines()) Output::Line(line);
}
