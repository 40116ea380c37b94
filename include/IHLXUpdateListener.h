#ifndef I_HLX_UPDATE_LISTENER_H
#define I_HLX_UPDATE_LISTENER_H

#include "HLXExport.h"
#include "HLXUpdateTypes.h"

/// Implemented by applications that want to hear of software updates; register it with IHLXSystemUpdate::AddListener().
///
/// Callbacks run on the thread that iterates the main context of HLX_StartSystemProxy(),
/// OnDetectValidUpdateFileNotify() also on the library's own thread that searches a stick. One at a time, with the
/// client's listener mutex held: they must not add or remove listeners, release the library, throw or block for long.
/// The order of the virtual functions is part of the binary interface.
class HLX_API IHLXUpdateListener {
 public:
  virtual ~IHLXUpdateListener() = default;

  /// Outcome of a search, which the process named "hmi" makes when the service reports a stick.
  virtual void OnDetectValidUpdateFileNotify(HLXUpdate::UpdateNotifyResult result) = 0;
  virtual void OnUpdateRequestResultInform(HLXUpdate::OpResult result) = 0;
  /// @param value progress of the CAN box's update, the service's value unchanged
  virtual void OnUpdateCanProcess(int value) = 0;
  virtual void OnMcuUpdateStateNotify(HLXUpdate::UpdateState state) = 0;
  virtual void OnMpuUpdateStateNotify(HLXUpdate::UpdateState state) = 0;
  /// @param progress percent, 0 to 100
  virtual void OnMcuUpdateProgressNotify(unsigned int progress) = 0;
  virtual void OnPackageStateChangeNotify(HLXUpdate::UpdatePackageState state) = 0;
};

#endif
