#include "zlog.h"

#include <glib.h>

#include <cstdarg>
#include <cstdio>
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

/// How GLib and the journal call a level. Nothing is above a warning for GLib: it ends the process after an error, and
/// takes a critical record for a fault of the program, which a damaged file or a missing service is not.
struct LevelNames {
  GLogLevelFlags glib;
  const char* priority;
};

LevelNames NamesOf(int level) {
  if (level >= ZLOG_LEVEL_FATAL) return {G_LOG_LEVEL_WARNING, "2"};
  if (level >= ZLOG_LEVEL_ERROR) return {G_LOG_LEVEL_WARNING, "3"};
  if (level >= ZLOG_LEVEL_WARN) return {G_LOG_LEVEL_WARNING, "4"};
  if (level >= ZLOG_LEVEL_NOTICE) return {G_LOG_LEVEL_MESSAGE, "5"};
  return level >= ZLOG_LEVEL_INFO ? LevelNames{G_LOG_LEVEL_INFO, "6"} : LevelNames{G_LOG_LEVEL_DEBUG, "7"};
}

}  // namespace

int zlog_init(const char* /*confpath*/) { return 0; }

zlog_category_t* zlog_get_category(const char* cname) {
  const std::lock_guard<std::mutex> lock(TheCategories().mutex);
  auto& category = TheCategories().by_name[cname];
  if (category == nullptr) category = std::make_unique<zlog_category_s>(zlog_category_s{cname});
  return category.get();
}

void zlog(zlog_category_t* category, const char* file, size_t filelen, const char* func, size_t funclen, long line,
          int level, const char* format, ...) {
  char short_text[512];
  std::unique_ptr<gchar, decltype(&g_free)> long_text(nullptr, g_free);
  va_list arguments;
  va_start(arguments, format);
  if (std::vsnprintf(short_text, sizeof short_text, format, arguments) >= static_cast<int>(sizeof short_text)) {
    va_end(arguments);
    va_start(arguments, format);
    long_text.reset(g_strdup_vprintf(format, arguments));
  }
  va_end(arguments);
  const LevelNames names = NamesOf(level);
  const std::string line_text = std::to_string(line);
  const GLogField fields[] = {
      {"MESSAGE", long_text == nullptr ? short_text : long_text.get(), -1},
      {"PRIORITY", names.priority, -1},
      {"GLIB_DOMAIN", category->name.c_str(), -1},
      {"CODE_FILE", file, static_cast<gssize>(filelen)},
      {"CODE_FUNC", func, static_cast<gssize>(funclen)},
      {"CODE_LINE", line_text.c_str(), -1},
  };
  g_log_structured_array(names.glib, fields, G_N_ELEMENTS(fields));
}
