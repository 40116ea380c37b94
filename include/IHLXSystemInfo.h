#ifndef I_HLX_SYSTEM_INFO_H
#define I_HLX_SYSTEM_INFO_H

#include <string>
#include <vector>

#include "HLXExport.h"
#include "HLXInfoTypes.h"

/// @defgroup info Facts about the unit
/// @{

/// Facts about the unit: model, screen, versions, identity. There are no events and no commands.
///
/// Nearly everything is read once, when the client is made, from the configuration and the version files; the functions
/// copy what was read. Drive position and MCU version are read from shared memory at each call. What says "looked up"
/// asks the configuration at each call. Texts are as the files and the configuration hold them, in whatever encoding
/// that is. All functions may be called from any thread. The library owns the client. The order of the virtual
/// functions is part of the binary interface.
class HLX_API IHLXSystemInfo {
 public:
  virtual ~IHLXSystemInfo() = default;

  /// Car and market. @param[out] info what is configured @return 1
  virtual int GetModelInfo(SystemInfo::ModelInfo& info) = 0;
  /// @return 1 when the driver sits on the left, else 0
  virtual int GetDriveType() = 0;
  /// Appends the fuel types that the unit knows, if any; looked up. @param[in,out] types is not cleared
  virtual void GetFuelType(std::vector<SystemInfo::FuelType>& types) = 0;
  /// @return 0
  virtual int GetEngineType() = 0;
  /// @return the product plan id of the MFi programme; looked up
  virtual std::string GetMfiPPID() = 0;
  /// Versions of the unit. @param[out] info the versions
  /// @return 1; 0 when the unit has no ARM version (the other fields are filled all the same)
  virtual int GetLocalVersionInfo(SystemInfo::VersionInfo& info) = 0;
  /// Size of the screen; the height comes first. Looked up.
  /// @param[out] height pixels, the configured pixel_h @param[out] width pixels, the configured pixel_w @return 1
  virtual int GetScreenPixels(unsigned int& height, unsigned int& width) = 0;
  /// Size of the screen; the height comes first, as in GetScreenPixels(). Looked up.
  /// @param[out] height millimetres @param[out] width millimetres @return 1
  virtual int GetScreenPhysical(double& height, double& width) = 0;
  /// Geometry of the screen. @param[out] info what is configured
  virtual void GetScreenInfo(SystemInfo::ScreenInfo& info) = 0;
  /// @return the MCU's version, at most 255 characters; empty until the service has written it
  virtual std::string GetMcuVersion() = 0;
  /// Reads the identifier of the eMMC from the kernel at each call. @return the identifier; empty when there is none
  virtual std::string GetEmmcId() = 0;
};

/// @}

#endif
