#include "tools/common/TimeStamp.h"

#include <glib.h>

#include "dbus/GLibPtr.h"

namespace {

std::string Format(std::int64_t microseconds, const char* form) {
  GDateTime* const second = g_date_time_new_from_unix_local(microseconds / G_USEC_PER_SEC);
  GDateTime* const moment = g_date_time_add(second, microseconds % G_USEC_PER_SEC);
  const GLibPtr<gchar> text(g_date_time_format(moment, form));
  g_date_time_unref(moment);
  g_date_time_unref(second);
  return text.get();
}

}  // namespace

std::string TimeStamp() {
  return Format(g_get_real_time(), "%Y-%m-%d %H:%M:%S.%f").substr(0, sizeof "2024-02-29 23:59:30.123" - 1);
}

std::string JsonTimeStamp() { return JsonTimeStamp(g_get_real_time()); }

std::string JsonTimeStamp(std::int64_t microseconds) { return Format(microseconds, "%Y-%m-%dT%H:%M:%S.%f%:z"); }
