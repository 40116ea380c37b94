// The time record, the zones, the clock: with the real /etc/localtime and zoneinfo of the sandbox.
#include <gmock/gmock.h>
#include <sys/shm.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "HLXListenerBase.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/time/HLXTimeClient.h"
#include "data/ZoneTable.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/TestService.h"

using namespace SystemTime;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

static int syncs = 0;

/// What the clock says.
static time_t now = 0;

// These stand before the C library's. localtime() answers from a buffer that all threads share, here as another thread
// left it.
extern "C" void sync() noexcept { ++syncs; }
extern "C" time_t time(time_t* /*unused*/) noexcept { return now; }
extern "C" tm* localtime(const time_t* /*unused*/) noexcept {
  static tm shared{};
  return &shared;
}

namespace {

constexpr size_t kSize = 10552;
constexpr key_t kKey = static_cast<key_t>(0xA8800083);

std::string Show(const DateTime& t) {
  char text[128];
  std::snprintf(text, sizeof text, "%d-%d-%d(%d) %d:%d:%d", t.date.year, t.date.month, t.date.day, t.date.week,
                t.time.hour, t.time.minute, t.time.second);
  return text;
}

class Notes : public HLXTimeListenerBase {
 public:
  std::vector<std::string> notes;
  void OnDateInfoChange(DateTime& t) override { notes.push_back("date " + Show(t)); }
  void On24TimeModeChange(int mode) override { notes.push_back("24 " + std::to_string(mode)); }
  void OnDstStatusChange(int dst) override { notes.push_back("dst " + std::to_string(dst)); }
  void OnExternalMcuTimeChange(DateTime& t) override { notes.push_back("mcu " + Show(t)); }
  void OnExternalMcu24TimeModeChange(int mode) override { notes.push_back("mcu24 " + std::to_string(mode)); }
  void OnExternalMcuTimeZoneChange(unsigned char zone) override { notes.push_back("mcuzone " + std::to_string(zone)); }
};

/// Runs a command for real.
int RunReally(const std::string& command, int /*flag*/) { return std::system(command.c_str()) == 0 ? 1 : 0; }

std::string Output(const std::string& command) {
  std::string text;
  FILE* const pipe = popen(command.c_str(), "r");
  for (int c; (c = std::fgetc(pipe)) != EOF;) text += static_cast<char>(c);
  pclose(pipe);
  return text;
}

std::string LinkTarget() {
  char target[PATH_MAX] = {};
  return readlink("/etc/localtime", target, sizeof target - 1) == -1 ? "none" : target;
}

class TimeClient : public testing::Test {
 protected:
  void SetUp() override {
    fake::Reset();
    fake::RemoveSegments();
    platform.persist[{2, 1006}] = 21;
    [[maybe_unused]] const int made = symlink("/usr/share/zoneinfo/Europe/London", "/etc/localtime");
  }
  void TearDown() override { fake::RemoveSegments(); }

  HLXTimeClient& Make() {
    client = std::make_unique<HLXTimeClient>(adapter);
    client->AddListener(&listener);
    record = static_cast<unsigned char*>(shmat(shmget(kKey, kSize, 0), nullptr, 0));
    return *client;
  }
  int Int(size_t offset) const {
    int value;
    std::memcpy(&value, record + offset, sizeof value);
    return value;
  }
  template <class... T>
  void Put(size_t offset, T... values) const {
    const int all[] = {values...};
    std::memcpy(record + offset, all, sizeof all);
  }

  fake::Platform& platform = fake::Get();
  Notes listener;
  const std::shared_ptr<ClientIpcAdapter> adapter = std::make_shared<ClientIpcAdapter>();
  std::unique_ptr<HLXTimeClient> client;
  unsigned char* record = nullptr;
};

TEST_F(TimeClient, FirstBoot) {
  platform.persist_read_result = 6;
  platform.config = {{"/setting/enable_24hour_mode", "true"},
                     {"/setting/default_time_auto_adjust", "true"},
                     {"/setting/default_time_zone", "48"}};
  platform.exec = [](const std::string&, int) { return 0; };
  Make();
  EXPECT_THAT(platform.Loggers(),
              ElementsAre("GetLocalTime", "InitSystemTime", "InitTimeShmData", "SetBootTimeZone", "SystemShmDataBase"));
  EXPECT_THAT((std::vector<int>{Int(0), Int(4), Int(8), Int(44), Int(10476), Int(10508), Int(10512)}),
              ElementsAre(1, 1, 0, 79, 48, 1, 1));
  const std::string fail = " fail:PERSIST_ERROR_DATA_NOT_FOUND";
  std::vector<std::string> log = platform.LoggedAll();
  log.resize(12);
  EXPECT_THAT(log, ElementsAre("INFO system share data:time_client", "INFO InitTimeShmData()",
                               "WARN Read PERSIST_ID_TIME_RESET_FLAG" + fail, "DEBUG _is_time_reset_need:1",
                               "WARN Read PERSIST_ID_TIME_24_MODE" + fail, "DEBUG _time_24_mode:1",
                               "WARN Read PERSIST_ID_AUTO_SYNC" + fail, "DEBUG _auto_sync_mode:1",
                               "WARN Read PERSIST_ID_ENABLE_DIST" + fail, "WARN Read PERSIST_ID_ZONE" + fail,
                               "DEBUG _cur_zone:48", "INFO Init:_is_time_reset_need(1),IsSystemColdBoot(0)"));
}

TEST_F(TimeClient, SavedSettingsAndAnInitialisedRecord) {
  platform.persist = {{{2, 1012}, 9}, {{2, 1003}, 5}, {{2, 1004}, 6}, {{2, 1005}, 7}, {{2, 1006}, 77}};
  Make();
  EXPECT_THAT((std::vector<int>{Int(0), Int(4), Int(8), Int(10476), Int(10512)}), ElementsAre(5, 6, 7, 77, 0));

  std::memset(record + 44, 'x', 10432);  // the zones
  platform.persist = {{{2, 1006}, 3}};
  platform.config["/setting/default_time_zone_istanbul_p3"] = "true";
  Make();
  EXPECT_THAT((std::vector<int>{Int(0), Int(44), Int(10476)}), ElementsAre(5, 79, 77));
  const std::string name = "(GMT+03:00) Athens, Bucharest, Istanbul";
  const ZoneInfo& istanbul = *client->GetZoneNode(static_cast<TimeZone>(31));
  EXPECT_EQ(std::string(istanbul.zone_name, sizeof istanbul.zone_name), name + std::string(128 - name.size(), 'x'));
}

TEST_F(TimeClient, ASavedZoneOutsideTheTableIsKept) {
  for (const int zone : {79, INT_MAX, -7, INT_MIN}) {
    fake::RemoveSegments();
    platform.persist[{2, 1006}] = zone;
    platform.commands.clear();
    platform.persist_writes.clear();
    Make();
    EXPECT_EQ(client->GetCurTimeZone(), zone);
    EXPECT_THAT(platform.log.back().text, StartsWith("GetLocalTime(init):"));
    const std::vector<std::pair<std::string, int>> commands = {{"rm -rf /etc/localtime", 0},
                                                               {"ln -s  /etc/localtime", 1}};
    EXPECT_EQ(platform.commands, zone < 0 ? commands : decltype(commands)());
    EXPECT_EQ(platform.persist_writes.size(), zone < 0 ? 1U : 0U);
  }
}

TEST_F(TimeClient, ZoneTable) {
  Make();
  const ZoneList* const zones = client->GetAllZoneInfo();
  EXPECT_EQ(static_cast<const void*>(zones),
            client->GetZoneNode(TIME_ZONE_MIDWAY_ISLAND) == nullptr
                ? nullptr
                : reinterpret_cast<const char*>(client->GetZoneNode(TIME_ZONE_MIDWAY_ISLAND)) - 4);
  unsigned long long sum = 14695981039346656037ULL;  // FNV-1a over "zone|name|file\n" of the published list
  for (int zone = 0; zone < 79; ++zone) {
    ASSERT_EQ(zones->zone_table[zone].zone, zone);
    const std::string row =
        std::to_string(zone) + "|" + zones->zone_table[zone].zone_name + "|" + HLXSystemData::kZones[zone].path + "\n";
    for (const unsigned char byte : row) sum = (sum ^ byte) * 1099511628211ULL;
  }
  EXPECT_EQ(sum, 203768213916702531ULL);
  EXPECT_STREQ(zones->zone_table[33].zone_name, "GMT+03:00) Kuwait, Riyadh");
  EXPECT_EQ(client->GetZoneNode(static_cast<TimeZone>(78)), &zones->zone_table[78]);
  EXPECT_EQ(client->GetZoneNode(static_cast<TimeZone>(79)), nullptr);
  EXPECT_EQ(reinterpret_cast<const char*>(client->GetZoneNode(static_cast<TimeZone>(-1))),
            reinterpret_cast<const char*>(zones) + 4 - 132);
}

TEST_F(TimeClient, EventsTellWhatTheRecordHolds) {
  Make();
  Put(16, 2026, 11, 24, 2, 23, 59, 58);
  Put(10516, 1999, 12, 31, 5, 1, 2, 3, 44);
  record[10548] = 200;
  client->OnDateInfoChange(9);
  client->On24TimeModeChange(-1);
  client->OnDstStatusChange(3);
  client->OnExternalMcuTimeChange(9);
  client->OnExternalMcuTimeChange(9);
  EXPECT_THAT(listener.notes, ElementsAre("date 2026-11-24(2) 23:59:58", "24 -1", "dst 3", "mcu 1999-12-31(5) 1:2:3",
                                          "mcu24 44", "mcuzone 200", "mcu 1999-12-31(5) 1:2:3"));

  client->RemoveListener(&listener);
  Put(10544, 0);
  client->OnExternalMcuTimeChange(0);  // noted, though nobody hears of it
  client->AddListener(&listener);
  listener.notes.clear();
  client->OnExternalMcuTimeChange(0);
  EXPECT_THAT(listener.notes, ElementsAre("mcu 1999-12-31(5) 1:2:3"));
}

TEST_F(TimeClient, CommandsReachTheServiceAndLeaveTheRecordAlone) {
  TestService service;
  ASSERT_TRUE(adapter->Init());
  Make();
  const std::vector<unsigned char> before(record, record + kSize);
  DateTime t = {{1, 2, 3, 4}, {5, 6, 7}};
  client->SetTime24Mode(1);
  client->SetAutoSyncMode(0);
  client->SetAutoAdjustDstMode(1);
  client->SetCurDate(t.date);
  client->SetCurTime(t.time);
  client->SetTimeZone(TIME_ZONE_OSAKA);
  EXPECT_THAT(service.TakeCalls(),
              ElementsAre("SetTime24Mode (true,)", "SetAutoSyncMode (false,)", "SetAutoAdjustDstMode (true,)",
                          HasSubstr("SetCurDate (<[byte 0x01, 0x00, 0x00, 0x00, 0x02"),
                          HasSubstr("SetCurTime (<[byte 0x05, 0x00, 0x00, 0x00, 0x06"), "SetTimeZone (byte 0x4e,)"));
  EXPECT_EQ(before, std::vector<unsigned char>(record, record + kSize));

  CarplayTime carplay = {0};
  EXPECT_TRUE(client->SetGpsUTCTimeSync(t, 0));
  EXPECT_TRUE(client->SetGpsUTCTimeSync(t, 2));
  service.SetAnswer(TestService::Answer::kFalse);
  EXPECT_FALSE(client->SetGpsUTCTimeSync(t, 1));
  EXPECT_TRUE(client->SetCarplayTimeSync(carplay));
  const std::string call = "SetGpsUTCTimeSync (<[byte ";
  EXPECT_THAT(service.TakeCalls(),
              ElementsAre(StartsWith(call + "0x01"), StartsWith(call + "0x01"), StartsWith(call + "0xb2, 0x07")));
}

TEST_F(TimeClient, SynchronisedTime) {
  Make();
  platform.log.clear();
  const auto synchronised = [this] {
    DateTime t{};
    std::memcpy(&t, record + 10480, sizeof t);
    return Show(t);
  };
  DateTime utc = {{2026, 2, 30, 9}, {25, 61, -1}};
  EXPECT_TRUE(client->SetGpsUTCTimeSync(utc, 0));
  EXPECT_EQ(synchronised(), "2026-2-30(9) 25:61:-1");
  EXPECT_FALSE(client->SetGpsUTCTimeSync(utc, 1)) << "not connected";
  EXPECT_THAT(platform.LoggedAll(),
              ElementsAre("INFO SetGpsUTCTimeSync:2026-2-30,25:61:-1", "INFO SetGpsUTCTimeSync:2026-2-30,25:61:-1"));
  struct {
    int seconds;
    const char* utc;
  } const times[] = {{0, "1970-1-1(4) 0:0:0"},
                     {INT_MAX, "2038-1-19(2) 3:14:7"},
                     {INT_MIN, "1901-12-13(5) 20:45:52"},
                     {951782400, "2000-2-29(2) 0:0:0"},
                     {1709164799, "2024-2-28(3) 23:59:59"}};
  for (const auto& time : times) {
    CarplayTime carplay = {time.seconds};
    EXPECT_TRUE(client->SetCarplayTimeSync(carplay));
    EXPECT_EQ(synchronised(), time.utc);
  }
  EXPECT_EQ(platform.log.back().text, "SetCarplayTimeSync:2024-2-28,23:59:59");
}

TEST_F(TimeClient, SettingTheClock) {
  platform.exec = RunReally;
  Make();
  client->SetBootTimeZone(TIME_ZONE_OSAKA);
  platform.exec = nullptr;
  struct {
    DateInfo date;
    TimeInfo time;
    long long seconds;  ///< -1: no such time
  } const times[] = {
      {{1970, 1, 1, 0}, {9, 0, 0}, 0},           {{2040, 1, 1, 99}, {0, 0, 0}, 2208956400},
      {{2038, 1, 20, 0}, {0, 0, 0}, 2147526000}, {{2100, 6, 15, 0}, {12, 0, 0}, 4116711600},
      {{2026, 13, 0, 0}, {0, 0, 0}, 1798642800},  // 31 December 2026, as mktime counts on
      {{1, 1, 1, 0}, {9, 18, 59}, -62135596800},  // before the zone's first rule: local mean time
      {{1970, 1, 1, 0}, {8, 59, 59}, -1},        {{INT_MIN, 1, 1, 0}, {0, 0, 0}, -1},
      {{2026, INT_MIN, 1, 0}, {0, 0, 0}, -1},    {{INT_MAX, INT_MAX, INT_MAX, 0}, {INT_MAX, INT_MAX, INT_MAX}, -1},
  };
  for (const auto& time : times) {
    platform.clock_settings.clear();
    platform.commands.clear();
    platform.log.clear();
    DateTime local = {time.date, time.time};
    const int result = client->SetLocalTime(local);
    if (time.seconds == -1) {
      EXPECT_EQ(result, 0);
      EXPECT_THAT(platform.LoggedAll(), ElementsAre(StartsWith("ERROR mktime failed:")));
      EXPECT_TRUE(platform.commands.empty());
    } else {
      EXPECT_EQ(result, 1);
      EXPECT_THAT(platform.clock_settings, ElementsAre(time.seconds)) << Show(local);
      EXPECT_THAT(platform.commands, ElementsAre(std::make_pair("hwclock -w -u", 1)));
    }
  }
  platform.exec = RunReally;
  client->SetBootTimeZone(TIME_ZONE_GREENWICH_MEAN_TIME);
  platform.exec = nullptr;
  DateTime summer = {{2026, 7, 1, 0}, {12, 0, 0}};
  client->SetLocalTime(summer);
  EXPECT_EQ(platform.clock_settings.back(), 1782907200) << "taken as standard time";

  platform.log.clear();
  platform.clock_errno = EPERM;
  platform.exec = [](const std::string&, int) { return 0; };
  DateTime local = {{2026, 1, 1, 0}, {0, 0, 0}};
  EXPECT_EQ(client->SetLocalTime(local), 0);
  EXPECT_THAT(platform.LoggedAll(),
              ElementsAre("ERROR stime error:Operation not permitted.", "ERROR exec hwclock -w error."));
}

TEST_F(TimeClient, EveryZoneBecomesTheSystems) {
  platform.exec = RunReally;
  const time_t instants[] = {1768478400, 1784116799};  // noon of a winter's day, and a second before noon in summer
  std::string missing;
  for (int zone = 0; zone < 79; ++zone) {
    SCOPED_TRACE(zone);
    const std::string path = HLXSystemData::kZones[zone].path;
    if (access(path.c_str(), R_OK) != 0) {
      missing += " " + std::to_string(zone) + " " + path;
      continue;
    }
    for (const time_t instant : instants) {
      now = instant;
      fake::RemoveSegments();
      platform.persist[{2, 1006}] = zone;
      platform.persist_writes.clear();
      Make();
      DateTime published{};
      client->GetCurDateInfo(published.date);
      client->GetCurTimeInfo(published.time);
      const std::string in_zone = "TZ=:" + path + " date -d @" + std::to_string(now);
      EXPECT_EQ(Show(published) + "\n", Output(in_zone + " '+%Y-%-m-%-d(%w) %-H:%-M:%-S'"));
      EXPECT_EQ(LinkTarget(), path);
      setenv("TZ", (":" + path).c_str(), 1);
      tzset();
      tm expected{};
      localtime_r(&now, &expected);
      unsetenv("TZ");
      EXPECT_EQ(client->IsCurZoneDstActive(), expected.tm_isdst);
      EXPECT_THAT(platform.persist_writes, ElementsAre(fake::PersistWrite{2, 1006, zone, {0}}));
    }
  }
  if (!missing.empty()) GTEST_SKIP() << "zones whose files this machine lacks:" << missing;
}

TEST_F(TimeClient, ApplyingAZoneStepByStep) {
  Make();
  const auto apply = [this](int zone) {
    platform.log.clear();
    platform.commands.clear();
    listener.notes.clear();
    const int before = syncs;
    client->SetBootTimeZone(static_cast<TimeZone>(zone));
    EXPECT_EQ(syncs, before + 1) << zone;
    return platform.LoggedAll();
  };
  EXPECT_THAT(apply(79), ElementsAre("INFO SetBootTimeZone:zone(79).", "ERROR SetBootTimeZone:Unavailable zone!"));
  EXPECT_EQ(Int(10476), 21);
  EXPECT_TRUE(platform.commands.empty());

  EXPECT_THAT(apply(-1), ElementsAre("INFO SetBootTimeZone:zone(-1).",
                                     "DEBUG SetBootTimeZone,cmd:ln -s  /etc/localtime", "DEBUG SetBootCurDstStatus:."));
  EXPECT_THAT(platform.commands,
              ElementsAre(std::make_pair("rm -rf /etc/localtime", 0), std::make_pair("ln -s  /etc/localtime", 1)));
  EXPECT_EQ(Int(10476), -1);
  EXPECT_EQ(listener.notes.size(), 1U);

  platform.persist_write_result = 4;
  EXPECT_THAT(apply(78),
              ElementsAre("INFO SetBootTimeZone:zone(78).",
                          "DEBUG SetBootTimeZone,cmd:ln -s /usr/share/zoneinfo/Asia/Tokyo /etc/localtime",
                          "DEBUG SetBootCurDstStatus:.", "WARN Write PERSIST_ID_ZONE fail:PERSIST_ERROR_WRITE_FAIL"));
  platform.exec = [](const std::string&, int) { return 0; };
  EXPECT_THAT(apply(78),
              ElementsAre("INFO SetBootTimeZone:zone(78).", HasSubstr("ERROR SetTimeZone:remove /etc/localtime fail:"),
                          HasSubstr("cmd:ln -s"), "ERROR SetBootTimeZone:Set time zone path fail."));
  EXPECT_TRUE(listener.notes.empty());

  unlink("/etc/localtime");
  platform.exec = nullptr;
  apply(0);
  EXPECT_THAT(platform.commands,
              ElementsAre(std::make_pair("ln -s /usr/share/zoneinfo/Pacific/Apia /etc/localtime", 1)));
}

}  // namespace
