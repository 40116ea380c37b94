/// What the unit does for each method of com.vorn.linux.system.
#pragma once

#include <gio/gio.h>

#include <string>
#include <string_view>
#include <vector>

#include "catalog/Value.h"
#include "simulator/model/FactoryModel.h"
#include "simulator/model/LifeCycle.h"
#include "simulator/model/MiscModel.h"
#include "simulator/model/PowerModel.h"
#include "simulator/model/TimeModel.h"
#include "simulator/model/UpdateModel.h"

struct Models {
  Models(Unit& the_unit, LifeCycle::Hooks hooks);

  Unit& unit;
  PowerModel power;
  LifeCycle life;
  MiscModel misc;
  TimeModel time;
  UpdateModel update;
  FactoryModel factory;
};

struct MethodRow {
  const char* method;
  const char* changes;  ///< names of the values that it sets, separated by blanks
  const char* note;     ///< what else happens
  /// Does what the call asks for. The tuple to answer with, floating; null for an empty one. @throws catalog::BadValue
  GVariant* (*run)(Models& models, GVariant* arguments, GDBusArgInfo* const* names);
};

/// All 54, in the order of the interface.
catalog::View<MethodRow> Methods();

/// Null when there is none of this name.
const MethodRow* FindMethod(std::string_view name);

/// @throws catalog::BadValue that names the nearest ones
const MethodRow& MethodNamed(const std::string& name);

/// The arguments of a call by their names, "a{sv}". Floating.
GVariant* ArgumentsByName(GVariant* arguments, GDBusArgInfo* const* names);
