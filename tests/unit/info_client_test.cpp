// The info client, the version files and the unit's identity, on real files in the sandbox.
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/shm.h>
#include <zlog.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>

#include "client/info/DeviceIdentity.h"
#include "client/info/HLXInfoClient.h"
#include "client/info/VersionFile.h"
#include "tests/support/FakePlatform.h"

using namespace SystemInfo;
using testing::Contains;
using testing::ElementsAre;

namespace {

void WriteFile(const std::string& path, const std::string& content) {
  std::system(("mkdir -p $(dirname " + path + ")").c_str());
  std::ofstream(path, std::ios::binary) << content;
}

class Info : public testing::Test {
 protected:
  void SetUp() override {
    fake::Reset();
    fake::RemoveSegments();
    std::system("rm -rf /app/etc /etc/boot");
    testing::internal::CaptureStdout();
  }
  void TearDown() override {
    testing::internal::GetCapturedStdout();
    fake::RemoveSegments();
  }
  VersionInfo Version(int expected_result = 1) {
    VersionInfo version;
    EXPECT_EQ(HLXInfoClient().GetLocalVersionInfo(version), expected_result);
    return version;
  }
  fake::Platform& platform = fake::Get();
};

TEST(VersionFile, FindsTheFirstLineWithTheKey) {
  const std::string long_line(300000, 'x');
  const std::string nul("k\0ey:v\0al\n", 10);
  struct {
    std::string content;
    const char* key;
    const char* value;  ///< null: none
  } const cases[] = {
      {"ARM Version: V1.2.3\n", "ARM Version", " V1.2.3"},
      {"a:b:c\r\n", "a", "b:c\r"},
      {"a:1\na:2\n", "a", "1"},
      {"a:1\nb:2", "b", "2"},
      {" a:1\nA:2\na :3\n", "a", nullptr},
      {"no colon\na\n:x\na:y\n", "a", "y"},
      {":x\n", "", "x"},
      {"", "a", nullptr},
      {"a:\n", "a", ""},
      {long_line + "\n" + long_line + ":1\na:2\n", "a", "2"},
      {nul + "a:1\n", "a", "1"},
      {"\n\n\xff\xfe\na:1", "a", "1"},
  };
  for (const auto& test : cases) {
    const auto value = FindVersionValue(test.content, test.key);
    EXPECT_EQ(value.value_or("none"), test.value == nullptr ? "none" : test.value) << test.content.substr(0, 40);
  }
}

TEST_F(Info, VersionsWithoutFiles) {
  const VersionInfo version = Version(0);
  EXPECT_EQ(version.arm_version + version.project_name + version.mcu_version, "");
  const std::string arm = "open /app/etc/sys_version.conf failed!\n";
  const std::string mcu = "open /etc/boot/boot-script/bsp_version.conf failed!\n";
  std::string expected;
  for (int i = 0; i < 7; ++i) expected += arm;
  EXPECT_EQ(testing::internal::GetCapturedStdout(), expected + mcu + mcu + mcu);
  testing::internal::CaptureStdout();
  EXPECT_THAT(platform.Logged(ZLOG_LEVEL_ERROR), ElementsAre());
}

TEST_F(Info, NoFileTakesMemoryOrTime) {
  WriteFile("/app/etc/sys_version.conf", "ARM Version:V1.2.3\n" + std::string(65518, 'x'));
  std::system("rm -rf /etc/boot; mkdir -p /etc/boot/boot-script && mkfifo /etc/boot/boot-script/bsp_version.conf");
  EXPECT_EQ(AnalysisLocalVersionInfo("ARM Version", "ARM"), "");
  EXPECT_EQ(AnalysisLocalVersionInfo("MCU Version", "MCU"), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "open /app/etc/sys_version.conf failed!\nopen /etc/boot/boot-script/bsp_version.conf failed!\n");
  testing::internal::CaptureStdout();
  EXPECT_THAT(platform.Logged(ZLOG_LEVEL_ERROR),
              ElementsAre("/app/etc/sys_version.conf is no version file: 65537 bytes are too many, 65536 allowed",
                          "/etc/boot/boot-script/bsp_version.conf is no version file: no regular file"));
  std::system("rm -rf /etc/boot");
}

TEST_F(Info, VersionsFromFiles) {
  WriteFile("/app/etc/sys_version.conf",
            "Project ID:P01\nARM Version:V1.2.3\nARM Internal Version:int\nHardware Version:V9\nDrawing Code:D\n"
            "Build Time:today\nProduction Date:tomorrow\nProject Name:Alpha\nSerial Number:no\n");
  WriteFile("/etc/boot/boot-script/bsp_version.conf", "Build Time:then\nMCU Version:M1\nMCU Internal Version:M2\n");
  platform.config["/project/project_model_name"] = "K417BQ";
  const VersionInfo v = Version();
  EXPECT_THAT((std::vector<std::string>{v.arm_version, v.arm_internal_version, v.hardware_version, v.drawing_code,
                                        v.build_time, v.production_date, v.project_name, v.mcu_build_time,
                                        v.mcu_version, v.mcu_internal_version}),
              ElementsAre("V1.2.3", "int", "V9", "D", "today", "tomorrow", "AlphaK417BQ", "then", "M1", "M2"));

  platform.config["/setting/enable_auto_hw_version"] = "true";  // there is no strap here
  EXPECT_EQ(Version().hardware_version, "");
}

TEST_F(Info, PrefixOfArmVersions) {
  struct {
    const char* file;
    const char* model;
    const char* enabled;
    const char* version;
  } const cases[] = {
      {"Project ID:P01\nARM Version:V1.2.3\n", "K417BQ", "true", "P01_V1.2.3"},
      {"Project ID:\nARM Version:V1.2.3\n", "K417BQ", "true", "K417BQ_V1.2.3"},
      {"ARM Version:V1.2.3\n", "", "true", "V1.2.3"},
      {"Project ID:P01\n", "K417BQ", "true", "P01_"},
      {"Project ID:P01\nARM Version:V1.2.3\n", "K417BQ", "false", "V1.2.3"},
  };
  for (const auto& test : cases) {
    WriteFile("/app/etc/sys_version.conf", test.file);
    platform.config = {{"/q4system/enable_arm_version_prefix", test.enabled},
                       {"/project/project_model_name", test.model}};
    EXPECT_EQ(Version().arm_version, test.version);
  }
}

TEST_F(Info, ModelAndScreen) {
  const char* const texts[] = {"car_maker", "car_model", "hu_model", "model_name",  "hu_make",        "manufacture",
                               "year",      "oem_label", "name",     "device_name", "oem_icon_folder"};
  for (const char* key : texts) platform.config["/q4system/" + std::string(key)] = "<" + std::string(key) + ">";
  platform.config["/q4system/market"] = "-3";
  int number = 100;
  for (const char* key :
       {"pixel_w", "pixel_h", "physical_w", "physical_h", "density", "real_density", "depth", "ratio"}) {
    platform.config["/q4system/screen_" + std::string(key)] = std::to_string(++number);
  }
  HLXInfoClient client;
  ModelInfo m;
  EXPECT_EQ(client.GetModelInfo(m), 1);
  EXPECT_EQ(m.market, -3);
  EXPECT_EQ(m.car_maker + m.car_model + m.hu_model + m.model_name + m.hu_make + m.manufacture + m.year + m.oem_label +
                m.name + m.device_name + m.oem_icon_folder,
            "<car_maker><car_model><hu_model><model_name><hu_make><manufacture><year><oem_label><name><device_name>"
            "<oem_icon_folder>");
  ScreenInfo s{};
  client.GetScreenInfo(s);
  EXPECT_THAT((std::vector<double>{double(s.pixel_w), double(s.pixel_h), s.physical_w, s.physical_h, double(s.density),
                                   double(s.real_density), double(s.depth), double(s.ratio)}),
              ElementsAre(101, 102, 103, 104, 105, 106, 107, 108));
  // Looked up anew, height first.
  platform.config["/q4system/screen_pixel_w"] = "1280";
  platform.config["/q4system/screen_physical_h"] = "87";
  unsigned int height = 0, width = 0;
  double physical_height = 0, physical_width = 0;
  EXPECT_EQ(client.GetScreenPixels(height, width), 1);
  EXPECT_EQ(client.GetScreenPhysical(physical_height, physical_width), 1);
  EXPECT_THAT((std::vector<double>{double(height), double(width), physical_height, physical_width}),
              ElementsAre(102, 1280, 87, 103));
  platform.config["/q4system/mfi_ppid"] = "ppid";
  EXPECT_EQ(client.GetMfiPPID(), "ppid");

  std::vector<FuelType> fuel = {FUEL_TYPE_DIESEL};
  for (const char* project : {"X", "K417BQ", "T268ZF", "k417bq"}) {
    platform.config["/project/project_name"] = project;
    client.GetFuelType(fuel);
    EXPECT_EQ(client.GetEngineType(), 0);
  }
  EXPECT_THAT(fuel, ElementsAre(4, 3, 4, 3, 4));
}

TEST_F(Info, LiveValues) {
  HLXInfoClient client;
  const auto map = [](unsigned key) {
    return static_cast<char*>(shmat(shmget(static_cast<key_t>(key), 0, 0), nullptr, 0));
  };
  char* const misc = map(0xA8800082);
  char* const info = map(0xA8800084);
  EXPECT_EQ(client.GetDriveType(), 0);
  misc[59] = 1;
  EXPECT_EQ(client.GetDriveType(), 1);
  EXPECT_EQ(client.GetMcuVersion(), "");
  std::snprintf(info, 256, "MCU 7");
  EXPECT_EQ(client.GetMcuVersion(), "MCU 7");
  std::fill(info, info + 260, 'x');  // no end, not even in the flag behind it
  EXPECT_EQ(client.GetMcuVersion(), std::string(256, 'x'));
  EXPECT_EQ(client.GetEmmcId(), "");
  EXPECT_THAT(platform.Logged(100), ElementsAre("get emmc id error:No such file or directory"));
}

TEST_F(Info, TheFallbackIsTheSerialNumberWhereNothingCanBeStarted) {
  HLXInfoClient client;
  rlimit usual{};
  getrlimit(RLIMIT_NOFILE, &usual);
  const rlimit none{0, usual.rlim_max};
  setrlimit(RLIMIT_NOFILE, &none);
  const std::string serial = client.GetSerialNumber();
  setrlimit(RLIMIT_NOFILE, &usual);
  EXPECT_EQ(serial, "4711-0815-2600-3141-5926-5358-9793-AB12");
  EXPECT_THAT(platform.LoggedAll(), Contains("ERROR GetSerialNumber - open /proc/cmdline error"));
}

TEST(DeviceIdentity, SerialNumber) {
  const std::string letters = "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
  std::string endless;
  for (int i = 0; i < 200; ++i) endless += letters[static_cast<size_t>(i) % letters.size()];
  const auto serial = [](const std::string& line) { return DeviceIdentity::SerialNumberFrom(line); };
  EXPECT_EQ(serial("quiet uuid=0123456789abcdef0123456789abcdef quiet\n"), "0123:4567:89ab:cdef:0123:4567:89ab:cdef");
  struct {
    size_t length;
    const char* serial;
  } const lengths[] = {
      {0, ""},
      {4, ""},
      {5, ""},
      {26, ""},
      {27, "0123:4567:89ab:cdef:ghij:klmn:opq"},
      {31, "0123:4567:89ab:cdef:ghij:klmn:opqr:stu"},
      {32, "0123:4567:89ab:cdef:ghij:klmn:opqr:stuv"},
      {33, "0123:4567:89ab:cdef:ghij:klmn:opqr:stuv"},
      {200, "0123:4567:89ab:cdef:ghij:klmn:opqr:stuv"},
  };
  for (const auto& test : lengths)
    EXPECT_EQ(serial("ro uuid=" + endless.substr(0, test.length)), test.serial) << test.length;
  // The newline of a line counts.
  EXPECT_EQ(serial("uuid=" + endless.substr(0, 26) + "\n"), "0123:4567:89ab:cdef:ghij:klmn:op\n");
  EXPECT_EQ(serial("uuid=short uuid=0123456789abcdef0123456789abcdef"), "shor:t uu:id=0:1234:5678:9abc:def0:1234");
  EXPECT_EQ(serial("no identifier at all, however long the line may be, uid=0123456789abcdef"), "");
  EXPECT_EQ(serial(std::string(1000, 'x') + "uuid=" + endless.substr(0, 18)), "") << "cut off at 1023";
}

TEST(DeviceIdentity, Strap) {
  fake::Reset();
  const auto read = [](const std::string& content, unsigned* value) {
    WriteFile("/tmp/strap", content);
    return DeviceIdentity::GetMachineSample("/tmp/strap", value);
  };
  struct {
    const char* content;
    unsigned value;
  } const cases[] = {
      {"23\n", 0x23},     {"0x1f", 0x1F}, {" \n7fffffff", 0x7FFFFFFF},
      {"-1", 0xFFFFFFFF}, {"1g", 1},      {"00000000000000000000000000000012345", 0x12}};  // 32 characters are read
  for (const auto& test : cases) {
    unsigned value = 99;
    EXPECT_EQ(read(test.content, &value), 0) << test.content;
    EXPECT_EQ(value, test.value) << test.content;
  }
  unsigned value = 99;
  EXPECT_THROW(read("zz", &value), std::invalid_argument);
  EXPECT_THROW(read("", &value), std::invalid_argument);
  EXPECT_THROW(read("80000000", &value), std::out_of_range);
  EXPECT_EQ(DeviceIdentity::GetMachineSample("/proc/self/mem", &value), -1) << "opens, and cannot be read";
  EXPECT_EQ(std::exchange(value, 99), 0U);
  EXPECT_EQ(DeviceIdentity::GetMachineSample("/tmp/strap", nullptr), -1);
  EXPECT_EQ(DeviceIdentity::GetMachineSample("/nowhere", &value), -1);
  EXPECT_EQ(value, 99U);
  EXPECT_THAT(fake::Get().LoggedAll(), ElementsAre("ERROR pointer to value is NULL\n", "ERROR : /nowhere\n"));
  EXPECT_THAT(fake::Get().Loggers(), ElementsAre("GetMachineSample"));
}

TEST(DeviceIdentity, EmmcId) {
  fake::Reset();
  WriteFile("/tmp/cid", "150100\n4d3032\n");
  EXPECT_EQ(DeviceIdentity::GetEmmcId("/tmp/cid"), "1501004d3032");
  EXPECT_THAT(fake::Get().LoggedAll(), ElementsAre("INFO get emmc id:1501004d3032"));
}

}  // namespace
