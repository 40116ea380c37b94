// The first filling of the power record.
#include <gmock/gmock.h>

#include <cstring>
#include <string>
#include <vector>

#include "data/PowerShmDataBase.h"
#include "tests/support/FakePlatform.h"

using testing::ElementsAre;

namespace {

class PowerRecord : public testing::Test {
 protected:
  void SetUp() override {
    fake::Reset();
    platform.config = {{"/setting/default_screen_day_brightness", "300"},
                       {"/setting/default_screen_night_brightness", "30"},
                       {"/setting/default_led_day_brightness", "25"},
                       {"/setting/default_led_night_brightness", "15"},
                       {"/setting/default_time_zone", "48"},
                       {"/project/project_name", "K417BQ"}};
  }

  HLXSystemData::PowerShmData& Init() {
    PowerShmDataBase base(0, HLXSystemData::SHM_OP_ATTACH, "test");
    platform.log.clear();
    base.InitPowerShmData(&record);
    return record;
  }

  fake::Platform& platform = fake::Get();
  HLXSystemData::PowerShmData record{};
};

TEST_F(PowerRecord, TakesSavedSettings) {
  platform.config["/system/enable_led_setting"] = "true";
  platform.persist = {{{2, 1000}, 9}, {{2, 1001}, 51}, {{2, 1002}, 52}, {{2, 1009}, 53}, {{2, 1010}, 54},
                      {{2, 1015}, 4}, {{2, 1016}, 61}, {{2, 1017}, 0},  {{2, 1020}, 7},  {{2, 1021}, 8}};
  Init();
  const std::vector<unsigned> values = {
      record._power_delay_time,    record._screen_day_level, record._screen_night_level,   record.button_day_level,
      record.button_night_level,   record.color_type,        record._power_retain_acc_sec, record.led_animation,
      record.is_light_auto_detect, record.is_light_day_fix};
  EXPECT_THAT(values, ElementsAre(9, 51, 52, 53, 54, 4, 61, 0, 7, 8));
  EXPECT_TRUE(platform.persist_writes.empty());
  EXPECT_THAT(platform.LoggedAll(),
              ElementsAre("INFO InitPowerShmData()", "DEBUG _power_delay_time:9", "DEBUG _power_retain_acc_sec:61",
                          "DEBUG _screen_day_level(51),_screen_night_level(52)."));
}

TEST_F(PowerRecord, FallsBackToTheFactoryDefaults) {
  platform.config["/setting/default_acc_off_delay"] = "true";
  platform.config["/system/enable_led_setting"] = "true";
  platform.config["/system/default_led_colour"] = "custom";
  platform.config["/q4system/enable_light_auto_detect"] = "true";
  platform.persist_read_result = 3;
  Init();
  EXPECT_THAT(platform.Loggers(), ElementsAre("InitPowerShmData"));
  const std::vector<unsigned> values = {record._power_delay_time,
                                        record._power_retain_acc_sec,
                                        record._screen_day_level,
                                        record._screen_night_level,
                                        record.button_day_level,
                                        record.button_night_level,
                                        record.screen_gamma_level,
                                        record.default_screen_gamma_level,
                                        record.default_screen_day_level,
                                        record.default_screen_night_level,
                                        record.radio_on_state,
                                        record.is_acc_on,
                                        record.is_screen_on,
                                        record.color_type,
                                        record.led_animation,
                                        record.is_light_auto_detect,
                                        record.is_light_day_fix,
                                        record.initialised};
  EXPECT_THAT(values, ElementsAre(20, 0, 44, 30, 25, 15, 7, 7, 44, 30, 16, 1, 1, 9, 1, 1, 0, 1));
  EXPECT_THAT(platform.persist_writes,
              ElementsAre(fake::PersistWrite{2, 1017, 1, {1, 1, 0}}, fake::PersistWrite{2, 1020, 1, {1, 1, 0}},
                          fake::PersistWrite{2, 1021, 0, {1, 1, 0}}));
  const std::string fail = " fail:PERSIST_ERROR_READ_FAIL";
  EXPECT_THAT(
      platform.LoggedAll(),
      ElementsAre("INFO InitPowerShmData()", "WARN Read PERSIST_ID_POWER_SERVICE_DELAY_TIME" + fail,
                  "DEBUG _power_delay_time:20", "WARN Read PERSIST_ID_RETAIN_ACC_SEC" + fail,
                  "DEBUG _power_retain_acc_sec:0", "WARN Read PERSIST_ID_SCREEN_DAY_LEVEL" + fail,
                  "WARN Read PERSIST_ID_SCREEN_NIGHT_LEVEL" + fail, "WARN Read PERSIST_ID_BUTTON_DAY_LEVEL" + fail,
                  "WARN Read PERSIST_ID_BUTTON_NIGHT_LEVEL" + fail,
                  "DEBUG _screen_day_level(44),_screen_night_level(30).", "WARN Read PERSIST_ID_BUTTON_LED_TYPE" + fail,
                  "WARN Read PERSIST_ID_BUTTON_LED_ANIMATION" + fail, "WARN Read PERSIST_ID_LIGHT_AUTO_DETECT" + fail,
                  "WARN Read PERSIST_ID_FIX_LIGHT_DAY" + fail));
}

TEST_F(PowerRecord, WithoutLedSettingTheButtonLevelsAreNeitherReadNorSet) {
  platform.persist = {{{2, 1009}, 53}, {{2, 1010}, 54}};
  Init();
  EXPECT_EQ(record.button_day_level, 0);
  EXPECT_EQ(record.button_night_level, 0);
  EXPECT_THAT(platform.persist_reads, testing::Not(testing::Contains(std::make_pair(2, 1009))));
  EXPECT_EQ(record._power_delay_time, 0);
}

TEST_F(PowerRecord, ConfiguredColours) {
  struct {
    const char* name;
    int type;
  } const colours[] = {{"white", 5},  {"blue", 3},   {"red", 0},    {"yellow", 1}, {"green", 2},
                       {"purple", 4}, {"custom", 9}, {"Red", 0x77}, {"", 0x77},    {"white ", 0x77}};
  for (const auto& colour : colours) {
    platform.config["/system/default_led_colour"] = colour.name;
    record = {};
    record.color_type = 0x77;
    EXPECT_EQ(Init().color_type, colour.type) << colour.name;
  }
}

TEST_F(PowerRecord, AnInitialisedRecordIsNotTouched) {
  std::memset(static_cast<void*>(&record), 0x5A, sizeof record);
  Init();
  const auto* const bytes = reinterpret_cast<const unsigned char*>(&record);
  EXPECT_THAT(std::vector<unsigned char>(bytes, bytes + sizeof record), testing::Each(0x5A));
  EXPECT_TRUE(platform.log.empty());
  EXPECT_TRUE(platform.persist_reads.empty());
}

TEST_F(PowerRecord, ConfigurationIsReadInOrderAndAnewForEachSegment) {
  const std::vector<std::string> order = {"/setting/default_led_day_brightness",
                                          "/setting/default_led_night_brightness",
                                          "/setting/default_screen_day_brightness",
                                          "/setting/default_screen_night_brightness",
                                          "/project/project_name",
                                          "/setting/default_time_zone"};
  for (int i = 0; i < 2; ++i) {
    platform.config_reads.clear();
    const SystemShmDataBase base(0, HLXSystemData::SHM_OP_ATTACH, "power_client");
    EXPECT_EQ(platform.config_reads, order);
  }
  EXPECT_THAT(platform.LoggedAll(), testing::Each("INFO system share data:power_client"));
}

}  // namespace
