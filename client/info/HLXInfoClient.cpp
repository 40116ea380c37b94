#include "client/info/HLXInfoClient.h"

#include <cstring>
#include <exception>

#include "client/ChildProcess.h"
#include "client/DispatchGate.h"
#include "client/info/DeviceIdentity.h"
#include "client/info/VersionFile.h"
#include "data/SharedField.h"
#include "platform/HLXLog.h"
#include "platform/LibConfigs.h"

HLX_LOG_SOURCE("client/info/HLXInfoClient");

using namespace SystemInfo;

namespace {

constexpr char kEmmcId[] = "/sys/devices/noc/noc:mediam/16000000.sdhci/mmc_host/mmc0/mmc0:0001/cid";
constexpr char kHardwareStrap[] = "/sys/devices/noc/noc:hwversion/hwversion";
constexpr char kFallbackSerialNumber[] = "4711-0815-2600-3141-5926-5358-9793-AB12";
constexpr int kCommandLineLimit = 1023;

/// By the low four bits of the strap.
constexpr const char* kHardwareVersions[16] = {"",       "V1.0.1", "V1.0.2", "V1.0.3", "V1.0.4", "V1.0.5",
                                               "V1.0.6", "V1.0.7", "V1.0.8", "V1.0.9", "V1.1.0", "V1.1.1",
                                               "V1.1.2", "V1.1.3", "",       ""};

std::string Text(const char* key) { return GetLibConfigs()->GetString(key); }
int Number(const char* key) { return GetLibConfigs()->GetInt(key); }

}  // namespace

HLXMiscClientShm::HLXMiscClientShm()
    : MiscShmDataBase(HLXSystemData::SHM_MISC_DATA_KEY_ID, HLXSystemData::SHM_OP_CREATE, "info-client"),
      record_(MapRecord<HLXSystemData::MiscShmData>()) {
  if (record_ == nullptr) {
    HLX_LOG_FATAL("[system-server]CreateDataShm->SHM_POWER_DATA_KEY_ID fail.Exit!!");
    DispatchGate::Exit(2);
  }
  InitMiscShmData(record_);
}

HLXInfoClientShm::HLXInfoClientShm()
    : InfoShmDataBase(HLXSystemData::SHM_INFO_DATA_KEY_ID, HLXSystemData::SHM_OP_CREATE, "ext_mcu_service"),
      record_(MapRecord<HLXSystemData::InfoShmData>()) {
  if (record_ == nullptr) {
    HLX_LOG_FATAL("[system-server]CreateDataShm->SHM_INFO_DATA_KEY_ID fail.Exit!!");
    DispatchGate::Exit(2);
  }
  InitInfoShmData(record_);
}

HLXInfoClient::HLXInfoClient() {
  InitLocalVersionInfo();
  InitModelInfo();
  InitScreenInfo();
}

void HLXInfoClient::InitModelInfo() {
  model_.market = Number("/q4system/market");
  model_.car_maker = Text("/q4system/car_maker");
  model_.car_model = Text("/q4system/car_model");
  model_.hu_model = Text("/q4system/hu_model");
  model_.model_name = Text("/q4system/model_name");
  model_.hu_make = Text("/q4system/hu_make");
  model_.manufacture = Text("/q4system/manufacture");
  model_.year = Text("/q4system/year");
  model_.oem_label = Text("/q4system/oem_label");
  model_.name = Text("/q4system/name");
  model_.device_name = Text("/q4system/device_name");
  model_.oem_icon_folder = Text("/q4system/oem_icon_folder");
}

void HLXInfoClient::InitScreenInfo() {
  const auto unsigned_number = [](const char* key) { return static_cast<unsigned int>(Number(key)); };
  screen_.pixel_w = unsigned_number("/q4system/screen_pixel_w");
  screen_.pixel_h = unsigned_number("/q4system/screen_pixel_h");
  screen_.physical_w = Number("/q4system/screen_physical_w");
  screen_.physical_h = Number("/q4system/screen_physical_h");
  screen_.density = unsigned_number("/q4system/screen_density");
  screen_.real_density = unsigned_number("/q4system/screen_real_density");
  screen_.depth = unsigned_number("/q4system/screen_depth");
  screen_.ratio = unsigned_number("/q4system/screen_ratio");
}

void HLXInfoClient::InitLocalVersionInfo() {
  HLX_LOG_INFO("%s()", __func__);
  const auto arm = [](const char* key) { return AnalysisLocalVersionInfo(key, "ARM"); };
  const auto mcu = [](const char* key) { return AnalysisLocalVersionInfo(key, "MCU"); };
  version_.arm_version = GetArmVersion("ARM Version");
  version_.arm_internal_version = GetArmVersion("ARM Internal Version");
  version_.hardware_version =
      GetLibConfigs()->GetBool("/setting/enable_auto_hw_version") ? GetHardWareVersionInfo() : arm("Hardware Version");
  version_.drawing_code = arm("Drawing Code");
  version_.build_time = arm("Build Time");
  version_.production_date = arm("Production Date");
  version_.project_name = arm("Project Name");
  version_.project_name += Text("/project/project_model_name");
  version_.mcu_build_time = mcu("Build Time");
  version_.mcu_version = mcu("MCU Version");
  version_.mcu_internal_version = mcu("MCU Internal Version");
  version_.serial_number = GetSerialNumber();
}

std::string HLXInfoClient::GetArmVersion(const std::string& key) {
  return PrefixedArmVersion(key, [](const std::string& name) { return AnalysisLocalVersionInfo(name, "ARM"); });
}

std::string HLXInfoClient::GetHardWareVersionInfo() {
  unsigned int value = 0;
  try {
    GetMachineSample(kHardwareStrap, &value);
  } catch (const std::exception& error) {
    HLX_LOG_ERROR("GetHardWareVersionInfo() %s holds no number: %s", kHardwareStrap, error.what());
    return {};
  }
  const unsigned int name_number = (value >> 4) & 0xF;
  const unsigned int sample_number = value & 0xF;
  HLX_LOG_DEBUG("GetHardWareVersionInfo() name_num = %d, sample_num = %d\n", static_cast<int>(name_number),
                static_cast<int>(sample_number));
  const char* const version = kHardwareVersions[sample_number];
  HLX_LOG_INFO("GetHardWareVersionInfo() hardware_version = %s", version);
  return version;
}

std::string HLXInfoClient::GetSerialNumber() {
  if (!serial_number_.empty()) return serial_number_;
  const auto command_line = FirstLineOf("cat /proc/cmdline", kCommandLineLimit);
  if (!command_line) {
    HLX_LOG_ERROR("GetSerialNumber - open /proc/cmdline error");
    return kFallbackSerialNumber;
  }
  serial_number_ = DeviceIdentity::SerialNumberFrom(*command_line);
  return serial_number_.empty() ? kFallbackSerialNumber : serial_number_;
}

int HLXInfoClient::GetMachineSample(const char* path, unsigned int* value) {
  return DeviceIdentity::GetMachineSample(path, value);
}

int HLXInfoClient::GetModelInfo(ModelInfo& info) {
  info = model_;
  return 1;
}

int HLXInfoClient::GetDriveType() { return HLXSystemData::Load(misc_shm_.Record()->_is_left_position) != 0 ? 1 : 0; }

void HLXInfoClient::GetFuelType(std::vector<FuelType>& types) {
  const std::string project = Text("/project/project_name");
  if (project != "K417BQ" && project != "T268ZF") return;
  types.push_back(FUEL_TYPE_UNLEADED);
  types.push_back(FUEL_TYPE_DIESEL);
}

int HLXInfoClient::GetEngineType() { return 0; }

std::string HLXInfoClient::GetMfiPPID() { return Text("/q4system/mfi_ppid"); }

int HLXInfoClient::GetLocalVersionInfo(VersionInfo& info) {
  info = version_;
  return version_.arm_version.empty() ? 0 : 1;
}

int HLXInfoClient::GetScreenPixels(unsigned int& height, unsigned int& width) {
  width = static_cast<unsigned int>(Number("/q4system/screen_pixel_w"));
  height = static_cast<unsigned int>(Number("/q4system/screen_pixel_h"));
  return 1;
}

int HLXInfoClient::GetScreenPhysical(double& height, double& width) {
  width = Number("/q4system/screen_physical_w");
  height = Number("/q4system/screen_physical_h");
  return 1;
}

void HLXInfoClient::GetScreenInfo(ScreenInfo& info) { info = screen_; }

std::string HLXInfoClient::GetMcuVersion() {
  const char(&text)[256] = info_shm_.Record()->mcu_version;
  std::string version;
  for (const char& character : text) {
    const char value = HLXSystemData::Load(character);
    if (value == '\0') break;
    version += value;
  }
  return version;
}

std::string HLXInfoClient::GetEmmcId() { return DeviceIdentity::GetEmmcId(kEmmcId); }
