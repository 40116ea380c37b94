/// The small functions of the maker's platform, as the library uses them.
#pragma once

#include <cstdint>

/// Runs a shell command and waits for its end. Non-zero means success. `flag` belongs to the maker's interface: the
/// library passes 1 for commands that change the system and 0 for clean-up.
///
/// What is expected of it: the command runs with LC_ALL=C, with nothing on its standard input and in a session of its
/// own, so that it cannot ask at a terminal, as unzip does for passwords; and the result is what the command did, also
/// in an application that ignores SIGCHLD. platform/Shell.h starts commands so, and not while the library looks for the
/// process called `hmi`. Nobody ends one: it must end by itself.
int HLX_ExecSystemCmd(const char* command, int flag);

/// Non-zero when this power-up is a cold boot.
int IsSystemColdBoot();

/// Stores the display's current gamma behind `gamma`.
void mwapi_gamma_get(unsigned int* gamma);

/// Sets the system clock to `seconds` since 1970-01-01 00:00 UTC. 0 on success, else -1 with errno set; EOVERFLOW when
/// the platform's own clock cannot count that far. A number of fixed size, since the C library's type for it has two on
/// 32-bit machines, and the platform may have been built with the other one.
int HLX_SetSystemClock(int64_t seconds);
