/// Updates.
#pragma once

#include <deque>

#include "simulator/model/Timer.h"
#include "simulator/model/Unit.h"

/// Plays the update that an application asks for. A request is answered with UpdateRequestResultInformSignal; then each
/// part takes `unit.update_seconds` and tells its state and progress. With `unit.update_fails` it breaks off in the
/// middle. Nothing is read from a stick and nothing written.
class UpdateModel {
 public:
  explicit UpdateModel(Unit& unit) : unit_(unit) {}

  /// A type without a name in HLXUpdate::UpdateType is answered with OP_RESULT_FAILED.
  void ApplyUpdate(int update_type);
  void ApplyUpdateAll();
  void ApplyMpuUpdate();
  void ApplyExternalMcuUpdate();
  /// 0 declines the CAN box's update, any other value plays it.
  void CanUpdate(int iCanUpdate);

 private:
  struct Part;
  static const Part kMpu;
  static const Part kMcu;
  static const Part kCanBox;

  void Request(std::deque<const Part*> parts);
  void BeginPart();
  void TellState(int state);
  void TellProgress(int progress);
  void Step();
  void EndPart(bool succeeded);

  Unit& unit_;
  std::deque<const Part*> parts_;  ///< still to come, the one that is being played first
  int percent_ = 0;
  Timer timer_;
};
