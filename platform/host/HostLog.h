/// What the host platform itself has to say.
#pragma once

#include <cstdio>

#include "platform/HLXLog.h"

/// A record of the platform's own: through the log category, or on standard error while there is none, so that a wrong
/// configuration or a damaged database never goes unnoticed.
#define HLX_HOST_COMPLAIN(...)                   \
  do {                                           \
    if (liblog_category != nullptr) {            \
      HLX_LOG_ERROR(__VA_ARGS__);                \
    } else {                                     \
      std::fprintf(stderr, "hlx: " __VA_ARGS__); \
      std::fputc('\n', stderr);                  \
    }                                            \
  } while (false)
