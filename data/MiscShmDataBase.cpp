#include "data/MiscShmDataBase.h"

#include <algorithm>
#include <iterator>

#include "HLXMiscTypes.h"
#include "data/Settings.h"
#include "data/SharedField.h"
#include "platform/HLXLog.h"

HLX_LOG_SOURCE("data/HLXSystemData");

using namespace HLXSystemData;
using namespace SystemMisc;

namespace {

constexpr char kOperation[] = "InitMiscShmData";
constexpr uint32_t kParking = 1;
constexpr uint8_t kSpeakers = 4;

void ZeroVehicleData(MiscShmData* data) {
  data->car_speed = 0;
  data->car_float_speed_raw = 0;
  data->ac_state_bits = 0;
  data->air_blow_level = 0;
  data->door_state_bits = 0;
  data->reserved_107 = 0;
  data->driver_position_temperature = 0.0;
  data->copilot_position_temperature = 0.0;
  data->environment_temperature = 0.0;
  data->current_car_speed = 0;
  data->average_car_speed = 0;
  data->raise_current_mile = 0;
  data->total_mile = 0;
  data->endurance_mile = 0;
  data->stage_a_mile = 0;
  data->stage_b_mile = 0;
  data->current_fuel = 0;
  data->average_fuel = 0;
  data->engine_rotate_speed = 0;
  data->simple_air_mode_bits = 0;
  data->simple_environment_temperature = 0;
  std::fill(std::begin(data->reserved_188), std::end(data->reserved_188), uint8_t{0});
  data->simple_rvc_signal_actived = 0;
}

}  // namespace

void MiscShmDataBase::InitMiscShmData(MiscShmData* data) {
  if (Load(data->initialised) != 0) return;
  HLX_LOG_INFO("%s()", "InitMiscShmData");
  Store(data->initialised, uint32_t{1});

  Fill(kOperation, kVehicleSettings, data, *default_data);
  data->_screen_shot_enble = 0;
  HLX_LOG_DEBUG("_screen_shot_enble:%d", static_cast<int>(data->_screen_shot_enble));

  data->dab_ant_state = ANT_STATE_UNKNOWN;
  data->gps_ant_state = ANT_STATE_UNKNOWN;
  data->mic_connect_state = ANT_STATE_UNKNOWN;
  data->radio_ant_state = ANT_STATE_UNKNOWN;
  data->parking_state = kParking;
  Fill(kOperation, kCheckSettings, data, *default_data);

  ZeroVehicleData(data);

  std::fill(std::begin(data->speaker_states), std::end(data->speaker_states), SPEAKER_STATE_UNKNOWN);
  data->air_blow_mode = AIR_BLOW_UNKNOWN;
  data->radio_region = RADIO_REGION_UNKNOWN;
  data->speakers_amount = kSpeakers;
  std::fill(std::begin(data->steel_mate_radar), std::end(data->steel_mate_radar), RADAR_VALUE_NONE);
}
