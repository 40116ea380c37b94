/// The updates of the simulated unit.
#pragma once

#include <deque>

#include "simulator/Unit.h"

/// Plays the update that an application asks for. A request is answered with UpdateRequestResultInformSignal; then each
/// part takes `update.duration` seconds and tells its state and progress. A part that fails ends the update. Nothing is
/// read from a stick and nothing written.
class UpdateModel {
 public:
  explicit UpdateModel(Unit& unit) : unit_(unit), plan_(unit.records().update) {}
  ~UpdateModel();
  UpdateModel(const UpdateModel&) = delete;
  UpdateModel& operator=(const UpdateModel&) = delete;

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
  static gboolean OnStep(gpointer model);

  Unit& unit_;
  UpdatePlan& plan_;
  std::deque<const Part*> parts_;  ///< still to come, the one that is being played first
  int percent_ = 0;
  guint timer_ = 0;
};
