/// One row for each command of the public interfaces.
#pragma once

#include <vector>

#include "catalog/Value.h"

namespace catalog {

struct Parameter {
  const char* name = "";
  Reading reading = {};
  const char* otherwise = "";  ///< what a parameter that was left out stands for; empty: it must be there
};

struct Command {
  Area area = Area::kPower;
  bool asks_first = false;       ///< ends the unit's work or its settings: ask before it is sent
  const char* name = "";         ///< "power-off-delay"
  const char* help = "";         ///< "Seconds from ACC off to power-off"
  Parameter parameters[5] = {};  ///< an empty name ends the list
  const char* function = "";     ///< of the public interface
  const char* method = "";       ///< on D-Bus
  /// Sends it through the public interface, one scalar for each parameter, as Parse() gives them. False: the call
  /// failed, or the service said no. A command that returns nothing gives true: see HLX_GetLastCallError().
  bool (*call)(const Clients& clients, const std::vector<Scalar>& arguments) = nullptr;
  const char* changes[4] = {};  ///< the names of the area's values that it changes, null behind the last
  const char* follows[4] = {};  ///< the signals that may follow, null behind the last; none: nothing is announced

  View<Parameter> Parameters() const;
};

/// All, by area.
View<Command> Commands();

}  // namespace catalog
