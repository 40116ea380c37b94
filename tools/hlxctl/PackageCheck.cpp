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
#include "client/update/PackageExamination.h"
#include "platform/LibConfigs.h"
#include "tools/common/Failure.h"
#include "tools/common/Output.h"
#include "tools/common/Records.h"
#include "tools/hlxctl/Interruption.h"

namespace {

namespace fs = std::filesystem;

using Examination = PackageExamination;
constexpr catalog::Word kSilentEnd[] = {{Examination::kNoPackage, "no-package"},
                                        {Examination::kNoVersionFile, "no-version-file"},
                                        {Examination::kNoUnitVersion, "no-unit-version"}};

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
    const bool told = outcome < Examination::kNoPackage;
    const catalog::Words words = told ? catalog::Words(catalog::words::kUpdateOutcome) : kSilentEnd;
    const std::string text = catalog::InWords(catalog::Named(words), int64_t{outcome});
    const int code = outcome == HLXUpdate::UPDATE_NOTIFY_VALID ? kExitDone : kExitPackage + outcome;
    if (json_) {
      Json json = {{"ok", code == kExitDone}};
      if (code != kExitDone) json.update({{"error", text}, {"code", code}});
      json.update({{"directory", directory},
                   {"checks", checks_},
                   {"outcome", text},
                   {"listeners_get", told ? Json(outcome) : Json()}});
      Output::JsonLine(json);
    } else {
      Output::Line("outcome     " + text +
                   (told ? " (listeners get " + std::to_string(outcome) + ")" : " (listeners get nothing)"));
    }
    return code;
  }

 private:
  bool json_;
  Json checks_ = Json::array();
};

std::string Relation(const std::string& unit, const char* relation, const std::string& package) {
  return "unit \"" + unit + "\" " + relation + " package \"" + package + "\"";
}

/// The line that decides: only the first one of the checker's report counts.
std::string FirstChecksum(const std::string& path) {
  if (!IsRegularFile(path)) return "md5.txt is missing";
  std::string shown(100, '\0');
  std::ifstream list(path);
  list.read(shown.data(), static_cast<std::streamsize>(shown.size()));
  shown.resize(static_cast<std::size_t>(list.gcount()));
  return "md5.txt: " + shown.substr(0, shown.find('\n'));
}

/// The unit's examination, and a report of it.
class Check : public Examination {
 public:
  explicit Check(const PackagePaths& paths) : Examination(0, paths) {}

  /// Up to the step that decided; not a word of what was interrupted.
  void Explain(Report& report, int outcome) const {
    if (Overtaken()) return;
    const PackagePaths& paths = Verifier().Paths();
    if (outcome == HLXUpdate::UPDATE_NOTIFY_CAN_FILE) {
      report.Add("CAN file", "CAN.upg is there: nothing else is examined", true);
      return;
    }
    const bool passed = report.Add("package", "update.zip", outcome != kNoPackage) &&
                        report.Add("checksum", FirstChecksum(paths.ChecksumList()),
                                   outcome != HLXUpdate::UPDATE_NOTIFY_CHECKSUM_WRONG) &&
                        report.Add("extraction", "app/etc/sys_version.conf of update.zip", outcome != kNoVersionFile) &&
                        report.Add("unit", "software version \"" + unit_.arm_version + "\"", outcome != kNoUnitVersion);
    if (!passed) return;
    for (const Comparison& comparison : comparisons_) {
      const bool skipped = GetLibConfigs()->GetBool(comparison.skip);
      report.Add(comparison.name, comparison.compared, comparison.passed, skipped ? comparison.skip : nullptr);
    }
  }

 private:
  struct Comparison {
    const char* name;
    const char* skip;
    std::string compared;
    bool passed;
  };

  bool UnitVersion(SystemInfo::VersionInfo* unit) override {
    unit_ = ::UnitVersion();
    *unit = unit_;
    return !unit_.arm_version.empty();
  }

  /// All three for the reader; the outcome is that of the first one that fails.
  void OnVersions(const SystemInfo::VersionInfo& unit, const SystemInfo::VersionInfo& package) override {
    const bool same_project = unit.project_name == package.project_name;
    const bool right_project = PackageVerifier::CheckProject(unit.project_name, package.project_name);
    comparisons_ = {
        {"software", "/q4system/allow_sw_version_revert",
         Relation(AnalysisLocalVersionInfo("ARM Version", "ARM"),
                  "<=", Verifier().AnalysisCmpVersionInfo("ARM Version")),
         Verifier().CheckArmVersion()},
        {"hardware", "/q4system/allow_hw_version_compat",
         Relation(unit.hardware_version, "=", package.hardware_version),
         PackageVerifier::CheckHwVersion(unit.hardware_version, package.hardware_version)},
        {"project", "/q4system/allow_project_different",
         Relation(unit.project_name, "=", package.project_name) +
             (right_project && !same_project ? ": a unit that takes any project" : ""),
         right_project},
    };
  }

  bool Tell(HLXUpdate::UpdateNotifyResult /*result*/) override { return true; }
  void Settle() override {}

  SystemInfo::VersionInfo unit_;
  std::vector<Comparison> comparisons_;
};

}  // namespace

int CheckPackage(const std::string& directory, bool json) {
  std::error_code problem;
  const fs::path package = fs::canonical(directory, problem);
  if (problem || !fs::is_directory(package, problem)) {
    throw Failure(kExitUsage, "'" + directory + "': " + (problem ? problem.message() : "no directory"));
  }
  Report report(json);
  int outcome = 0;
  {
    const HeldSignals held;
    const Workshop workshop(package);
    Check check(workshop.Paths());
    const Interruption interruption(held, [&check] { check.Overtake(); });
    outcome = check.AnalysisSoftwareFile();
    check.Explain(report, outcome);
  }
  return report.Conclude(package, outcome);
}
