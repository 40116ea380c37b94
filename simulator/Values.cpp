#include "simulator/Values.h"

#include <charconv>
#include <cstring>
#include <limits>
#include <vector>

#include "dbus/VariantRecord.h"

namespace {

[[noreturn]] void Refuse(const std::string& what, const std::string& text, const std::string& why) {
  throw BadArgument(what + ": " + (text.empty() ? "\"\"" : text) + " is " + why);
}

template <class T>
int64_t ParseWithin(const std::string& text, const std::string& what) {
  return ParseInteger(text, std::numeric_limits<T>::min(), std::numeric_limits<T>::max(), what);
}

/// The records of the interface consist of 32-bit numbers: "<2024 2 29 4>".
std::string FormatRecord(GVariant* value, std::size_t size) {
  std::vector<int32_t> numbers(size / sizeof(int32_t));
  if (numbers.empty() || size % sizeof(int32_t) != 0) return "<" + std::to_string(size) + " bytes>";
  extract_variant_data(numbers.data(), value);
  std::string text;
  for (const int32_t number : numbers) text += (text.empty() ? "<" : " ") + std::to_string(number);
  return text + ">";
}

std::string Format(GVariant* value) {
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_BYTE)) return std::to_string(g_variant_get_byte(value));
  const gssize size = variant_data_size(value);
  if (size >= 0) return FormatRecord(value, static_cast<std::size_t>(size));
  const GLibPtr<gchar> text(g_variant_print(value, FALSE));
  return text.get();
}

}  // namespace

int64_t ParseInteger(const std::string& text, int64_t lowest, int64_t highest, const std::string& what) {
  if (text == "true" || text == "on") return 1;
  if (text == "false" || text == "off") return 0;
  const bool hexadecimal = text.compare(0, 2, "0x") == 0;
  const char* const first = text.data() + (hexadecimal ? 2 : 0);
  const char* const last = text.data() + text.size();
  int64_t value = 0;
  const auto [end, failure] = std::from_chars(first, last, value, hexadecimal ? 16 : 10);
  if (end != last || failure == std::errc::invalid_argument) Refuse(what, text, "no whole number");
  if (failure != std::errc{} || value < lowest || value > highest) {
    Refuse(what, text, "not within " + std::to_string(lowest) + " to " + std::to_string(highest));
  }
  return value;
}

double ParseDouble(const std::string& text, const std::string& what) {
  gchar* end = nullptr;
  const double value = g_ascii_strtod(text.c_str(), &end);
  if (text.empty() || end != text.c_str() + text.size()) Refuse(what, text, "no number");
  return value;
}

std::string TextOf(GVariant* value) {
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_STRING)) return g_variant_get_string(value, nullptr);
  const GLibPtr<gchar> text(g_variant_print(value, FALSE));
  return text.get();
}

GVariant* ConvertTo(const char* signature, GVariant* value, const std::string& what) {
  const std::string text = TextOf(value);
  switch (*signature) {
    case 'y':
      return g_variant_new_byte(static_cast<guchar>(ParseWithin<guchar>(text, what)));
    case 'b':
      return g_variant_new_boolean(static_cast<gboolean>(ParseInteger(text, 0, 1, what)));
    case 'i':
      return g_variant_new_int32(static_cast<gint32>(ParseWithin<gint32>(text, what)));
    case 'u':
      return g_variant_new_uint32(static_cast<guint32>(ParseWithin<guint32>(text, what)));
    default:
      return g_variant_new_double(ParseDouble(text, what));
  }
}

std::string Describe(const char* name, GDBusArgInfo* const* args, GVariant* tuple) {
  std::string text = std::string(name) + "(";
  for (gsize i = 0; i < g_variant_n_children(tuple); ++i) {
    const GLibPtr<GVariant> value(g_variant_get_child_value(tuple, i));
    text += std::string(i == 0 ? "" : ", ") + args[i]->name + "=" + Format(value.get());
  }
  return text + ")";
}
