/// Owning pointers for what GLib hands out.
#pragma once

#include <gio/gio.h>

#include <memory>

typedef struct _ComVornLinuxSystem ComVornLinuxSystem;  // NOLINT(modernize-use-using): as in the generated header

/// One row for each type: a type without a row does not compile.
struct GLibDeleter {
  void operator()(ComVornLinuxSystem* object) const { g_object_unref(object); }
  void operator()(gchar* text) const { g_free(text); }
  void operator()(GCancellable* cancellable) const { g_object_unref(cancellable); }
  void operator()(GDateTime* time) const { g_date_time_unref(time); }
  void operator()(GDBusConnection* connection) const { g_object_unref(connection); }
  void operator()(GDBusInterfaceSkeleton* skeleton) const { g_object_unref(skeleton); }
  void operator()(GDBusMessage* message) const { g_object_unref(message); }
  void operator()(GError* error) const { g_error_free(error); }
  void operator()(GKeyFile* file) const { g_key_file_unref(file); }
  void operator()(GMainContext* context) const { g_main_context_unref(context); }
  void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
  void operator()(GSocketAddress* address) const { g_object_unref(address); }
  void operator()(GSubprocess* process) const { g_object_unref(process); }
  void operator()(GTimeZone* zone) const { g_time_zone_unref(zone); }
  void operator()(GVariant* variant) const { g_variant_unref(variant); }
};

template <class T>
using GLibPtr = std::unique_ptr<T, GLibDeleter>;
