#pragma once

#include "dbus/GLibPtr.h"

class IHLXConnectionListener;

/// Whether the service is there, and who wants to know. Process-wide: listeners outlive a release.
class ServiceConnection {
 public:
  static void AddListener(IHLXConnectionListener* listener);
  /// Waits for a callback that runs on another thread.
  static void RemoveListener(IHLXConnectionListener* listener);
  static bool IsConnected();

  /// From now on `proxy` alone says who owns the service's name; what it says at once is not told. Null: nobody does.
  static void Watch(ComVornLinuxSystem* proxy);

  // These tell the listeners, on the calling thread.
  static void OwnerChanged(ComVornLinuxSystem* proxy);
  static void BusLost();
};
