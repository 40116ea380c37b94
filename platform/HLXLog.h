/// Logging through the maker's log category. A source file names itself once, after its includes:
///
///     HLX_LOG_SOURCE("client/power/HLXPowerClient");
///
/// and then logs with HLX_LOG_DEBUG to HLX_LOG_FATAL; the formats are checked like printf's.
#pragma once

#include <unistd.h>
#include <zlog.h>

#include <cstdio>
#include <cstring>

/// The process-wide log category: null until the platform's log system is up.
extern zlog_category_s* liblog_category;

#define HLX_LOG_SOURCE(name) [[maybe_unused]] static constexpr char kHlxLogSource[] = name

/// One record for a call site other than the macro's own line (`func` a C string).
#define HLX_LOG_AT(level, func, line, ...)                                                                    \
  do {                                                                                                        \
    if (liblog_category != nullptr) {                                                                         \
      zlog(liblog_category, kHlxLogSource, sizeof(kHlxLogSource) - 1, func, std::strlen(func), line, level,   \
           __VA_ARGS__);                                                                                      \
    } else {                                                                                                  \
      std::printf("[%d][file:%s][func:%s][line:%d]Warn:Log system not init.\n", static_cast<int>(::getpid()), \
                  kHlxLogSource, func, static_cast<int>(line));                                               \
    }                                                                                                         \
  } while (false)

#define HLX_LOG_DEBUG(...) HLX_LOG_AT(ZLOG_LEVEL_DEBUG, __func__, __LINE__, __VA_ARGS__)
#define HLX_LOG_INFO(...) HLX_LOG_AT(ZLOG_LEVEL_INFO, __func__, __LINE__, __VA_ARGS__)
#define HLX_LOG_NOTICE(...) HLX_LOG_AT(ZLOG_LEVEL_NOTICE, __func__, __LINE__, __VA_ARGS__)
#define HLX_LOG_WARN(...) HLX_LOG_AT(ZLOG_LEVEL_WARN, __func__, __LINE__, __VA_ARGS__)
#define HLX_LOG_ERROR(...) HLX_LOG_AT(ZLOG_LEVEL_ERROR, __func__, __LINE__, __VA_ARGS__)
#define HLX_LOG_FATAL(...) HLX_LOG_AT(ZLOG_LEVEL_FATAL, __func__, __LINE__, __VA_ARGS__)
