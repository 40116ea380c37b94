#include "tools/hlxctl/MiscEvents.h"

#include <cstdio>

#include "tools/hlxctl/Area.h"
#include "tools/hlxctl/MiscWords.h"
#include "tools/hlxctl/Monitor.h"

using namespace misc_words;

namespace {

/// A key code as its box's papers write it.
Value Code(unsigned char code) {
  char text[16];
  std::snprintf(text, sizeof(text), "0x%02X", code);
  return {code, text, ""};
}

class MiscEvents : public IHLXSystemMiscListener {
 public:
  explicit MiscEvents(EventLog& log) : log_(log) {}

  void OnSpeakerStateChange(std::map<Speaker, SpeakerState> states) override {
    Write(__func__, InWords(states, kSpeaker, Named{kSpeakerState}));
  }
  void OnCarSpeedChange(unsigned int speed) override { Write(__func__, {{"speed", kCount(speed)}}); }
  void OnCarFloatSpeedChange(double speed) override { Write(__func__, {{"speed", Decimal{"", 2}(speed)}}); }
  void OnParkingStateChange(int parking) override { Write(__func__, {{"parking", kYesNo(parking)}}); }
  void OnRadioAntStateChange(AntState state) override { Write(__func__, {{"state", Named{kAntenna}(state)}}); }
  void OnGpsAntStateChange(AntState state) override { Write(__func__, {{"state", Named{kAntenna}(state)}}); }
  void OnDABAntStateChange(AntState state) override { Write(__func__, {{"state", Named{kAntenna}(state)}}); }
  void OnMicConnectStateChange(AntState state) override { Write(__func__, {{"state", Named{kAntenna}(state)}}); }
  void OnFactoryResetMode() override { Write(__func__, {}); }
  void OnAcStateChange(std::map<ACState, int> changes) override { Changes(__func__, InWords(changes, kAc, kOnOff)); }
  void OnAirBlowModeChange(AirBlowMode mode) override { Write(__func__, {{"mode", Named{kAirBlow}(mode)}}); }
  void OnAirLevelChange(int level) override { Write(__func__, {{"level", kCount(level)}}); }
  void OnTempDriverChange(double value) override { Write(__func__, {{"temperature", kDegrees(value)}}); }
  void OnTempCopilotChange(double value) override { Write(__func__, {{"temperature", kDegrees(value)}}); }
  void OnTempEnvironmentChange(double value) override { Write(__func__, {{"temperature", kDegrees(value)}}); }
  void OnDoorStateChange(std::map<DoorState, int> changes) override {
    Changes(__func__, InWords(changes, kDoor, kOpen));
  }
  void OnCurrentSpeedChange(int value) override { Write(__func__, {{"speed", kCount(value)}}); }
  void OnCurrentSpeedChange_Raise(int value) override { Write(__func__, {{"speed", kCount(value)}}); }
  void OnAverageSpeedChange(int value) override { Write(__func__, {{"speed", kCount(value)}}); }
  void OnTotalMileChange(unsigned int value) override { Write(__func__, {{"distance", kCount(value)}}); }
  void OnEnduranceMileChange(int value) override { Write(__func__, {{"distance", kCount(value)}}); }
  void OnTotalMileChange_Raise(std::map<unsigned int, unsigned int> mile) override { Mileage(__func__, mile); }
  void OnEnduranceMileChange_Raise(std::map<unsigned int, unsigned int> mile) override { Mileage(__func__, mile); }
  void OnStage_A_MileChange(unsigned int value) override { Write(__func__, {{"distance", kCount(value)}}); }
  void OnStage_B_MileChange(unsigned int value) override { Write(__func__, {{"distance", kCount(value)}}); }
  void OnCurrentFuelChange(int value) override { Write(__func__, {{"consumption", kCount(value)}}); }
  void OnAverageFuelChange(int value) override { Write(__func__, {{"consumption", kCount(value)}}); }
  void OnRotateSpeedChange(int value) override { Write(__func__, {{"engine_speed", kEngineSpeed(value)}}); }
  void OnKeyStateChange(KeyEvent& event) override {
    Key(__func__, static_cast<unsigned char>(event.key), static_cast<unsigned char>(event.state));
  }
  void OnRaiseGacKnobKeyChange(unsigned char key, unsigned char state) override { Key(__func__, key, state); }
  void OnRaiseGacPanelKeyChange(unsigned char key, unsigned char state) override { Key(__func__, key, state); }
  void OnRadarInfoChange(unsigned char left, unsigned char mid_left, unsigned char mid_right,
                         unsigned char right) override {
    Write(__func__, Radar(left, mid_left, mid_right, right));
  }
  void OnSimpleRVCSignalChange(int on) override { Write(__func__, {{"reverse", kOnOff(on)}}); }
  void OnSimpleAirModeChange(std::map<SimpleAirMode, int> modes) override {
    Changes(__func__, InWords(modes, kSimpleAir, kOnOff));
  }
  void OnRaiseGacAcStateChange(std::map<Raise_GAC_ACState, int> states) override {
    Changes(__func__, InWords(states, kGacAc, kOnOff));
  }
  void OnRaiseGacRadarInfoChange(unsigned char display, unsigned char left, unsigned char mid_left,
                                 unsigned char mid_right, unsigned char right) override {
    EventLog::Values values = Radar(left, mid_left, mid_right, right);
    values.insert(values.begin(), {"display", kCount(display)});
    Write(__func__, values);
  }
  void OnRaiseVWSteeringWheelAngelChange(int angle) override { Write(__func__, {{"angle", Number{"%"}(angle)}}); }
  void OnRaiseRenaultAcStateChange(std::map<Raise_Renault_ACState, int> changes) override {
    Changes(__func__, InWords(changes, kRenaultAc, kOnOff));
  }
  void OnGeneralAcStateChange(std::map<AC_State_Type, int> states) override {
    Changes(__func__, InWords(states, kGeneralAc, kOnOff));
  }
  void OnGeneralAirLevelChange(SEAT_TYPE seat, int level) override { Seat(__func__, seat, "level", kCount(level)); }
  void OnGeneralLeftTempChange(SEAT_TYPE seat, double value) override {
    Seat(__func__, seat, "temperature", kDegrees(value));
  }
  void OnGeneralRightTempChange(SEAT_TYPE seat, double value) override {
    Seat(__func__, seat, "temperature", kDegrees(value));
  }
  void OnCameraStateChange(int front, int rear) override {
    Write(__func__, {{"front", kOnOff(front)}, {"rear", kOnOff(rear)}});
  }
  void OnSystemTempChange(int value) override { Write(__func__, {{"temperature", Number{"°"}(value)}}); }
  void OnTFTTempChange(int value) override { Write(__func__, {{"temperature", Number{"°"}(value)}}); }
  void OnSystemLanguageChange(Language language) override {
    Write(__func__, {{"language", Named{kLanguage}(language)}});
  }
  void OnUrgentMuteStateChange(int mute) override { Write(__func__, {{"mute", kOnOff(mute)}}); }
  void OnRadioRegionChange(Radio_Region_Ford region) override {
    Write(__func__, {{"region", Named{kRadioRegion}(region)}});
  }
  void OnRadioPresetChange(Radio_Band_Ford band, unsigned int frequency, unsigned char preset) override {
    Write(__func__,
          {{"band", Named{kRadioBand}(band)}, {"frequency", Number{"kHz"}(frequency)}, {"preset", kCount(preset)}});
  }
  void OnSpeakerAmountChange(unsigned char amount) override { Write(__func__, {{"speakers", kCount(amount)}}); }
  void OnSteelMateRadarInfoChange(unsigned char left, unsigned char mid_left, unsigned char mid_right,
                                  unsigned char right) override {
    Write(__func__, Radar(left, mid_left, mid_right, right));
  }

 private:
  template <class Key, class Element, class Format>
  static EventLog::Values InWords(const std::map<Key, Element>& map, Words words, Format format) {
    EventLog::Values values;
    for (const auto& [key, element] : map) values.emplace_back(::InWords(words, key), format(element));
    return values;
  }
  static EventLog::Values Radar(unsigned char left, unsigned char mid_left, unsigned char mid_right,
                                unsigned char right) {
    constexpr Distance distance;
    return {{"left", distance(left)},
            {"middle-left", distance(mid_left)},
            {"middle-right", distance(mid_right)},
            {"right", distance(right)}};
  }

  void Write(const char* event, const EventLog::Values& values) { log_.Write("misc", event, values); }
  void Changes(const char* event, const EventLog::Values& values) {
    log_.Write("misc", event, values, "nothing changed");
  }
  void Key(const char* event, unsigned char key, unsigned char state) {
    Write(event, {{"key", Code(key)}, {"state", kCount(state)}});
  }
  void Seat(const char* event, SEAT_TYPE seat, const char* what, const Value& value) {
    Write(event, {{"seats", Named{kSeat}(seat)}, {what, value}});
  }
  void Mileage(const char* event, const std::map<unsigned int, unsigned int>& mile) {
    for (const auto& [current, now] : mile) Write(event, {{"current", kCount(current)}, {"distance", kCount(now)}});
  }

  EventLog& log_;
};

}  // namespace

std::shared_ptr<void> ListenToMisc(EventLog& log) { return Listen<IHLXSystemMisc, MiscEvents>(log); }
