#ifndef I_HLX_SYSTEM_INFO_H
#define I_HLX_SYSTEM_INFO_H

#include <string>
#include <vector>

#include "HLXExport.h"
#include "HLXInfoTypes.h"

/// Facts about the unit: model, screen, versions, identity. There are no events and no commands.
///
/// Nearly everything is read once, when the client is made, from the configuration and the version files; the functions
/// copy what was read. Drive position and MCU version are read from shared memory at each call. What says "looked up"
/// asks the configuration at each call. All functions may be called from any thread. The order of the virtual functions
/// is part of the binary interface.
class HLX_API IHLXSystemInfo {
 public:
  virtual ~IHLXSystemInfo() = default;

  /// @return 1
  virtual int GetModelInfo(SystemInfo::ModelInfo& info) = 0;
  /// @return 1 when the driver sits on the left, else 0
  virtual int GetDriveType() = 0;
  /// Appends the fuel types that the unit knows, if any, to `types`, which is not cleared; looked up.
  virtual void GetFuelType(std::vector<SystemInfo::FuelType>& types) = 0;
  /// @return 0
  virtual int GetEngineType() = 0;
  /// @return the product plan id of the MFi programme; looked up
  virtual std::string GetMfiPPID() = 0;
  /// @return 1; 0 when the unit has no ARM version (the other fields are filled all the same)
  virtual int GetLocalVersionInfo(SystemInfo::VersionInfo& info) = 0;
  /// The height comes first: `height` is the configured pixel_h, `width` the configured pixel_w. Looked up. @return 1
  virtual int GetScreenPixels(unsigned int& height, unsigned int& width) = 0;
  /// Millimetres; the height comes first, as in GetScreenPixels(). Looked up. @return 1
  virtual int GetScreenPhysical(double& height, double& width) = 0;
  virtual void GetScreenInfo(SystemInfo::ScreenInfo& info) = 0;
  /// @return the MCU's version; empty until the service has written it
  virtual std::string GetMcuVersion() = 0;
  /// Reads the identifier of the eMMC from the kernel at each call. @return the identifier; empty when there is none
  virtual std::string GetEmmcId() = 0;
};

#endif
