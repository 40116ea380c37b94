/// The values of the time, info and update clients.
#pragma once

#include <cmath>

#include "catalog/Rows.h"

namespace catalog::rows {
namespace time {

using namespace words;
using I = IHLXSystemTime;

inline constexpr const char kClock[] = "Clock";
inline constexpr const char kSettings[] = "Settings";
inline constexpr const char kOutside[] = "Time from outside";

inline constexpr Reading kSwitch = Flag(kOnOff);
inline constexpr Reading kMomentText = Plain(Reading::Kind::kMoment);

inline Scalar Weekday(const Clients& clients) {
  SystemTime::DateInfo date{};
  In<I>(clients).GetCurDateInfo(date);
  return int64_t{date.week};
}

inline Scalar ZoneCount(const Clients& clients) { return int64_t{In<I>(clients).GetAllZoneInfo()->zone_count}; }

template <class... A>
constexpr Value Row(const char* group, A... arguments) {
  return Make(Area::kTime, group, arguments...);
}
#define FIELD(member) HLX_FIELD_OF(kTime, TimeShmData, member)
#define GET(function) HLX_ASK(I, function)

// clang-format off
inline constexpr Value kValues[] = {
    Derived(Row(kClock, FIELD(cur_date), GET(GetCurDateInfo), "date", "Date", Plain(Reading::Kind::kDate), Told("OnDateInfoChangeSignal"))),
    Derived(Row(kClock, FIELD(cur_date.week), HLX_ASK_SPECIAL(I, GetCurDateInfo, "week", &Weekday), "weekday", "Weekday", Named(kWeek).In(0, 6), Told("OnDateInfoChangeSignal"))),
    Derived(Row(kClock, FIELD(cur_time), GET(GetCurTimeInfo), "time", "Time", Plain(Reading::Kind::kClock), Told("OnDateInfoChangeSignal"))),
    Derived(Row(kClock, FIELD(_cur_zone), GET(GetCurTimeZone), "zone", "Time zone", Plain(Reading::Kind::kZone).In(0, SystemTime::kTimeZoneCount - 1))),
    Row(kClock, FIELD(is_cur_zone_dst_active), GET(IsCurZoneDstActive), "dst", "Daylight saving", Flag(kDst), By("OnDstStatusChangeSignal")),
    Row(kSettings, FIELD(_time_24_mode), GET(GetTime24Mode), "24_hour", "24-hour display", kSwitch, By("On24TimeModeChangeSignal")),
    Row(kSettings, FIELD(_auto_sync_mode), GET(GetAutoSyncMode), "auto_sync", "Automatic time", kSwitch),
    Row(kSettings, FIELD(auto_adjust_dst_mode), GET(GetAutoAdjustDstMode), "auto_dst", "Automatic daylight saving", kSwitch),
    Derived(Row(kSettings, FIELD(zones.zone_count), HLX_ASK_SPECIAL(I, GetAllZoneInfo, "zone_count", &ZoneCount), "zones", "Zones to choose from", Count().In(0, SystemTime::kTimeZoneCount))),
    Row(kSettings, FIELD(_is_time_reset_need), Getter{}, "clock_reset_needed", "Clock has never been set", Flag(kYesNo)),
    Derived(Row(kOutside, FIELD(sync_date_time), Getter{}, "sync_time", "Last time from GPS or CarPlay (UTC)", kMomentText)),
    Row(kOutside, FIELD(ext_mcu_can_date_time), GET(GetExtMcuCanDateTimeInfo), "vehicle_time", "Vehicle's date and time", kMomentText, Told("OnExternalMcuTimeChangeSignal")),
    Row(kOutside, FIELD(ext_mcu_can_time_24_mode), GET(GetExtMcuCanTime24Mode), "vehicle_24_hour", "Vehicle's 24-hour display", kSwitch, Told("OnExternalMcuTimeChangeSignal")),
    Row(kOutside, FIELD(ext_mcu_can_time_zone), GET(GetExtMcuCanTimeZone), "vehicle_zone", "Vehicle's zone (its own number)", Count(), Told("OnExternalMcuTimeChangeSignal")),
};
// clang-format on
#undef FIELD
#undef GET

}  // namespace time

/// The eleven versions of a unit or of a package.
#define HLX_VERSIONS(ROW)                                                         \
  ROW("arm_version", "Software version", arm_version)                             \
  ROW("arm_internal_version", "Software version, internal", arm_internal_version) \
  ROW("hardware_version", "Hardware version", hardware_version)                   \
  ROW("serial_number", "Serial number", serial_number)                            \
  ROW("drawing_code", "Drawing code", drawing_code)                               \
  ROW("build_time", "Build time", build_time)                                     \
  ROW("production_date", "Production date", production_date)                      \
  ROW("project_name", "Project", project_name)                                    \
  ROW("mcu_build_time", "MCU build time (file)", mcu_build_time)                  \
  ROW("mcu_file_version", "MCU version (file)", mcu_version)                      \
  ROW("mcu_internal_version", "MCU version, internal (file)", mcu_internal_version)

namespace info {

using namespace SystemInfo;
using namespace words;
using I = IHLXSystemInfo;

inline constexpr const char kModel[] = "Model";
inline constexpr const char kScreen[] = "Screen";
inline constexpr const char kVersions[] = "Versions";
inline constexpr const char kIdentity[] = "Identity";

inline constexpr Reading kWords = Plain(Reading::Kind::kText);

/// "unleaded, diesel"
inline Scalar FuelTypes(const Clients& clients) {
  std::vector<FuelType> types;
  In<I>(clients).GetFuelType(types);
  std::string text;
  for (const FuelType type : types) text.append(text.empty() ? "" : ", ").append(InWords(Named(kFuel), int64_t{type}));
  return ToScalar(text);
}

/// "1280 x 720": width and height, of which the getters give the height first.
template <class Size, int (I::*Function)(Size&, Size&)>
Scalar Extent(const Clients& clients) {
  Size height = 0;
  Size width = 0;
  (In<I>(clients).*Function)(height, width);
  if (height == 0 || width == 0) return {};
  const auto whole = [](Size size) { return std::to_string(std::llround(size)); };
  return whole(width) + " x " + whole(height);
}

template <class... A>
constexpr Value Row(const char* group, A... arguments) {
  return Make(Area::kInfo, group, arguments...);
}
constexpr Reading Measure(const char* unit) { return Decimal(unit, 0); }
#define MODEL(member) Field{}, HLX_ASK_MEMBER(I, GetModelInfo, ModelInfo, member)
#define SCREEN(member) Field{}, HLX_ASK_MEMBER(I, GetScreenInfo, ScreenInfo, member)
#define VERSION(name, label, member) \
  Row(kVersions, Field{}, HLX_ASK_MEMBER(I, GetLocalVersionInfo, VersionInfo, member), name, label, kWords),

// clang-format off
inline constexpr Value kValues[] = {
    Row(kModel, MODEL(market), "market", "Market", Count()),
    Row(kModel, MODEL(car_maker), "car_maker", "Car maker", kWords),
    Row(kModel, MODEL(car_model), "car_model", "Car model", kWords),
    Row(kModel, MODEL(hu_model), "hu_model", "Head unit model", kWords),
    Row(kModel, MODEL(model_name), "model_name", "Model name", kWords),
    Row(kModel, MODEL(hu_make), "hu_make", "Head unit make", kWords),
    Row(kModel, MODEL(manufacture), "manufacture", "Manufacturer", kWords),
    Row(kModel, MODEL(year), "year", "Model year", kWords),
    Row(kModel, MODEL(oem_label), "oem_label", "OEM label", kWords),
    Row(kModel, MODEL(name), "name", "Name", kWords),
    Row(kModel, MODEL(device_name), "device_name", "Device name", kWords),
    Row(kModel, MODEL(oem_icon_folder), "oem_icon_folder", "OEM icon folder", kWords),
    Derived(Row(kModel, HLX_FIELD_OF(kMisc, MiscShmData, _is_left_position), HLX_ASK(I, GetDriveType), "drive_type", "Driver's seat", Flag(kSide))),
    Row(kModel, Field{}, HLX_ASK_SPECIAL(I, GetFuelType, "", &FuelTypes), "fuel_types", "Fuel types", kWords),
    Row(kModel, Field{}, HLX_ASK(I, GetEngineType), "engine_type", "Engine type", Count()),
    Row(kScreen, Field{}, HLX_ASK_SPECIAL(I, GetScreenPixels, "", (&Extent<unsigned int, &I::GetScreenPixels>)), "screen_pixels", "Screen", Reading{Reading::Kind::kText, {}, "px"}),
    Row(kScreen, Field{}, HLX_ASK_SPECIAL(I, GetScreenPhysical, "", (&Extent<double, &I::GetScreenPhysical>)), "screen_physical", "Screen, physical", Reading{Reading::Kind::kText, {}, "mm"}),
    Row(kScreen, SCREEN(pixel_w), "screen_pixel_w", "Screen width", Measure("px")),
    Row(kScreen, SCREEN(pixel_h), "screen_pixel_h", "Screen height", Measure("px")),
    Row(kScreen, SCREEN(physical_w), "screen_physical_w", "Screen width, physical", Measure("mm")),
    Row(kScreen, SCREEN(physical_h), "screen_physical_h", "Screen height, physical", Measure("mm")),
    Row(kScreen, SCREEN(density), "screen_density", "Screen density", Measure("dpi")),
    Row(kScreen, SCREEN(real_density), "screen_real_density", "Screen density, real", Measure("dpi")),
    Row(kScreen, SCREEN(depth), "screen_depth", "Colour depth", Measure("bit")),
    Row(kScreen, SCREEN(ratio), "screen_ratio", "Screen ratio", Count()),
    HLX_VERSIONS(VERSION)
    Row(kVersions, HLX_FIELD_OF(kInfo, InfoShmData, mcu_version), HLX_ASK(I, GetMcuVersion), "mcu_version", "MCU version", kWords),
    Row(kIdentity, Field{}, HLX_ASK(I, GetEmmcId), "emmc_id", "eMMC id", kWords),
    Row(kIdentity, Field{}, HLX_ASK(I, GetMfiPPID), "mfi_ppid", "MFi product plan id", kWords),
};
// clang-format on
#undef MODEL
#undef SCREEN
#undef VERSION

}  // namespace info

namespace update {

using namespace words;
using I = IHLXSystemUpdate;

inline constexpr const char kProgress[] = "Progress";
inline constexpr const char kPackageGroup[] = "Package";

constexpr Value Event(const char* group, const char* name, const char* label, Reading reading, const char* signal) {
  return Make(Area::kUpdate, group, Field{}, Getter{}, name, label, reading, By(signal));
}
#define VERSION(name, label, member)                                                          \
  Make(Area::kUpdate, kPackageGroup, Field{},                                                 \
       HLX_ASK_MEMBER(I, GetUpdateVersionInfo, SystemInfo::VersionInfo, member), name, label, \
       Plain(Reading::Kind::kText)),

// clang-format off
inline constexpr Value kValues[] = {
    Event(kPackageGroup, "package", "Package", Named(kPackage), "OnPackageStateChangeNotify"),
    Event(kPackageGroup, "search_result", "Search for a package", Named(kUpdateOutcome), "DetectValidUpdateFileNotifySignal"),
    Event(kProgress, "request_result", "Answer to the request", Named(kOpResult), "UpdateRequestResultInformSignal"),
    Event(kProgress, "mpu_state", "Main processor", Named(kUpdateState), "OnMpuUpdateStateNotify"),
    Event(kProgress, "mcu_state", "MCU", Named(kUpdateState), "OnMcuUpdateStateNotify"),
    Event(kProgress, "mcu_progress", "MCU, progress", Number("%").In(0, 100), "OnMcuUpdateProgressNotify"),
    Event(kProgress, "can_progress", "CAN box, progress", Count(), "UpdateCanProcess"),
    HLX_VERSIONS(VERSION)
};
// clang-format on
#undef VERSION
#undef HLX_VERSIONS

}  // namespace update
}  // namespace catalog::rows
