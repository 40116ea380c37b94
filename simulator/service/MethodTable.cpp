#include "simulator/service/MethodTable.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "catalog/Catalog.h"
#include "dbus/GLibPtr.h"
#include "dbus/VariantBuilder.h"
#include "dbus/VariantRecord.h"
#include "simulator/model/Names.h"
#include "simulator/model/Values.h"

using catalog::BadValue;

namespace {

// The model that has a member function.
PowerModel& ModelIn(Models& models, const PowerModel*) { return models.power; }
LifeCycle& ModelIn(Models& models, const LifeCycle*) { return models.life; }
MiscModel& ModelIn(Models& models, const MiscModel*) { return models.misc; }
TimeModel& ModelIn(Models& models, const TimeModel*) { return models.time; }
UpdateModel& ModelIn(Models& models, const UpdateModel*) { return models.update; }
FactoryModel& ModelIn(Models& models, const FactoryModel*) { return models.factory; }

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
      throw BadValue(std::string(name) + ": a byte array of " + std::to_string(sizeof(T)) + " bytes is needed, not " +
                     (size < 0 ? "another type" : std::to_string(size)));
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
  static GVariant* Call(Model& model, [[maybe_unused]] GVariant* values, [[maybe_unused]] GDBusArgInfo* const* names,
                        std::index_sequence<I...>) {
    const std::tuple<std::decay_t<A>...> arguments{
        Argument<std::decay_t<A>>(GLibPtr<GVariant>(g_variant_get_child_value(values, I)).get(), names[I]->name)...};
    if constexpr (std::is_void_v<Result>) {
      (model.*Method)(std::get<I>(arguments)...);
      return nullptr;
    } else {
      return g_variant_new("(b)", (model.*Method)(std::get<I>(arguments)...) ? TRUE : FALSE);
    }
  }

  static GVariant* Run(Models& models, GVariant* values, GDBusArgInfo* const* names) {
    return Call(ModelIn(models, static_cast<const Model*>(nullptr)), values, names, std::index_sequence_for<A...>());
  }
};

/// Keeps the one argument of a call whose consequence is that the unit knows it.
template <Own Id>
GVariant* KeepIn(Models& models, GVariant* values, GDBusArgInfo* const* /*names*/) {
  models.unit.Keep(Id, ScalarOf(GLibPtr<GVariant>(g_variant_get_child_value(values, 0)).get()));
  return nullptr;
}

template <auto Method>
constexpr MethodRow Row(const char* name, const char* changes, const char* note = "") {
  return {name, changes, note, Handler<Method>::Run};
}
template <Own Id>
constexpr MethodRow Inbox(const char* name, const char* value) {
  return {name, value, "", KeepIn<Id>};
}

// clang-format off
constexpr MethodRow kMethods[] = {
    Row<&UpdateModel::ApplyUpdate>("ApplyUpdate", "", "answers with UpdateRequestResultInformSignal and plays the update"),
    Row<&UpdateModel::CanUpdate>("CanUpdate", "", "plays the CAN box's update; 0 declines it"),
    Row<&UpdateModel::ApplyExternalMcuUpdate>("ApplyExternalMcuUpdate", "", "as ApplyUpdate, the MCU's part"),
    Row<&UpdateModel::ApplyUpdateAll>("ApplyUpdateAll", "", "as ApplyUpdate, both parts"),
    Row<&UpdateModel::ApplyMpuUpdate>("ApplyMpuUpdate", "", "as ApplyUpdate, the main processor's part"),
    Row<&LifeCycle::ShutDown>("ShutDown", "", "power.screen and power.radio go off; two seconds later the service is gone"),
    Row<&LifeCycle::Reset>("Reset", "", "as hlx-simulator reboot --reset"),
    Row<&LifeCycle::RequestPowerOffState>("RequestPowerOffState", "", "radio on: OnPowerPreRadioOffNotify, and off when that is confirmed or three seconds have passed; radio off: a short press brings radio and screen back"),
    Row<&PowerModel::SetPowerOffDelayTime>("SetPowerOffDelayTime", "power.power_off_delay"),
    Row<&PowerModel::SetRetainACCSec>("SetRetainACCSec", "power.retain_acc", "of the number the low byte"),
    Inbox<Own::kBluetoothCall>("SetBtCallState", "inbox.bluetooth_call"),
    Inbox<Own::kCarplayCall>("SetCarPlayPhoneState", "inbox.carplay_call"),
    Row<&PowerModel::SetScreenLightOn>("SetScreenLightOn", "power.screen"),
    Row<&PowerModel::SetScreenLightLevel>("SetScreenLightLevel", "power.brightness_day power.brightness_night"),
    Row<&PowerModel::SetColorType>("SetColorType", "power.button_color"),
    Row<&PowerModel::SetLedAnimation>("SetLedAnimation", "power.led_animation"),
    Row<&PowerModel::SetLightDetectStyle>("SetLightDetectStyle", "power.light_auto_detect", "power.screen_light and power.button_light follow the head lights while it is on"),
    Row<&PowerModel::SetLightFixDayStyle>("SetLightFixDayStyle", "power.light_fixed_day", "power.screen_light and power.button_light follow it while detection is off"),
    Row<&PowerModel::ResetScreenBackLight>("ResetScreenBackLight", "power.brightness_day power.brightness_night", "both are the defaults again"),
    Inbox<Own::kButtonLight>("SetButtonLightState", "inbox.button_light"),
    Row<&PowerModel::SetButtonLightValue>("SetButtonLightValue", "power.button_brightness_day power.button_brightness_night"),
    Row<&PowerModel::SetGammaValue>("SetGammaValue", "power.gamma"),
    Row<&PowerModel::ResetButtonBackLight>("ResetButtonBackLight", "power.button_brightness_day power.button_brightness_night", "both are the defaults again"),
    Inbox<Own::kRearView>("SetRvcStatus", "inbox.rear_view"),
    Row<&PowerModel::SetTempMaxScreenLightLevel>("SetTempMaxScreenLightLevel", "inbox.full_brightness", "the level that counts is 255 for ten seconds or until it is switched off, then what it was"),
    Row<&LifeCycle::ConfirmPreRadioOffState>("ConfirmPreRadioOffState", "", "the awaited radio-off happens: power.screen and power.radio go off"),
    Row<&MiscModel::SpeakerDetectStart>("SpeakerDetectStart", "inbox.speaker_detection", "one speaker each half second is found normal, or what was set; SpeakerStateChangeSignal each time"),
    Row<&MiscModel::SpeakerDetectStop>("SpeakerDetectStop", "inbox.speaker_detection", "what is not looked at yet stays"),
    Row<&MiscModel::SetScreenshot>("SetScreenshot", "inbox.screenshot", "the name of the picture"),
    Row<&MiscModel::SetRvcOffDelaySwitch>("SetRvcOffDelaySwitch", "misc.rear_view_delay"),
    Row<&MiscModel::SetHandbrakeCheckingSwitch>("SetHandbrakeCheckingSwitch", "misc.handbrake_check"),
    Row<&MiscModel::SetGPSAntennaCheckingSwitch>("SetGPSAntennaCheckingSwitch", "misc.gps_antenna_check"),
    Row<&MiscModel::SetDrivePosition>("SetDrivePosition", "misc.drive_position"),
    Inbox<Own::kSource>("SetOnSourceChange", "inbox.source"),
    Inbox<Own::kLogo>("SetLogo", "inbox.logo"),
    Row<&MiscModel::SetLogoInfo>("SetLogoInfo", "inbox.logo_info"),
    Inbox<Own::kTimeText>("SetOnTimeChange", "inbox.time_text"),
    Inbox<Own::kRadioText>("SetOnRadioChange", "inbox.radio_text"),
    Inbox<Own::kTouchText>("SetOnTouchInfo", "inbox.touch_text"),
    Inbox<Own::kPsText>("SetOnPSChange", "inbox.ps_text"),
    Inbox<Own::kMediaText>("SetOnMediaInfoChange", "inbox.media_text"),
    Inbox<Own::kPhoneText>("SetOnPhoneInfoChange", "inbox.phone_text"),
    Inbox<Own::kVolume>("SetOnVolChange", "inbox.volume"),
    Row<&FactoryModel::ResetFactoryMode>("ResetFactoryMode", "", "every setting of this table is what the configuration says, also where it is saved; the inbox is empty; each change is announced, and OnFactoryResetModeSignal at the end"),
    Row<&MiscModel::EnableCanBoxModule>("EnableCanBoxModule", "misc.can_box"),
    Row<&MiscModel::EnableScreenShotControl>("EnableScreenShotControl", "misc.screenshots"),
    Row<&MiscModel::StartAutoTest>("StartAutoTest", "inbox.auto_test", "a second for antennas and microphone, then the speaker detection"),
    Row<&TimeModel::SetTime24Mode>("SetTime24Mode", "time.24_hour"),
    Row<&TimeModel::SetAutoSyncMode>("SetAutoSyncMode", "time.auto_sync"),
    Row<&TimeModel::SetAutoAdjustDstMode>("SetAutoAdjustDstMode", "time.auto_dst", "time.dst, time.date and time.time follow"),
    Row<&TimeModel::SetCurDate>("SetCurDate", "time.date", "the unit's clock is set, not the machine's"),
    Row<&TimeModel::SetCurTime>("SetCurTime", "time.time", "the unit's clock is set, not the machine's"),
    Row<&TimeModel::SetGpsUTCTimeSync>("SetGpsUTCTimeSync", "time.date time.time", "taken while time.auto_sync is on; otherwise the answer is false"),
    Row<&TimeModel::SetTimeZone>("SetTimeZone", "time.zone", "time.dst, time.date and time.time follow"),
};
// clang-format on

/// What a factory reset restores: the settings in records that a method sets. A clock is no setting.
std::vector<const catalog::Value*> Settings() {
  std::vector<const catalog::Value*> settings;
  for (const MethodRow& row : kMethods) {
    std::istringstream names(row.changes);
    for (std::string name; names >> name;) {
      const catalog::Value* const value = catalog::FindValue(name);
      if (value != nullptr && value->reading.IsNumeric()) settings.push_back(value);
    }
  }
  return settings;
}

}  // namespace

Models::Models(Unit& the_unit, LifeCycle::Hooks hooks)
    : unit(the_unit),
      power(unit),
      life(unit, std::move(hooks)),
      misc(unit),
      time(unit),
      update(unit),
      factory(unit, Settings()) {}

catalog::View<MethodRow> Methods() { return kMethods; }

const MethodRow* FindMethod(std::string_view name) {
  const auto* const row = std::find_if(std::begin(kMethods), std::end(kMethods),
                                       [name](const MethodRow& candidate) { return candidate.method == name; });
  return row == std::end(kMethods) ? nullptr : row;
}

const MethodRow& MethodNamed(const std::string& name) {
  if (const MethodRow* const row = FindMethod(name)) return *row;
  std::vector<std::string> names;
  for (const MethodRow& row : kMethods) names.emplace_back(row.method);
  throw Unknown("method", name, catalog::Nearest(name, names));
}

GVariant* ArgumentsByName(GVariant* arguments, GDBusArgInfo* const* names) {
  VariantBuilder builder(G_VARIANT_TYPE_VARDICT);
  for (gsize i = 0; i < g_variant_n_children(arguments); ++i) {
    const GLibPtr<GVariant> value(g_variant_get_child_value(arguments, i));
    GVariant* shown = value.get();
    // Bytes of a record are shown as what they stand for.
    if (variant_data_size(shown) >= 0) shown = VariantOf(ScalarOf(shown));
    builder.Add("{sv}", names[i]->name, shown);
  }
  return builder.End();
}
