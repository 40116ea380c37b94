/// What each verb does. All give the exit code, and throw Failure, std::invalid_argument for a word that they do not
/// take, or ClosedPipe.
#pragma once

#include "catalog/Value.h"
#include "tools/hlxctl/Request.h"

namespace catalog {
struct Command;
}

int Status(const Request& request);
int Show(catalog::Area area, const Request& request);
int Get(const Request& request);
int Names(const Request& request);
int Zones(const Request& request);
/// Sends `command` with the request's words.
int Send(const catalog::Command& command, const Request& request);
int Monitor(const Request& request);
int WaitFor(const Request& request);
int Watch(const Request& request);
int Record(const Request& request);
int Doctor(const Request& request);
/// Any method of the interface, on the bare bus.
int Call(const Request& request);
/// The bare signals as they come.
int Listen(const Request& request);
/// What could stand in the place of the last word, one a line with what it is: for shells.
int Complete(const Request& request);
/// The manual page, in roff.
int Manual(const Request& request);
