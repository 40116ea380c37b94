// The comparisons of a package with a unit, and the forwarding part of the update client.
#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <tuple>

#include "HLXListenerBase.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/update/HLXUpdateClient.h"
#include "client/update/PackageVerifier.h"
#include "tests/support/FakePlatform.h"

using namespace HLXUpdate;
using testing::ElementsAre;

namespace {

void Versions(const std::string& unit, const std::string& package) {
  std::system("mkdir -p /app/etc /data/update/app/etc");
  std::ofstream("/app/etc/sys_version.conf") << "ARM Version:" << unit << "\n";
  std::ofstream("/data/update/app/etc/sys_version.conf") << "ARM Version:" << package << "\n";
}

TEST(PackageVerifier, Versions) {
  fake::Reset();
  struct {
    const char* unit;
    const char* package;
    bool passes;
  } const cases[] = {
      {"V1.2.3.4", "V1.2.3.4", true},
      {"V1.2.3.4", "V1.2.4.0", true},
      {"V1.2.3.4", "V1.2.2.9", false},
      {"V1.10.0.0", "V1.9.9.9", false},
      {"V1.9.9.9", "V1.10.0.0", true},
      {"V2.1", "V2.1.0.0", true},
      {"V2.1", "V2.0.9.9", false},
      {"", "rubbish", true},
      {"v9.9.9.9", "V0.0.0.0", true},
      {"V0.0.0.1", "", false},
      {"V-1.0.0.0", "V0.0.0.0", true},
      {" V9.0.0.0", "V0.0.0.1", true},
      {"V1.2.3.4-x", "V1.2.3.4", true},
      {"V2147483647", "V99999999999.1", true},
      {"V2147483648.1", "V2147483647.0", false},
      {"V1.2.3.5", "V1.2.3.x", false},
  };
  for (const auto& test : cases) {
    Versions(test.unit, test.package);
    EXPECT_EQ(PackageVerifier().CheckArmVersion(), test.passes) << test.unit << " " << test.package;
  }
  EXPECT_EQ(fake::Get().LoggedAll()[1], "DEBUG check arm version,local:V1.2.3.4,usb:V1.2.3.4");
}

TEST(PackageVerifier, HardwareAndProject) {
  fake::Reset();
  EXPECT_TRUE(PackageVerifier::CheckHwVersion("V1.0.3", "V1.0.3"));
  EXPECT_TRUE(PackageVerifier::CheckHwVersion("V1.0.3.9", "V1.0.3"));
  EXPECT_TRUE(PackageVerifier::CheckHwVersion("", "rubbish"));
  EXPECT_FALSE(PackageVerifier::CheckHwVersion("V1.0.3", "V1.0.4"));
  EXPECT_FALSE(PackageVerifier::CheckHwVersion("V1.0.3", ""));
  EXPECT_TRUE(PackageVerifier::CheckProject("", "Other"));
  EXPECT_TRUE(PackageVerifier::CheckProject("A", "A"));
  EXPECT_TRUE(PackageVerifier::CheckProject("T268ZF", "Other"));
  EXPECT_FALSE(PackageVerifier::CheckProject("T268ZF ", "Other"));
  EXPECT_FALSE(PackageVerifier::CheckProject("A", "a"));
  EXPECT_EQ(fake::Get().LoggedAll()[0], "DEBUG check hardware version,local:V1.0.3,usb:V1.0.3");
}

TEST(PackageVerifier, ChecksInOrderAndTheirOverrides) {
  fake::Reset();
  Versions("V2.0.0.0", "V1.0.0.0");
  SystemInfo::VersionInfo unit, package;
  unit.hardware_version = "V1.0.0";
  unit.project_name = "A";
  std::vector<int> results;
  for (const char* next : {"allow_sw_version_revert", "allow_hw_version_compat", "allow_project_different"}) {
    results.push_back(PackageVerifier().VerifyUpdateVersion(unit, package));
    fake::Get().config["/q4system/" + std::string(next)] = "true";
  }
  results.push_back(PackageVerifier().VerifyUpdateVersion(unit, package));
  EXPECT_THAT(results, ElementsAre(5, 6, 7, 1));
  EXPECT_THAT(fake::Get().Logged(100), ElementsAre("valid arm version fail...", "valid hardware version fail...",
                                                   "valid project name fail fail..."));
}

TEST(PackageVerifier, ThePackagesFile) {
  fake::Reset();
  Versions("", "V1.0.0.0");
  const PackageVerifier verifier;
  EXPECT_EQ(verifier.AnalysisCmpVersionInfo("ARM Version"), "V1.0.0.0");
  EXPECT_EQ(verifier.AnalysisCmpVersionInfo("No"), "");
  fake::Get().config = {{"/q4system/enable_arm_version_prefix", "true"}, {"/project/project_model_name", "M"}};
  EXPECT_EQ(verifier.ReadVersion().arm_version, "M_V1.0.0.0");
  const std::string file = "/data/update/app/etc/sys_version.conf";
  const std::string size = "head -c 65500 /dev/zero >>";
  EXPECT_EQ(std::system((size + file).c_str()), 0);
  EXPECT_EQ(verifier.AnalysisCmpVersionInfo("No"), "") << "large, but not too large";
  const std::tuple<std::string, const char*> refused[] = {
      {"ln -sf /app/etc/sys_version.conf " + file, "Too many levels of symbolic links"},
      {"rm -rf /data/update/app/etc; ln -s /app/etc /data/update/app/etc", "Not a directory"},
      {"rm -rf /data/update/app; ln -s /app /data/update/app", "Not a directory"},
      {"rm -rf /data/update/app", "No such file or directory"},
      {"rm " + file + "; mkfifo " + file, "no regular file"},
      {"rm " + file + "; mkdir " + file, "no regular file"},
      {size + file + "; truncate -s 65537 " + file, "65537 bytes are too many, 65536 allowed"},
  };
  for (const auto& [preparation, problem] : refused) {
    std::system("rm -rf /data/update/app");
    Versions("V9.9.9.9", "V1.0.0.0");
    EXPECT_EQ(std::system(preparation.c_str()), 0);
    fake::Get().log.clear();
    EXPECT_EQ(verifier.AnalysisCmpVersionInfo("ARM Version"), "");
    EXPECT_THAT(fake::Get().LoggedAll(), ElementsAre("ERROR open " + file + " failed:" + problem));
  }
  std::system("rm -rf /data/update/app");
}

TEST(UpdateClient, ForwardsAndRelays) {
  fake::Reset();
  HLXUpdateClient without(nullptr, nullptr);
  EXPECT_EQ(without.ApplyExternalMcuUpdate() + without.ApplyMpuUpdate() + without.ApplyUpdateAll(), 0);
  EXPECT_EQ(HLXUpdateClient::GetProcessPidByName("no-such-process"), -1);

  class Notes : public HLXUpdateListenerBase {
   public:
    std::vector<int> notes;
    void OnDetectValidUpdateFileNotify(UpdateNotifyResult r) override { notes.push_back(r); }
    void OnPackageStateChangeNotify(UpdatePackageState s) override { notes.push_back(100 + s); }
  } notes;
  without.AddListener(&notes);
  // Not the process named hmi: no search, not a word.
  without.OnAsyncDetectValidUpdateFileNotify(UPDATE_NOTIFY_VALID);
  without.OnAsyncDetectValidUpdateFileNotify(UPDATE_NOTIFY_REMOVED);
  EXPECT_TRUE(fake::Get().log.empty());
  without.OnPackageStateChangeNotify(UPDATE_PACKAGE_CHANGED);
  without.OnDetectValidUpdateFileNotify(UPDATE_NOTIFY_CAN_FILE);
  EXPECT_THAT(notes.notes, ElementsAre(102, 3));
  EXPECT_THAT(fake::Get().LoggedAll(), ElementsAre("DEBUG OnDetectValidUpdateFileNotify:result(3)"));
}

}  // namespace
