#include "data/InfoShmDataBase.h"
#include "data/MiscShmDataBase.h"
#include "tools/hlxctl/Area.h"
#include "tools/hlxctl/Versions.h"

using namespace SystemInfo;
using I = IHLXSystemInfo;

namespace {

constexpr Word kFuel[] = {{FUEL_TYPE_UNLEADED, "unleaded"}, {FUEL_TYPE_DIESEL, "diesel"}};
constexpr Flag kLeftSeat{"left", "right"};

ModelInfo TheModel() {
  ModelInfo model{};
  Proxy<I>().GetModelInfo(model);
  return model;
}

std::function<Value()> Model(std::string ModelInfo::*member) {
  return [member] { return Text{}(TheModel().*member); };
}

template <class Member>
std::function<Value()> Screen(Member ScreenInfo::*member, const char* unit) {
  return [member, unit] {
    ScreenInfo screen{};
    Proxy<I>().GetScreenInfo(screen);
    return Measure{unit}(screen.*member);
  };
}

/// Width and height, of which the getters give the height first.
template <class Number>
std::function<Value()> Size(int (I::*getter)(Number&, Number&), const char* unit) {
  return [=] {
    Number height = 0;
    Number width = 0;
    (Proxy<I>().*getter)(height, width);
    const Value w = Measure{unit}(static_cast<double>(width));
    const Value h = Measure{unit}(static_cast<double>(height));
    if (w.value.is_null() || h.value.is_null()) return Value{nullptr, "", unit};
    return Value{{w.value, h.value}, w.text + " x " + h.text, unit};
  };
}

Value FuelTypes() {
  std::vector<FuelType> types;
  Proxy<I>().GetFuelType(types);
  Value value{nullptr, "", ""};
  for (const FuelType type : types) {
    value.value.push_back(type);
    value.text.append(value.text.empty() ? "" : ", ").append(InWords(kFuel, type));
  }
  return value;
}

std::vector<Field> Fields() {
  using M = ModelInfo;
  using S = ScreenInfo;
  std::vector<Field> fields = {
      {"market", "Market", [] { return Number{}(TheModel().market); }},
      {"car_maker", "Car maker", Model(&M::car_maker)},
      {"car_model", "Car model", Model(&M::car_model)},
      {"hu_model", "Head unit model", Model(&M::hu_model)},
      {"model_name", "Model name", Model(&M::model_name)},
      {"hu_make", "Head unit make", Model(&M::hu_make)},
      {"manufacture", "Manufacturer", Model(&M::manufacture)},
      {"year", "Model year", Model(&M::year)},
      {"oem_label", "OEM label", Model(&M::oem_label)},
      {"name", "Name", Model(&M::name)},
      {"device_name", "Device name", Model(&M::device_name)},
      {"oem_icon_folder", "OEM icon folder", Model(&M::oem_icon_folder)},
      {"drive_type", "Driver's seat", Get(&I::GetDriveType, kLeftSeat)},
      {"fuel_types", "Fuel types", FuelTypes},
      {"engine_type", "Engine type", Get(&I::GetEngineType, Number{})},
      {"mfi_ppid", "MFi product plan id", Get(&I::GetMfiPPID, Text{})},
      {"screen_pixels", "Screen", Size(&I::GetScreenPixels, "px")},
      {"screen_physical", "Screen, physical", Size(&I::GetScreenPhysical, "mm")},
      {"screen_pixel_w", "Screen width", Screen(&S::pixel_w, "px")},
      {"screen_pixel_h", "Screen height", Screen(&S::pixel_h, "px")},
      {"screen_physical_w", "Screen width, physical", Screen(&S::physical_w, "mm")},
      {"screen_physical_h", "Screen height, physical", Screen(&S::physical_h, "mm")},
      {"screen_density", "Screen density", Screen(&S::density, "dpi")},
      {"screen_real_density", "Screen density, real", Screen(&S::real_density, "dpi")},
      {"screen_depth", "Colour depth", Screen(&S::depth, "bit")},
      {"screen_ratio", "Screen ratio", Screen(&S::ratio, "")},
  };
  AddVersionFields(fields, [](VersionInfo& versions) { Proxy<I>().GetLocalVersionInfo(versions); });
  fields.push_back({"mcu_version", "MCU version", Get(&I::GetMcuVersion, Text{})});
  fields.push_back({"emmc_id", "eMMC id", Get(&I::GetEmmcId, Text{})});
  return fields;
}

}  // namespace

Area InfoArea() {
  return {"info",
          "model, screen, versions, identity",
          {{"misc", HLXSystemData::SHM_MISC_DATA_KEY_ID, sizeof(HLXSystemData::MiscShmData)},
           {"info", HLXSystemData::SHM_INFO_DATA_KEY_ID, sizeof(HLXSystemData::InfoShmData)}},
          Fields(),
          {},
          nullptr};
}
