#ifndef HLX_INFO_TYPES_H
#define HLX_INFO_TYPES_H

#include <string>

/// What the info client tells of a unit. Texts are empty where the unit does not provide them.
namespace SystemInfo {

/// Car and market, as configured.
struct ModelInfo {
  int market = 0;
  std::string car_maker;
  std::string car_model;
  std::string hu_model;
  std::string model_name;
  std::string hu_make;
  std::string manufacture;
  std::string year;
  std::string oem_label;
  std::string name;
  std::string device_name;
  std::string oem_icon_folder;
};

/// Screen geometry, as configured.
struct ScreenInfo {
  unsigned int pixel_w;
  unsigned int pixel_h;
  double physical_w;  ///< mm
  double physical_h;  ///< mm
  unsigned int density;
  unsigned int real_density;
  unsigned int depth;  ///< bits
  unsigned int ratio;
};

/// Software and hardware versions, of the unit or of an update package. Texts are exactly as the version files hold
/// them, blanks included.
struct VersionInfo {
  std::string arm_version;
  std::string arm_internal_version;
  std::string hardware_version;
  std::string serial_number;
  std::string drawing_code;
  std::string build_time;
  std::string production_date;
  std::string project_name;
  std::string mcu_build_time;
  std::string mcu_version;
  std::string mcu_internal_version;
};

/// Fuels that the unit can tell apart. The numbers are fixed; other values do not occur.
enum FuelType : int {
  FUEL_TYPE_UNLEADED = 3,
  FUEL_TYPE_DIESEL = 4,
};

}  // namespace SystemInfo

#endif
