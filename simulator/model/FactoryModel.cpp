#include "simulator/model/FactoryModel.h"

#include "simulator/model/SavedSettings.h"

using namespace catalog;

FactoryModel::FactoryModel(Unit& unit, const std::vector<const Value*>& settings) : unit_(unit) {
  const ScratchSettings unused;
  for (const auto& record : unit_.records()) {
    std::vector<uint64_t> fresh(record->info().size / sizeof(uint64_t) + 1);
    record->Initialise(fresh.data());
    for (const Value* const setting : settings) {
      if (setting->field.record == record->info().record) defaults_[setting] = ReadField(*setting, fresh.data());
    }
  }
}

void FactoryModel::ResetFactoryMode() {
  for (const auto& [setting, factory] : defaults_) {
    if (unit_.Get(*setting) != factory) unit_.Change(*setting, factory);
  }
  unit_.ForgetKept();
  unit_.Announce("OnFactoryResetModeSignal");
}
