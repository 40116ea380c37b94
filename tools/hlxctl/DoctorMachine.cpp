#include <glib.h>
#include <sys/stat.h>

#include <climits>
#include <cstdlib>

#include "catalog/Catalog.h"
#include "data/Settings.h"
#include "platform/HLXLog.h"
#include "platform/LibConfigs.h"
#include "tools/common/Failure.h"
#include "tools/common/Records.h"
#include "tools/common/ZoneNames.h"
#include "tools/hlxctl/Doctor.h"

namespace {

constexpr char kLocalTime[] = "/etc/localtime";

std::string RealPath(const std::string& path) {
  char real[PATH_MAX];
  return realpath(path.c_str(), real) != nullptr ? real : "";
}

/// The unit's zone; -1 where the record does not tell one of the table.
int UnitZone() try {
  const catalog::Value& zone = *catalog::FindValue("time.zone");
  const int64_t number = std::get<int64_t>(Read(zone));
  return number >= zone.reading.least && number <= zone.reading.most ? static_cast<int>(number) : -1;
} catch (const Failure&) {
  return -1;
}

/// What `pidof hmi` prints, as the library asks it; the first one counts.
std::vector<std::string> HmiProcesses() {
  gchar* output = nullptr;
  const char* const command[] = {"pidof", "hmi", nullptr};
  if (g_spawn_sync(nullptr, const_cast<gchar**>(command), nullptr, G_SPAWN_SEARCH_PATH, nullptr, nullptr, &output,
                   nullptr, nullptr, nullptr) == FALSE) {
    return {};
  }
  const GLibPtr<gchar> owned(output);
  std::vector<std::string> pids;
  gchar** const words = g_strsplit_set(g_strstrip(output), " \n", -1);
  for (gchar** word = words; *word != nullptr; ++word) {
    if (**word != '\0') pids.emplace_back(*word);
  }
  g_strfreev(words);
  return pids;
}

}  // namespace

Findings CheckZones(Patient& /*patient*/) {
  std::vector<std::string> missing;
  for (const int zone : MissingZones()) missing.push_back(ZoneFile(zone) + " (" + std::to_string(zone) + ")");
  if (missing.empty()) return {{Health::kOk, "all 79 zones have their files"}};
  return {{Health::kWarning, "without a file: " + Enumerate(missing),
           "such a zone leaves /etc/localtime leading nowhere: install the file (tzdata-legacy has old names)"}};
}

Findings CheckLocalTime(Patient& /*patient*/) {
  struct stat status {};
  if (lstat(kLocalTime, &status) != 0) {
    return {{Health::kWarning, "/etc/localtime is not there: local time is UTC", "the library's time client makes it"}};
  }
  const std::string real = RealPath(kLocalTime);
  if (real.empty()) return {{Health::kFailure, "/etc/localtime leads nowhere", "set the zone, or remove the link"}};
  const int zone = UnitZone();
  const std::string file = zone < 0 ? "" : RealPath("/usr/share/zoneinfo/" + ZoneFile(zone));
  if (!file.empty() && file != real) {
    return {{Health::kWarning, "/etc/localtime is " + real + ", the unit's zone " + ZoneFile(zone),
             "the next application that makes the time client links it anew"}};
  }
  return {{Health::kOk, "/etc/localtime is " + real}};
}

Findings CheckSettings(Patient& /*patient*/) {
  std::vector<std::string> problems;
  std::size_t saved = 0;
  std::size_t count = 0;
  for (const HLXSystemData::Setting& setting : HLXSystemData::Settings()) {
    if (setting.item.name == nullptr) continue;
    ++count;
    int value = 0;
    const int result = HLX_GetQ4PersistService()->ReadInt(setting.item.module, setting.item.id, &value);
    if (result == PERSIST_OK) ++saved;
    if (result == PERSIST_OK || result == PERSIST_ERROR_DATA_NOT_FOUND) continue;
    problems.push_back(std::string(setting.item.name) + " (" + HLXSystemData::PersistErrorName(result) + ")");
  }
  if (problems.empty()) {
    return {{Health::kOk, std::to_string(saved) + " of " + std::to_string(count) + " settings are saved"}};
  }
  return {{Health::kFailure, "cannot be read: " + Enumerate(problems), "look at the platform's persist service"}};
}

Findings CheckLog(Patient& /*patient*/) {
  if (liblog_category != nullptr) return {{Health::kOk, "the log category is up"}};
  return {{Health::kWarning, "the log category is not up: records are lost, and each prints a line on standard output",
           "bring the platform's log system up before the library is used"}};
}

Findings CheckHmi(Patient& /*patient*/) {
  const std::vector<std::string> pids = HmiProcesses();
  if (pids.empty()) {
    return {{Health::kWarning, "pidof finds no process named hmi: nobody examines update packages",
             "name the application so"}};
  }
  if (pids.size() == 1) return {{Health::kOk, "process " + pids[0] + " is the one that examines packages"}};
  return {{Health::kWarning, "processes " + Enumerate(pids) + " are named hmi; only " + pids[0] + " examines packages",
           "let one process bear the name"}};
}

Findings CheckPrograms(Patient& /*patient*/) {
  std::vector<std::string> missing;
  for (const char* const program : {"sh", "pidof", "md5sum", "unzip", "ln", "rm", "mkdir", "cat", "sync", "hwclock"}) {
    if (GLibPtr<gchar>(g_find_program_in_path(program)) == nullptr) missing.emplace_back(program);
  }
  const char* language = "C";
  for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* const value = std::getenv(name);
    if (value == nullptr || *value == '\0') continue;
    language = value;
    break;
  }
  if (!missing.empty()) {
    return {{missing == std::vector<std::string>{"hwclock"} ? Health::kWarning : Health::kFailure,
             "not in PATH: " + Enumerate(missing), "install what is missing: the library runs it"}};
  }
  return {{Health::kOk, std::string("all that the library runs is there; the language here is ") + language +
                            ", what the library reads is asked for in C"}};
}
