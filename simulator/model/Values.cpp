#include "simulator/model/Values.h"

#include <cstdint>
#include <limits>
#include <vector>

#include "catalog/Words.h"
#include "dbus/VariantRecord.h"

using namespace catalog;

namespace {

/// The records of the interface consist of 32-bit numbers.
std::string NumbersOf(GVariant* value, std::size_t size) {
  std::vector<int32_t> numbers(size / sizeof(int32_t));
  if (numbers.empty() || size % sizeof(int32_t) != 0) return std::to_string(size) + " bytes";
  extract_variant_data(numbers.data(), value);
  std::string text;
  for (const int32_t number : numbers) text += (text.empty() ? "" : " ") + std::to_string(number);
  return text;
}

std::string Format(GVariant* value) {
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_BYTE)) return std::to_string(g_variant_get_byte(value));
  const gssize size = variant_data_size(value);
  if (size >= 0) return "<" + NumbersOf(value, static_cast<std::size_t>(size)) + ">";
  const GLibPtr<gchar> text(g_variant_print(value, FALSE));
  return text.get();
}

}  // namespace

Scalar ScalarOf(GVariant* value) {
  switch (g_variant_classify(value)) {
    case G_VARIANT_CLASS_BYTE:
      return int64_t{g_variant_get_byte(value)};
    case G_VARIANT_CLASS_BOOLEAN:
      return int64_t{g_variant_get_boolean(value)};
    case G_VARIANT_CLASS_INT32:
      return int64_t{g_variant_get_int32(value)};
    case G_VARIANT_CLASS_UINT32:
      return int64_t{g_variant_get_uint32(value)};
    case G_VARIANT_CLASS_INT64:
      return int64_t{g_variant_get_int64(value)};
    case G_VARIANT_CLASS_DOUBLE:
      return g_variant_get_double(value);
    case G_VARIANT_CLASS_STRING:
      return std::string(g_variant_get_string(value, nullptr));
    default:
      break;
  }
  const gssize size = variant_data_size(value);
  if (size >= 0) return NumbersOf(value, static_cast<std::size_t>(size));
  const GLibPtr<gchar> text(g_variant_print(value, TRUE));
  throw BadValue(std::string(text.get()) + " is neither a number nor a text");
}

GVariant* VariantOf(const Scalar& scalar) {
  if (const auto* const whole = std::get_if<int64_t>(&scalar)) return g_variant_new_int64(*whole);
  if (const auto* const number = std::get_if<double>(&scalar)) return g_variant_new_double(*number);
  const auto* const text = std::get_if<std::string>(&scalar);
  if (text == nullptr) return g_variant_new_string("");
  const GLibPtr<gchar> valid(g_utf8_make_valid(text->c_str(), static_cast<gssize>(text->size())));
  return g_variant_new_string(valid.get());
}

GVariant* VariantOf(const Scalar& scalar, char signature) {
  switch (signature) {
    case 'y':
      return g_variant_new_byte(static_cast<guchar>(std::get<int64_t>(scalar)));
    case 'b':
      return g_variant_new_boolean(std::get<int64_t>(scalar) != 0 ? TRUE : FALSE);
    case 'i':
      return g_variant_new_int32(static_cast<gint32>(std::get<int64_t>(scalar)));
    case 'u':
      return g_variant_new_uint32(static_cast<guint32>(std::get<int64_t>(scalar)));
    default:
      return g_variant_new_double(NumberIn(scalar));
  }
}

Reading Widened(const Reading& reading, char signature) {
  switch (signature) {
    case 'y':
      return reading.In(0, std::numeric_limits<guint8>::max());
    case 'b':
      return Flag(reading.words.empty() ? Words(words::kOnOff) : reading.words);
    case 'i':
      return reading.In(std::numeric_limits<gint32>::min(), std::numeric_limits<gint32>::max());
    case 'u':
      return reading.In(0, std::numeric_limits<guint32>::max());
    default:
      return Decimal(reading.unit, reading.decimals);
  }
}

std::string TextOf(GVariant* value) {
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_STRING)) return g_variant_get_string(value, nullptr);
  const GLibPtr<gchar> text(g_variant_print(value, FALSE));
  return text.get();
}

std::string Describe(const char* name, GDBusArgInfo* const* args, GVariant* tuple) {
  std::string text = std::string(name) + "(";
  for (gsize i = 0; i < g_variant_n_children(tuple); ++i) {
    const GLibPtr<GVariant> value(g_variant_get_child_value(tuple, i));
    text += std::string(i == 0 ? "" : ", ") + args[i]->name + "=" + Format(value.get());
  }
  return text + ")";
}
