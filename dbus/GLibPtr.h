/// Owning pointers for what GLib hands out.
#pragma once

#include <gio/gio.h>

#include <memory>

struct GLibDeleter {
  void operator()(GError* error) const { g_error_free(error); }
  void operator()(GVariant* variant) const { g_variant_unref(variant); }
  void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
  void operator()(GMainContext* context) const { g_main_context_unref(context); }
  void operator()(gchar* text) const { g_free(text); }
  template <class Object>
  void operator()(Object* object) const {
    g_object_unref(object);
  }
};

/// Also for any GObject type: GLibPtr<GDBusConnection>.
template <class T>
using GLibPtr = std::unique_ptr<T, GLibDeleter>;
