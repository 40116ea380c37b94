#pragma once

#include <utility>

#include "HLXInfoTypes.h"
#include "HLXUpdateTypes.h"
#include "client/ChildProcess.h"
#include "client/update/PackageVerifier.h"

/// The examination of a stick, step by step. The unit's search and offline tools derive from it, so that the tools
/// cannot tell another story than the unit.
class PackageExamination {
 public:
  /// How an examination may end that listeners hear nothing of, beside the results that they get.
  enum SilentEnd : int { kNoPackage = 8, kNoVersionFile = 9, kNoUnitVersion = 10 };

  /// @param session only logged
  explicit PackageExamination(int session = 0, PackagePaths paths = {})
      : session_(session), verifier_(std::move(paths)) {}
  PackageExamination(const PackageExamination&) = delete;
  PackageExamination& operator=(const PackageExamination&) = delete;
  virtual ~PackageExamination() = default;

  /// Runs to its end. Takes a while: the checksums of a stick. @return an UpdateNotifyResult or a SilentEnd
  int AnalysisSoftwareFile();

  /// Nobody is waiting for it any more: ends the checksum tool, and lets no step follow but those that tell of the end.
  /// From any thread, before or while it runs.
  void Overtake() { stop_.Request(); }

 protected:
  bool Overtaken() const { return stop_.Requested(); }
  const PackageVerifier& Verifier() const { return verifier_; }

  /// The unit's versions. False when it has none.
  virtual bool UnitVersion(SystemInfo::VersionInfo* unit) = 0;
  /// What is compared now.
  virtual void OnVersions(const SystemInfo::VersionInfo& unit, const SystemInfo::VersionInfo& package) = 0;
  /// A result, as soon as it is known. False when it must not be told any more.
  virtual bool Tell(HLXUpdate::UpdateNotifyResult result) = 0;
  /// Waits until what was extracted has reached the disk.
  virtual void Settle() = 0;

 private:
  int VerifyUpdateVersion();

  const int session_;
  const PackageVerifier verifier_;
  ChildStop stop_;
};
