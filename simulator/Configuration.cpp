#include "simulator/Configuration.h"

#include <glib.h>

#include <cstdio>
#include <string>

#include "dbus/GLibPtr.h"
#include "simulator/Installed.h"

void FindConfiguration() {
  const gchar* const named = g_getenv("HLX_HOST_CONFIG");
  if (named != nullptr && *named != '\0') return;
  const GLibPtr<gchar> own(g_build_filename(g_get_user_config_dir(), "hlx", "platform.conf", nullptr));
  const std::string sample = InstalledFile("platform.conf.sample");
  if (g_file_test(own.get(), G_FILE_TEST_EXISTS) != FALSE || sample.empty()) return;
  std::fprintf(stderr, "hlx-simulator: no %s: playing the unit of %s\n", own.get(), sample.c_str());
  g_setenv("HLX_HOST_CONFIG", sample.c_str(), TRUE);
}
