#include "tools/hlxctl/Output.h"

#include <glib.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "tools/hlxctl/Failure.h"

namespace {

constexpr std::string_view kLibraryDomain = "hlx-system-client";
constexpr std::string_view kPlatformSource = "platform/";

FILE* out = stdout;
bool show_library = false;

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

}  // namespace

void Output::TakeOver(bool verbose) {
  show_library = verbose;
  g_log_writer_default_set_use_stderr(TRUE);
  g_log_set_writer_func(WriteRecord, nullptr, nullptr);
  if (verbose) g_setenv("G_MESSAGES_DEBUG", kLibraryDomain.data(), FALSE);  // its own threshold, too
  // From here on file descriptor 1 is the library's.
  const int real = dup(STDOUT_FILENO);
  FILE* const stream = real < 0 ? nullptr : fdopen(real, "w");
  FILE* const elsewhere = std::freopen("/dev/null", "w", stdout);
  if (stream == nullptr || elsewhere == nullptr || (verbose && dup2(STDERR_FILENO, STDOUT_FILENO) < 0)) {
    throw Failure(kExitInternal, std::string("standard output: ") + std::strerror(errno));
  }
  out = stream;
}

bool Output::IsTerminal() { return isatty(fileno(out)) != 0; }

void Output::Put(const std::string& text) {
  if (std::fwrite(text.data(), 1, text.size(), out) != text.size() || std::fflush(out) != 0) {
    throw Failure(kExitInternal, std::string("standard output: ") + std::strerror(errno));
  }
}

void Output::Line(const std::string& text) { Put(text + "\n"); }
void Output::JsonLine(const Json& json) { Line(Compact(json)); }
std::string Output::Compact(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }
void Output::Note(const std::string& text) { std::fprintf(stderr, "hlxctl: %s\n", Text{}(text).text.c_str()); }
