#pragma once

#include <glib.h>

#include <chrono>

/// Runs the main context of the calling thread until `done()` or the time is up; tells which.
template <class Done>
bool RunUntil(const Done& done, std::chrono::seconds limit = std::chrono::seconds(10)) {
  const auto deadline = std::chrono::steady_clock::now() + limit;
  while (!done()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    if (!g_main_context_iteration(g_main_context_get_thread_default(), FALSE)) g_usleep(1000);
  }
  return true;
}
