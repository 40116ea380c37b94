#ifndef HLX_MISC_TYPES_H
#define HLX_MISC_TYPES_H

/// @addtogroup misc
/// @{

/// Values of the misc client: vehicle data, climate, doors, keys, and switches of the unit. Values without a name here
/// may come from the service or the CAN box; they are passed on unchanged.
namespace SystemMisc {

/// State of an antenna or of the microphone.
enum AntState : int {
  ANT_STATE_NORMAL = 0,       ///< connected
  ANT_STATE_OPEN = 1,         ///< nothing connected
  ANT_STATE_SHORT = 2,        ///< short circuit
  ANT_STATE_OVERCURRENT = 3,  ///< draws too much
  ANT_STATE_OFF = 4,          ///< its supply is off
  ANT_STATE_UNKNOWN = 5,      ///< not reported yet
};

/// Bit numbers of the climate byte, 0 to 7 (boxes other than Renault's).
enum ACState : int {
  AC_STATE_POWER = 0,          ///< climate on
  AC_STATE_COMPRESSOR = 1,     ///< compressor (A/C)
  AC_STATE_RECIRCULATION = 2,  ///< recirculation
  AC_STATE_AUTO = 3,           ///< automatic
  AC_STATE_DUAL = 4,           ///< two zones
  AC_STATE_MAX_FRONT = 5,      ///< front defrost at its most
  AC_STATE_REAR_DEFROST = 6,   ///< rear defrost
  AC_STATE_DISPLAY = 7,        ///< the climate is to be shown
};

/// Bit numbers of the climate byte under "raise_renault", 0 to 7.
enum Raise_Renault_ACState : int {
  RENAULT_AC_POWER = 0,          ///< climate on
  RENAULT_AC_COMPRESSOR = 1,     ///< compressor (A/C)
  RENAULT_AC_RECIRCULATION = 2,  ///< recirculation
  RENAULT_AC_AUTO = 3,           ///< automatic
  RENAULT_AC_DUAL = 4,           ///< two zones
  RENAULT_AC_FRONT_DEFROST = 5,  ///< front defrost
  RENAULT_AC_REAR_DEFROST = 6,   ///< rear defrost
  RENAULT_AC_DISPLAY = 7,        ///< the climate is to be shown
};

/// Climate switches of the GAC and Raise boxes. 0 to 11 come under "raise_gac"; 0, 2, 5, 6, 7, 10, 12 and 13 under
/// "raise".
enum Raise_GAC_ACState : int {
  GAC_AC_POWER = 0,          ///< climate on
  GAC_AC_COMPRESSOR = 1,     ///< compressor (A/C)
  GAC_AC_RECIRCULATION = 2,  ///< recirculation
  GAC_AC_AUTO = 3,           ///< automatic
  GAC_AC_DUAL = 4,           ///< two zones
  GAC_AC_FRONT_DEFROST = 5,  ///< front defrost
  GAC_AC_REAR_DEFROST = 6,   ///< rear defrost
  GAC_AC_DISPLAY = 7,        ///< the climate is to be shown
  GAC_AC_BLOW_WINDOW = 8,    ///< air to the windscreen
  GAC_AC_BLOW_FACE = 9,      ///< air to the face
  GAC_AC_BLOW_FEET = 10,     ///< air to the feet
  GAC_AC_REAR_LOCK = 11,     ///< controls in the rear locked
  GAC_AC_MAX = 12,           ///< cooling at its most
  GAC_AC_ECO = 13,           ///< economy
};

/// Keys of the simple air-mode map: 4 to 7 from every box, 8 to 11 under "raise_renault" only.
enum SimpleAirMode : int {
  SIMPLE_AIR_AUTO = 4,       ///< automatic
  SIMPLE_AIR_WINDOW = 5,     ///< air to the windscreen
  SIMPLE_AIR_FACE = 6,       ///< air to the face
  SIMPLE_AIR_FEET = 7,       ///< air to the feet
  SIMPLE_AIR_AVAILABLE = 8,  ///< the next three mean something
  SIMPLE_AIR_SOFT = 9,       ///< soft air
  SIMPLE_AIR_NORMAL = 10,    ///< normal air
  SIMPLE_AIR_FAST = 11,      ///< fast air
};

/// Which byte of a Toyota or Ford climate report a general climate event carries.
enum AC_State_Data : int {
  AC_STATE_DATA_SWITCHES = 1,  ///< switches in front
  AC_STATE_DATA_AIR = 2,       ///< air distribution in front
  AC_STATE_DATA_REAR = 3,      ///< the rear
  AC_STATE_DATA_SEATS = 4,     ///< seat heating and cooling
};

/// Climate switches of the Toyota and Ford boxes, 0 to 27.
enum AC_State_Type : int {
  AC_TYPE_POWER = 0,              ///< climate on
  AC_TYPE_COMPRESSOR = 1,         ///< compressor (A/C)
  AC_TYPE_RECIRCULATION = 2,      ///< recirculation
  AC_TYPE_AUTO_HIGH = 3,          ///< automatic, strong
  AC_TYPE_AUTO_LOW = 4,           ///< automatic, gentle
  AC_TYPE_DUAL = 5,               ///< two zones
  AC_TYPE_MAX_FRONT = 6,          ///< front defrost at its most
  AC_TYPE_BLOW_WINDOW = 8,        ///< air to the windscreen
  AC_TYPE_BLOW_FACE = 9,          ///< air to the face
  AC_TYPE_BLOW_FEET = 10,         ///< air to the feet
  AC_TYPE_DISPLAY = 11,           ///< the climate is to be shown
  AC_TYPE_REAR_POWER = 12,        ///< rear climate on
  AC_TYPE_REAR_DEFROST = 13,      ///< rear defrost
  AC_TYPE_REAR_AUTO = 14,         ///< rear automatic
  AC_TYPE_REAR_LOCK = 15,         ///< controls in the rear locked
  AC_TYPE_REAR_BLOW_WINDOW = 16,  ///< rear air to the windows
  AC_TYPE_REAR_BLOW_FACE = 17,    ///< rear air to the face
  AC_TYPE_REAR_BLOW_FEET = 18,    ///< rear air to the feet
  AC_TYPE_LEFT_SEAT_HEAT = 20,    ///< left seat heated
  AC_TYPE_RIGHT_SEAT_HEAT = 21,   ///< right seat heated
  AC_TYPE_LEFT_SEAT_COOL = 22,    ///< left seat cooled
  AC_TYPE_RIGHT_SEAT_COOL = 23,   ///< right seat cooled
  AC_TYPE_MAX_COOLING = 27,       ///< cooling at its most
};

/// Where the air goes.
enum AirBlowMode : int {
  AIR_BLOW_OFF = 0,          ///< nowhere
  AIR_BLOW_FACE = 1,         ///< face
  AIR_BLOW_FACE_FEET = 2,    ///< face and feet
  AIR_BLOW_FEET = 3,         ///< feet
  AIR_BLOW_FEET_WINDOW = 4,  ///< feet and windscreen
  AIR_BLOW_WINDOW = 5,       ///< windscreen
  AIR_BLOW_FACE_WINDOW = 6,  ///< face and windscreen
  AIR_BLOW_ALL = 7,          ///< everywhere
  AIR_BLOW_UNKNOWN = 8,      ///< not reported yet
};

/// Bit numbers of the door byte. Changes are reported for 2 to 7 only.
enum DoorState : int {
  DOOR_RESERVED_0 = 0,   ///< not in use
  DOOR_RESERVED_1 = 1,   ///< not in use
  DOOR_HOOD = 2,         ///< hood
  DOOR_TRUNK = 3,        ///< trunk
  DOOR_REAR_RIGHT = 4,   ///< rear right
  DOOR_REAR_LEFT = 5,    ///< rear left
  DOOR_FRONT_RIGHT = 6,  ///< front right
  DOOR_FRONT_LEFT = 7,   ///< front left
};

/// The speakers of the detection.
enum Speaker : int {
  SPEAKER_FRONT_LEFT = 1,   ///< front left
  SPEAKER_FRONT_RIGHT = 2,  ///< front right
  SPEAKER_REAR_LEFT = 3,    ///< rear left
  SPEAKER_REAR_RIGHT = 4,   ///< rear right
};

/// What the speaker detection found.
enum SpeakerState : int {
  SPEAKER_STATE_NORMAL = 0,            ///< connected
  SPEAKER_STATE_OPEN = 1,              ///< nothing connected
  SPEAKER_STATE_SHORT = 2,             ///< short circuit between its lines
  SPEAKER_STATE_SHORT_TO_GROUND = 3,   ///< short circuit to ground
  SPEAKER_STATE_SHORT_TO_BATTERY = 4,  ///< short circuit to the battery
  SPEAKER_STATE_UNKNOWN = 5,           ///< not detected yet
};

/// Language that the service asks the unit to speak.
enum Language : int {
  LANGUAGE_ENGLISH = 0,              ///< English
  LANGUAGE_CHINESE_SIMPLIFIED = 1,   ///< Chinese, simplified
  LANGUAGE_CHINESE_TRADITIONAL = 2,  ///< Chinese, traditional
  LANGUAGE_GERMAN = 3,               ///< German
  LANGUAGE_FRENCH = 4,               ///< French
  LANGUAGE_SPANISH = 5,              ///< Spanish
  LANGUAGE_ITALIAN = 6,              ///< Italian
  LANGUAGE_PORTUGUESE = 7,           ///< Portuguese
  LANGUAGE_RUSSIAN = 8,              ///< Russian
  LANGUAGE_TURKISH = 9,              ///< Turkish
  LANGUAGE_ARABIC = 10,              ///< Arabic
};

/// Radio region that a Ford box reports.
enum Radio_Region_Ford : int {
  RADIO_REGION_EUROPE = 0,         ///< Europe
  RADIO_REGION_NORTH_AMERICA = 1,  ///< North America
  RADIO_REGION_ASIA = 2,           ///< Asia
  RADIO_REGION_UNKNOWN = 3,        ///< not reported yet
};

/// Band of a radio preset that a Ford box reports.
enum Radio_Band_Ford : int {
  RADIO_BAND_FM1 = 0,  ///< FM, first bank
  RADIO_BAND_FM2 = 1,  ///< FM, second bank
  RADIO_BAND_AM = 2,   ///< AM
  RADIO_BAND_DAB = 3,  ///< DAB
};

/// Which seats a general climate event is about.
enum SEAT_TYPE : int {
  SEAT_TYPE_FRONT = 0,  ///< front row
  SEAT_TYPE_REAR = 1,   ///< rear row
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
  unsigned int id;      ///< number of the logo
  unsigned int width;   ///< pixels
  unsigned int height;  ///< pixels
  unsigned int format;  ///< the service's count
  unsigned int size;    ///< bytes of image data
};

}  // namespace SystemMisc

/// @}

#endif
