/// The configuration of the host platform, which is a file.
#include <glib.h>

#include <set>

#include "platform/host/HostPaths.h"
#include "tools/hlxctl/Doctor.h"
#include "tools/hlxctl/SampleConfiguration.h"

namespace {

/// "/setting/default_time_zone" and so on.
std::set<std::string> KeysOf(GKeyFile* file) {
  std::set<std::string> keys;
  gchar** const groups = g_key_file_get_groups(file, nullptr);
  for (gchar** group = groups; *group != nullptr; ++group) {
    gchar** const names = g_key_file_get_keys(file, *group, nullptr, nullptr);
    for (gchar** name = names; name != nullptr && *name != nullptr; ++name) {
      keys.insert(std::string("/") + *group + "/" + *name);
    }
    g_strfreev(names);
  }
  g_strfreev(groups);
  return keys;
}

std::vector<std::string> Without(const std::set<std::string>& keys, const std::set<std::string>& others) {
  std::vector<std::string> rest;
  for (const std::string& key : keys) {
    if (others.count(key) == 0) rest.push_back(key);
  }
  return rest;
}

}  // namespace

Findings CheckConfiguration(Patient& /*patient*/) {
  const std::string path = host::ConfigFile();
  const GLibPtr<GKeyFile> file(g_key_file_new());
  GError* problem = nullptr;
  struct stat status {};
  if (stat(path.c_str(), &status) == 0 && !host::IsReadable(status)) {
    return {{Health::kFailure, "configuration " + path + ": no regular file, or more than 1 MiB; no key is set",
             "name the unit's configuration in HLX_HOST_CONFIG"}};
  }
  if (g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, &problem) == FALSE) {
    const GLibPtr<GError> owned(problem);
    return {{Health::kFailure, "configuration " + path + ": " + problem->message,
             "name the unit's configuration in HLX_HOST_CONFIG"}};
  }
  const GLibPtr<GKeyFile> sample(g_key_file_new());
  g_key_file_load_from_data(sample.get(), kSampleConfiguration, sizeof kSampleConfiguration - 1, G_KEY_FILE_NONE,
                            nullptr);
  const std::set<std::string> keys = KeysOf(file.get());
  const std::set<std::string> known = KeysOf(sample.get());
  Findings findings = {{Health::kOk, "configuration " + path + ": " + std::to_string(keys.size()) + " keys"}};
  const std::vector<std::string> unknown = Without(keys, known);
  const std::vector<std::string> missing = Without(known, keys);
  if (!unknown.empty())
    findings.push_back({Health::kWarning, "unknown keys: " + Enumerate(unknown), "the library reads no such key"});
  if (!missing.empty()) {
    findings.push_back({Health::kWarning, "missing keys: " + Enumerate(missing), "they read as 0, false or empty"});
  }
  return findings;
}
