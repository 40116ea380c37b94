#include "cli/Printable.h"

#include <glib.h>

#include "dbus/GLibPtr.h"

std::string Printable(const std::string& raw) {
  const GLibPtr<gchar> valid(g_utf8_make_valid(raw.data(), static_cast<gssize>(raw.size())));
  std::string text;
  for (const gchar *at = valid.get(), *next = nullptr; *at != '\0'; at = next) {
    next = g_utf8_find_next_char(at, nullptr);
    text += g_unichar_iscntrl(g_utf8_get_char(at)) != FALSE ? "?" : std::string(at, next);
  }
  return text;
}
