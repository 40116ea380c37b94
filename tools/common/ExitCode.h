/// How the tool ends. This list is the only one: help, manual and tests read it.
#pragma once

enum ExitCode : int {
  kExitDone = 0,
  kExitInternal = 1,
  kExitUsage = 2,
  kExitNoService = 3,
  kExitCallFailed = 4,
  kExitNotConfirmed = 5,
  kExitTimeUp = 6,
  kExitUnhealthy = 7,
  kExitPackage = 10,       ///< "update check": 10 and the outcome
  kExitInterrupted = 130,  ///< 128 and the signal, as are the next two
  kExitClosedPipe = 141,
  kExitTerminated = 143,
};

struct ExitCodeRow {
  int code;
  const char* meaning;
};

constexpr ExitCodeRow kExitCodes[] = {
    {kExitDone, "done; \"update check\": a valid package"},
    {kExitInternal, "internal, or output that cannot be written"},
    {kExitUsage, "a wrong command line or value"},
    {kExitNoService, "no bus, no service, no answer, or no record to look at"},
    {kExitCallFailed, "the service refused the command or went away during it"},
    {kExitNotConfirmed, "a command that asks first was not confirmed"},
    {kExitTimeUp, "\"wait-for\" and --count: the time was up first"},
    {kExitUnhealthy, "\"doctor\" found a failure"},
    {13, "\"update check\": a file for the CAN box, nothing else was examined"},
    {14, "\"update check\": wrong checksum, or none"},
    {15, "\"update check\": older than the unit"},
    {16, "\"update check\": for other hardware"},
    {17, "\"update check\": for another project"},
    {18, "\"update check\": no update.zip"},
    {19, "\"update check\": no version file to be had from the package"},
    {20, "\"update check\": this machine has no software version to compare with"},
    {kExitInterrupted, "Ctrl-C before what \"wait-for\" or --count asked for"},
    {kExitClosedPipe, "nobody reads the output any more"},
    {kExitTerminated, "terminated before what \"wait-for\" or --count asked for"},
};
