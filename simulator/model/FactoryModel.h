/// The unit as it left the factory.
#pragma once

#include <map>
#include <vector>

#include "simulator/model/Unit.h"

class FactoryModel {
 public:
  /// Finds out what `settings` are on a unit that nobody has used: configuration alone decides.
  FactoryModel(Unit& unit, const std::vector<const catalog::Value*>& settings);

  /// Settings, and what is saved of them, are the factory's again, the inbox is empty, and applications are told: of
  /// each setting that was another, and of the reset.
  void ResetFactoryMode();

 private:
  Unit& unit_;
  std::map<const catalog::Value*, catalog::Scalar> defaults_;
};
