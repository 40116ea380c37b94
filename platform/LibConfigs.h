/// The maker's configuration store, as the library uses it.
#pragma once

#include <string>

/// Read-only look-ups by path-like key ("/setting/default_time_zone"). What a missing key or a value of another type
/// yields is the store's business (the host platform: 0, false, empty). Callable from any thread.
class LibConfigs {
 public:
  virtual ~LibConfigs() = default;
  virtual int GetInt(const std::string& key) = 0;
  virtual bool GetBool(const std::string& key) = 0;
  virtual std::string GetString(const std::string& key) = 0;
};

/// The process's store; never null, owned by the platform.
LibConfigs* GetLibConfigs();
