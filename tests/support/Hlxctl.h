/// hlxctl as a process, against the real simulator.
#pragma once

#include <gmock/gmock.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

#include "data/HLXSystemRecords.h"
#include "tests/support/Process.h"
#include "tools/common/ExitCode.h"

using nlohmann::json;
using testing::HasSubstr;
using testing::MatchesRegex;

inline constexpr char kTool[] = HLX_BINARY_DIR "/tools/hlxctl/hlxctl";
inline constexpr char kSimulator[] = HLX_BINARY_DIR "/simulator/hlx-simulator";

struct Result {
  int code;
  std::string out;
  std::string err;
};

inline std::vector<std::string> Split(const std::string& line) {
  std::istringstream words(line);
  return {std::istream_iterator<std::string>(words), {}};
}

inline std::vector<std::string> Cut(const std::string& text, const std::string& separator) {
  std::vector<std::string> pieces;
  for (std::size_t start = 0, end = 0; end != std::string::npos; start = end + separator.size()) {
    end = text.find(separator, start);
    pieces.push_back(text.substr(start, end - start));
  }
  return pieces;
}

/// The rows of a table: on lines of their own or between " ; "; columns between " | ".
inline std::vector<std::vector<std::string>> Rows(const std::string& table) {
  std::vector<std::vector<std::string>> rows;
  for (const std::string& line : Cut(table.substr(1), "\n")) {
    for (const std::string& row : Cut(line, " ; ")) rows.push_back(Cut(row, " | "));
  }
  return rows;
}

inline std::string documents;  ///< everything in JSON that was seen, for the schema: "definition<TAB>document" a line

inline Result Execute(const std::vector<std::string>& words) {
  Process process(words);
  const int code = process.Wait();
  return {code, process.Out(), process.Err()};
}

inline Result Ctl(const std::string& line) { return Execute(Split(kTool + (" " + line))); }

/// What `line` prints, checked against that part of the schema when all tests are through.
inline json CtlJson(const std::string& line, const std::string& definition) {
  const std::string out = Ctl(line + " --json").out;
  documents += definition + "\t" + out;
  return json::parse(out);
}

/// The four records' segments.
struct Segments {
  static int Id(int record) {
    return shmget(static_cast<key_t>(HLX_SHM_POWER_DATA_KEY + static_cast<unsigned>(record)), 0, 0);
  }
  static void Remove() {
    for (int record = 0; record < 4; ++record) shmctl(Id(record), IPC_RMID, nullptr);
  }
  /// All bytes but those of the running clock.
  static std::string Bytes() {
    std::string bytes;
    for (int record = 0; record < 4; ++record) {
      const auto* const data = static_cast<const char*>(shmat(Id(record), nullptr, SHM_RDONLY));
      shmid_ds state{};
      shmctl(Id(record), IPC_STAT, &state);
      std::string copy(data, state.shm_segsz);
      if (record == 2) std::memset(&copy[offsetof(HLXSystemData::TimeShmData, cur_date)], 0, 28);
      bytes += copy;
      shmdt(data);
    }
    return bytes;
  }
};

class HlxctlTest : public testing::Test {
 public:
  HlxctlTest() {
    setenv("HLX_HOST_STATE", "/tmp/hlxctl_test", 1);
    setenv("HLX_HOST_CONFIG", HLX_SOURCE_DIR "/platform/host/platform.conf.sample", 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", bus_.c_str(), 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    for (const char* const left : {"/tmp/hlxctl_test", "/app/etc"}) std::filesystem::remove_all(left);
  }
  ~HlxctlTest() override {
    if (simulator_ != nullptr) {
      simulator_->Signal(SIGCONT);
      EXPECT_THAT(simulator_->Terminate(), testing::AnyOf(0, 128 + SIGKILL)) << simulator_->Err();
    }
    Segments::Remove();
  }
  static void TearDownTestSuite() {
    std::ofstream("/tmp/documents") << documents;
    const Result result = Execute({"sh", "-c",
                                   HLX_SOURCE_DIR "/tests/support/check-schema " HLX_SOURCE_DIR
                                                  "/tools/hlxctl/hlxctl.schema.json </tmp/documents"});
    EXPECT_EQ(0, result.code) << result.out << result.err;
  }
  void Start() {
    simulator_ = std::make_unique<Process>(std::vector<std::string>{kSimulator});
    ASSERT_TRUE(simulator_->WaitForLine("hlx-simulator: ready")) << simulator_->Err();
  }
  static void Emit(const std::string& line) {
    const Result result = Execute(Split(kSimulator + (" emit " + line)));
    ASSERT_EQ(0, result.code) << line << ": " << result.err;
  }
  /// A tool that goes on, when it has begun.
  static std::unique_ptr<Process> Begin(const std::string& line) {
    auto process = std::make_unique<Process>(Split(kTool + (" " + line)));
    for (int i = 0; i < 5000 && process->Err().find("hlxctl: ") == std::string::npos; ++i) usleep(2000);
    return process;
  }

  static inline const std::string bus_ = getenv("DBUS_SESSION_BUS_ADDRESS");
  std::unique_ptr<Process> simulator_;
};
