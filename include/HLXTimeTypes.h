#ifndef HLX_TIME_TYPES_H
#define HLX_TIME_TYPES_H

/// @addtogroup time
/// @{

/// Values of the time client. These records are also what travels to the service, byte by byte.
namespace SystemTime {

/// A date; 16 bytes on D-Bus.
struct DateInfo {
  int year;   ///< four digits
  int month;  ///< 1 to 12
  int day;    ///< 1 to 31
  int week;   ///< day of the week, 0 (Sunday) to 6
};

/// A time of day; 12 bytes on D-Bus.
struct TimeInfo {
  int hour;    ///< 0 to 23
  int minute;  ///< 0 to 59
  int second;  ///< 0 to 59, 60 in a leap second
};

/// A date and a time of day; 28 bytes on D-Bus.
struct DateTime {
  DateInfo date;  ///< date
  TimeInfo time;  ///< time of day
};

/// Time as Apple CarPlay delivers it.
struct CarplayTime {
  int seconds;  ///< since 1970-01-01 00:00 UTC
};

/// The zones that a unit offers, named after the first place of the name that is shown. The numbers do not follow the
/// offsets, and the offset in a zone's name is not always the one in force: the zone's file decides.
enum TimeZone : int {
  TIME_ZONE_MIDWAY_ISLAND = 0,                  ///< (GMT-11:00) Midway Island, Samoa
  TIME_ZONE_HAWAII = 1,                         ///< (GMT-10:00) Hawaii
  TIME_ZONE_ALASKA = 2,                         ///< (GMT-09:00) Alaska
  TIME_ZONE_PACIFIC_TIME = 3,                   ///< (GMT-08:00) Pacific Time (US and Canada); Tijuana
  TIME_ZONE_MOUNTAIN_TIME = 4,                  ///< (GMT-07:00) Mountain Time (US and Canada)
  TIME_ZONE_CHIHUAHUA = 5,                      ///< (GMT-07:00) Chihuahua, La Paz, Mazatlan
  TIME_ZONE_ARIZONA = 6,                        ///< (GMT-07:00) Arizona
  TIME_ZONE_CENTRAL_TIME = 7,                   ///< (GMT-06:00) Central Time (US and Canada)
  TIME_ZONE_SASKATCHEWAN = 8,                   ///< (GMT-06:00) Saskatchewan
  TIME_ZONE_GUADALAJARA = 9,                    ///< (GMT-06:00) Guadalajara, Mexico City, Monterrey
  TIME_ZONE_CENTRAL_AMERICA = 10,               ///< (GMT-06:00) Central America
  TIME_ZONE_EASTERN_TIME = 11,                  ///< (GMT-05:00) Eastern Time (US and Canada)
  TIME_ZONE_INDIANA = 12,                       ///< (GMT-05:00) Indiana (East)
  TIME_ZONE_BOGOTA = 13,                        ///< (GMT-05:00) Bogota, Lima, Quito
  TIME_ZONE_ATLANTIC_TIME = 14,                 ///< (GMT-04:00) Atlantic Time (Canada)
  TIME_ZONE_GEORGETOWN = 15,                    ///< (GMT-04:00) Georgetown, La Paz, San Juan
  TIME_ZONE_SANTIAGO = 16,                      ///< (GMT-04:00) Santiago
  TIME_ZONE_NEWFOUNDLAND = 17,                  ///< (GMT-03:30) Newfoundland
  TIME_ZONE_BRASILIA = 18,                      ///< (GMT-03:00) Brasilia
  TIME_ZONE_AZORES = 19,                        ///< (GMT-01:00) Azores
  TIME_ZONE_CAPE_VERDE_ISLANDS = 20,            ///< (GMT-01:00) Cape Verde Islands
  TIME_ZONE_GREENWICH_MEAN_TIME = 21,           ///< (GMT) Greenwich Mean Time: Dublin, Edinburgh, Lisbon, London
  TIME_ZONE_MONROVIA = 22,                      ///< (GMT) Monrovia, Reykjavik
  TIME_ZONE_BELGRADE = 23,                      ///< (GMT+01:00) Belgrade, Bratislava, Budapest, Ljubljana, Prague
  TIME_ZONE_SARAJEVO = 24,                      ///< (GMT+01:00) Sarajevo, Skopje, Warsaw, Zagreb
  TIME_ZONE_BRUSSELS = 25,                      ///< (GMT+01:00) Brussels, Copenhagen, Madrid, Paris
  TIME_ZONE_AMSTERDAM = 26,                     ///< (GMT+01:00) Amsterdam, Berlin, Bern, Rome, Stockholm, Vienna
  TIME_ZONE_MINSK = 27,                         ///< (GMT+02:00) Minsk
  TIME_ZONE_HELSINKI = 28,                      ///< (GMT+02:00) Helsinki, Kyiv, Riga, Sofia, Tallinn, Vilnius
  TIME_ZONE_JERUSALEM = 29,                     ///< (GMT+02:00) Jerusalem
  TIME_ZONE_HARARE = 30,                        ///< (GMT+02:00) Harare, Pretoria
  TIME_ZONE_ATHENS = 31,                        ///< (GMT+02:00) Athens, Bucharest, Istanbul
  TIME_ZONE_MOSCOW = 32,                        ///< (GMT+03:00) Moscow, St. Petersburg, Volgograd
  TIME_ZONE_KUWAIT = 33,                        ///< GMT+03:00) Kuwait, Riyadh
  TIME_ZONE_NAIROBI = 34,                       ///< (GMT+03:00) Nairobi
  TIME_ZONE_BAGHDAD = 35,                       ///< (GMT+03:00) Baghdad
  TIME_ZONE_TEHRAN = 36,                        ///< (GMT+03:30) Tehran
  TIME_ZONE_ABU_DHABI = 37,                     ///< (GMT+04:00) Abu Dhabi, Muscat
  TIME_ZONE_BAKU = 38,                          ///< (GMT+04:00) Baku, Tbilisi, Yerevan
  TIME_ZONE_KABUL = 39,                         ///< (GMT+04:30) Kabul
  TIME_ZONE_TASHKENT = 40,                      ///< (GMT+05:00) Tashkent
  TIME_ZONE_CHENNAI = 41,                       ///< (GMT+05:30) Chennai, Kolkata, Mumbai, New Delhi
  TIME_ZONE_KATHMANDU = 42,                     ///< (GMT+05:45) Kathmandu
  TIME_ZONE_ASTANA = 43,                        ///< (GMT+06:00) Astana, Dhaka
  TIME_ZONE_ALMATY = 44,                        ///< (GMT+06:00) Almaty, Novosibirsk
  TIME_ZONE_YANGON = 45,                        ///< (GMT+06:30) Yangon (Rangoon)
  TIME_ZONE_BANGKOK = 46,                       ///< (GMT+07:00) Bangkok, Hanoi, Jakarta
  TIME_ZONE_KRASNOYARSK = 47,                   ///< (GMT+07:00) Krasnoyarsk
  TIME_ZONE_BEIJING = 48,                       ///< (GMT+08:00) Beijing, Chongqing, Hong Kong, Urumqi
  TIME_ZONE_KUALA_LUMPUR = 49,                  ///< (GMT+08:00) Kuala Lumpur, Singapore
  TIME_ZONE_TAIPEI = 50,                        ///< (GMT+08:00) Taipei
  TIME_ZONE_PERTH = 51,                         ///< (GMT+08:00) Perth
  TIME_ZONE_IRKUTSK = 52,                       ///< (GMT+08:00) Irkutsk, Ulaan Bataar
  TIME_ZONE_SEOUL = 53,                         ///< (GMT+09:00) Seoul
  TIME_ZONE_YAKUTSK = 54,                       ///< (GMT+09:00) Yakutsk
  TIME_ZONE_DARWIN = 55,                        ///< (GMT+09:30) Darwin
  TIME_ZONE_ADELAIDE = 56,                      ///< (GMT+09:30) Adelaide
  TIME_ZONE_CANBERRA = 57,                      ///< (GMT+10:00) Canberra, Melbourne, Sydney
  TIME_ZONE_BRISBANE = 58,                      ///< (GMT+10:00) Brisbane
  TIME_ZONE_HOBART = 59,                        ///< (GMT+10:00) Hobart
  TIME_ZONE_VLADIVOSTOK = 60,                   ///< (GMT+10:00) Vladivostok
  TIME_ZONE_GUAM = 61,                          ///< (GMT+10:00) Guam, Port Moresby
  TIME_ZONE_MAGADAN = 62,                       ///< (GMT+11:00) Magadan, Solomon Islands, New Caledonia
  TIME_ZONE_FIJI = 63,                          ///< (GMT+12:00) Fiji, Kamchatka, Marshall Is.
  TIME_ZONE_AUCKLAND = 64,                      ///< (GMT+12:00) Auckland, Wellington
  TIME_ZONE_INTERNATIONAL_DATE_LINE_WEST = 65,  ///< (GMT-12:00) International Date Line West
  TIME_ZONE_GEORGETOWN_BUENOSAIRES = 66,        ///< (GMT-03:00) Georgetown
  TIME_ZONE_GREENLAND = 67,                     ///< (GMT-03:00) Greenland
  TIME_ZONE_MID_ATLANTIC = 68,                  ///< (GMT-02:00) Mid-Atlantic
  TIME_ZONE_WEST_CENTRAL_AFRICA = 69,           ///< (GMT+01:00) West Central Africa
  TIME_ZONE_CAIRO = 70,                         ///< (GMT+02:00) Cairo
  TIME_ZONE_EKATERINBURG = 71,                  ///< (GMT+05:00) Ekaterinburg
  TIME_ZONE_SRI_JAYAWARDENEPURA = 72,           ///< (GMT+06:00) Sri Jayawardenepura
  TIME_ZONE_NUKU_ALOFA = 73,                    ///< (GMT+13:00) Nuku'alofa
  TIME_ZONE_BUENOS_AIRES = 74,                  ///< (GMT-03:00) Buenos Aires
  TIME_ZONE_CASABLANCA = 75,                    ///< (GMT) Casablanca
  TIME_ZONE_ISLAMABAD = 76,                     ///< (GMT+05:00) Islamabad, Karachi
  TIME_ZONE_BUCHAREST = 77,                     ///< (GMT+02:00) Bucharest
  TIME_ZONE_OSAKA = 78,                         ///< (GMT+09:00) Osaka, Sapporo, Tokyo
};

/// Number of zones.
constexpr int kTimeZoneCount = 79;

/// One zone as the service and every client publish it.
struct ZoneInfo {
  int zone;             ///< a TimeZone value
  char zone_name[128];  ///< name to show; not terminated when it fills all 128 bytes
};

/// All zones; entry n describes zone n.
struct ZoneList {
  unsigned int zone_count;              ///< entries that are filled
  ZoneInfo zone_table[kTimeZoneCount];  ///< by number of the zone
};

}  // namespace SystemTime

/// @}

#endif
