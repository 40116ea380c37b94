/// Two connected ends in this process, for what reads and writes streams.
#pragma once

#include <gio/gio.h>
#include <sys/socket.h>

#include "tests/fuzz/Input.h"

class StreamPair {
 public:
  StreamPair() {
    int ends[2];
    Require(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) == 0);
    for (int i = 0; i < 2; ++i) {
      GSocket* const socket = g_socket_new_from_fd(ends[i], nullptr);
      streams_[i] = G_IO_STREAM(g_socket_connection_factory_create_connection(socket));
      g_object_unref(socket);
    }
  }
  StreamPair(const StreamPair&) = delete;
  StreamPair& operator=(const StreamPair&) = delete;
  ~StreamPair() {
    for (GIOStream* const stream : streams_) g_object_unref(stream);
  }
  GIOStream* operator[](int end) const { return streams_[end]; }

 private:
  GIOStream* streams_[2] = {};
};
