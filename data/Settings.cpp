#include "data/Settings.h"

#include <cstdint>

#include "platform/HLXLog.h"
#include "platform/LibConfigs.h"

HLX_LOG_SOURCE("data/HLXSystemData");

namespace HLXSystemData {

namespace {

int StandIn(const Setting& setting, const SystemDefaultData& defaults) {
  if (setting.level != nullptr) return defaults.*setting.level;
  if (setting.key == nullptr) return setting.stand_in;
  return GetLibConfigs()->GetBool(setting.key) ? setting.stand_in : 0;
}

/// `T` is the field's type.
template <class T>
void FillField(const SavedSettings& saved, const Setting& setting, T* field, const SystemDefaultData& defaults) {
  if (setting.item.name == nullptr || !saved.Read(setting.item, field)) {
    *field = static_cast<T>(StandIn(setting, defaults));
    if (setting.is_saved_back) {
      HLX_GetQ4PersistService()->WriteInt(setting.item.module, setting.item.id, static_cast<int>(*field), 1, 1, 0);
    }
  }
  if (setting.is_logged) {
    HLX_LOG_AT(ZLOG_LEVEL_DEBUG, saved.operation, __LINE__, "%s:%d", setting.place.field, static_cast<int>(*field));
  }
}

}  // namespace

std::vector<Setting> Settings() {
  std::vector<Setting> all = {kColourSetting, kClockSetting, kZoneSetting};
  const auto append = [&all](const auto& settings) { all.insert(all.end(), std::begin(settings), std::end(settings)); };
  append(kPowerOffSettings);
  append(kScreenSettings);
  append(kButtonSettings);
  append(kStyleSettings);
  append(kVehicleSettings);
  append(kCheckSettings);
  append(kTimeSettings);
  return all;
}

void Fill(const char* operation, const Setting* begin, const Setting* end, void* record,
          const SystemDefaultData& defaults) {
  const SavedSettings saved{operation};
  for (const Setting* setting = begin; setting != end; ++setting) {
    void* const field = static_cast<char*>(record) + setting->place.offset;
    if (setting->place.size == 1) {
      FillField(saved, *setting, static_cast<unsigned char*>(field), defaults);
    } else {
      FillField(saved, *setting, static_cast<unsigned int*>(field), defaults);
    }
  }
}

}  // namespace HLXSystemData
