#include "simulator/model/SavedSettings.h"

#include <glib.h>
#include <glib/gstdio.h>

#include <cstdio>
#include <stdexcept>
#include <string_view>

#include "data/Settings.h"

using namespace HLXSystemData;

namespace {

/// A store that was not ready when the unit read an item refuses to overwrite it before it has been read.
void Save(const PersistItem& item, int value) {
  Q4PersistService& store = *HLX_GetQ4PersistService();
  int result = store.WriteInt(item.module, item.id, value, 1, 1, 0);
  if (result == PERSIST_ERROR_DATABASE_NOT_READY) {
    int before = 0;
    store.ReadInt(item.module, item.id, &before);
    result = store.WriteInt(item.module, item.id, value, 1, 1, 0);
  }
  if (result != PERSIST_OK) {
    std::fprintf(stderr, "hlx-simulator: cannot save %s: %s\n", item.name, PersistErrorName(result));
  }
}

constexpr const char* kVariables[] = {"HLX_HOST_STATE", "HLX_HOST_PERSIST"};

}  // namespace

void SaveSetting(const catalog::Field& field, const catalog::Scalar& value) {
  static const std::vector<Setting> settings = Settings();
  const auto* const number = std::get_if<int64_t>(&value);
  if (number == nullptr || field.record == catalog::Record::kNone) return;
  const std::string_view record = catalog::InfoOf(field.record).name;
  for (const Setting& setting : settings) {
    if (setting.item.name == nullptr || setting.place.offset != field.offset || setting.place.record != record)
      continue;
    Save(setting.item, static_cast<int>(*number));
  }
}

ScratchSettings::ScratchSettings() {
  gchar* const made = g_dir_make_tmp("hlx-simulator.XXXXXX", nullptr);
  if (made == nullptr) throw std::runtime_error("cannot make a scratch directory for settings");
  directory_ = made;
  g_free(made);
  for (const char* const variable : kVariables) {
    const gchar* const value = g_getenv(variable);
    before_.emplace_back(variable, value == nullptr ? "" : value);
  }
  g_setenv("HLX_HOST_STATE", directory_.c_str(), TRUE);
  g_setenv("HLX_HOST_PERSIST", (directory_ + "/persist.db").c_str(), TRUE);
}

ScratchSettings::~ScratchSettings() {
  for (const auto& [variable, value] : before_) {
    if (value.empty()) {
      g_unsetenv(variable.c_str());
    } else {
      g_setenv(variable.c_str(), value.c_str(), TRUE);
    }
  }
  for (const char* const file : {"persist.db", "persist.db-journal", "boot_id"}) {
    g_unlink((directory_ + "/" + file).c_str());
  }
  g_rmdir(directory_.c_str());
}
