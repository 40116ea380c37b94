#ifndef HLX_MISC_TYPES_H
#define HLX_MISC_TYPES_H

/// Values of the misc client: vehicle data, climate, doors, keys, and switches of the unit. Values without a name here
/// may come from the service or the CAN box; they are passed on unchanged.
namespace SystemMisc {

/// State of an antenna or of the microphone.
enum AntState : int {
  ANT_STATE_NORMAL = 0,
  ANT_STATE_OPEN = 1,
  ANT_STATE_SHORT = 2,
  ANT_STATE_OVERCURRENT = 3,
  ANT_STATE_OFF = 4,
  ANT_STATE_UNKNOWN = 5,  ///< not reported yet
};

/// Bit numbers of the climate byte, 0 to 7 (boxes other than Renault's).
enum ACState : int {
  AC_STATE_POWER = 0,
  AC_STATE_COMPRESSOR = 1,
  AC_STATE_RECIRCULATION = 2,
  AC_STATE_AUTO = 3,
  AC_STATE_DUAL = 4,
  AC_STATE_MAX_FRONT = 5,
  AC_STATE_REAR_DEFROST = 6,
  AC_STATE_DISPLAY = 7,
};

/// Bit numbers of the climate byte under "raise_renault", 0 to 7.
enum Raise_Renault_ACState : int {
  RENAULT_AC_POWER = 0,
  RENAULT_AC_COMPRESSOR = 1,
  RENAULT_AC_RECIRCULATION = 2,
  RENAULT_AC_AUTO = 3,
  RENAULT_AC_DUAL = 4,
  RENAULT_AC_FRONT_DEFROST = 5,
  RENAULT_AC_REAR_DEFROST = 6,
  RENAULT_AC_DISPLAY = 7,
};

/// Climate switches of the GAC and Raise boxes. 0 to 11 come under "raise_gac"; 0, 2, 5, 6, 7, 10, 12 and 13 under
/// "raise".
enum Raise_GAC_ACState : int {
  GAC_AC_POWER = 0,
  GAC_AC_COMPRESSOR = 1,
  GAC_AC_RECIRCULATION = 2,
  GAC_AC_AUTO = 3,
  GAC_AC_DUAL = 4,
  GAC_AC_FRONT_DEFROST = 5,
  GAC_AC_REAR_DEFROST = 6,
  GAC_AC_DISPLAY = 7,
  GAC_AC_BLOW_WINDOW = 8,
  GAC_AC_BLOW_FACE = 9,
  GAC_AC_BLOW_FEET = 10,
  GAC_AC_REAR_LOCK = 11,
  GAC_AC_MAX = 12,
  GAC_AC_ECO = 13,
};

/// Keys of the simple air-mode map: 4 to 7 from every box, 8 to 11 under "raise_renault" only.
enum SimpleAirMode : int {
  SIMPLE_AIR_AUTO = 4,
  SIMPLE_AIR_WINDOW = 5,
  SIMPLE_AIR_FACE = 6,
  SIMPLE_AIR_FEET = 7,
  SIMPLE_AIR_AVAILABLE = 8,
  SIMPLE_AIR_SOFT = 9,
  SIMPLE_AIR_NORMAL = 10,
  SIMPLE_AIR_FAST = 11,
};

/// Which byte of a Toyota or Ford climate report a general climate event carries.
enum AC_State_Data : int {
  AC_STATE_DATA_SWITCHES = 1,
  AC_STATE_DATA_AIR = 2,
  AC_STATE_DATA_REAR = 3,
  AC_STATE_DATA_SEATS = 4,
};

/// Climate switches of the Toyota and Ford boxes, 0 to 27.
enum AC_State_Type : int {
  AC_TYPE_POWER = 0,
  AC_TYPE_COMPRESSOR = 1,
  AC_TYPE_RECIRCULATION = 2,
  AC_TYPE_AUTO_HIGH = 3,
  AC_TYPE_AUTO_LOW = 4,
  AC_TYPE_DUAL = 5,
  AC_TYPE_MAX_FRONT = 6,
  AC_TYPE_BLOW_WINDOW = 8,
  AC_TYPE_BLOW_FACE = 9,
  AC_TYPE_BLOW_FEET = 10,
  AC_TYPE_DISPLAY = 11,
  AC_TYPE_REAR_POWER = 12,
  AC_TYPE_REAR_DEFROST = 13,
  AC_TYPE_REAR_AUTO = 14,
  AC_TYPE_REAR_LOCK = 15,
  AC_TYPE_REAR_BLOW_WINDOW = 16,
  AC_TYPE_REAR_BLOW_FACE = 17,
  AC_TYPE_REAR_BLOW_FEET = 18,
  AC_TYPE_LEFT_SEAT_HEAT = 20,
  AC_TYPE_RIGHT_SEAT_HEAT = 21,
  AC_TYPE_LEFT_SEAT_COOL = 22,
  AC_TYPE_RIGHT_SEAT_COOL = 23,
  AC_TYPE_MAX_COOLING = 27,
};

/// Where the air goes.
enum AirBlowMode : int {
  AIR_BLOW_OFF = 0,
  AIR_BLOW_FACE = 1,
  AIR_BLOW_FACE_FEET = 2,
  AIR_BLOW_FEET = 3,
  AIR_BLOW_FEET_WINDOW = 4,
  AIR_BLOW_WINDOW = 5,
  AIR_BLOW_FACE_WINDOW = 6,
  AIR_BLOW_ALL = 7,
  AIR_BLOW_UNKNOWN = 8,  ///< not reported yet
};

/// Bit numbers of the door byte. Changes are reported for 2 to 7 only.
enum DoorState : int {
  DOOR_RESERVED_0 = 0,
  DOOR_RESERVED_1 = 1,
  DOOR_HOOD = 2,
  DOOR_TRUNK = 3,
  DOOR_REAR_RIGHT = 4,
  DOOR_REAR_LEFT = 5,
  DOOR_FRONT_RIGHT = 6,
  DOOR_FRONT_LEFT = 7,
};

enum Speaker : int {
  SPEAKER_FRONT_LEFT = 1,
  SPEAKER_FRONT_RIGHT = 2,
  SPEAKER_REAR_LEFT = 3,
  SPEAKER_REAR_RIGHT = 4,
};

/// What the speaker detection found.
enum SpeakerState : int {
  SPEAKER_STATE_NORMAL = 0,
  SPEAKER_STATE_OPEN = 1,
  SPEAKER_STATE_SHORT = 2,
  SPEAKER_STATE_SHORT_TO_GROUND = 3,
  SPEAKER_STATE_SHORT_TO_BATTERY = 4,
  SPEAKER_STATE_UNKNOWN = 5,  ///< not detected yet
};

/// Language that the service asks the unit to speak.
enum Language : int {
  LANGUAGE_ENGLISH = 0,
  LANGUAGE_CHINESE_SIMPLIFIED = 1,
  LANGUAGE_CHINESE_TRADITIONAL = 2,
  LANGUAGE_GERMAN = 3,
  LANGUAGE_FRENCH = 4,
  LANGUAGE_SPANISH = 5,
  LANGUAGE_ITALIAN = 6,
  LANGUAGE_PORTUGUESE = 7,
  LANGUAGE_RUSSIAN = 8,
  LANGUAGE_TURKISH = 9,
  LANGUAGE_ARABIC = 10,
};

enum Radio_Region_Ford : int {
  RADIO_REGION_EUROPE = 0,
  RADIO_REGION_NORTH_AMERICA = 1,
  RADIO_REGION_ASIA = 2,
  RADIO_REGION_UNKNOWN = 3,  ///< not reported yet
};

enum Radio_Band_Ford : int {
  RADIO_BAND_FM1 = 0,
  RADIO_BAND_FM2 = 1,
  RADIO_BAND_AM = 2,
  RADIO_BAND_DAB = 3,
};

/// Which seats a general climate event is about.
enum SEAT_TYPE : int {
  SEAT_TYPE_FRONT = 0,
  SEAT_TYPE_REAR = 1,
};

/// One distance byte of the SteelMate radar.
enum RadarValue : int {
  RADAR_VALUE_NONE = 255,  ///< nothing in range, or not reported yet
};

/// A key of the steering wheel or the panel. Both values are the CAN box's own.
struct KeyEvent {
  int state;  ///< 0 to 255
  int key;    ///< key code, 0 to 255
};

/// The start-up logo, sent to the service as these 20 bytes. The fields are an agreement with the service; the library
/// neither reads nor checks them.
struct LogoInfo {
  unsigned int id;
  unsigned int width;   ///< pixels
  unsigned int height;  ///< pixels
  unsigned int format;
  unsigned int size;  ///< bytes of image data
};

}  // namespace SystemMisc

#endif
