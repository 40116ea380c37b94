#ifndef HLX_SYSTEM_PROXY_H
#define HLX_SYSTEM_PROXY_H

#include "HLXExport.h"
#include "IHLXConnectionListener.h"
#include "IHLXSystemInfo.h"
#include "IHLXSystemMisc.h"
#include "IHLXSystemPower.h"
#include "IHLXSystemTime.h"
#include "IHLXSystemUpdate.h"

/// @defgroup entry Entry points
/// How an application starts the library, asks for its clients and ends it. README.md has a complete application.
/// @{

/// Connects to the system service: makes the D-Bus proxy on the session bus and subscribes to the service's signals.
///
/// Blocks until the bus has answered: milliseconds, or the bus's time-out of about 25 s (true all the same) when the
/// service owns its name but hangs. Callable from any thread. Events are delivered in the GLib main context that is the
/// thread-default one of the calling thread; the library runs no main loop, so run one there. Call it once: every
/// successful call subscribes again, and each event then arrives once per subscription.
///
/// A bus that cannot be reached is tried seven times without pause. A service that is not on the bus, or a bus that
/// cannot be reached, gives false; nothing is torn down and a later call tries again. Call it when the bus is up: one
/// that comes up between two of the attempts, and stays up, keeps this function from returning (see docs/behaviour.md).
/// @return true when the service was there and its signals are connected
HLX_API bool HLX_StartSystemProxy();

/// @name Clients
/// Each returns the process's one client of its kind and makes it on first use; later calls return the same pointer,
/// never null. The library owns the clients; they live until HLX_ReleaseSystemProxy().
///
/// Callable from any thread, before or after the start. Before the start reads work (they come from shared memory),
/// commands reach nobody, and no events arrive. A client that cannot map its shared memory logs at FATAL and ends the
/// process with exit status 2.
/// @{

/// @return the info client, which reads configuration and version files when it is made
HLX_API IHLXSystemInfo* HLX_GetSystemInfoProxy();
/// @return the power client
HLX_API IHLXSystemPower* HLX_GetSystemPowerProxy();
/// @return the misc client
HLX_API IHLXSystemMisc* HLX_GetSystemMiscProxy();
/// @return the time client. Making it also makes the unit's time zone the system's: see IHLXSystemTime.
HLX_API IHLXSystemTime* HLX_GetSystemTimeProxy();
/// @return the update client. Making it also makes the info client, which it asks for the unit's versions.
HLX_API IHLXSystemUpdate* HLX_GetSystemUpdateProxy();

/// @}

/// Ends it all: waits for a callback that is running on another thread, disconnects from the service and deletes every
/// client. Every pointer that was handed out dangles afterwards; shared memory stays mapped until the process ends.
/// The next call of any other function starts afresh. Safe before any start, safe to repeat, and from two threads at
/// once.
///
/// From inside a callback of the library, and in an exit handler while the library ends the process, it logs an ERROR
/// and does nothing. It must not be called while another thread is inside any function of the library other than to run
/// a callback; such a callback may go on asking for clients meanwhile, and gets those that exist.
HLX_API void HLX_ReleaseSystemProxy();

/// Why the last command of the calling thread failed, as the bus or the service put it; null when it arrived. Each
/// command clears the text when it begins. Most commands return nothing: this is how to learn that one of them did not
/// arrive. For a command before the start the text says so, also where the command returns true.
/// @return the text, owned by the library, until the thread's next command; null when the last command arrived
HLX_API const char* HLX_GetLastCallError();

/// How long a command waits for its answer, from the next command of any thread on, and until it is
/// set again, also after a release. A command whose time is up
/// counts as failed, though the service may still carry it out. A start is not bounded. Callable from any thread.
/// @param milliseconds 1 and above; -1 (the default) is the bus's own limit, about 25 seconds
/// @return false, with nothing changed, for anything else below 1
HLX_API bool HLX_SetCallTimeout(int milliseconds);

/// Whether the service is on the bus, as far as the main loop of the events has heard; false before the first start.
/// Commands reach it then; events come only after a start that returned true. Callable from any thread.
/// @return true when the service owns its name
HLX_API bool HLX_IsServiceConnected();

/// Registers `listener` for news of the connection; null is ignored, and a listener that is already there stays once.
/// There is no news before the first HLX_StartSystemProxy(), nor while the session bus could not be reached; what the
/// result of a start says is not told again. Without listeners nothing is lost but the news.
///
/// The listener stays yours. It outlives a release, of which it is not told; keep it alive until it is removed.
/// Callable from any thread, in a callback too.
/// @param listener the one to register
HLX_API void HLX_AddConnectionListener(IHLXConnectionListener* listener);

/// Forgets `listener`; null and an unknown one are ignored. Waits for a callback of a connection listener that is
/// running on another thread, so that the listener may be deleted afterwards. Callable from any thread, in a callback
/// too.
/// @param listener the one to forget
HLX_API void HLX_RemoveConnectionListener(IHLXConnectionListener* listener);

/// @return the version of the library that is running, as "1.0.0"; never null, owned by the library
HLX_API const char* HLX_GetVersion();

/// @}

#endif
