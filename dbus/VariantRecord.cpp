#include "dbus/VariantRecord.h"

#include "dbus/GLibPtr.h"
#include "dbus/VariantBuilder.h"

GVariant* build_variant_data(const void* record, std::size_t size) {
  VariantBuilder builder(G_VARIANT_TYPE_BYTESTRING);
  const auto* bytes = static_cast<const guchar*>(record);
  for (std::size_t i = 0; i < size; ++i) builder.Add("y", bytes[i]);
  return g_variant_new_variant(builder.End());
}

void extract_variant_data(void* record, GVariant* variant) {
  const GLibPtr<GVariant> inner(g_variant_get_variant(variant));
  auto* bytes = static_cast<guchar*>(record);
  GVariantIter iter;
  g_variant_iter_init(&iter, inner.get());
  while (g_variant_iter_next(&iter, "y", bytes)) ++bytes;
}

gssize variant_data_size(GVariant* variant) {
  if (!g_variant_is_of_type(variant, G_VARIANT_TYPE_VARIANT)) return -1;
  const GLibPtr<GVariant> inner(g_variant_get_variant(variant));
  if (!g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_BYTESTRING)) return -1;
  return static_cast<gssize>(g_variant_n_children(inner.get()));
}
