#ifndef HLX_INFO_TYPES_H
#define HLX_INFO_TYPES_H

#include <string>

/// @addtogroup info
/// @{

/// What the info client tells of a unit. Texts are empty where the unit does not provide them.
namespace SystemInfo {

/// Car and market, each as configured under "/q4system/" and the field's name.
struct ModelInfo {
  int market = 0;               ///< number of the market, the maker's count
  std::string car_maker;        ///< maker of the car
  std::string car_model;        ///< model of the car
  std::string hu_model;         ///< model of the head unit
  std::string model_name;       ///< name of that model
  std::string hu_make;          ///< brand of the head unit
  std::string manufacture;      ///< manufacturer of the head unit
  std::string year;             ///< model year
  std::string oem_label;        ///< label of the car's maker
  std::string name;             ///< name of the unit, as phones see it
  std::string device_name;      ///< name of the device
  std::string oem_icon_folder;  ///< folder of the maker's icons
};

/// Screen geometry, each as configured under "/q4system/screen_" and the field's name.
struct ScreenInfo {
  unsigned int pixel_w;       ///< pixels
  unsigned int pixel_h;       ///< pixels
  double physical_w;          ///< mm
  double physical_h;          ///< mm
  unsigned int density;       ///< dots per inch that layouts are made for
  unsigned int real_density;  ///< dots per inch of the panel
  unsigned int depth;         ///< bits per pixel
  unsigned int ratio;         ///< scale of the user interface, the maker's count
};

/// Software and hardware versions, of the unit or of an update package. Texts are exactly as the version files hold
/// them, blanks included.
struct VersionInfo {
  std::string arm_version;           ///< software of the main processor, "V1.2.3.4", perhaps with the project in front
  std::string arm_internal_version;  ///< the same, as its makers count
  std::string hardware_version;      ///< "V1.0.3"
  std::string serial_number;         ///< of the unit; of a package what its file says
  std::string drawing_code;          ///< the unit's drawing
  std::string build_time;            ///< when the software was built, free text
  std::string production_date;       ///< when the unit was made, free text
  std::string project_name;          ///< project; of the unit with the configured model name behind it
  std::string mcu_build_time;        ///< when the MCU's software was built; a package has none
  std::string mcu_version;           ///< software of the MCU; a package has none
  std::string mcu_internal_version;  ///< the same, as its makers count; a package has none
};

/// Fuels that the unit can tell apart. The numbers are fixed; other values do not occur.
enum FuelType : int {
  FUEL_TYPE_UNLEADED = 3,  ///< unleaded petrol
  FUEL_TYPE_DIESEL = 4,    ///< diesel
};

}  // namespace SystemInfo

/// @}

#endif
