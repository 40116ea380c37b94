/// A GVariantBuilder that lets go of what it holds when an exception passes.
#pragma once

#include <gio/gio.h>

class VariantBuilder {
 public:
  explicit VariantBuilder(const GVariantType* type) { g_variant_builder_init(&builder_, type); }
  VariantBuilder(const VariantBuilder&) = delete;
  VariantBuilder& operator=(const VariantBuilder&) = delete;
  ~VariantBuilder() { g_variant_builder_clear(&builder_); }

  /// `value` is taken over when it floats.
  void Add(GVariant* value) { g_variant_builder_add_value(&builder_, value); }
  template <class... A>
  void Add(const char* format, A... values) {
    g_variant_builder_add(&builder_, format, values...);
  }
  /// What was added, floating. Nothing can be added afterwards.
  GVariant* End() { return g_variant_builder_end(&builder_); }

 private:
  GVariantBuilder builder_;
};
