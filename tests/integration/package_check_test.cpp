// hlxctl update check, ended before its end.
#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <string>

#include "tests/support/Process.h"

namespace {

int Shell(const std::string& command) { return std::system(command.c_str()); }
bool Soon(const std::string& command) {
  return Shell("for i in $(seq 1000); do " + command + " && exit; sleep 0.01; done; exit 1") == 0;
}

TEST(PackageCheck, LeavesNothingWhenASignalEndsIt) {
  ASSERT_EQ(Shell("mkdir /tmp/stick && cd /tmp/stick && touch update.zip && mkfifo pipe && echo x | md5sum | sed "
                  "'s/-/pipe/' >md5.txt"),
            0);
  for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
    Process check({HLX_BINARY_DIR "/tools/hlxctl/hlxctl", "update", "check", "/tmp/stick"});
    ASSERT_TRUE(Soon("pidof md5sum >/dev/null"));
    check.Signal(number);
    EXPECT_EQ(check.Wait(), 128 + number);
    EXPECT_EQ(check.Out(), "");
    EXPECT_NE(Shell("ls -d /tmp/hlxctl-* 2>/dev/null"), 0);
    EXPECT_TRUE(Soon("! pidof md5sum >/dev/null"));
  }
}

}  // namespace
