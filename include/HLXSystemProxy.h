/// The entry points of the library. See README.md for a complete application.
#ifndef HLX_SYSTEM_PROXY_H
#define HLX_SYSTEM_PROXY_H

#include "HLXExport.h"
#include "IHLXSystemInfo.h"
#include "IHLXSystemMisc.h"
#include "IHLXSystemPower.h"
#include "IHLXSystemTime.h"
#include "IHLXSystemUpdate.h"

/// Connects to the system service: makes the D-Bus proxy on the session bus and subscribes to the service's signals.
///
/// Blocks until the bus has answered. Events are delivered in the GLib main context that is the thread-default one of
/// the calling thread; the library runs no main loop, so run one there. Call it once: every successful call subscribes
/// again, and each event then arrives once per subscription.
///
/// A bus that cannot be reached is tried seven times without pause. A service that is not on the bus, or a bus that
/// cannot be reached, gives false; nothing is torn down and a later call tries again. Call it when the bus is up: one
/// that comes up between two of the attempts, and stays up, keeps this function from returning (see docs/behaviour.md).
/// @return true when the service was there and its signals are connected
HLX_API bool HLX_StartSystemProxy();

/// Each of the following returns the process's one client of its kind and makes it on first use; later calls return
/// the same pointer. The library owns the clients; they live until HLX_ReleaseSystemProxy().
///
/// Callable from any thread, before or after the start. Before the start reads work (they come from shared memory),
/// commands reach nobody, and no events arrive. A client that cannot map its shared memory logs at FATAL and ends the
/// process with exit status 2.
HLX_API IHLXSystemInfo* HLX_GetSystemInfoProxy();
HLX_API IHLXSystemPower* HLX_GetSystemPowerProxy();
HLX_API IHLXSystemMisc* HLX_GetSystemMiscProxy();
/// Making the time client also makes the unit's time zone the system's: see IHLXSystemTime.
HLX_API IHLXSystemTime* HLX_GetSystemTimeProxy();
/// Also makes the info client, which the update client asks for the unit's versions.
HLX_API IHLXSystemUpdate* HLX_GetSystemUpdateProxy();

/// Ends it all: waits for a callback that is running on another thread, disconnects from the service and deletes every
/// client. Every pointer that was handed out dangles afterwards; shared memory stays mapped until the process ends.
/// The next call of any other function starts afresh. Safe before any start and safe to repeat.
///
/// Must not be called from a listener callback (it would wait for itself), nor while another thread is inside any
/// function of the library other than to run a callback.
HLX_API void HLX_ReleaseSystemProxy();

/// Why the newest failed command of the calling thread failed, as the bus or the service put it; null when none has
/// failed yet. The text stays until the next failure on the same thread, so call it right after a command of interest.
/// Most commands return nothing: this is how to learn that one of them did not arrive.
HLX_API const char* HLX_GetLastCallError();

#endif
