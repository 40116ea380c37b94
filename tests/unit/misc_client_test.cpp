// The misc client on a real segment: getters that compute, decoders against tables of their own, commands on a real
// bus.
#include <gmock/gmock.h>
#include <sys/shm.h>

#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

#include "HLXListenerBase.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/misc/HLXMiscClient.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/TestService.h"

using namespace SystemMisc;
using testing::ElementsAre;

namespace {

template <class Map>
std::string Show(const Map& map) {
  std::string text;
  for (const auto& [key, value] : map)
    text += (text.empty() ? "" : " ") + std::to_string(key) + "=" + std::to_string(value);
  return text;
}

/// Notes the callbacks that decode something.
class Notes : public HLXMiscListenerBase {
 public:
  std::vector<std::string> notes;
  void OnSpeakerStateChange(std::map<Speaker, SpeakerState> m) override { notes.push_back("speakers " + Show(m)); }
  void OnAcStateChange(std::map<ACState, int> m) override { notes.push_back("ac " + Show(m)); }
  void OnRaiseRenaultAcStateChange(std::map<Raise_Renault_ACState, int> m) override {
    notes.push_back("renault " + Show(m));
  }
  void OnDoorStateChange(std::map<DoorState, int> m) override { notes.push_back("door " + Show(m)); }
  void OnSimpleAirModeChange(std::map<SimpleAirMode, int> m) override { notes.push_back("air " + Show(m)); }
  void OnRaiseGacAcStateChange(std::map<Raise_GAC_ACState, int> m) override { notes.push_back("gac " + Show(m)); }
  void OnGeneralAcStateChange(std::map<AC_State_Type, int> m) override { notes.push_back("general " + Show(m)); }
  void OnTotalMileChange_Raise(std::map<unsigned, unsigned> m) override { notes.push_back("total " + Show(m)); }
  void OnEnduranceMileChange_Raise(std::map<unsigned, unsigned> m) override { notes.push_back("endurance " + Show(m)); }
  void OnRaiseVWSteeringWheelAngelChange(int angle) override { notes.push_back("angle " + std::to_string(angle)); }
  void OnKeyStateChange(KeyEvent& e) override { Key("key", e.key, e.state); }
  void OnRaiseGacKnobKeyChange(unsigned char key, unsigned char state) override { Key("knob", key, state); }
  void OnRaiseGacPanelKeyChange(unsigned char key, unsigned char state) override { Key("panel", key, state); }
  void OnSteelMateRadarInfoChange(unsigned char a, unsigned char b, unsigned char c, unsigned char d) override {
    notes.push_back("radar " + std::to_string(a) + " " + std::to_string(b) + " " + std::to_string(c) + " " +
                    std::to_string(d));
  }
  std::string Take() {
    std::string text = notes.empty() ? "nothing" : notes.back();
    EXPECT_LE(notes.size(), 1U);
    notes.clear();
    return text;
  }

 private:
  void Key(const char* what, int key, int state) {
    notes.push_back(what + (" " + std::to_string(key)) + " " + std::to_string(state));
  }
};

class MiscClient : public testing::Test {
 protected:
  void SetUp() override {
    fake::Reset();
    fake::RemoveSegments();
    client = std::make_unique<HLXMiscClient>(adapter);
    client->AddListener(&listener);
    record = static_cast<unsigned char*>(shmat(shmget(static_cast<key_t>(0xA8800082), 232, 0), nullptr, 0));
    platform.log.clear();
  }
  void TearDown() override { fake::RemoveSegments(); }
  void Protocol(const std::string& name) { platform.config["/system/using_can_protocol"] = name; }

  fake::Platform& platform = fake::Get();
  Notes listener;
  const std::shared_ptr<ClientIpcAdapter> adapter = std::make_shared<ClientIpcAdapter>();
  std::unique_ptr<HLXMiscClient> client;
  unsigned char* record = nullptr;
};

TEST_F(MiscClient, GettersThatComputeOrCopy) {
  const auto put = [this](size_t offset, auto value) { std::memcpy(record + offset, &value, sizeof value); };
  put(4, 12345U);
  EXPECT_DOUBLE_EQ(client->GetCarFloatSpeed(), 123.45);
  put(4, 0xFFFFFFFFU);
  EXPECT_DOUBLE_EQ(client->GetCarFloatSpeed(), 42949672.95);
  for (unsigned i = 0; i < 4; ++i) put(36 + 4 * i, 10 + i);
  std::map<Speaker, SpeakerState> states = {{static_cast<Speaker>(9), SPEAKER_STATE_OPEN},
                                            {SPEAKER_FRONT_LEFT, SPEAKER_STATE_OPEN}};
  client->GetSpeakerState(states);
  EXPECT_EQ(Show(states), "1=10 2=11 3=12 4=13 9=1");
  client->OnSpeakerStateChange();
  EXPECT_EQ(listener.Take(), "speakers 1=10 2=11 3=12 4=13");

  record[69] = 0x81;
  record[106] = 0x42;
  for (int bit = -1; bit < 10; ++bit) {
    EXPECT_EQ(client->GetAcState(static_cast<ACState>(bit)), bit == 0 || bit == 7 ? 1 : 0) << bit;
    EXPECT_EQ(client->GetDoorState(static_cast<DoorState>(bit)), bit == 1 || bit == 6 ? 1 : 0) << bit;
  }

  std::memcpy(record + 221, "\x01\x02\xfe\xff", 4);
  client->GetSteelMateRadarInfo();
  EXPECT_EQ(listener.Take(), "radar 1 2 254 255");
  EXPECT_THAT(platform.LoggedAll(), ElementsAre("DEBUG HLXMiscClient::GetSteelMateRadarInfo"));
}

/// Reads a layout written as "key<bit key<bit", independently of the code: the map that `byte` gives.
std::map<int, int> Expected(const std::string& layout, int byte) {
  std::map<int, int> map;
  std::istringstream words(layout);
  for (std::string word; words >> word;) {
    const auto arrow = word.find('<');
    map[std::stoi(word)] = (byte / (1 << std::stoi(word.substr(arrow + 1)))) % 2;
  }
  return map;
}

TEST_F(MiscClient, GroupsOfTheToyotaAndFordBoxes) {
  struct {
    const char* protocol;
    int group;
    const char* layout;
  } const boxes[] = {
      {"raise_toyota", 1, "0<7 1<6 2<5 3<4 4<3 5<2 6<1"},
      {"raise_toyota", 2, "8<7 9<6 10<5 11<4"},
      {"raise_toyota", 3, "12<7 13<6 14<5 15<4 16<3 17<2 18<1"},
      {"raise_toyota", 4, "20<7 21<6 22<5 23<4"},
      {"raise_toyota", 0, ""},
      {"raise_toyota", 5, ""},
      {"raise_toyota", 255, ""},
      {"raise_ford", 1, "0<7 1<6 2<5 27<3 5<2 6<1 13<0"},
      {"raise_ford", 2, "8<7 9<6 10<5"},
      {"raise_ford", 3, ""},
      {"raise_ford", 4, "20<7 21<1 22<0"},
      {"raise_ford", 0, ""},
      {"raise_ford", 5, ""},
  };
  for (const auto& box : boxes) {
    Protocol(box.protocol);
    for (int byte = 0; byte < 256; ++byte) {
      client->OnGeneralAcStateChange(static_cast<AC_State_Data>(box.group), static_cast<unsigned char>(byte));
      ASSERT_EQ(listener.Take(), "general " + Show(Expected(box.layout, byte)))
          << box.protocol << box.group << " " << byte;
    }
  }
  for (const char* other : {"", "raise", "raise_gac", "Raise_toyota", "raise_toyota "}) {
    Protocol(other);
    client->OnGeneralAcStateChange(AC_STATE_DATA_SWITCHES, 0xFF);
    EXPECT_EQ(listener.Take(), "nothing") << other;
  }
  platform.log.clear();
  Protocol("raise_ford");
  client->OnGeneralAcStateChange(AC_STATE_DATA_SEATS, 200);
  EXPECT_THAT(platform.LoggedAll(), ElementsAre("INFO OnGeneralAcStateChange, acState_type = 4, acState_value = 200",
                                                "DEBUG OnFordAcStateChange, acStateData = 4"));
  EXPECT_EQ(record[69], 0) << "groups leave the record alone";
}

TEST_F(MiscClient, GacAndRaiseClimate) {
  struct {
    const char* protocol;
    const char* one;
    const char* two;
  } const boxes[] = {{"raise_gac", "0<0 1<1 2<2 3<3 4<4 5<5 6<6 7<7", "8<4 9<5 10<6 11<7"},
                     {"raise", "0<0 13<1 12<2 7<3 2<4", "10<0 5<1 6<2"},
                     {"raise_vw", "", ""}};
  for (const auto& box : boxes) {
    Protocol(box.protocol);
    for (int byte = 0; byte < 256; ++byte) {
      client->OnRaiseGacAcStateChange(static_cast<unsigned char>(byte), static_cast<unsigned char>(255 - byte));
      auto expected = Expected(box.one, byte);
      expected.merge(Expected(box.two, 255 - byte));
      ASSERT_EQ(listener.Take(), "gac " + Show(expected)) << box.protocol << byte;
    }
  }
  EXPECT_EQ(platform.log.front().text, "OnRaiseGacAcStateChange, acState_one = 0, acState_two = 255");
  EXPECT_EQ(platform.log.front().level, 40);
}

TEST_F(MiscClient, ClimateByteTellsChangesOnly) {
  for (const char* protocol : {"raise_renault", "raise_ford"}) {
    Protocol(protocol);
    client->OnAcStateChange(0);
    listener.notes.clear();
    const std::string name = std::string(protocol) == "raise_renault" ? "renault " : "ac ";
    for (int last = 0; last < 256; last += 5) {
      for (int byte = 0; byte < 256; ++byte) {
        client->OnAcStateChange(static_cast<unsigned char>(last));
        listener.notes.clear();
        client->OnAcStateChange(static_cast<unsigned char>(byte));
        std::map<int, int> expected;
        for (int bit = 0; bit < 8; ++bit) {
          if (((last >> bit) & 1) != ((byte >> bit) & 1)) expected[bit] = (byte >> bit) & 1;
        }
        ASSERT_EQ(listener.Take(), name + Show(expected));
        ASSERT_EQ(record[69], byte);
      }
    }
  }
  client->OnAcStateChange(7);
  listener.notes.clear();
  client->OnAcStateChange(7);
  EXPECT_EQ(listener.Take(), "ac ");
}

TEST_F(MiscClient, TheProtocolIsReadAgainBeforeTheListenersAreCalled) {
  client->OnAcStateChange(1);
  EXPECT_EQ(std::count(platform.config_reads.begin(), platform.config_reads.end(), "/system/using_can_protocol"), 2);
}

TEST_F(MiscClient, SimpleAirMode) {
  for (int byte = 0; byte < 256; ++byte) {
    Protocol("raise");
    client->OnSimpleAirModeChange(0x5A);
    listener.notes.clear();
    platform.log.clear();
    client->OnSimpleAirModeChange(static_cast<unsigned char>(byte));
    std::map<int, int> expected;
    std::vector<std::string> log;
    for (int bit = 4; bit < 8; ++bit) {
      if (((0x5A >> bit) & 1) == ((byte >> bit) & 1)) continue;
      expected[bit] = (byte >> bit) & 1;
      log.push_back("INFO airMode[" + std::to_string(bit) + "] change:" + std::to_string(expected[bit]));
    }
    ASSERT_EQ(listener.Take(), "air " + Show(expected));
    ASSERT_EQ(platform.LoggedAll(), log);
    ASSERT_EQ(record[104], byte);

    Protocol("raise_renault");
    client->OnSimpleAirModeChange(static_cast<unsigned char>(byte));
    expected = Expected("5<2 6<1 9<4 10<5 11<6", byte);
    expected.insert({{4, 1}, {7, 0}, {8, 1}});
    ASSERT_EQ(listener.Take(), "air " + Show(expected));
  }
}

TEST_F(MiscClient, Doors) {
  client->OnDoorStateChange(0xFF);
  EXPECT_EQ(listener.Take(), "door 2=1 3=1 4=1 5=1 6=1 7=1");
  EXPECT_EQ(platform.LoggedAll().front(), "DEBUG doorState[2] change:1");
  EXPECT_EQ(record[106], 0xFF);
  client->OnDoorStateChange(0xFC);
  EXPECT_EQ(listener.Take(), "door ");
  EXPECT_EQ(record[106], 0xFC);
  client->OnDoorStateChange(0x5C);
  EXPECT_EQ(listener.Take(), "door 5=0 7=0");
}

TEST_F(MiscClient, KeysTakeThreeRoutes) {
  for (int key = 0; key < 256; ++key) {
    const std::string values = " " + std::to_string(key) + " 254";
    Protocol("raise_gac");
    client->OnKeyStateChange(static_cast<unsigned char>(key), 254);
    const bool panel = key == 0xA2 || key == 0xA3;
    const bool knob = key == 0xAE || key == 0xAF;
    ASSERT_EQ(listener.Take(), (panel ? "panel" : knob ? "knob" : "key") + values);
    Protocol("raise_vw");
    client->OnKeyStateChange(static_cast<unsigned char>(key), 254);
    ASSERT_EQ(listener.Take(), "key" + values);
  }
}

TEST_F(MiscClient, SteeringAngle) {
  const auto angle = [this](int raw) {
    client->OnRaiseVWSteeringWheelAngelChange(static_cast<unsigned char>(raw % 256),
                                              static_cast<unsigned char>(raw / 256));
    return listener.Take();
  };
  const auto expect = [&](const char* protocol, std::initializer_list<std::pair<int, int>> cases) {
    Protocol(protocol);
    for (const auto& [raw, expected] : cases)
      EXPECT_EQ(angle(raw), "angle " + std::to_string(expected)) << protocol << raw;
  };
  expect("raise_vw", {{0, 0}, {540, -100}, {1, 0}, {64995, -12036}, {64996, 100}, {65535, 0}, {65266, 50}});
  expect("raise_toyota", {{3716, 100}, {4095, 0}, {3715, -977}, {4096, -1077}, {0, 0}, {380, -100}, {65535, -17246}});
  expect("raise", {{540, 0}, {65535, 0}});
  // By way of double precision, which rounds a quotient of two such numbers to the same single-precision value.
  const auto percent = [](int counts, int full) {
    const auto quotient = static_cast<float>(static_cast<double>(counts) / full);
    return "angle " + std::to_string(static_cast<int>(100.0 * static_cast<double>(quotient)));
  };
  Protocol("raise_vw");
  for (int raw = 0; raw < 65536; ++raw) ASSERT_EQ(angle(raw), percent(raw > 64995 ? 65536 - raw : -raw, 540)) << raw;
  Protocol("raise_toyota");
  for (int raw = 0; raw < 65536; ++raw) {
    ASSERT_EQ(angle(raw), percent(raw < 3716 || raw > 4095 ? -raw : 4096 - raw, 380)) << raw;
  }
}

TEST_F(MiscClient, RaiseMileageIsPairedWithTheRecords) {
  const unsigned current = 0xFFFFFFFEU;
  std::memcpy(record + 116, &current, 4);
  client->OnTotalMileChange_Raise(0xFFFFFFFFU);
  EXPECT_EQ(listener.Take(), "total 4294967294=4294967295");
  EXPECT_THAT(platform.LoggedAll(), ElementsAre("DEBUG HLXMiscClient::OnTotalMileChange_Raise mCurMile:-2 ,value:-1"));
  client->OnEnduranceMileChange_Raise(7);
  EXPECT_EQ(listener.Take(), "endurance 4294967294=7");
  EXPECT_EQ(platform.log.size(), 1U);
}

TEST_F(MiscClient, CommandsGoToTheServiceAndTheirResultsComeBack) {
  TestService service;
  ASSERT_TRUE(adapter->Init());
  const std::vector<unsigned char> before(record, record + 232);
  client->SpeakerDetectStart();
  client->SpeakerDetectStop();
  client->SetRvcOffDelaySwitch(1);
  client->SetDrivePosition(0);
  client->SetHandbrakeCheckingSwitch(1);
  client->SetGPSAntennaCheckingSwitch(0);
  client->ResetFactoryMode();
  client->EnableCanBoxModule(1);
  client->EnableScreenShotControl(0);
  client->SetScreenshot();
  client->StartAutoTest();
  LogoInfo logo = {0x04030201, 0, 0, 0, 0xFFFFFFFF};
  client->SetLogo(logo);
  EXPECT_THAT(service.TakeCalls(),
              ElementsAre("SpeakerDetectStart ()", "SpeakerDetectStop ()", "SetRvcOffDelaySwitch (true,)",
                          "SetDrivePosition (false,)", "SetHandbrakeCheckingSwitch (true,)",
                          "SetGPSAntennaCheckingSwitch (false,)", "ResetFactoryMode ()", "EnableCanBoxModule (true,)",
                          "EnableScreenShotControl (false,)", "SetScreenshot ()", "StartAutoTest ()",
                          "SetLogoInfo (<[byte 0x01, 0x02, 0x03, 0x04, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, "
                          "0x00, 0x00, 0x00, 0x00, 0xff, 0xff, 0xff, 0xff]>,)"));
  for (const bool answer : {true, false}) {
    service.SetAnswer(answer ? TestService::Answer::kOk : TestService::Answer::kError);
    EXPECT_EQ(client->SetOnSourceChange(-1), answer);
    EXPECT_EQ(client->SetOnTimeChange("12:30"), answer);
    EXPECT_EQ(client->SetOnRadioChange("FM"), answer);
    EXPECT_EQ(client->SetOnTouchInfo("3,4"), answer);
    EXPECT_EQ(client->SetOnPSChange("PS"), answer);
    EXPECT_EQ(client->SetOnMediaInfoChange("title"), answer);
    EXPECT_EQ(client->SetOnVolChange(40), answer);
    EXPECT_EQ(client->SetOnPhoneInfoChange(""), answer);
    EXPECT_EQ(client->SetLogo(3U), answer);
    EXPECT_THAT(service.TakeCalls(),
                ElementsAre("SetOnSourceChange (-1,)", "SetOnTimeChange ('12:30',)", "SetOnRadioChange ('FM',)",
                            "SetOnTouchInfo ('3,4',)", "SetOnPSChange ('PS',)", "SetOnMediaInfoChange ('title',)",
                            "SetOnVolChange (40,)", "SetOnPhoneInfoChange ('',)", "SetLogo (uint32 3,)"));
  }
  EXPECT_THAT(before, testing::ElementsAreArray(record, 232));
}

}  // namespace
