#include "platform/host/HostLog.h"

#include <glib.h>

#include "platform/host/HostPaths.h"

// What the library counts on, of zlog 1.2 and of what stands in for it alike.
[[maybe_unused]] constexpr int (*kInit)(const char*) = zlog_init;
[[maybe_unused]] constexpr zlog_category_t* (*kGetCategory)(const char*) = zlog_get_category;
[[maybe_unused]] constexpr void (*kLog)(zlog_category_t*, const char*, size_t, const char*, size_t, long, int,
                                        const char*, ...) = zlog;
static_assert(ZLOG_LEVEL_DEBUG == 20 && ZLOG_LEVEL_INFO == 40 && ZLOG_LEVEL_NOTICE == 60 && ZLOG_LEVEL_WARN == 80 &&
              ZLOG_LEVEL_ERROR == 100 && ZLOG_LEVEL_FATAL == 120);

namespace {

constexpr char kCategory[] = "hlx-system-client";

/// Brings the log system up when the library is loaded; HLX_HOST_LOG=off leaves it down. A real zlog is configured by
/// the file that HLX_HOST_ZLOG_CONF names, unless another part of the process has initialised it already.
zlog_category_s* BringUp() {
  if (host::Environment("HLX_HOST_LOG") == "off") return nullptr;
  const std::string configuration = host::Environment("HLX_HOST_ZLOG_CONF");
#if GLIB_CHECK_VERSION(2, 68, 0)
  // Records belong on standard error: standard output is the application's. An older GLib knows no such switch.
  g_log_writer_default_set_use_stderr(TRUE);
#endif
  if (zlog_category_t* const category = zlog_get_category(kCategory)) return category;
  if (zlog_init(configuration.empty() ? nullptr : configuration.c_str()) != 0) {
    std::fprintf(stderr, "hlx: zlog_init failed with configuration file \"%s\"\n", configuration.c_str());
    return nullptr;
  }
  return zlog_get_category(kCategory);
}

}  // namespace

zlog_category_s* liblog_category = BringUp();
