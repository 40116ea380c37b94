#include "tools/hlxctl/PackageCheck.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <vector>

#include "HLXSystemProxy.h"
#include "catalog/Words.h"
#include "client/info/VersionFile.h"
#include "client/update/PackageVerifier.h"
#include "platform/LibConfigs.h"
#include "tools/common/Failure.h"
#include "tools/common/Output.h"
#include "tools/common/Records.h"

namespace {

namespace fs = std::filesystem;

/// Outcomes that the unit's own search keeps to itself.
enum SilentOutcome : int { kNoPackage = 8, kNoVersionFile = 9, kNoUnitVersion = 10 };
constexpr catalog::Word kSilentOutcome[] = {
    {kNoPackage, "no-package"}, {kNoVersionFile, "no-version-file"}, {kNoUnitVersion, "no-unit-version"}};

/// A scratch directory with a plain name: the verification puts its paths into shell commands as they are. It lies as
/// deep as the unit's, so that what leads out of a package leads as far.
class Workshop {
 public:
  explicit Workshop(const fs::path& package) {
    char name[] = "/tmp/hlxctl-XXXXXX";
    if (mkdtemp(name) == nullptr) throw Failure(kExitInternal, std::string(name) + ": " + std::strerror(errno));
    path_ = name;
    fs::create_directory_symlink(package, path_ / "stick");
  }
  Workshop(const Workshop&) = delete;
  Workshop& operator=(const Workshop&) = delete;
  ~Workshop() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }

  PackagePaths Paths() const { return {path_ / "stick", path_}; }

 private:
  fs::path path_;
};

/// The unit's versions as its info client makes them, without making one: that would make shared records, too.
SystemInfo::VersionInfo UnitVersion() {
  SystemInfo::VersionInfo unit;
  const auto value = [](const std::string& key) { return AnalysisLocalVersionInfo(key, "ARM"); };
  unit.arm_version = PrefixedArmVersion("ARM Version", value);
  unit.hardware_version = value("Hardware Version");
  unit.project_name = value("Project Name") + GetLibConfigs()->GetString("/project/project_model_name");
  if (GetLibConfigs()->GetBool("/setting/enable_auto_hw_version")) {
    // Only the info client knows the board's strap. On a running unit its records are there already.
    RequireRecords(catalog::Area::kInfo);
    SystemInfo::VersionInfo whole;
    HLX_GetSystemInfoProxy()->GetLocalVersionInfo(whole);
    unit.hardware_version = whole.hardware_version;
  }
  return unit;
}

class Report {
 public:
  explicit Report(bool json) : json_(json) {}

  /// What was compared, and what came out. @return `passed`
  bool Add(const char* check, const std::string& compared, bool passed, const char* skipped_by = nullptr) {
    const std::string result = skipped_by != nullptr ? std::string("skipped") : passed ? "passed" : "failed";
    if (json_) {
      checks_.push_back({{"check", check}, {"compared", compared}, {"result", result}});
      if (skipped_by != nullptr) checks_.back()["skipped_by"] = skipped_by;
    } else {
      std::string line = check;
      line.resize(12, ' ');
      Output::Line(line + (result + std::string(9 - result.size(), ' ')) + Printable(compared) +
                   (skipped_by != nullptr ? std::string(" (") + skipped_by + ")" : ""));
    }
    return passed;
  }

  /// @return the exit code
  int Conclude(const std::string& directory, int outcome) const {
    const bool told = outcome < kNoPackage;
    const catalog::Words words = told ? catalog::Words(catalog::words::kUpdateOutcome) : kSilentOutcome;
    const std::string text = catalog::InWords(catalog::Named(words), int64_t{outcome});
    if (json_) {
      Output::JsonLine({{"directory", directory},
                        {"checks", checks_},
                        {"outcome", text},
                        {"listeners_get", told ? Json(outcome) : Json()}});
    } else {
      Output::Line("outcome     " + text +
                   (told ? " (listeners get " + std::to_string(outcome) + ")" : " (listeners get nothing)"));
    }
    return outcome == HLXUpdate::UPDATE_NOTIFY_VALID ? kExitDone : kExitPackage + outcome;
  }

 private:
  bool json_;
  Json checks_ = Json::array();
};

std::string Relation(const std::string& unit, const char* relation, const std::string& package) {
  return "unit \"" + unit + "\" " + relation + " package \"" + package + "\"";
}

/// All three comparisons for the reader; the verification's own verdict is that of the first one that fails.
int Compare(const PackageVerifier& verifier, Report& report) {
  const SystemInfo::VersionInfo unit = UnitVersion();
  const SystemInfo::VersionInfo package = verifier.ReadVersion();
  if (!report.Add("unit", "software version \"" + unit.arm_version + "\"", !unit.arm_version.empty())) {
    return kNoUnitVersion;
  }
  const bool same_project = unit.project_name == package.project_name;
  const bool right_project = PackageVerifier::CheckProject(unit.project_name, package.project_name);
  const struct {
    const char* name;
    const char* skip;
    std::string compared;
    bool passed;
  } checks[] = {
      {"software", "/q4system/allow_sw_version_revert",
       Relation(AnalysisLocalVersionInfo("ARM Version", "ARM"), "<=", verifier.AnalysisCmpVersionInfo("ARM Version")),
       verifier.CheckArmVersion()},
      {"hardware", "/q4system/allow_hw_version_compat", Relation(unit.hardware_version, "=", package.hardware_version),
       PackageVerifier::CheckHwVersion(unit.hardware_version, package.hardware_version)},
      {"project", "/q4system/allow_project_different",
       Relation(unit.project_name, "=", package.project_name) +
           (right_project && !same_project ? ": a unit that takes any project" : ""),
       right_project},
  };
  for (const auto& check : checks) {
    report.Add(check.name, check.compared, check.passed, GetLibConfigs()->GetBool(check.skip) ? check.skip : nullptr);
  }
  return verifier.CompareWith(unit, package);
}

/// The line that decides: only the first one of the checker's report counts.
std::string FirstChecksum(const std::string& path) {
  if (!FileExists(path)) return "md5.txt is missing";
  constexpr std::size_t kShown = 100;
  std::ifstream list(path);
  std::string line;
  std::getline(list, line);
  return "md5.txt: " + line.substr(0, kShown);
}

/// The steps of the unit's search, in its order.
int Examine(const PackageVerifier& verifier, Report& report) {
  const PackagePaths& paths = verifier.Paths();
  if (FileExists(paths.CanFile())) {
    report.Add("CAN file", "CAN.upg is there: nothing else is examined", true);
    return HLXUpdate::UPDATE_NOTIFY_CAN_FILE;
  }
  if (!report.Add("package", "update.zip", FileExists(paths.Package()))) return kNoPackage;
  if (!report.Add("checksum", FirstChecksum(paths.ChecksumList()), verifier.VerifyMD5Sum())) {
    return HLXUpdate::UPDATE_NOTIFY_CHECKSUM_WRONG;
  }
  std::string command;
  const bool extracted = verifier.ExtractVersionFile(&command) && FileExists(paths.VersionFile());
  if (!report.Add("extraction", "app/etc/sys_version.conf of update.zip", extracted)) return kNoVersionFile;
  return Compare(verifier, report);
}

}  // namespace

int CheckPackage(const std::string& directory, bool json) {
  std::error_code problem;
  const fs::path package = fs::canonical(directory, problem);
  if (problem || !fs::is_directory(package, problem)) {
    throw Failure(kExitUsage, "'" + directory + "': " + (problem ? problem.message() : "no directory"));
  }
  const Workshop workshop(package);
  Report report(json);
  const int outcome = Examine(PackageVerifier(workshop.Paths()), report);
  return report.Conclude(package, outcome);
}
