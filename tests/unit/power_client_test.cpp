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
  EXPECT_EQ(client.IHLXSystemPower::GetMcuBootType(), BOOT_REASON_UNKNOWN) << "of an older implementation";
}

}  // namespace
