/// Signals of the interface between the catalogue's rows and what goes over the bus.
#pragma once

#include <gio/gio.h>

#include <string>
#include <vector>

#include "catalog/Signal.h"
#include "dbus/GLibPtr.h"

/// @throws catalog::BadValue that names the nearest ones when there is none of this name
const catalog::Signal& SignalNamed(const std::string& name);

/// The description of the interface; its arguments have names.
const GDBusSignalInfo& InfoOf(const catalog::Signal& signal);

/// One scalar for each argument, each given as a number, a boolean, or a text of a number or word.
/// @throws catalog::BadValue that names the signal or the argument that is wrong
std::vector<catalog::Scalar> ScalarsOf(const catalog::Signal& signal, const std::vector<GLibPtr<GVariant>>& arguments);

/// The tuple that goes over the bus. Not floating.
GLibPtr<GVariant> TupleOf(const catalog::Signal& signal, const std::vector<catalog::Scalar>& arguments);
