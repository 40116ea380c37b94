#ifndef I_HLX_UPDATE_LISTENER_H
#define I_HLX_UPDATE_LISTENER_H

#include "HLXExport.h"
#include "HLXUpdateTypes.h"

/// @addtogroup update
/// @{

/// Implemented by applications that want to hear of software updates; register it with IHLXSystemUpdate::AddListener().
///
/// Callbacks run on the thread that iterates the main context of HLX_StartSystemProxy(),
/// OnDetectValidUpdateFileNotify() also on the library's own thread that searches a stick. One at a time, with the
/// client's listener mutex held: they must not add or remove listeners, release the library, iterate a main context,
/// throw or block for long. The application owns the listener. The order of the virtual functions is part of the binary
/// interface.
class HLX_API IHLXUpdateListener {
 public:
  virtual ~IHLXUpdateListener() = default;

  /// Outcome of a search, which the process named "hmi" makes when the service reports a stick. Of several searches the
  /// newest counts. @param result what the stick holds
  virtual void OnDetectValidUpdateFileNotify(HLXUpdate::UpdateNotifyResult result) = 0;
  /// Answers an update command. @param result whether the service has accepted it
  virtual void OnUpdateRequestResultInform(HLXUpdate::OpResult result) = 0;
  /// The update of the CAN box goes on. @param value progress as the CAN-box updater counts it, unchanged
  virtual void OnUpdateCanProcess(int value) = 0;
  /// The MCU's update reached another state. @param state the new state
  virtual void OnMcuUpdateStateNotify(HLXUpdate::UpdateState state) = 0;
  /// The update of the main processor reached another state. @param state the new state
  virtual void OnMpuUpdateStateNotify(HLXUpdate::UpdateState state) = 0;
  /// The MCU's update goes on. @param progress percent, 0 to 100
  virtual void OnMcuUpdateProgressNotify(unsigned int progress) = 0;
  /// The stick with the package was inserted, removed or changed. Insertion and change also start a search, see
  /// OnDetectValidUpdateFileNotify(). @param state what happened
  virtual void OnPackageStateChangeNotify(HLXUpdate::UpdatePackageState state) = 0;
};

/// @}

#endif
