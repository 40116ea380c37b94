/// Names of the misc client's values.
#pragma once

#include "HLXMiscTypes.h"
#include "tools/hlxctl/Value.h"

namespace misc_words {
using namespace SystemMisc;

constexpr Word kAntenna[] = {{ANT_STATE_NORMAL, "normal"}, {ANT_STATE_OPEN, "open"},
                             {ANT_STATE_SHORT, "short"},   {ANT_STATE_OVERCURRENT, "overcurrent"},
                             {ANT_STATE_OFF, "off"},       {ANT_STATE_UNKNOWN, "not-reported"}};
constexpr Word kSpeaker[] = {{SPEAKER_FRONT_LEFT, "front-left"},
                             {SPEAKER_FRONT_RIGHT, "front-right"},
                             {SPEAKER_REAR_LEFT, "rear-left"},
                             {SPEAKER_REAR_RIGHT, "rear-right"}};
constexpr Word kSpeakerState[] = {{SPEAKER_STATE_NORMAL, "normal"},
                                  {SPEAKER_STATE_OPEN, "open"},
                                  {SPEAKER_STATE_SHORT, "short"},
                                  {SPEAKER_STATE_SHORT_TO_GROUND, "short-to-ground"},
                                  {SPEAKER_STATE_SHORT_TO_BATTERY, "short-to-battery"},
                                  {SPEAKER_STATE_UNKNOWN, "not-detected"}};
constexpr Word kDoor[] = {{DOOR_RESERVED_0, "reserved-0"},
                          {DOOR_RESERVED_1, "reserved-1"},
                          {DOOR_HOOD, "hood"},
                          {DOOR_TRUNK, "trunk"},
                          {DOOR_REAR_RIGHT, "rear-right"},
                          {DOOR_REAR_LEFT, "rear-left"},
                          {DOOR_FRONT_RIGHT, "front-right"},
                          {DOOR_FRONT_LEFT, "front-left"}};
constexpr Word kAirBlow[] = {{AIR_BLOW_OFF, "off"},
                             {AIR_BLOW_FACE, "face"},
                             {AIR_BLOW_FACE_FEET, "face-feet"},
                             {AIR_BLOW_FEET, "feet"},
                             {AIR_BLOW_FEET_WINDOW, "feet-window"},
                             {AIR_BLOW_WINDOW, "window"},
                             {AIR_BLOW_FACE_WINDOW, "face-window"},
                             {AIR_BLOW_ALL, "all"},
                             {AIR_BLOW_UNKNOWN, "not-reported"}};
constexpr Word kSimpleAir[] = {{SIMPLE_AIR_AUTO, "auto"},           {SIMPLE_AIR_WINDOW, "window"},
                               {SIMPLE_AIR_FACE, "face"},           {SIMPLE_AIR_FEET, "feet"},
                               {SIMPLE_AIR_AVAILABLE, "available"}, {SIMPLE_AIR_SOFT, "soft"},
                               {SIMPLE_AIR_NORMAL, "normal"},       {SIMPLE_AIR_FAST, "fast"}};
constexpr Word kAc[] = {{AC_STATE_POWER, "power"},
                        {AC_STATE_COMPRESSOR, "compressor"},
                        {AC_STATE_RECIRCULATION, "recirculation"},
                        {AC_STATE_AUTO, "auto"},
                        {AC_STATE_DUAL, "dual"},
                        {AC_STATE_MAX_FRONT, "max-front"},
                        {AC_STATE_REAR_DEFROST, "rear-defrost"},
                        {AC_STATE_DISPLAY, "display"}};
constexpr Word kRenaultAc[] = {{RENAULT_AC_POWER, "power"},
                               {RENAULT_AC_COMPRESSOR, "compressor"},
                               {RENAULT_AC_RECIRCULATION, "recirculation"},
                               {RENAULT_AC_AUTO, "auto"},
                               {RENAULT_AC_DUAL, "dual"},
                               {RENAULT_AC_FRONT_DEFROST, "front-defrost"},
                               {RENAULT_AC_REAR_DEFROST, "rear-defrost"},
                               {RENAULT_AC_DISPLAY, "display"}};
constexpr Word kGacAc[] = {{GAC_AC_POWER, "power"},
                           {GAC_AC_COMPRESSOR, "compressor"},
                           {GAC_AC_RECIRCULATION, "recirculation"},
                           {GAC_AC_AUTO, "auto"},
                           {GAC_AC_DUAL, "dual"},
                           {GAC_AC_FRONT_DEFROST, "front-defrost"},
                           {GAC_AC_REAR_DEFROST, "rear-defrost"},
                           {GAC_AC_DISPLAY, "display"},
                           {GAC_AC_BLOW_WINDOW, "blow-window"},
                           {GAC_AC_BLOW_FACE, "blow-face"},
                           {GAC_AC_BLOW_FEET, "blow-feet"},
                           {GAC_AC_REAR_LOCK, "rear-lock"},
                           {GAC_AC_MAX, "max"},
                           {GAC_AC_ECO, "eco"}};
constexpr Word kGeneralAc[] = {{AC_TYPE_POWER, "power"},
                               {AC_TYPE_COMPRESSOR, "compressor"},
                               {AC_TYPE_RECIRCULATION, "recirculation"},
                               {AC_TYPE_AUTO_HIGH, "auto-high"},
                               {AC_TYPE_AUTO_LOW, "auto-low"},
                               {AC_TYPE_DUAL, "dual"},
                               {AC_TYPE_MAX_FRONT, "max-front"},
                               {AC_TYPE_BLOW_WINDOW, "blow-window"},
                               {AC_TYPE_BLOW_FACE, "blow-face"},
                               {AC_TYPE_BLOW_FEET, "blow-feet"},
                               {AC_TYPE_DISPLAY, "display"},
                               {AC_TYPE_REAR_POWER, "rear-power"},
                               {AC_TYPE_REAR_DEFROST, "rear-defrost"},
                               {AC_TYPE_REAR_AUTO, "rear-auto"},
                               {AC_TYPE_REAR_LOCK, "rear-lock"},
                               {AC_TYPE_REAR_BLOW_WINDOW, "rear-blow-window"},
                               {AC_TYPE_REAR_BLOW_FACE, "rear-blow-face"},
                               {AC_TYPE_REAR_BLOW_FEET, "rear-blow-feet"},
                               {AC_TYPE_LEFT_SEAT_HEAT, "left-seat-heat"},
                               {AC_TYPE_RIGHT_SEAT_HEAT, "right-seat-heat"},
                               {AC_TYPE_LEFT_SEAT_COOL, "left-seat-cool"},
                               {AC_TYPE_RIGHT_SEAT_COOL, "right-seat-cool"},
                               {AC_TYPE_MAX_COOLING, "max-cooling"}};
constexpr Word kLanguage[] = {{LANGUAGE_ENGLISH, "english"},
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
constexpr Word kRadioRegion[] = {{RADIO_REGION_EUROPE, "europe"},
                                 {RADIO_REGION_NORTH_AMERICA, "north-america"},
                                 {RADIO_REGION_ASIA, "asia"},
                                 {RADIO_REGION_UNKNOWN, "not-reported"}};
constexpr Word kRadioBand[] = {
    {RADIO_BAND_FM1, "fm1"}, {RADIO_BAND_FM2, "fm2"}, {RADIO_BAND_AM, "am"}, {RADIO_BAND_DAB, "dab"}};
constexpr Word kSeat[] = {{SEAT_TYPE_FRONT, "front"}, {SEAT_TYPE_REAR, "rear"}};

}  // namespace misc_words

constexpr Flag kOpen{"open", "closed"};
constexpr Flag kLeft{"left", "right"};
constexpr Number kCount;
constexpr Decimal kDegrees{"°"};
constexpr Number kEngineSpeed{"1/min"};

/// A radar distance: 255 is nothing in range.
struct Distance {
  Value operator()(int64_t value) const {
    return {value, value == SystemMisc::RADAR_VALUE_NONE ? "nothing" : std::to_string(value), ""};
  }
};
