/// Stands in for zlog where it is not installed: the same calls, on GLib's structured logging.
#ifndef HLX_HOST_ZLOG_H
#define HLX_HOST_ZLOG_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct zlog_category_s zlog_category_t;

enum {
  ZLOG_LEVEL_DEBUG = 20,
  ZLOG_LEVEL_INFO = 40,
  ZLOG_LEVEL_NOTICE = 60,
  ZLOG_LEVEL_WARN = 80,
  ZLOG_LEVEL_ERROR = 100,
  ZLOG_LEVEL_FATAL = 120
};

/* `confpath` is ignored: what is shown is GLib's decision (G_MESSAGES_DEBUG, or the application's log writer). 0. */
int zlog_init(const char* confpath);

/* The category of that name, made on first use; its name is GLib's log domain. Valid for ever. */
zlog_category_t* zlog_get_category(const char* cname);

void zlog(zlog_category_t* category, const char* file, size_t filelen, const char* func, size_t funclen, long line,
          int level, const char* format, ...) __attribute__((format(printf, 8, 9)));

#ifdef __cplusplus
}
#endif

#endif
