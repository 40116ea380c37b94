// How each client finds or makes the segment of its record, and how the process ends when it cannot be had.
#include <gmock/gmock.h>
#include <linux/capability.h>
#include <sys/shm.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "client/info/HLXInfoClient.h"
#include "client/ipc/ClientIpcAdapter.h"
#include "client/misc/HLXMiscClient.h"
#include "client/power/HLXPowerClient.h"
#include "client/time/HLXTimeClient.h"
#include "data/HLXPersist.h"
#include "tests/support/FakePlatform.h"

using testing::ExitedWithCode;
using testing::HasSubstr;

namespace {

template <class Client>
void Make() {
  const Client client(std::make_shared<ClientIpcAdapter>());
}

const struct Holder {
  const char* name;  ///< in the log
  size_t size;
  unsigned int key;
  unsigned int mode;
  const char* fatal;
  void (*make)();
} kHolders[] = {
    {"power_client", 92, 0xA8800081, 0444, "[system-client]CreateDataShm->SHM_POWER_DATA_KEY_ID fail.Exit!!",
     Make<HLXPowerClient>},
    {"misc_client", 232, 0xA8800082, 0444, "[system-client]CreateDataShm->SHM_MISC_DATA_KEY_ID fail.Exit!!",
     Make<HLXMiscClient>},
    {"time_client", 10552, 0xA8800083, 0444, "[system-client]CreateDataShm->SHM_TIME_DATA_KEY_ID fail.Exit!!",
     Make<HLXTimeClient>},
    {"info-client", 232, 0xA8800082, 0666, "[system-server]CreateDataShm->SHM_POWER_DATA_KEY_ID fail.Exit!!",
     [] { const HLXMiscClientShm holder; }},
    {"ext_mcu_service", sizeof(HLXSystemData::InfoShmData), 0xA8800084, 0666,
     "[system-server]CreateDataShm->SHM_INFO_DATA_KEY_ID fail.Exit!!", [] { const HLXInfoClientShm holder; }},
};

int Segment(const Holder& holder, size_t size, int flags) {
  return shmget(static_cast<key_t>(holder.key), size, flags);
}

class Segments : public testing::TestWithParam<Holder> {
 protected:
  void SetUp() override {
    fake::Reset();
    fake::RemoveSegments();
    umask(0);
  }
  void TearDown() override { fake::RemoveSegments(); }

  /// In a child: makes the client, and tells what was logged when that ends the process.
  void MakeAndTell() const {
    std::atexit([] {
      for (const std::string& text : fake::Get().LoggedAll()) std::fprintf(stderr, "%s\n", text.c_str());
    });
    GetParam().make();
  }
  std::string Fatal() const { return "\nFATAL " + std::string(GetParam().fatal) + "\n"; }
};

TEST_P(Segments, AMissingOneIsMade) {
  GetParam().make();
  shmid_ds info{};
  ASSERT_EQ(shmctl(Segment(GetParam(), 0, 0), IPC_STAT, &info), 0);
  EXPECT_EQ(info.shm_segsz, GetParam().size);
  EXPECT_EQ(info.shm_perm.mode & 0777U, GetParam().mode);
  EXPECT_EQ(fake::Get().LoggedAll().front(), "INFO system share data:" + std::string(GetParam().name));
}

TEST_P(Segments, OneThatIsTooSmallEndsTheProcess) {
  ASSERT_NE(Segment(GetParam(), GetParam().size - 1, IPC_CREAT | 0666), -1);
  EXPECT_EXIT(MakeAndTell(), ExitedWithCode(2),
              HasSubstr("\nERROR system data info shmget failed:Invalid argument" + Fatal()));
}

TEST_P(Segments, ALargerOneIsTakenAsItIs) {
  ASSERT_NE(Segment(GetParam(), GetParam().size + 100000, IPC_CREAT | 0600), -1);
  GetParam().make();
  shmid_ds info{};
  ASSERT_EQ(shmctl(Segment(GetParam(), 0, 0), IPC_STAT, &info), 0);
  EXPECT_EQ(info.shm_segsz, GetParam().size + 100000);
  EXPECT_EQ(info.shm_perm.mode & 0777U, 0600U);
}

/// Without privileges, as beside a segment that another user made: its bits decide.
TEST_P(Segments, OneThatMayNotBeUsedEndsTheProcess) {
  const auto without_privileges = [this] {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    const __user_cap_data_struct none[2] = {};
    syscall(SYS_capset, &header, none);
    MakeAndTell();
  };
  for (const unsigned int mode : {0U, 0222U, 0444U}) {
    fake::RemoveSegments();
    ASSERT_NE(Segment(GetParam(), GetParam().size, static_cast<int>(IPC_CREAT | mode)), -1);
    const char* const step = (GetParam().mode & ~mode) != 0 ? "shmget" : " shmat";
    EXPECT_EXIT(without_privileges(), ExitedWithCode(2),
                HasSubstr("\nERROR system data info " + std::string(step) + " failed:Permission denied" + Fatal()))
        << mode;
  }
}

INSTANTIATE_TEST_SUITE_P(All, Segments, testing::ValuesIn(kHolders), [](const auto& holder) {
  std::string name = holder.param.name;
  for (char& c : name) c = c == '-' ? '_' : c;
  return name;
});

TEST(RemovedSegment, StaysWithWhoMappedIt) {
  fake::Reset();
  fake::RemoveSegments();
  HLXPowerClient before(std::make_shared<ClientIpcAdapter>());
  const int first = Segment(kHolders[0], 0, 0);
  fake::RemoveSegments();
  HLXPowerClient after(std::make_shared<ClientIpcAdapter>());
  const int second = Segment(kHolders[0], 0, 0);
  ASSERT_NE(first, second);
  auto* const record = static_cast<HLXSystemData::PowerShmData*>(shmat(second, nullptr, 0));
  EXPECT_EQ(before.IsAccOnState() + after.IsAccOnState(), 2);
  record->is_acc_on = 0;
  EXPECT_EQ(before.IsAccOnState() * 10 + after.IsAccOnState(), 10);
  shmdt(record);
  fake::RemoveSegments();
}

TEST(PersistErrors, HaveTheirNames) {
  const char* const names[] = {"Unknown Error.",
                               "PERSIST_ERROR_SERVICE_NOT_AVAILABLE",
                               "PERSIST_ERROR_DATABASE_LOST_AND_REBASE",
                               "PERSIST_ERROR_READ_FAIL",
                               "PERSIST_ERROR_WRITE_FAIL",
                               "PERSIST_ERROR_IPC_FAIL",
                               "PERSIST_ERROR_DATA_NOT_FOUND",
                               "PERSIST_ERROR_DATABASE_NOT_READY",
                               "PERSIST_ERROR_FORMAT_INCOMPATIBLE",
                               "PERSIST_ERROR_DATA_OVER_RANGE",
                               "PERSIST_ERROR_ILLEGAL_PARAM_COMBINATION",
                               "PERSIST_ERROR_ILLEGAL_MODULE",
                               "PERSIST_ERROR_DATA_REMOVE_FAIL",
                               "Unknown Error."};
  for (int code = 0; code < 14; ++code) EXPECT_STREQ(HLXSystemData::PersistErrorName(code), names[code]) << code;
  EXPECT_STREQ(HLXSystemData::PersistErrorName(-1), "Unknown Error.");
}

}  // namespace
