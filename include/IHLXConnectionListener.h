#ifndef I_HLX_CONNECTION_LISTENER_H
#define I_HLX_CONNECTION_LISTENER_H

#include "HLXExport.h"

/// Hears whether the system service and the session bus are there: see HLX_AddConnectionListener().
///
/// The order of the virtual functions is part of the binary interface.
class HLX_API IHLXConnectionListener {
 public:
  virtual ~IHLXConnectionListener() = default;

  /// The service has left the bus. Commands fail until it is back; getters give the last values. Comes on the thread
  /// of all events.
  virtual void OnServiceLost() = 0;

  /// The service is on the bus, for the first time after a start that returned false, or again. Read all getters again:
  /// what changed meanwhile was not announced. After a start that returned false call HLX_StartSystemProxy() again, in
  /// this callback or later: without a start that returned true no event comes. Comes on the thread of all events, once
  /// the service has answered a first question.
  virtual void OnServiceBack() = 0;

  /// The connection to the session bus has ended: the bus has died, or has thrown this process out (for a message that
  /// is too large, say). Neither commands nor events work any more, and no new start changes that. GIO ends the process
  /// with SIGTERM right after this callback, unless the application has called g_dbus_connection_set_exit_on_close() on
  /// its session bus. Comes on the thread on which GIO tells it: the one that iterates the main context in which the
  /// process first connected to the session bus.
  virtual void OnBusLost() = 0;
};

#endif
