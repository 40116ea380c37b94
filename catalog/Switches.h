/// Which value each key of the listeners' maps stands for. The same name means the same switch, whichever box reports
/// it.
#pragma once

#include <cstddef>

#include "catalog/AllValues.h"

namespace catalog::switches {

using namespace SystemMisc;

struct Switch {
  int key;
  std::size_t value;  ///< place in rows::kAllValues
};

// A misspelt name does not compile.
constexpr Switch Of(int key, const char* name) { return {key, rows::IndexOf(Area::kMisc, name)}; }

inline constexpr Switch kSpeakers[] = {
    Of(SPEAKER_FRONT_LEFT, "speaker_front_left"),
    Of(SPEAKER_FRONT_RIGHT, "speaker_front_right"),
    Of(SPEAKER_REAR_LEFT, "speaker_rear_left"),
    Of(SPEAKER_REAR_RIGHT, "speaker_rear_right"),
};
inline constexpr Switch kDoors[] = {
    Of(DOOR_RESERVED_0, "door_reserved_0"),
    Of(DOOR_RESERVED_1, "door_reserved_1"),
    Of(DOOR_HOOD, "door_hood"),
    Of(DOOR_TRUNK, "door_trunk"),
    Of(DOOR_REAR_RIGHT, "door_rear_right"),
    Of(DOOR_REAR_LEFT, "door_rear_left"),
    Of(DOOR_FRONT_RIGHT, "door_front_right"),
    Of(DOOR_FRONT_LEFT, "door_front_left"),
};
inline constexpr Switch kAc[] = {
    Of(AC_STATE_POWER, "ac_power"),
    Of(AC_STATE_COMPRESSOR, "ac_compressor"),
    Of(AC_STATE_RECIRCULATION, "ac_recirculation"),
    Of(AC_STATE_AUTO, "ac_auto"),
    Of(AC_STATE_DUAL, "ac_dual"),
    Of(AC_STATE_MAX_FRONT, "ac_max_front"),
    Of(AC_STATE_REAR_DEFROST, "ac_rear_defrost"),
    Of(AC_STATE_DISPLAY, "ac_display"),
};
inline constexpr Switch kRenaultAc[] = {
    Of(RENAULT_AC_POWER, "ac_power"),
    Of(RENAULT_AC_COMPRESSOR, "ac_compressor"),
    Of(RENAULT_AC_RECIRCULATION, "ac_recirculation"),
    Of(RENAULT_AC_AUTO, "ac_auto"),
    Of(RENAULT_AC_DUAL, "ac_dual"),
    Of(RENAULT_AC_FRONT_DEFROST, "ac_front_defrost"),
    Of(RENAULT_AC_REAR_DEFROST, "ac_rear_defrost"),
    Of(RENAULT_AC_DISPLAY, "ac_display"),
};
inline constexpr Switch kGacAc[] = {
    Of(GAC_AC_POWER, "ac_power"),
    Of(GAC_AC_COMPRESSOR, "ac_compressor"),
    Of(GAC_AC_RECIRCULATION, "ac_recirculation"),
    Of(GAC_AC_AUTO, "ac_auto"),
    Of(GAC_AC_DUAL, "ac_dual"),
    Of(GAC_AC_FRONT_DEFROST, "ac_front_defrost"),
    Of(GAC_AC_REAR_DEFROST, "ac_rear_defrost"),
    Of(GAC_AC_DISPLAY, "ac_display"),
    Of(GAC_AC_BLOW_WINDOW, "ac_blow_window"),
    Of(GAC_AC_BLOW_FACE, "ac_blow_face"),
    Of(GAC_AC_BLOW_FEET, "ac_blow_feet"),
    Of(GAC_AC_REAR_LOCK, "ac_rear_lock"),
    Of(GAC_AC_MAX, "ac_max"),
    Of(GAC_AC_ECO, "ac_eco"),
};
inline constexpr Switch kGeneralAc[] = {
    Of(AC_TYPE_POWER, "ac_power"),
    Of(AC_TYPE_COMPRESSOR, "ac_compressor"),
    Of(AC_TYPE_RECIRCULATION, "ac_recirculation"),
    Of(AC_TYPE_AUTO_HIGH, "ac_auto_high"),
    Of(AC_TYPE_AUTO_LOW, "ac_auto_low"),
    Of(AC_TYPE_DUAL, "ac_dual"),
    Of(AC_TYPE_MAX_FRONT, "ac_max_front"),
    Of(AC_TYPE_BLOW_WINDOW, "ac_blow_window"),
    Of(AC_TYPE_BLOW_FACE, "ac_blow_face"),
    Of(AC_TYPE_BLOW_FEET, "ac_blow_feet"),
    Of(AC_TYPE_DISPLAY, "ac_display"),
    Of(AC_TYPE_REAR_POWER, "ac_rear_power"),
    Of(AC_TYPE_REAR_DEFROST, "ac_rear_defrost"),
    Of(AC_TYPE_REAR_AUTO, "ac_rear_auto"),
    Of(AC_TYPE_REAR_LOCK, "ac_rear_lock"),
    Of(AC_TYPE_REAR_BLOW_WINDOW, "ac_rear_blow_window"),
    Of(AC_TYPE_REAR_BLOW_FACE, "ac_rear_blow_face"),
    Of(AC_TYPE_REAR_BLOW_FEET, "ac_rear_blow_feet"),
    Of(AC_TYPE_LEFT_SEAT_HEAT, "ac_left_seat_heat"),
    Of(AC_TYPE_RIGHT_SEAT_HEAT, "ac_right_seat_heat"),
    Of(AC_TYPE_LEFT_SEAT_COOL, "ac_left_seat_cool"),
    Of(AC_TYPE_RIGHT_SEAT_COOL, "ac_right_seat_cool"),
    Of(AC_TYPE_MAX_COOLING, "ac_max_cooling"),
};
inline constexpr Switch kAirModes[] = {
    Of(SIMPLE_AIR_AUTO, "air_mode_auto"),           Of(SIMPLE_AIR_WINDOW, "air_mode_window"),
    Of(SIMPLE_AIR_FACE, "air_mode_face"),           Of(SIMPLE_AIR_FEET, "air_mode_feet"),
    Of(SIMPLE_AIR_AVAILABLE, "air_mode_available"), Of(SIMPLE_AIR_SOFT, "air_mode_soft"),
    Of(SIMPLE_AIR_NORMAL, "air_mode_normal"),       Of(SIMPLE_AIR_FAST, "air_mode_fast"),
};

}  // namespace catalog::switches
