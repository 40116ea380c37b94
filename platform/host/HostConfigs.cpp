#include <glib.h>
#include <sys/stat.h>

#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "platform/LibConfigs.h"
#include "platform/host/HostLog.h"
#include "platform/host/HostPaths.h"

HLX_LOG_SOURCE("platform/host/HostConfigs");

namespace {

struct KeyFileDeleter {
  void operator()(GKeyFile* file) const { g_key_file_unref(file); }
};

std::string TextOf(GKeyFile* file, const gchar* group, const gchar* name, GError** error) {
  g_autofree gchar* text = g_key_file_get_string(file, group, name, error);
  return text == nullptr ? std::string() : std::string(text);
}

/// What tells one version of a file from the next.
struct Version {
  timespec modified{};
  ino_t inode = 0;
  off_t size = -1;
  bool operator==(const Version& other) const {
    return modified.tv_sec == other.modified.tv_sec && modified.tv_nsec == other.modified.tv_nsec &&
           inode == other.inode && size == other.size;
  }
};

/// Configuration from a key file: "/setting/x" is x in [setting]. The file is HLX_HOST_CONFIG, else hlx/platform.conf
/// below XDG_CONFIG_HOME; a changed file counts from the next look-up on. A missing key is 0, false or empty.
class HostConfigs : public LibConfigs {
 public:
  int GetInt(const std::string& key) override { return Get(key, "32-bit number", g_key_file_get_integer); }
  bool GetBool(const std::string& key) override { return Get(key, "boolean", g_key_file_get_boolean) != FALSE; }
  /// Asked for with many an event, so the texts of this version of the file are kept.
  std::string GetString(const std::string& key) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    Refresh();
    auto text = texts_.find(key);
    if (text == texts_.end()) text = texts_.emplace(key, Find(key, "text", TextOf)).first;
    return text->second;
  }

 private:
  template <class T>
  T Get(const std::string& key, const char* type, T (*get)(GKeyFile*, const gchar*, const gchar*, GError**)) {
    const std::lock_guard<std::mutex> lock(mutex_);
    Refresh();
    return Find(key, type, get);
  }

  template <class T>
  T Find(const std::string& key, const char* type, T (*get)(GKeyFile*, const gchar*, const gchar*, GError**)) {
    const auto slash = key.find('/', 1);
    if (key.empty() || key[0] != '/' || slash == std::string::npos) return T();
    const std::string group = key.substr(1, slash - 1);
    const std::string name = key.substr(slash + 1);
    g_autofree gchar* raw = g_key_file_get_value(file_.get(), group.c_str(), name.c_str(), nullptr);
    if (raw == nullptr) return T();
    g_autoptr(GError) error = nullptr;
    T value = get(file_.get(), group.c_str(), name.c_str(), &error);
    if (error == nullptr) return value;
    if (complained_.insert(key).second) {
      HLX_HOST_COMPLAIN("configuration file %s: %s=%s is no %s", path_.c_str(), key.c_str(), raw, type);
    }
    return T();
  }

  void Refresh() {
    const std::string path = host::ConfigFile();
    struct stat status {};
    Version version;
    const bool there = stat(path.c_str(), &status) == 0;
    if (there) version = {status.st_mtim, status.st_ino, status.st_size};
    if (file_ != nullptr && path == path_ && version == version_) return;
    path_ = path;
    version_ = version;
    complained_.clear();
    texts_.clear();
    file_.reset(g_key_file_new());
    if (there && !host::IsReadable(status)) {
      HLX_HOST_COMPLAIN("configuration file %s: %s; no key is set", path.c_str(),
                        S_ISREG(status.st_mode) ? "more than 1 MiB" : "no regular file");
      return;
    }
    g_autoptr(GError) error = nullptr;
    if (g_key_file_load_from_file(file_.get(), path.c_str(), G_KEY_FILE_NONE, &error)) return;
    file_.reset(g_key_file_new());
    // Without a file of that name the defaults are meant, unless somebody asked for this very file.
    if (host::Environment("HLX_HOST_CONFIG").empty() && g_error_matches(error, G_FILE_ERROR, G_FILE_ERROR_NOENT))
      return;
    HLX_HOST_COMPLAIN("configuration file %s: %s; no key is set", path.c_str(), error->message);
  }

  std::mutex mutex_;
  std::string path_;
  Version version_;
  std::unique_ptr<GKeyFile, KeyFileDeleter> file_;
  std::map<std::string, std::string> texts_;
  std::set<std::string> complained_;  ///< keys with a value of another type: named once for each version of the file
};

}  // namespace

LibConfigs* GetLibConfigs() {
  static HostConfigs& configs = *new HostConfigs;
  return &configs;
}
