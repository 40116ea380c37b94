// The power client on a real segment: mapping, getters by offset, events.
#include <gmock/gmock.h>
#include <sys/shm.h>

#include <cstring>
#include <functional>
#include <string>

#include "client/ipc/ClientIpcAdapter.h"
#include "client/power/HLXPowerClient.h"
#include "tests/support/FakePlatform.h"

using namespace HLXPower;

namespace {

constexpr key_t kKey = static_cast<key_t>(0xA8800081);

class PowerClient : public testing::Test {
 protected:
  void SetUp() override {
    fake::Reset();
    fake::RemoveSegments();
  }
  void TearDown() override { fake::RemoveSegments(); }
};

unsigned char* MapRecord() { return static_cast<unsigned char*>(shmat(shmget(kKey, 92, 0), nullptr, 0)); }

TEST_F(PowerClient, MakesAMissingSegmentWithReadOnlyBits) {
  HLXPowerClient client(std::make_shared<ClientIpcAdapter>());
  shmid_ds info{};
  ASSERT_EQ(shmctl(shmget(kKey, 0, 0), IPC_STAT, &info), 0);
  EXPECT_EQ(info.shm_segsz, 92U);
  EXPECT_EQ(info.shm_perm.mode & 0777U, 0444U);
  EXPECT_EQ(client.GetRadioOnState(), RADIO_STATE_ON);
}

TEST_F(PowerClient, ASegmentThatIsTooSmallEndsTheProcess) {
  ASSERT_NE(shmget(kKey, 91, IPC_CREAT | 0666), -1);
  const auto make = [] {
    HLXPowerClient client(std::make_shared<ClientIpcAdapter>());
    (void)client;
  };
  EXPECT_EXIT(
      {
        std::atexit([] {
          for (const std::string& text : fake::Get().LoggedAll()) std::fprintf(stderr, "%s\n", text.c_str());
        });
        make();
      },
      testing::ExitedWithCode(2),
      "ERROR system data info shmget failed:Invalid argument\nFATAL "
      "\\[system-client\\]CreateDataShm->SHM_POWER_DATA_KEY_ID fail.Exit!!\n");
}

TEST_F(PowerClient, GettersReadTheirFields) {
  HLXPowerClient client(std::make_shared<ClientIpcAdapter>());
  struct {
    const char* name;
    size_t offset;
    size_t size;
    std::function<unsigned(IHLXSystemPower&)> get;
  } const getters[] = {
      {"GetCurScreenLightType", 0, 4, [](auto& c) { return c.GetCurScreenLightType(); }},
      {"GetButtonLightType", 4, 4, [](auto& c) { return c.GetButtonLightType(); }},
      {"IsScreenOnState", 8, 4, [](auto& c) { return c.IsScreenOnState(); }},
      {"GetScreenLightLevel day", 16, 1, [](auto& c) { return c.GetScreenLightLevel(LIGHT_TYPE_DAY); }},
      {"GetScreenLightLevel night", 17, 1, [](auto& c) { return c.GetScreenLightLevel(LIGHT_TYPE_NIGHT); }},
      {"GetScreenLightLevel 256", 17, 1, [](auto& c) { return c.GetScreenLightLevel(static_cast<LightType>(256)); }},
      {"GetScreenGammaLevel", 20, 4, [](auto& c) { return c.GetScreenGammaLevel(); }},
      {"GetCurButtonLightLevel day", 24, 1, [](auto& c) { return c.GetCurButtonLightLevel(LIGHT_TYPE_DAY); }},
      {"GetCurButtonLightLevel -1", 25, 1,
       [](auto& c) { return c.GetCurButtonLightLevel(static_cast<LightType>(-1)); }},
      {"IsAccOnState", 28, 4, [](auto& c) { return c.IsAccOnState(); }},
      {"IsColdBootState", 32, 4, [](auto& c) { return c.IsColdBootState(); }},
      {"GetRadioOnState", 36, 4, [](auto& c) { return c.GetRadioOnState(); }},
      {"GetPowerOffDelayTime", 40, 1, [](auto& c) { return c.GetPowerOffDelayTime(); }},
      {"GetRetainACCSec", 41, 1, [](auto& c) { return c.GetRetainACCSec(); }},
      {"GetDefaultScreenLightLevel first", 48, 1,
       [](auto& c) {
         unsigned char day = 0, night = 0;
         c.GetDefaultScreenLightLevel(day, night);
         return day;
       }},
      {"GetDefaultScreenLightLevel second", 49, 1,
       [](auto& c) {
         unsigned char day = 0, night = 0;
         c.GetDefaultScreenLightLevel(day, night);
         return night;
       }},
      {"GetDefaultScreenGammaLevel", 52, 4, [](auto& c) { return c.GetDefaultScreenGammaLevel(); }},
      {"GetPowerWakeupType", 56, 1, [](auto& c) { return c.GetPowerWakeupType(); }},
      {"IsLightAutoDetectStyle", 60, 4, [](auto& c) { return c.IsLightAutoDetectStyle(); }},
      {"IsLightDayFixStyle", 64, 4, [](auto& c) { return c.IsLightDayFixStyle(); }},
      {"GetColorType", 68, 1, [](auto& c) { return c.GetColorType(); }},
      {"GetLedAnimation", 72, 4, [](auto& c) { return c.GetLedAnimation(); }},
      {"GetMcuBootType", 76, 4, [](auto& c) { return c.GetMcuBootType(); }},
      {"GetHeadLightState", 88, 4, [](auto& c) { return c.GetHeadLightState(); }},
  };
  unsigned char* const record = MapRecord();
  for (const auto& getter : getters) {
    std::memset(record, 0, 92);
    std::memset(record + getter.offset, 0xF1, getter.size);
    EXPECT_EQ(getter.get(client), getter.size == 4 ? 0xF1F1F1F1U : 0xF1U) << getter.name;
    std::memset(record, 0xF1, 92);
    std::memset(record + getter.offset, 0, getter.size);
    EXPECT_EQ(getter.get(client), 0U) << getter.name;
  }
}

/// Notes every callback as "name(arguments)".
class Notes : public IHLXPowerListener {
 public:
  explicit Notes(std::vector<std::string>* notes) : notes_(notes) {}
  void OnScreenStateChange(int on) override { Note("Screen", on); }
  void OnRadioStateChange(RadioState state) override { Note("Radio", state); }
  void OnAccStateChange(int on) override { Note("Acc", on); }
  void OnBatteryBootStateChange(int cold) override { Note("Boot", cold); }
  void OnPowerOffDelayTimeChange(unsigned char time) override { Note("Delay", time); }
  void OnPowerWakeupType(PowerWakeupType type) override { Note("Wakeup", type); }
  void OnAbnormalPowerAudioNotify(unsigned char param) override { Note("Audio", param); }
  void OnAbnormalPowerUsbNotify(unsigned char param) override { Note("Usb", param); }
  void OnPowerPreRadioOffNotify() override { Note("PreRadioOff", 0); }
  void OnScreenLightLevelChanged(LightType type, unsigned char level) override { Note("ScreenLevel", type, level); }
  void OnScreenLightTypeChanged(LightType type) override { Note("ScreenType", type); }
  void OnButtonLightLevelChanged(LightType type, unsigned char level) override { Note("ButtonLevel", type, level); }
  void OnButtonLightTypeChanged(LightType type) override { Note("ButtonType", type); }
  void OnButtonColorChanged(ColorType color) override { Note("Color", color); }
  void OnMcuBootTypeNotify(BootReason reason) override { Note("BootType", reason); }
  void OnMcuRequestDisplayUiAction(McuReqDisplayUi action) override { Note("Ui", action); }
  void OnHeadLightStateChange(int on) override { Note("HeadLight", on); }

 private:
  void Note(const std::string& name, int first, int second = 0) {
    notes_->push_back(name + " " + std::to_string(first) + " " + std::to_string(second));
  }
  std::vector<std::string>* notes_;
};

TEST_F(PowerClient, EventsReachEveryListenerInAddressOrder) {
  HLXPowerClient client(std::make_shared<ClientIpcAdapter>());
  std::vector<std::string> notes[2];
  Notes listeners[2] = {Notes(&notes[0]), Notes(&notes[1])};
  client.AddListener(&listeners[1]);
  client.AddListener(&listeners[0]);
  client.OnScreenStateChange(-1);
  client.OnRadioStateChange(RADIO_STATE_ON);
  client.OnAccStateChange(2);
  client.OnBatteryBootStateChange(3);
  client.OnPowerOffDelayTimeChange(255);
  client.OnPowerWakeupType(static_cast<PowerWakeupType>(200));
  client.OnAbnormalPowerAudioNotify(6);
  client.OnAbnormalPowerUsbNotify(7);
  client.OnPowerPreRadioOffNotify();
  client.OnScreenLightLevelChanged(LIGHT_TYPE_NIGHT, 8);
  client.OnScreenLightTypeChanged(LIGHT_TYPE_NIGHT);
  client.OnButtonLightLevelChanged(LIGHT_TYPE_DAY, 9);
  client.OnButtonLightTypeChanged(LIGHT_TYPE_NIGHT);
  client.OnButtonColorChanged(COLOR_TYPE_WHITE);
  client.OnMcuBootTypeNotify(BOOT_REASON_UNKNOWN);
  client.OnMcuRequestDisplayUiAction(static_cast<McuReqDisplayUi>(99));
  client.OnHeadLightStateChange(1);
  EXPECT_THAT(notes[0], testing::ElementsAre("Screen -1 0", "Radio 16 0", "Acc 2 0", "Boot 3 0", "Delay 255 0",
                                             "Wakeup 200 0", "Audio 6 0", "Usb 7 0", "PreRadioOff 0 0",
                                             "ScreenLevel 1 8", "ScreenType 1 0", "ButtonLevel 0 9", "ButtonType 1 0",
                                             "Color 5 0", "BootType 20 0", "Ui 99 0", "HeadLight 1 0"));
  EXPECT_EQ(notes[1], notes[0]);
}

}  // namespace
