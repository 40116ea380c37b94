#include "zlog.h"

#include <glib.h>

#include <cstdarg>
#include <map>
#include <memory>
#include <mutex>
#include <string>

struct zlog_category_s {
  std::string name;
};

namespace {

struct Categories {
  std::mutex mutex;
  std::map<std::string, std::unique_ptr<zlog_category_s>> by_name;
};

/// Made on first use and never destroyed: libraries log before and after the process's statics live.
Categories& TheCategories() {
  static Categories& categories = *new Categories;
  return categories;
}

/// Never G_LOG_LEVEL_ERROR: GLib ends the process after such a record.
GLogLevelFlags GLibLevel(int level) {
  if (level >= ZLOG_LEVEL_ERROR) return G_LOG_LEVEL_CRITICAL;
  if (level >= ZLOG_LEVEL_WARN) return G_LOG_LEVEL_WARNING;
  if (level >= ZLOG_LEVEL_NOTICE) return G_LOG_LEVEL_MESSAGE;
  return level >= ZLOG_LEVEL_INFO ? G_LOG_LEVEL_INFO : G_LOG_LEVEL_DEBUG;
}

/// The journal's number for the same level.
const char* Priority(GLogLevelFlags level) {
  switch (level) {
    case G_LOG_LEVEL_CRITICAL:
      return "3";
    case G_LOG_LEVEL_WARNING:
      return "4";
    case G_LOG_LEVEL_MESSAGE:
      return "5";
    case G_LOG_LEVEL_INFO:
      return "6";
    default:
      return "7";
  }
}

}  // namespace

int zlog_init(const char* /*confpath*/) { return 0; }

zlog_category_t* zlog_get_category(const char* cname) {
  const std::lock_guard<std::mutex> lock(TheCategories().mutex);
  auto& category = TheCategories().by_name[cname];
  if (category == nullptr) category = std::make_unique<zlog_category_s>(zlog_category_s{cname});
  return category.get();
}

int zlog_level_enabled(zlog_category_t* category, int level) {
  return g_log_writer_default_would_drop(GLibLevel(level), category->name.c_str()) ? 0 : 1;
}

void zlog(zlog_category_t* category, const char* file, size_t filelen, const char* func, size_t funclen, long line,
          int level, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const std::unique_ptr<gchar, decltype(&g_free)> text(g_strdup_vprintf(format, arguments), g_free);
  va_end(arguments);
  const GLogLevelFlags flags = GLibLevel(level);
  const std::string line_text = std::to_string(line);
  const GLogField fields[] = {
      {"MESSAGE", text.get(), -1},
      {"PRIORITY", Priority(flags), -1},
      {"GLIB_DOMAIN", category->name.c_str(), -1},
      {"CODE_FILE", file, static_cast<gssize>(filelen)},
      {"CODE_FUNC", func, static_cast<gssize>(funclen)},
      {"CODE_LINE", line_text.c_str(), -1},
  };
  g_log_structured_array(flags, fields, G_N_ELEMENTS(fields));
}

void zlog_fini() {
  const std::lock_guard<std::mutex> lock(TheCategories().mutex);
  TheCategories().by_name.clear();
}
