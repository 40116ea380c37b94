/// Owning pointers for what libsoup hands out.
#pragma once

#include <libsoup/soup.h>

#include <memory>

struct SoupDeleter {
  void operator()(SoupServer* server) const { g_object_unref(server); }
  void operator()(SoupWebsocketConnection* connection) const { g_object_unref(connection); }
};

template <class T>
using SoupPtr = std::unique_ptr<T, SoupDeleter>;
