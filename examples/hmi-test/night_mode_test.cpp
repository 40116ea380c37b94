// A part of an application under GoogleTest. `hlx-simulator run` is around this process: the unit is there, and no
// other.
#include <HLXListenerBase.h>
#include <HLXSystemProxy.h>
#include <glib.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

// What is under test: the application dims its own picture at night, and not below what the driver can read.
class NightMode : public HLXPowerListenerBase {
 public:
  explicit NightMode(IHLXSystemPower* power) : power_(power) {
    power_->AddListener(this);
    night_ = power_->GetCurScreenLightType() != HLXPower::LIGHT_TYPE_DAY;
  }
  ~NightMode() override { power_->RemoveListener(this); }
  void OnScreenLightTypeChanged(HLXPower::LightType type) override {
    night_ = type != HLXPower::LIGHT_TYPE_DAY;
    if (night_ && power_->GetScreenLightLevel(HLXPower::LIGHT_TYPE_NIGHT) < 20) {
      power_->SetScreenLightLevel(HLXPower::LIGHT_TYPE_NIGHT, 20);
    }
  }
  bool IsNight() const { return night_; }

 private:
  IHLXSystemPower* power_;
  bool night_;
};

namespace {

void Simulate(const std::string& words) { ASSERT_EQ(std::system(("hlx-simulator " + words).c_str()), 0) << words; }

// Events arrive in the main loop.
template <class Condition>
bool Eventually(Condition condition) {
  for (int i = 0; i < 2000 && !condition(); ++i) {
    if (!g_main_context_iteration(nullptr, FALSE)) g_usleep(1000);
  }
  return condition();
}

TEST(NightModeTest, FollowsTheHeadLights) {
  ASSERT_TRUE(HLX_StartSystemProxy());
  {
    NightMode mode(HLX_GetSystemPowerProxy());
    EXPECT_FALSE(mode.IsNight());
    Simulate("set power.brightness_night 5");
    Simulate("set power.head_lights on");
    EXPECT_TRUE(Eventually([&] { return mode.IsNight(); }));
    Simulate("calls --wait SetScreenLightLevel --timeout 2");
    EXPECT_EQ(HLX_GetSystemPowerProxy()->GetScreenLightLevel(HLXPower::LIGHT_TYPE_NIGHT), 20);
    Simulate("set power.head_lights off");
    EXPECT_TRUE(Eventually([&] { return !mode.IsNight(); }));
  }
  HLX_ReleaseSystemProxy();
}

}  // namespace
