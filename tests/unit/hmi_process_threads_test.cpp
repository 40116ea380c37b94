// Who is the hmi, with the real pidof, while commands are being started: for a moment they bear the process's name.
#include <gtest/gtest.h>

#include <atomic>
#include <future>

#include "HLXListenerBase.h"
#include "client/ChildProcess.h"
#include "client/update/HLXUpdateClient.h"
#include "tests/support/Hmi.h"

using namespace HLXUpdate;

namespace {

TEST(HmiProcess, IsNoneThatItIsStarting) {
  struct : HLXUpdateListenerBase {
    void OnDetectValidUpdateFileNotify(UpdateNotifyResult /*result*/) override { ++heard; }
    int heard = 0;
  } listener;
  HLXUpdateClient client(nullptr, nullptr);
  client.AddListener(&listener);
  std::atomic<bool> stop{false};
  const auto start = [&stop] {
    while (!stop) FirstLineOf("echo", 1);
  };
  auto one = std::async(std::launch::async, start);
  auto other = std::async(std::launch::async, start);
  for (int i = 0; i < 100; ++i) client.OnAsyncDetectValidUpdateFileNotify(UPDATE_NOTIFY_REMOVED);
  stop = true;
  EXPECT_EQ(listener.heard, 100);
}

}  // namespace

int main(int argc, char** argv) {
  GoOnAsHmi(argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
