#include "simulator/model/MiscModel.h"

#include <cstdio>

#include "catalog/Catalog.h"
#include "data/SharedField.h"

using namespace HLXSystemData;

namespace {

constexpr std::chrono::milliseconds kSpeakerTime{500};
constexpr std::chrono::seconds kLinesTime{1};
constexpr int kSpeakers = 4;

// Of speaker detection and auto test.
constexpr int64_t kIdle = 0;
constexpr int64_t kRunning = 1;
constexpr int64_t kPassed = 2;

}  // namespace

void MiscModel::Boot() {
  const catalog::Value& version = *catalog::FindValue("misc.can_version");
  if (Load(unit_.misc().can_version[0]) == '\0') unit_.Write(version, std::string("CAN-SIM-1.0"));
}

void MiscModel::SpeakerDetectStart() {
  speaker_ = 0;
  unit_.Keep(Own::kSpeakerDetection, kRunning);
  detection_.Start(kSpeakerTime, [this] { DetectNext(); });
}

void MiscModel::DetectNext() {
  const uint32_t& state = unit_.misc().speaker_states[speaker_];
  const bool unknown = Load(state) == SystemMisc::SPEAKER_STATE_UNKNOWN;
  unit_.Change(state, unknown ? uint32_t{SystemMisc::SPEAKER_STATE_NORMAL} : Load(state));
  if (++speaker_ == kSpeakers) return EndDetection(kPassed);
  detection_.Start(kSpeakerTime, [this] { DetectNext(); });
}

void MiscModel::EndDetection(int64_t result) {
  detection_.Stop();
  unit_.Keep(Own::kSpeakerDetection, result);
  if (unit_.KeptNumber(Own::kAutoTest) == kRunning) unit_.Keep(Own::kAutoTest, result);
}

void MiscModel::SpeakerDetectStop() {
  if (detection_.IsRunning()) EndDetection(kIdle);
}

void MiscModel::StartAutoTest() {
  unit_.Keep(Own::kAutoTest, kRunning);
  auto_test_.Start(kLinesTime, [this] {
    const MiscShmData& misc = unit_.misc();
    for (const uint32_t* const line :
         {&misc.radio_ant_state, &misc.gps_ant_state, &misc.dab_ant_state, &misc.mic_connect_state}) {
      const bool unknown = Load(*line) == SystemMisc::ANT_STATE_UNKNOWN;
      unit_.Change(*line, unknown ? uint32_t{SystemMisc::ANT_STATE_NORMAL} : Load(*line));
    }
    SpeakerDetectStart();
  });
}

void MiscModel::SetScreenshot() {
  char name[64];
  std::snprintf(name, sizeof name, "screenshot-%04d.png", ++screenshots_);
  unit_.Keep(Own::kScreenshot, std::string(name));
}

void MiscModel::SetLogoInfo(const SystemMisc::LogoInfo& nLogo) {
  char text[128];
  std::snprintf(text, sizeof text, "id %u, %u x %u, format %u, %u bytes", nLogo.id, nLogo.width, nLogo.height,
                nLogo.format, nLogo.size);
  unit_.Keep(Own::kLogoInfo, std::string(text));
}
