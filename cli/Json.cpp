#include "cli/Json.h"

#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <vector>

#include "dbus/GLibPtr.h"
#include "dbus/VariantRecord.h"

namespace {

template <class Element>
Json ElementsOf(GVariant* record, std::size_t size) {
  std::vector<Element> elements(size / sizeof(Element));
  extract_variant_data(elements.data(), record);
  return elements;
}

Json ChildrenOf(GVariant* value) {
  const bool dictionary = g_variant_is_of_type(value, G_VARIANT_TYPE_VARDICT) != FALSE;
  Json json = dictionary ? Json::object() : Json::array();
  for (gsize i = 0; i < g_variant_n_children(value); ++i) {
    const GLibPtr<GVariant> child(g_variant_get_child_value(value, i));
    if (!dictionary) {
      json.push_back(JsonOf(child.get()));
      continue;
    }
    const gchar* key = nullptr;
    GVariant* boxed = nullptr;
    g_variant_get(child.get(), "{&sv}", &key, &boxed);
    json[key] = JsonOf(GLibPtr<GVariant>(boxed).get());
  }
  return json;
}

Json NumberOf(double number) {
  constexpr double kExact = 9007199254740992.0;  // 2^53: from here on not every whole number is one
  if (std::trunc(number) == number && std::abs(number) < kExact) return static_cast<int64_t>(number);
  return number;
}

}  // namespace

Json JsonOf(const catalog::Scalar& scalar) {
  if (const auto* const whole = std::get_if<int64_t>(&scalar)) return *whole;
  if (const auto* const number = std::get_if<double>(&scalar)) return NumberOf(*number);
  const auto* const text = std::get_if<std::string>(&scalar);
  return text == nullptr ? Json() : Json(*text);
}

Json JsonOf(GVariant* value) {
  const gssize size = variant_data_size(value);
  if (size >= 0) {
    const auto bytes = static_cast<std::size_t>(size);
    return bytes % sizeof(int32_t) == 0 ? ElementsOf<int32_t>(value, bytes) : ElementsOf<guchar>(value, bytes);
  }
  switch (g_variant_classify(value)) {
    case G_VARIANT_CLASS_BOOLEAN:
      return g_variant_get_boolean(value) != FALSE;
    case G_VARIANT_CLASS_BYTE:
      return g_variant_get_byte(value);
    case G_VARIANT_CLASS_INT32:
      return g_variant_get_int32(value);
    case G_VARIANT_CLASS_UINT32:
      return g_variant_get_uint32(value);
    case G_VARIANT_CLASS_INT64:
      return g_variant_get_int64(value);
    case G_VARIANT_CLASS_DOUBLE:
      return NumberOf(g_variant_get_double(value));
    case G_VARIANT_CLASS_STRING:
      return g_variant_get_string(value, nullptr);
    case G_VARIANT_CLASS_VARIANT:
      return JsonOf(GLibPtr<GVariant>(g_variant_get_variant(value)).get());
    case G_VARIANT_CLASS_ARRAY:
    case G_VARIANT_CLASS_TUPLE:
      return ChildrenOf(value);
    default:
      return GLibPtr<gchar>(g_variant_print(value, FALSE)).get();
  }
}

std::string Compact(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }
