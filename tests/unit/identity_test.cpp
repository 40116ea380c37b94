// The unit's identity from the kernel's files at their real places: the sandbox shows files of the tests there, and
// what else it has of /sys is scratch.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "client/info/HLXInfoClient.h"
#include "tests/support/FakePlatform.h"

namespace {

constexpr char kStrap[] = "/sys/devices/noc/noc:hwversion/hwversion";

class Identity : public testing::Test {
 public:
  Identity() {
    fake::Reset();
    fake::Get().config["/setting/enable_auto_hw_version"] = "true";
    std::filesystem::create_directories(std::filesystem::path(kStrap).parent_path());
    std::ofstream(kStrap) << "23\n";
  }
  ~Identity() override { fake::RemoveSegments(); }
};

TEST_F(Identity, IsReadAtItsRealPlaces) {
  HLXInfoClient client;
  SystemInfo::VersionInfo version;
  client.GetLocalVersionInfo(version);
  EXPECT_EQ(version.serial_number, "0123:4567:89ab:cdef:0123:4567:89ab:cdef");
  EXPECT_EQ(client.GetSerialNumber(), version.serial_number);
  EXPECT_EQ(version.hardware_version, "V1.0.3");
  EXPECT_EQ(client.GetEmmcId(), "150100424a4e42345207b1a2c3d4e500");
  EXPECT_THAT(fake::Get().LoggedAll(),
              testing::IsSupersetOf({"DEBUG GetHardWareVersionInfo() name_num = 2, sample_num = 3\n",
                                     "INFO GetHardWareVersionInfo() hardware_version = V1.0.3",
                                     "INFO get emmc id:150100424a4e42345207b1a2c3d4e500"}));
  EXPECT_THAT(fake::Get().Loggers(),
              testing::ElementsAre("GetEmmcId", "GetHardWareVersionInfo", "InitInfoShmData", "InitLocalVersionInfo",
                                   "InitMiscShmData", "SystemShmDataBase"));
}

TEST_F(Identity, AStrapThatHoldsNoNumberLeavesTheHardwareVersionEmpty) {
  std::ofstream(kStrap) << "none\n";
  SystemInfo::VersionInfo version;
  HLXInfoClient().GetLocalVersionInfo(version);
  EXPECT_EQ(version.hardware_version, "");
  EXPECT_THAT(fake::Get().LoggedAll(),
              testing::Contains(std::string("ERROR GetHardWareVersionInfo() ") + kStrap + " holds no number: stoi"));
}

}  // namespace
