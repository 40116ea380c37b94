#include "simulator/model/UpdateModel.h"

#include <utility>

#include "HLXUpdateTypes.h"

namespace {

constexpr int kStepPercent = 5;

std::chrono::milliseconds StepTime(const Unit& unit) {
  return std::chrono::milliseconds(unit.KeptNumber(Own::kUpdateSeconds) * 1000 * kStepPercent / 100);
}

}  // namespace

/// The signals with which a part tells how it goes; null where it has none.
struct UpdateModel::Part {
  const char* state_signal;
  const char* progress_signal;
};
const UpdateModel::Part UpdateModel::kMpu = {"OnMpuUpdateStateNotify", nullptr};
const UpdateModel::Part UpdateModel::kMcu = {"OnMcuUpdateStateNotify", "OnMcuUpdateProgressNotify"};
const UpdateModel::Part UpdateModel::kCanBox = {nullptr, "UpdateCanProcess"};

void UpdateModel::ApplyUpdate(int update_type) {
  switch (update_type) {
    case HLXUpdate::UPDATE_TYPE_MPU:
      return ApplyMpuUpdate();
    case HLXUpdate::UPDATE_TYPE_MCU:
      return ApplyExternalMcuUpdate();
    case HLXUpdate::UPDATE_TYPE_ALL:
      return ApplyUpdateAll();
    default:
      unit_.Announce("UpdateRequestResultInformSignal", HLXUpdate::OP_RESULT_FAILED);
  }
}

void UpdateModel::ApplyUpdateAll() { Request({&kMpu, &kMcu}); }
void UpdateModel::ApplyMpuUpdate() { Request({&kMpu}); }
void UpdateModel::ApplyExternalMcuUpdate() { Request({&kMcu}); }

void UpdateModel::CanUpdate(int iCanUpdate) {
  if (iCanUpdate != 0) Request({&kCanBox});
}

void UpdateModel::Request(std::deque<const Part*> parts) {
  const bool busy = !parts_.empty();
  unit_.Announce("UpdateRequestResultInformSignal", busy ? HLXUpdate::OP_RESULT_BUSY : HLXUpdate::OP_RESULT_OK);
  if (busy) return;
  parts_ = std::move(parts);
  BeginPart();
}

void UpdateModel::BeginPart() {
  percent_ = 0;
  TellState(HLXUpdate::UPDATE_STATE_STARTED);
  TellProgress(0);
  timer_.Start(StepTime(unit_), [this] { Step(); });
}

void UpdateModel::TellState(int state) {
  if (const char* const signal = parts_.front()->state_signal) unit_.Announce(signal, state);
}

void UpdateModel::TellProgress(int progress) {
  if (const char* const signal = parts_.front()->progress_signal) unit_.Announce(signal, progress);
}

void UpdateModel::Step() {
  if (percent_ == 0) TellState(HLXUpdate::UPDATE_STATE_RUNNING);
  percent_ += kStepPercent;
  if (unit_.KeptNumber(Own::kUpdateFails) != 0 && percent_ > 50) return EndPart(false);
  TellProgress(percent_);
  if (percent_ == 100) return EndPart(true);
  timer_.Start(StepTime(unit_), [this] { Step(); });
}

void UpdateModel::EndPart(bool succeeded) {
  TellState(succeeded ? HLXUpdate::UPDATE_STATE_SUCCESS : HLXUpdate::UPDATE_STATE_FAILED);
  // The CAN box has no state to fail in.
  if (!succeeded && parts_.front() == &kCanBox) TellProgress(-1);
  parts_.pop_front();
  if (!succeeded) parts_.clear();
  if (!parts_.empty()) BeginPart();
}
