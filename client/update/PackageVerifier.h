#pragma once

#include <string>
#include <utility>

#include "HLXInfoTypes.h"
#include "HLXUpdateTypes.h"

/// Where a package is looked for. Both are directories, without a "/" at the end.
struct PackagePaths {
  std::string stick = "/media/usbstorage0";
  std::string extracted = "/data/update";

  std::string CanFile() const { return stick + "/CAN.upg"; }
  std::string Package() const { return stick + "/update.zip"; }
  std::string ChecksumList() const { return stick + "/md5.txt"; }
  std::string VersionFile() const { return extracted + "/app/etc/sys_version.conf"; }
};

/// The checks of an update package against a unit. Keeps no state: the search and offline tools use the same code.
class PackageVerifier {
 public:
  explicit PackageVerifier(PackagePaths paths = {}) : paths_(std::move(paths)) {}

  const PackagePaths& Paths() const { return paths_; }

  /// True when the first line of the checksum tool's report says "OK".
  bool VerifyMD5Sum() const;

  /// Extracts the package's version file, and nothing else. @param command receives the command that was run
  bool ExtractVersionFile(std::string* command) const;

  /// The value of `key` in the extracted version file; empty when the file cannot be opened or has no such key. A file
  /// that is, or lies behind, a symbolic link counts as one that cannot be opened.
  std::string AnalysisCmpVersionInfo(const std::string& key) const;

  /// As AnalysisCmpVersionInfo(), with the prefix that the unit is configured for.
  std::string GetArmVersion(const std::string& key) const;

  /// Everything that a package says of itself.
  SystemInfo::VersionInfo ReadVersion() const;

  /// The package is not older than the unit: the unit's version is that of its version file, without a prefix.
  bool CheckArmVersion() const;
  static bool CheckHwVersion(const std::string& local, const std::string& usb);
  static bool CheckProject(const std::string& local, const std::string& usb);

  /// The checks of version, hardware and project, in this order, without those that the unit is configured to skip.
  /// UPDATE_NOTIFY_VALID, or the first that fails, which is logged.
  HLXUpdate::UpdateNotifyResult CompareWith(const SystemInfo::VersionInfo& unit,
                                            const SystemInfo::VersionInfo& package) const;

 private:
  PackagePaths paths_;
};

/// Whether there is such a file.
bool FileExists(const std::string& path);
