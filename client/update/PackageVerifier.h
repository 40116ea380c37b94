#pragma once

#include <string>
#include <utility>

#include "HLXInfoTypes.h"
#include "HLXUpdateTypes.h"

class ChildStop;

/// Where a package is looked for. Both are directories, without a "/" at the end and with plain names: they become part
/// of shell commands as they are.
struct PackagePaths {
  std::string stick = "/media/usbstorage0";
  std::string extracted = "/data/update";

  std::string CanFile() const { return stick + "/CAN.upg"; }
  std::string Package() const { return stick + "/update.zip"; }
  std::string ChecksumList() const { return stick + "/md5.txt"; }
  std::string VersionFile() const { return extracted + "/app/etc/sys_version.conf"; }
};

/// The single checks of an update package against a unit. Keeps no state.
class PackageVerifier {
 public:
  explicit PackageVerifier(PackagePaths paths = {}) : paths_(std::move(paths)) {}

  const PackagePaths& Paths() const { return paths_; }

  /// True when the first line of the checksum tool's report says "OK". `stop` ends the tool, which then said nothing;
  /// so does the upper time of FirstLineOf(). A list that is no regular file counts as missing.
  bool VerifyMD5Sum(ChildStop* stop) const;

  /// The value of `key` in the extracted version file; empty when the file cannot be opened or has no such key. A file
  /// that is, or lies behind, a symbolic link, is no regular file or too large counts as one that cannot be opened.
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
  HLXUpdate::UpdateNotifyResult VerifyUpdateVersion(const SystemInfo::VersionInfo& unit,
                                                    const SystemInfo::VersionInfo& package) const;

 private:
  PackagePaths paths_;
};

/// Whether there is such a file, of whatever kind.
bool FileExists(const std::string& path);

/// Whether there is a regular file of that name, or a link to one.
bool IsRegularFile(const std::string& path);
