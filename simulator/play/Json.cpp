#include "simulator/play/Json.h"

#include <cstdint>
#include <vector>

#include "dbus/GLibPtr.h"
#include "dbus/VariantRecord.h"
#include "simulator/model/Values.h"

namespace {

Json RecordOf(GVariant* value, std::size_t size) {
  if (size % sizeof(int32_t) != 0) {
    std::vector<unsigned char> bytes(size);
    extract_variant_data(bytes.data(), value);
    return bytes;
  }
  std::vector<int32_t> numbers(size / sizeof(int32_t));
  extract_variant_data(numbers.data(), value);
  return numbers;
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

}  // namespace

Json JsonOf(const catalog::Scalar& scalar) {
  if (const auto* const whole = std::get_if<int64_t>(&scalar)) return *whole;
  if (const auto* const number = std::get_if<double>(&scalar)) return *number;
  const auto* const text = std::get_if<std::string>(&scalar);
  return text == nullptr ? Json() : Json(*text);
}

Json JsonOf(GVariant* value) {
  const gssize size = variant_data_size(value);
  if (size >= 0) return RecordOf(value, static_cast<std::size_t>(size));
  switch (g_variant_classify(value)) {
    case G_VARIANT_CLASS_BOOLEAN:
      return g_variant_get_boolean(value) != FALSE;
    case G_VARIANT_CLASS_VARIANT:
      return JsonOf(GLibPtr<GVariant>(g_variant_get_variant(value)).get());
    case G_VARIANT_CLASS_ARRAY:
    case G_VARIANT_CLASS_TUPLE:
      return ChildrenOf(value);
    default:
      return JsonOf(ScalarOf(value));
  }
}

std::string LineOf(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n"; }
