// The first filling of the misc and info records.
#include <gmock/gmock.h>

#include <cstring>
#include <string>
#include <vector>

#include "data/InfoShmDataBase.h"
#include "data/MiscShmDataBase.h"
#include "tests/support/FakePlatform.h"

namespace {

constexpr size_t kSize = sizeof(HLXSystemData::MiscShmData);

class MiscRecord : public testing::Test {
 protected:
  void SetUp() override {
    fake::Reset();
    std::memset(static_cast<void*>(&record), 0, kSize);  // with what stands between the fields
  }

  void Init() {
    MiscShmDataBase base(0, HLXSystemData::SHM_OP_ATTACH, "test");
    platform.log.clear();
    base.InitMiscShmData(&record);
  }
  std::vector<unsigned> Words() {
    std::vector<unsigned> words(kSize / 4);
    std::memcpy(words.data(), &record, kSize);
    return words;
  }

  fake::Platform& platform = fake::Get();
  HLXSystemData::MiscShmData record{};
};

TEST_F(MiscRecord, FreshWithNothingSavedOrConfigured) {
  platform.persist_read_result = 6;
  Init();
  std::vector<unsigned> expected(kSize / 4);
  expected[8 / 4] = 1;                                                    // parking
  for (const size_t offset : {16, 20, 24, 28}) expected[offset / 4] = 5;  // antennas, microphone
  for (const size_t offset : {36, 40, 44, 48}) expected[offset / 4] = 5;  // speakers
  expected[60 / 4] = 1;                                                   // initialised
  expected[72 / 4] = 8;                                                   // air blow mode
  expected[216 / 4] = 3;                                                  // radio region
  expected[220 / 4] = 0xFFFFFF04;                                         // speakers, radar 1 to 3
  expected[224 / 4] = 0xFF;                                               // radar 4
  EXPECT_EQ(Words(), expected);
  EXPECT_THAT(platform.Loggers(), testing::ElementsAre("InitMiscShmData"));
  const std::string fail = " fail:PERSIST_ERROR_DATA_NOT_FOUND";
  EXPECT_THAT(platform.LoggedAll(),
              testing::ElementsAre("INFO InitMiscShmData()", "WARN Read PERSIST_ID_RVC_DELAY" + fail,
                                   "DEBUG _is_rvc_delay:0", "WARN Read PERSIST_ID_DRIVE_POSITION" + fail,
                                   "DEBUG _is_left_position:0", "WARN Read PERSIST_ID_CAN_BOX_ENABLE" + fail,
                                   "DEBUG _can_box_enble:0", "DEBUG _screen_shot_enble:0"));
  EXPECT_TRUE(platform.persist_writes.empty());
}

TEST_F(MiscRecord, EachSwitchIsConfiguredByItsKey) {
  const struct {
    const char* key;
    uint32_t HLXSystemData::MiscShmData::*field;
  } switches[] = {{"/setting/default_rearview_camera_delay", &HLXSystemData::MiscShmData::_is_rvc_delay},
                  {"/setting/default_advance_driving_seat_is_left", &HLXSystemData::MiscShmData::_is_left_position},
                  {"/setting/default_canbox_control", &HLXSystemData::MiscShmData::_can_box_enble},
                  {"/setting/handbrake_test_default_on", &HLXSystemData::MiscShmData::is_handbrake_test_on},
                  {"/setting/gps_ant_checking_default_on", &HLXSystemData::MiscShmData::is_gps_ant_checking_on}};
  for (const auto& on : switches) {
    platform.config = {{on.key, "true"}};
    record = {};
    Init();
    for (const auto& any : switches) EXPECT_EQ(record.*any.field, any.key == on.key) << on.key << " " << any.key;
  }
}

TEST_F(MiscRecord, SavedSettingsGoBeforeConfiguredOnes) {
  for (const char* key :
       {"default_rearview_camera_delay", "default_advance_driving_seat_is_left", "default_canbox_control"}) {
    platform.config[std::string("/setting/") + key] = "true";
  }
  platform.persist = {{{2, 1007}, 0}, {{18, 51}, 7}, {{18, 52}, 0}};
  Init();
  EXPECT_EQ(record._is_rvc_delay, 0U);
  EXPECT_EQ(record._is_left_position, 7U);
  EXPECT_EQ(record._can_box_enble, 0U);
  EXPECT_TRUE(platform.Logged(80).empty());
}

TEST_F(MiscRecord, WhatAFreshFillLeavesAsFound) {
  std::memset(static_cast<void*>(&record), 0x5A, kSize);
  record.initialised = 0;
  Init();
  std::vector<size_t> found;
  for (size_t i = 0; i < kSize; ++i) {
    if (reinterpret_cast<unsigned char*>(&record)[i] == 0x5A) found.push_back(i);
  }
  std::vector<size_t> expected;
  const auto left = [&expected](size_t from, size_t to) {
    for (size_t i = from; i < to; ++i) expected.push_back(i);
  };
  left(32, 36);    // reserved
  left(68, 69);    // panel temperature
  left(70, 72);    // padding
  left(148, 180);  // CAN-box version
  left(196, 216);  // cameras, unit temperature, language, urgent mute
  left(225, 232);  // padding
  EXPECT_EQ(found, expected);

  std::memset(static_cast<void*>(&record), 0x5A, kSize);
  Init();
  for (size_t i = 0; i < kSize; ++i) ASSERT_EQ(reinterpret_cast<unsigned char*>(&record)[i], 0x5A) << i;
}

TEST(InfoRecord, IsEmptiedOnceAndThenLeftAlone) {
  fake::Reset();
  HLXSystemData::InfoShmData record{};
  std::strcpy(record.mcu_version, "rubbish");
  InfoShmDataBase base(0, HLXSystemData::SHM_OP_CREATE, "test");
  base.InitInfoShmData(&record);
  EXPECT_STREQ(record.mcu_version, "");
  EXPECT_EQ(record.initialised, 1U);
  std::strcpy(record.mcu_version, "MCU 1");
  base.InitInfoShmData(&record);
  EXPECT_STREQ(record.mcu_version, "MCU 1");
  EXPECT_THAT(fake::Get().LoggedAll(), testing::ElementsAre("INFO system share data:test", "INFO InitInfoShmData()"));
}

}  // namespace
