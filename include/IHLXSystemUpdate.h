#ifndef I_HLX_SYSTEM_UPDATE_H
#define I_HLX_SYSTEM_UPDATE_H

#include "HLXExport.h"
#include "HLXInfoTypes.h"
#include "HLXUpdateTypes.h"
#include "IHLXListener.h"
#include "IHLXUpdateListener.h"

/// Software updates from a USB stick: what a stick holds, and the commands that apply it.
///
/// When the service reports a stick, the process named "hmi" (the first that `pidof hmi` prints) verifies the package
/// on a thread of the library and reports the outcome to the listeners. Other processes ignore the report.
///
/// Commands are blocking D-Bus calls on the caller's thread, see IHLXSystemPower. All functions may be called from any
/// thread, but for the registration of listeners: see IHLXListener. The order of the virtual functions is part of the
/// binary interface.
class HLX_API IHLXSystemUpdate : public IHLXListener<IHLXUpdateListener> {
 public:
  virtual void ApplyUpdate(HLXUpdate::UpdateType type) = 0;
  /// Starts or controls the update of the CAN box. @param canUpdate passed to the service unchanged
  virtual void SetCanUpdata(int canUpdate) = 0;
  /// Versions of the package that was examined last; empty before the first search and after a new report. The MCU
  /// fields are always empty; the serial number is the package file's, if it has one. @return 1
  virtual int GetUpdateVersionInfo(SystemInfo::VersionInfo& info) = 0;
  /// @return 1 when the command was sent, 0 when there is no connection object
  virtual int ApplyExternalMcuUpdate() = 0;
  /// @return as ApplyExternalMcuUpdate()
  virtual int ApplyMpuUpdate() = 0;
  /// @return as ApplyExternalMcuUpdate()
  virtual int ApplyUpdateAll() = 0;
};

#endif
