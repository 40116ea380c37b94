/// What answers each method of com.vorn.linux.system.
#pragma once

#include <gio/gio.h>

#include <tuple>

#include "simulator/MiscModel.h"
#include "simulator/PowerModel.h"
#include "simulator/TimeModel.h"
#include "simulator/UpdateModel.h"

using Models = std::tuple<PowerModel, MiscModel, TimeModel, UpdateModel>;

/// Does what the call asks for and answers it; a bad argument is answered with G_DBUS_ERROR_INVALID_ARGS. False, and no
/// answer, for a method that the table does not have.
bool AnswerCall(Models& models, GDBusMethodInvocation* call);
