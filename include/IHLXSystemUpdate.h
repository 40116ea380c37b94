#ifndef I_HLX_SYSTEM_UPDATE_H
#define I_HLX_SYSTEM_UPDATE_H

#include "HLXExport.h"
#include "HLXInfoTypes.h"
#include "HLXUpdateTypes.h"
#include "IHLXListener.h"
#include "IHLXUpdateListener.h"

/// @defgroup update Software updates
/// @{

/// Software updates from a USB stick: what a stick holds, and the commands that apply it.
///
/// When the service reports a stick, the process named "hmi" (the first that `pidof hmi` prints) verifies the package
/// on a thread of the library and reports what it finds to the listeners: see IHLXUpdateListener. A search that cannot
/// be made (no package on the stick, nothing to be unpacked, the unit's own version unknown) or that a newer report
/// overtakes may end without a word, so do not wait for one. Other processes ignore the report.
///
/// Commands are blocking D-Bus calls on the caller's thread, see IHLXSystemPower, also about "Event". All functions may
/// be called from any thread, but for the registration of listeners: see IHLXListener. The library owns the client. The
/// order of the virtual functions is part of the binary interface.
class HLX_API IHLXSystemUpdate : public IHLXListener<IHLXUpdateListener> {
 public:
  /// Starts the update with the package on the stick. Event: OnUpdateRequestResultInform(); when it is accepted also
  /// OnMpuUpdateStateNotify(), OnMcuUpdateStateNotify() and OnMcuUpdateProgressNotify(), as far as `type` asks for.
  /// @param type what to update, passed to the service unchanged
  virtual void ApplyUpdate(HLXUpdate::UpdateType type) = 0;
  /// Starts or controls the update of the CAN box. Event: OnUpdateRequestResultInform() and OnUpdateCanProcess().
  /// @param canUpdate passed to the service unchanged
  virtual void SetCanUpdata(int canUpdate) = 0;
  /// Versions of the package that was examined last; all empty before the first search and after a new report or the
  /// removal of the stick, until a package was read, perhaps by a search that the report has overtaken. The MCU's three
  /// are always empty; the serial number is the package file's, if it has one. Event: OnDetectValidUpdateFileNotify().
  /// @param[out] info the versions
  /// @return 1
  virtual int GetUpdateVersionInfo(SystemInfo::VersionInfo& info) = 0;
  /// Updates the external MCU alone. Event: OnUpdateRequestResultInform(), OnMcuUpdateStateNotify() and
  /// OnMcuUpdateProgressNotify().
  /// @return 1, also when the call failed (see HLX_GetLastCallError()); 0 when there is no connection object
  virtual int ApplyExternalMcuUpdate() = 0;
  /// Updates the main processor alone. Event: OnUpdateRequestResultInform() and OnMpuUpdateStateNotify().
  /// @return as ApplyExternalMcuUpdate()
  virtual int ApplyMpuUpdate() = 0;
  /// Updates the main processor and the MCU. Event: OnUpdateRequestResultInform(), OnMpuUpdateStateNotify(),
  /// OnMcuUpdateStateNotify() and OnMcuUpdateProgressNotify().
  /// @return as ApplyExternalMcuUpdate()
  virtual int ApplyUpdateAll() = 0;
};

/// @}

#endif
