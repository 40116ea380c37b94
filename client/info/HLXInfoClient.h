#pragma once

#include <cstdlib>
#include <string>
#include <vector>

#include "IHLXSystemInfo.h"
#include "data/InfoShmDataBase.h"
#include "data/MiscShmDataBase.h"

/// The misc segment as the info client needs it: for the drive position.
class HLXMiscClientShm : public MiscShmDataBase {
 public:
  HLXMiscClientShm();
  HLXSystemData::MiscShmData* Record() const { return record_; }

 private:
  HLXSystemData::MiscShmData* record_;
};

/// The info segment.
class HLXInfoClientShm : public InfoShmDataBase {
 public:
  HLXInfoClientShm();
  HLXSystemData::InfoShmData* Record() const { return record_; }

 private:
  HLXSystemData::InfoShmData* record_;
};

/// Facts about the unit, read once here and copied out; see IHLXSystemInfo for what is live.
class HLXInfoClient : public IHLXSystemInfo {
 public:
  /// Maps two records; ends the process with status 2 when one cannot be mapped.
  HLXInfoClient();

  int GetModelInfo(SystemInfo::ModelInfo& info) override;
  int GetDriveType() override;
  void GetFuelType(std::vector<SystemInfo::FuelType>& types) override;
  int GetEngineType() override;
  std::string GetMfiPPID() override;
  int GetLocalVersionInfo(SystemInfo::VersionInfo& info) override;
  int GetScreenPixels(unsigned int& height, unsigned int& width) override;
  int GetScreenPhysical(double& height, double& width) override;
  void GetScreenInfo(SystemInfo::ScreenInfo& info) override;
  std::string GetMcuVersion() override;
  std::string GetEmmcId() override;

  void InitLocalVersionInfo();
  std::string GetArmVersion(const std::string& key);
  /// The hardware version behind the board's strap; empty when the strap cannot be read or holds no number.
  std::string GetHardWareVersionInfo();
  /// From the kernel command line, else a fixed text. Only what the command line gave is kept.
  std::string GetSerialNumber();
  /// See DeviceIdentity::GetMachineSample().
  static int GetMachineSample(const char* path, unsigned int* value);

 private:
  void InitModelInfo();
  void InitScreenInfo();

  SystemInfo::VersionInfo version_;
  SystemInfo::ModelInfo model_{};
  SystemInfo::ScreenInfo screen_{};
  std::string serial_number_;
  HLXMiscClientShm misc_shm_;
  HLXInfoClientShm info_shm_;
};
