#pragma once

#include "HLXTimeTypes.h"

namespace HLXSystemData {

struct ZoneRow {
  const char* name;  ///< as it is shown; spelled as units in the field show it
  const char* path;  ///< the zoneinfo file that makes it local time
};

/// By zone. Several zones share a file.
constexpr ZoneRow kZones[] = {
    {"(GMT-11:00) Midway Island, Samoa", "/usr/share/zoneinfo/Pacific/Apia"},
    {"(GMT-10:00) Hawaii", "/usr/share/zoneinfo/Pacific/Honolulu"},
    {"(GMT-09:00) Alaska", "/usr/share/zoneinfo/America/Anchorage"},
    {"(GMT-08:00) Pacific Time (US and Canada); Tijuana", "/usr/share/zoneinfo/America/Los_Angeles"},
    {"(GMT-07:00) Mountain Time (US and Canada)", "/usr/share/zoneinfo/America/Denver"},
    {"(GMT-07:00) Chihuahua, La Paz, Mazatlan", "/usr/share/zoneinfo/America/Chihuahua"},
    {"(GMT-07:00) Arizona", "/usr/share/zoneinfo/America/Phoenix"},
    {"(GMT-06:00) Central Time (US and Canada)", "/usr/share/zoneinfo/America/Chicago"},
    {"(GMT-06:00) Saskatchewan", "/usr/share/zoneinfo/America/Regina"},
    {"(GMT-06:00) Guadalajara, Mexico City, Monterrey", "/usr/share/zoneinfo/America/Mexico_City"},
    {"(GMT-06:00) Central America", "/usr/share/zoneinfo/America/Managua"},
    {"(GMT-05:00) Eastern Time (US and Canada)", "/usr/share/zoneinfo/America/New_York"},
    {"(GMT-05:00) Indiana (East)", "/usr/share/zoneinfo/America/Indiana/Indianapolis"},
    {"(GMT-05:00) Bogota, Lima, Quito", "/usr/share/zoneinfo/America/Bogota"},
    {"(GMT-04:00) Atlantic Time (Canada)", "/usr/share/zoneinfo/America/Halifax"},
    {"(GMT-04:00) Georgetown, La Paz, San Juan", "/usr/share/zoneinfo/America/Caracas"},
    {"(GMT-04:00) Santiago", "/usr/share/zoneinfo/America/Santiago"},
    {"(GMT-03:30) Newfoundland", "/usr/share/zoneinfo/America/St_Johns"},
    {"(GMT-03:00) Brasilia", "/usr/share/zoneinfo/America/Sao_Paulo"},
    {"(GMT-01:00) Azores", "/usr/share/zoneinfo/Atlantic/Azores"},
    {"(GMT-01:00) Cape Verde Islands", "/usr/share/zoneinfo/Atlantic/Cape_Verde"},
    {"(GMT) Greenwich Mean Time: Dublin, Edinburgh, Lisbon, London", "/usr/share/zoneinfo/Europe/London"},
    {"(GMT) Monrovia, Reykjavik", "/usr/share/zoneinfo/Africa/Casablanca"},
    {"(GMT+01:00) Belgrade, Bratislava, Budapest, Ljubljana, Prague", "/usr/share/zoneinfo/Europe/Belgrade"},
    {"(GMT+01:00) Sarajevo, Skopje, Warsaw, Zagreb", "/usr/share/zoneinfo/Europe/Sarajevo"},
    {"(GMT+01:00) Brussels, Copenhagen, Madrid, Paris", "/usr/share/zoneinfo/Europe/Paris"},
    {"(GMT+01:00) Amsterdam, Berlin, Bern, Rome, Stockholm, Vienna", "/usr/share/zoneinfo/Europe/Berlin"},
    {"(GMT+02:00) Minsk", "/usr/share/zoneinfo/Europe/Istanbul"},
    {"(GMT+02:00) Helsinki, Kyiv, Riga, Sofia, Tallinn, Vilnius", "/usr/share/zoneinfo/Europe/Helsinki"},
    {"(GMT+02:00) Jerusalem", "/usr/share/zoneinfo/Asia/Jerusalem"},
    {"(GMT+02:00) Harare, Pretoria", "/usr/share/zoneinfo/Africa/Johannesburg"},
    {"(GMT+02:00) Athens, Bucharest, Istanbul", "/usr/share/zoneinfo/Europe/Istanbul"},
    {"(GMT+03:00) Moscow, St. Petersburg, Volgograd", "/usr/share/zoneinfo/Europe/Moscow"},
    {"GMT+03:00) Kuwait, Riyadh", "/usr/share/zoneinfo/Asia/Riyadh"},
    {"(GMT+03:00) Nairobi", "/usr/share/zoneinfo/Africa/Nairobi"},
    {"(GMT+03:00) Baghdad", "/usr/share/zoneinfo/Asia/Baghdad"},
    {"(GMT+03:30) Tehran", "/usr/share/zoneinfo/Asia/Tehran"},
    {"(GMT+04:00) Abu Dhabi, Muscat", "/usr/share/zoneinfo/Asia/Muscat"},
    {"(GMT+04:00) Baku, Tbilisi, Yerevan", "/usr/share/zoneinfo/Asia/Tbilisi"},
    {"(GMT+04:30) Kabul", "/usr/share/zoneinfo/Asia/Kabul"},
    {"(GMT+05:00) Tashkent", "/usr/share/zoneinfo/Asia/Karachi"},
    {"(GMT+05:30) Chennai, Kolkata, Mumbai, New Delhi", "/usr/share/zoneinfo/Asia/Kolkata"},
    {"(GMT+05:45) Kathmandu", "/usr/share/zoneinfo/Asia/Kathmandu"},
    {"(GMT+06:00) Astana, Dhaka", "/usr/share/zoneinfo/Asia/Dhaka"},
    {"(GMT+06:00) Almaty, Novosibirsk", "/usr/share/zoneinfo/Asia/Novosibirsk"},
    {"(GMT+06:30) Yangon (Rangoon)", "/usr/share/zoneinfo/Asia/Rangoon"},
    {"(GMT+07:00) Bangkok, Hanoi, Jakarta", "/usr/share/zoneinfo/Asia/Bangkok"},
    {"(GMT+07:00) Krasnoyarsk", "/usr/share/zoneinfo/Asia/Krasnoyarsk"},
    {"(GMT+08:00) Beijing, Chongqing, Hong Kong, Urumqi", "/usr/share/zoneinfo/Asia/Hong_Kong"},
    {"(GMT+08:00) Kuala Lumpur, Singapore", "/usr/share/zoneinfo/Asia/Singapore"},
    {"(GMT+08:00) Taipei", "/usr/share/zoneinfo/Asia/Taipei"},
    {"(GMT+08:00) Perth", "/usr/share/zoneinfo/Australia/Perth"},
    {"(GMT+08:00) Irkutsk, Ulaan Bataar", "/usr/share/zoneinfo/Asia/Irkutsk"},
    {"(GMT+09:00) Seoul", "/usr/share/zoneinfo/Asia/Seoul"},
    {"(GMT+09:00) Yakutsk", "/usr/share/zoneinfo/Asia/Yakutsk"},
    {"(GMT+09:30) Darwin", "/usr/share/zoneinfo/Australia/Darwin"},
    {"(GMT+09:30) Adelaide", "/usr/share/zoneinfo/Australia/Adelaide"},
    {"(GMT+10:00) Canberra, Melbourne, Sydney", "/usr/share/zoneinfo/Australia/Sydney"},
    {"(GMT+10:00) Brisbane", "/usr/share/zoneinfo/Australia/Brisbane"},
    {"(GMT+10:00) Hobart", "/usr/share/zoneinfo/Australia/Hobart"},
    {"(GMT+10:00) Vladivostok", "/usr/share/zoneinfo/Asia/Vladivostok"},
    {"(GMT+10:00) Guam, Port Moresby", "/usr/share/zoneinfo/Pacific/Guam"},
    {"(GMT+11:00) Magadan, Solomon Islands, New Caledonia", "/usr/share/zoneinfo/Asia/Magadan"},
    {"(GMT+12:00) Fiji, Kamchatka, Marshall Is.", "/usr/share/zoneinfo/Pacific/Fiji"},
    {"(GMT+12:00) Auckland, Wellington", "/usr/share/zoneinfo/Pacific/Auckland"},
    {"(GMT-12:00) International Date Line West", "/usr/share/zoneinfo/Pacific/Wake"},
    {"(GMT-03:00) Georgetown", "/usr/share/zoneinfo/America/Argentina/Buenos_Aires"},
    {"(GMT-03:00) Greenland", "/usr/share/zoneinfo/America/Godthab"},
    {"(GMT-02:00) Mid-Atlantic", "/usr/share/zoneinfo/America/Noronha"},
    {"(GMT+01:00) West Central Africa", "/usr/share/zoneinfo/Africa/Lagos"},
    {"(GMT+02:00) Cairo", "/usr/share/zoneinfo/Africa/Cairo"},
    {"(GMT+05:00) Ekaterinburg", "/usr/share/zoneinfo/Asia/Yekaterinburg"},
    {"(GMT+06:00) Sri Jayawardenepura", "/usr/share/zoneinfo/Asia/Colombo"},
    {"(GMT+13:00) Nuku'alofa", "/usr/share/zoneinfo/Pacific/Tongatapu"},
    {"(GMT-03:00) Buenos Aires", "/usr/share/zoneinfo/America/Argentina/Buenos_Aires"},
    {"(GMT) Casablanca", "/usr/share/zoneinfo/Africa/Casablanca"},
    {"(GMT+05:00) Islamabad, Karachi", "/usr/share/zoneinfo/Asia/Karachi"},
    {"(GMT+02:00) Bucharest", "/usr/share/zoneinfo/Europe/Bucharest"},
    {"(GMT+09:00) Osaka, Sapporo, Tokyo", "/usr/share/zoneinfo/Asia/Tokyo"},
};
static_assert(sizeof(kZones) / sizeof(kZones[0]) == SystemTime::kTimeZoneCount, "a row for each zone");

/// Zone 31 is shown under this name where "/setting/default_time_zone_istanbul_p3" is true.
constexpr int kIstanbulZone = 31;
constexpr char kIstanbulPlus3Name[] = "(GMT+03:00) Athens, Bucharest, Istanbul";

}  // namespace HLXSystemData
