#include "cli/TimeStamp.h"

#include <glib.h>

#include "dbus/GLibPtr.h"

namespace {

std::string Format(std::int64_t microseconds, const char* form) {
  const GLibPtr<GDateTime> second(g_date_time_new_from_unix_local(microseconds / G_USEC_PER_SEC));
  const GLibPtr<GDateTime> moment(g_date_time_add(second.get(), microseconds % G_USEC_PER_SEC));
  return GLibPtr<gchar>(g_date_time_format(moment.get(), form)).get();
}

}  // namespace

std::string TimeStamp() {
  return Format(g_get_real_time(), "%Y-%m-%d %H:%M:%S.%f").substr(0, sizeof "2024-02-29 23:59:30.123" - 1);
}

std::string JsonTimeStamp() { return JsonTimeStamp(g_get_real_time()); }

std::string JsonTimeStamp(std::int64_t microseconds) { return Format(microseconds, "%Y-%m-%dT%H:%M:%S.%f%:z"); }
