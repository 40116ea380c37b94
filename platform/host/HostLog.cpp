#include "platform/host/HostLog.h"

#include <glib.h>

#include "platform/host/HostPaths.h"

namespace {

constexpr char kCategory[] = "hlx-system-client";

/// Brings the log system up when the library is loaded; HLX_HOST_LOG=off leaves it down. A real zlog is configured by
/// the file that HLX_HOST_ZLOG_CONF names, unless another part of the process has initialised it already.
zlog_category_s* BringUp() {
  if (host::Environment("HLX_HOST_LOG") == "off") return nullptr;
  const std::string configuration = host::Environment("HLX_HOST_ZLOG_CONF");
  // Records belong on standard error: standard output is the application's.
  g_log_writer_default_set_use_stderr(TRUE);
  if (zlog_category_t* const category = zlog_get_category(kCategory)) return category;
  if (zlog_init(configuration.empty() ? nullptr : configuration.c_str()) != 0) {
    std::fprintf(stderr, "hlx: zlog_init failed with configuration file \"%s\"\n", configuration.c_str());
    return nullptr;
  }
  return zlog_get_category(kCategory);
}

}  // namespace

zlog_category_s* liblog_category = BringUp();
