/// The words of all enumerations. Numbers without a word may occur everywhere.
#pragma once

#include "HLXInfoTypes.h"
#include "HLXMiscTypes.h"
#include "HLXPowerTypes.h"
#include "HLXUpdateTypes.h"
#include "catalog/Reading.h"

namespace catalog::words {

using namespace HLXPower;
using namespace SystemMisc;
using namespace SystemInfo;
using namespace HLXUpdate;

// Of 1 and 0.
inline constexpr Word kOnOff[] = {{1, "on"}, {0, "off"}};
inline constexpr Word kYesNo[] = {{1, "yes"}, {0, "no"}};
inline constexpr Word kOpen[] = {{1, "open"}, {0, "closed"}};
inline constexpr Word kSide[] = {{1, "left"}, {0, "right"}};
inline constexpr Word kKeyPress[] = {{1, "short"}, {0, "long"}};
inline constexpr Word kDst[] = {{1, "on"}, {0, "off"}, {-1, "not-known"}};  // C's tm_isdst

inline constexpr Word kLight[] = {{LIGHT_TYPE_DAY, "day"}, {LIGHT_TYPE_NIGHT, "night"}};
inline constexpr Word kColor[] = {
    {COLOR_TYPE_RED, "red"},       {COLOR_TYPE_YELLOW, "yellow"}, {COLOR_TYPE_GREEN, "green"},
    {COLOR_TYPE_BLUE, "blue"},     {COLOR_TYPE_PURPLE, "purple"}, {COLOR_TYPE_WHITE, "white"},
    {COLOR_TYPE_CUSTOM, "custom"},
};
inline constexpr Word kCall[] = {{CALL_STATE_IDLE, "idle"},
                                 {CALL_STATE_INCOMING, "incoming"},
                                 {CALL_STATE_OUTGOING, "outgoing"},
                                 {CALL_STATE_ACTIVE, "active"}};
inline constexpr Word kCarPlayCall[] = {
    {CP_PHONE_STATE_IDLE, "idle"}, {CP_PHONE_STATE_CALLING, "calling"}, {CP_PHONE_STATE_ACTIVE, "active"}};
inline constexpr Word kRadio[] = {{RADIO_STATE_OFF, "off"}, {RADIO_STATE_ON, "on"}};
inline constexpr Word kWakeup[] = {
    {POWER_WAKEUP_UNKNOWN, "unknown"}, {POWER_WAKEUP_ACC, "acc"}, {POWER_WAKEUP_KEY, "key"}, {POWER_WAKEUP_CAN, "can"}};
inline constexpr Word kBoot[] = {{BOOT_REASON_COLD, "cold"},     {BOOT_REASON_ACC, "acc"},
                                 {BOOT_REASON_KEY, "key"},       {BOOT_REASON_RESET, "reset"},
                                 {BOOT_REASON_UPDATE, "update"}, {BOOT_REASON_UNKNOWN, "unknown"}};
inline constexpr Word kDisplay[] = {{MCU_REQ_DISPLAY_NONE, "none"},
                                    {MCU_REQ_DISPLAY_HOME, "home"},
                                    {MCU_REQ_DISPLAY_REVERSE, "reverse"},
                                    {MCU_REQ_DISPLAY_STANDBY, "standby"}};

inline constexpr Word kAntenna[] = {{ANT_STATE_NORMAL, "normal"}, {ANT_STATE_OPEN, "open"},
                                    {ANT_STATE_SHORT, "short"},   {ANT_STATE_OVERCURRENT, "overcurrent"},
                                    {ANT_STATE_OFF, "off"},       {ANT_STATE_UNKNOWN, "not-reported"}};
inline constexpr Word kSpeakerState[] = {{SPEAKER_STATE_NORMAL, "normal"},
                                         {SPEAKER_STATE_OPEN, "open"},
                                         {SPEAKER_STATE_SHORT, "short"},
                                         {SPEAKER_STATE_SHORT_TO_GROUND, "short-to-ground"},
                                         {SPEAKER_STATE_SHORT_TO_BATTERY, "short-to-battery"},
                                         {SPEAKER_STATE_UNKNOWN, "not-detected"}};
inline constexpr Word kAirBlow[] = {{AIR_BLOW_OFF, "off"},
                                    {AIR_BLOW_FACE, "face"},
                                    {AIR_BLOW_FACE_FEET, "face-feet"},
                                    {AIR_BLOW_FEET, "feet"},
                                    {AIR_BLOW_FEET_WINDOW, "feet-window"},
                                    {AIR_BLOW_WINDOW, "window"},
                                    {AIR_BLOW_FACE_WINDOW, "face-window"},
                                    {AIR_BLOW_ALL, "all"},
                                    {AIR_BLOW_UNKNOWN, "not-reported"}};
inline constexpr Word kLanguage[] = {{LANGUAGE_ENGLISH, "english"},
                                     {LANGUAGE_CHINESE_SIMPLIFIED, "chinese-simplified"},
                                     {LANGUAGE_CHINESE_TRADITIONAL, "chinese-traditional"},
                                     {LANGUAGE_GERMAN, "german"},
                                     {LANGUAGE_FRENCH, "french"},
                                     {LANGUAGE_SPANISH, "spanish"},
                                     {LANGUAGE_ITALIAN, "italian"},
                                     {LANGUAGE_PORTUGUESE, "portuguese"},
                                     {LANGUAGE_RUSSIAN, "russian"},
                                     {LANGUAGE_TURKISH, "turkish"},
                                     {LANGUAGE_ARABIC, "arabic"}};
inline constexpr Word kRadioRegion[] = {{RADIO_REGION_EUROPE, "europe"},
                                        {RADIO_REGION_NORTH_AMERICA, "north-america"},
                                        {RADIO_REGION_ASIA, "asia"},
                                        {RADIO_REGION_UNKNOWN, "not-reported"}};
inline constexpr Word kRadioBand[] = {
    {RADIO_BAND_FM1, "fm1"}, {RADIO_BAND_FM2, "fm2"}, {RADIO_BAND_AM, "am"}, {RADIO_BAND_DAB, "dab"}};
inline constexpr Word kSeat[] = {{SEAT_TYPE_FRONT, "front"}, {SEAT_TYPE_REAR, "rear"}};
inline constexpr Word kDistance[] = {{RADAR_VALUE_NONE, "nothing"}};
inline constexpr Word kAcGroup[] = {{AC_STATE_DATA_SWITCHES, "switches"},
                                    {AC_STATE_DATA_AIR, "air"},
                                    {AC_STATE_DATA_REAR, "rear"},
                                    {AC_STATE_DATA_SEATS, "seats"}};

inline constexpr Word kWeek[] = {{0, "Sunday"},   {1, "Monday"}, {2, "Tuesday"}, {3, "Wednesday"},
                                 {4, "Thursday"}, {5, "Friday"}, {6, "Saturday"}};
inline constexpr Word kFuel[] = {{FUEL_TYPE_UNLEADED, "unleaded"}, {FUEL_TYPE_DIESEL, "diesel"}};

inline constexpr Word kUpdateOutcome[] = {{UPDATE_NOTIFY_VALID, "valid"},
                                          {UPDATE_NOTIFY_REMOVED, "removed"},
                                          {UPDATE_NOTIFY_CAN_FILE, "can-file"},
                                          {UPDATE_NOTIFY_CHECKSUM_WRONG, "checksum-wrong"},
                                          {UPDATE_NOTIFY_VERSION_OLDER, "version-older"},
                                          {UPDATE_NOTIFY_HARDWARE_DIFFERS, "hardware-differs"},
                                          {UPDATE_NOTIFY_PROJECT_DIFFERS, "project-differs"}};
inline constexpr Word kUpdateType[] = {{UPDATE_TYPE_MPU, "mpu"}, {UPDATE_TYPE_MCU, "mcu"}, {UPDATE_TYPE_ALL, "all"}};
inline constexpr Word kOpResult[] = {{OP_RESULT_OK, "ok"}, {OP_RESULT_FAILED, "failed"}, {OP_RESULT_BUSY, "busy"}};
inline constexpr Word kUpdateState[] = {{UPDATE_STATE_IDLE, "idle"},
                                        {UPDATE_STATE_STARTED, "started"},
                                        {UPDATE_STATE_RUNNING, "running"},
                                        {UPDATE_STATE_SUCCESS, "success"},
                                        {UPDATE_STATE_FAILED, "failed"}};
inline constexpr Word kPackage[] = {
    {UPDATE_PACKAGE_INSERTED, "inserted"}, {UPDATE_PACKAGE_REMOVED, "removed"}, {UPDATE_PACKAGE_CHANGED, "changed"}};

}  // namespace catalog::words
