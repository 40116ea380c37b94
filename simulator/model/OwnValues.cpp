#include "simulator/model/OwnValues.h"

#include "catalog/Words.h"

using namespace catalog;

namespace {

constexpr Word kState[] = {{0, "off"}, {1, "running"}, {2, "acc-off"}, {3, "standby"}, {4, "booting"}};
constexpr Word kTest[] = {{0, "idle"}, {1, "running"}, {2, "passed"}};
constexpr Reading kText = Plain(Reading::Kind::kText);
constexpr Reading kSwitch = Flag(words::kOnOff);
const Scalar kNone;

}  // namespace

const std::array<OwnValue, kOwnCount>& OwnValues() {
  static const std::array<OwnValue, kOwnCount> values = {{
      {Own::kState, "unit.state", "What the unit does", Named(kState), int64_t{1}},
      {Own::kUpdateFails, "unit.update_fails", "Updates break off", Flag(words::kYesNo), int64_t{0}, true},
      {Own::kUpdateSeconds, "unit.update_seconds", "Each part of an update takes", Number("s").In(1, 3600), int64_t{3},
       true},
      {Own::kSource, "inbox.source", "Source that plays", Count(), kNone},
      {Own::kVolume, "inbox.volume", "Volume", Count(), kNone},
      {Own::kTimeText, "inbox.time_text", "Time to show", kText, kNone},
      {Own::kRadioText, "inbox.radio_text", "Radio station to show", kText, kNone},
      {Own::kTouchText, "inbox.touch_text", "Touch", kText, kNone},
      {Own::kPsText, "inbox.ps_text", "Programme service name to show", kText, kNone},
      {Own::kMediaText, "inbox.media_text", "Title to show", kText, kNone},
      {Own::kPhoneText, "inbox.phone_text", "Phone call to show", kText, kNone},
      {Own::kLogo, "inbox.logo", "Start-up logo", Count(), kNone},
      {Own::kLogoInfo, "inbox.logo_info", "Start-up logo, described", kText, kNone},
      {Own::kBluetoothCall, "inbox.bluetooth_call", "Bluetooth call", Named(words::kCall), kNone},
      {Own::kCarplayCall, "inbox.carplay_call", "CarPlay call", Named(words::kCarPlayCall), kNone},
      {Own::kButtonLight, "inbox.button_light", "Button light", kSwitch, kNone},
      {Own::kRearView, "inbox.rear_view", "Rear view shown", kSwitch, kNone},
      {Own::kFullBrightness, "inbox.full_brightness", "Full brightness for a while", kSwitch, int64_t{0}},
      {Own::kSpeakerDetection, "inbox.speaker_detection", "Speaker detection", Named(kTest), int64_t{0}},
      {Own::kAutoTest, "inbox.auto_test", "Auto test", Named(kTest), int64_t{0}},
      {Own::kScreenshot, "inbox.screenshot", "Last screenshot", kText, kNone},
  }};
  return values;
}

const OwnValue* FindOwnValue(std::string_view name) {
  for (const OwnValue& value : OwnValues()) {
    if (name == value.name) return &value;
  }
  return nullptr;
}
