#include "simulator/MethodTable.h"

#include <algorithm>
#include <string_view>
#include <type_traits>
#include <utility>

#include "dbus/VariantRecord.h"

namespace {

/// A call's argument as the C++ type of the model's parameter.
template <class T>
T Argument(GVariant* value, const char* name) {
  if constexpr (std::is_same_v<T, bool>) {
    return g_variant_get_boolean(value) != FALSE;
  } else if constexpr (std::is_same_v<T, unsigned char>) {
    return g_variant_get_byte(value);
  } else if constexpr (std::is_same_v<T, int>) {
    return g_variant_get_int32(value);
  } else {
    static_assert(std::is_trivially_copyable_v<T> && std::is_class_v<T>, "a plain record");
    const gssize size = variant_data_size(value);
    if (size != static_cast<gssize>(sizeof(T))) {
      throw BadArgument(std::string(name) + ": a byte array of " + std::to_string(sizeof(T)) +
                        " bytes is needed, not " + (size < 0 ? "another type" : std::to_string(size)));
    }
    T record{};
    extract_variant_data(&record, value);
    return record;
  }
}

/// Calls a model's method with the arguments of a D-Bus call and gives the tuple to answer with.
template <auto Method>
struct Handler;
template <class Model, class Result, class... A, Result (Model::*Method)(A...)>
struct Handler<Method> {
  template <std::size_t... I>
  static GVariant* Call(Model& model, [[maybe_unused]] GVariant* values, [[maybe_unused]] GDBusArgInfo* const* args,
                        std::index_sequence<I...>) {
    const std::tuple<std::decay_t<A>...> arguments{
        Argument<std::decay_t<A>>(GLibPtr<GVariant>(g_variant_get_child_value(values, I)).get(), args[I]->name)...};
    if constexpr (std::is_void_v<Result>) {
      (model.*Method)(std::get<I>(arguments)...);
      return nullptr;
    } else {
      return g_variant_new("(b)", (model.*Method)(std::get<I>(arguments)...) ? TRUE : FALSE);
    }
  }

  static GVariant* Run(Models& models, GDBusMethodInvocation* call) {
    return Call(std::get<Model>(models), g_dbus_method_invocation_get_parameters(call),
                g_dbus_method_invocation_get_method_info(call)->in_args, std::index_sequence_for<A...>());
  }
};

/// A command that changes nothing that could be seen from outside.
GVariant* OnlyTaken(Models& /*models*/, GDBusMethodInvocation* /*call*/) { return nullptr; }

struct MethodRow {
  std::string_view method;
  GVariant* (*run)(Models& models, GDBusMethodInvocation* call);
};

template <auto Method>
constexpr MethodRow Row(std::string_view name) {
  return {name, Handler<Method>::Run};
}

constexpr MethodRow kMethods[] = {
    Row<&UpdateModel::ApplyUpdate>("ApplyUpdate"),
    Row<&UpdateModel::CanUpdate>("CanUpdate"),
    Row<&UpdateModel::ApplyExternalMcuUpdate>("ApplyExternalMcuUpdate"),
    Row<&UpdateModel::ApplyUpdateAll>("ApplyUpdateAll"),
    Row<&UpdateModel::ApplyMpuUpdate>("ApplyMpuUpdate"),
    Row<&PowerModel::ShutDown>("ShutDown"),
    Row<&PowerModel::Reset>("Reset"),
    Row<&PowerModel::RequestPowerOffState>("RequestPowerOffState"),
    Row<&PowerModel::SetPowerOffDelayTime>("SetPowerOffDelayTime"),
    Row<&PowerModel::SetRetainACCSec>("SetRetainACCSec"),
    {"SetBtCallState", OnlyTaken},
    {"SetCarPlayPhoneState", OnlyTaken},
    Row<&PowerModel::SetScreenLightOn>("SetScreenLightOn"),
    Row<&PowerModel::SetScreenLightLevel>("SetScreenLightLevel"),
    Row<&PowerModel::SetColorType>("SetColorType"),
    Row<&PowerModel::SetLedAnimation>("SetLedAnimation"),
    Row<&PowerModel::SetLightDetectStyle>("SetLightDetectStyle"),
    Row<&PowerModel::SetLightFixDayStyle>("SetLightFixDayStyle"),
    Row<&PowerModel::ResetScreenBackLight>("ResetScreenBackLight"),
    {"SetButtonLightState", OnlyTaken},
    Row<&PowerModel::SetButtonLightValue>("SetButtonLightValue"),
    Row<&PowerModel::SetGammaValue>("SetGammaValue"),
    Row<&PowerModel::ResetButtonBackLight>("ResetButtonBackLight"),
    {"SetRvcStatus", OnlyTaken},
    {"SetTempMaxScreenLightLevel", OnlyTaken},
    Row<&PowerModel::ConfirmPreRadioOffState>("ConfirmPreRadioOffState"),
    Row<&MiscModel::SpeakerDetectStart>("SpeakerDetectStart"),
    {"SpeakerDetectStop", OnlyTaken},
    {"SetScreenshot", OnlyTaken},
    Row<&MiscModel::SetRvcOffDelaySwitch>("SetRvcOffDelaySwitch"),
    Row<&MiscModel::SetHandbrakeCheckingSwitch>("SetHandbrakeCheckingSwitch"),
    Row<&MiscModel::SetGPSAntennaCheckingSwitch>("SetGPSAntennaCheckingSwitch"),
    Row<&MiscModel::SetDrivePosition>("SetDrivePosition"),
    {"SetOnSourceChange", OnlyTaken},
    {"SetLogo", OnlyTaken},
    Row<&MiscModel::SetLogoInfo>("SetLogoInfo"),
    {"SetOnTimeChange", OnlyTaken},
    {"SetOnRadioChange", OnlyTaken},
    {"SetOnTouchInfo", OnlyTaken},
    {"SetOnPSChange", OnlyTaken},
    {"SetOnMediaInfoChange", OnlyTaken},
    {"SetOnPhoneInfoChange", OnlyTaken},
    {"SetOnVolChange", OnlyTaken},
    Row<&MiscModel::ResetFactoryMode>("ResetFactoryMode"),
    Row<&MiscModel::EnableCanBoxModule>("EnableCanBoxModule"),
    Row<&MiscModel::EnableScreenShotControl>("EnableScreenShotControl"),
    {"StartAutoTest", OnlyTaken},
    Row<&TimeModel::SetTime24Mode>("SetTime24Mode"),
    Row<&TimeModel::SetAutoSyncMode>("SetAutoSyncMode"),
    Row<&TimeModel::SetAutoAdjustDstMode>("SetAutoAdjustDstMode"),
    Row<&TimeModel::SetCurDate>("SetCurDate"),
    Row<&TimeModel::SetCurTime>("SetCurTime"),
    Row<&TimeModel::SetGpsUTCTimeSync>("SetGpsUTCTimeSync"),
    Row<&TimeModel::SetTimeZone>("SetTimeZone"),
};

}  // namespace

bool AnswerCall(Models& models, GDBusMethodInvocation* call) {
  const char* const name = g_dbus_method_invocation_get_method_name(call);
  const auto* const row = std::find_if(std::begin(kMethods), std::end(kMethods),
                                       [name](const MethodRow& candidate) { return candidate.method == name; });
  if (row == std::end(kMethods)) return false;
  try {
    g_dbus_method_invocation_return_value(call, row->run(models, call));
  } catch (const BadArgument& problem) {
    g_dbus_method_invocation_return_error(call, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS, "%s: %s", name,
                                          problem.what());
  }
  return true;
}
