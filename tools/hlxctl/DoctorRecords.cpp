#include <pwd.h>
#include <sys/shm.h>

#include <cerrno>
#include <cmath>
#include <cstring>
#include <nlohmann/json.hpp>

#include "catalog/Moment.h"
#include "tools/common/Failure.h"
#include "tools/common/Loop.h"
#include "tools/common/Output.h"
#include "tools/common/Records.h"
#include "tools/common/Values.h"
#include "tools/hlxctl/Doctor.h"

using catalog::Reading;
using catalog::Scalar;

namespace {

constexpr double kMotionSeconds = 2.5;
constexpr unsigned kLookMs = 50;
constexpr std::size_t kNamed = 6;  ///< values that one line may name

std::string Hexadecimal(unsigned long long number) {
  char text[32];
  std::snprintf(text, sizeof text, "0x%llX", number);
  return text;
}

std::string UserName(uid_t uid) {
  const passwd* const user = getpwuid(uid);
  return user != nullptr ? user->pw_name : "user " + std::to_string(uid);
}

std::string ProcessText(pid_t pid) {
  const std::string name = ProcessName(static_cast<unsigned>(pid));
  return "process " + std::to_string(pid) + (name.empty() ? ", which has ended" : " (" + name + ")");
}

Finding CheckSegment(const catalog::RecordInfo& record) {
  const std::string name = std::string(record.name) + ": ";
  const std::string remove = "remove it with ipcrm -M " + Hexadecimal(record.key) + " and restart the service";
  const int id = shmget(static_cast<key_t>(record.key), 0, 0);
  if (id == -1 && errno == ENOENT)
    return {Health::kFailure, name + "is not there", "start the service, which makes it"};
  shmid_ds state{};
  if (id == -1 || shmctl(id, IPC_STAT, &state) != 0) {
    return {Health::kFailure, name + std::strerror(errno), "its mode does not let this user look: run as its owner"};
  }
  char mode[8];
  std::snprintf(mode, sizeof mode, "%04o", state.shm_perm.mode & 0777U);
  const std::string text = name + std::to_string(state.shm_segsz) + " bytes, mode " + mode + ", of " +
                           UserName(state.shm_perm.uid) + ", made by " + ProcessText(state.shm_cpid) + ", attached " +
                           std::to_string(state.shm_nattch) + " times";
  if (state.shm_segsz < record.size) {
    return {Health::kFailure, text + "; " + std::to_string(record.size) + " bytes are needed", remove};
  }
  if (state.shm_segsz > record.size) {
    return {Health::kWarning, text + "; " + std::to_string(record.size) + " bytes were expected", remove};
  }
  if ((state.shm_perm.mode & 0666U) != 0666U) {
    return {Health::kWarning, text + ": unprivileged applications cannot map it",
            "let the service come first and make it with 0666; until then " + remove};
  }
  if (state.shm_nattch == 0) return {Health::kWarning, text, "start the service: these are its last values"};
  return {Health::kOk, text};
}

bool HasWord(const Reading& reading, int64_t value) {
  for (const catalog::Word& word : reading.words) {
    if (word.value == value) return true;
  }
  return false;
}

/// Whether it is what the catalogue lets such a value be.
bool IsPlausible(const Reading& reading, const Scalar& scalar) {
  if (const auto* const whole = std::get_if<int64_t>(&scalar)) {
    if (reading.kind == Reading::Kind::kNamed) return HasWord(reading, *whole);
    return HasWord(reading, *whole) || (*whole >= reading.least && *whole <= reading.most);
  }
  if (const auto* const number = std::get_if<double>(&scalar)) {
    return std::isfinite(*number) && *number >= static_cast<double>(reading.least) &&
           *number <= static_cast<double>(reading.most);
  }
  const auto* const text = std::get_if<std::string>(&scalar);
  if (text == nullptr) return true;
  try {
    catalog::Parse(reading, *text);
    return true;
  } catch (const catalog::BadValue&) {
    return false;
  }
}

Finding CheckRecordValues(const catalog::RecordInfo& record) {
  std::vector<std::string> odd;
  std::size_t count = 0;
  for (const catalog::Value& value : catalog::Values()) {
    if (value.field.record != record.record || value.IsBit()) continue;
    ++count;
    const Scalar scalar = Read(value);
    if (!IsPlausible(value.reading, scalar))
      odd.push_back(value.FullName() + " is " + Printable(Compact(JsonOf(scalar))));
  }
  const std::string name = std::string(record.name) + ": ";
  if (odd.empty()) return {Health::kOk, name + std::to_string(count) + " values, all plausible"};
  if (odd.size() > kNamed) {
    const std::string more = std::to_string(odd.size() - kNamed + 1) + " more";
    odd.resize(kNamed - 1);
    odd.push_back(more);
  }
  return {Health::kWarning, name + Enumerate(odd), "the service writes what the library has no word or range for"};
}

std::string AllBytes() {
  std::string bytes;
  for (const catalog::RecordInfo& record : catalog::Records()) {
    bytes.append(static_cast<const char*>(RecordOf(record.record)), record.size);
  }
  return bytes;
}

}  // namespace

Findings CheckSegments(Patient& /*patient*/) {
  Findings findings;
  for (const catalog::RecordInfo& record : catalog::Records()) findings.push_back(CheckSegment(record));
  return findings;
}

Findings CheckValues(Patient& /*patient*/) {
  Findings findings;
  for (const catalog::RecordInfo& record : catalog::Records()) {
    if (shmget(static_cast<key_t>(record.key), record.size, 0444) == -1) continue;  // has been told
    try {
      findings.push_back(CheckRecordValues(record));
    } catch (const Failure& failure) {
      findings.push_back({Health::kFailure, failure.what(), "restart the service: it fills the record"});
    }
  }
  return findings;
}

Findings CheckMotion(Patient& patient) try {
  if (!patient.lives) return {};
  const std::string before = AllBytes();
  Loop loop(*patient.bus, kMotionSeconds);
  std::string heard;
  const Subscription signals(*patient.bus, kServiceName,
                             [&](const char*, const char* signal, GVariant*) { heard = signal; });
  loop.Every(kLookMs, [&] {
    if (AllBytes() != before) loop.Done();
  });
  if (loop.Run() == Loop::End::kDone) {
    return {{Health::kOk, "the records change"}};
  }
  return {{Health::kWarning,
           heard.empty() ? "no signal and no change within 2.5 seconds"
                         : "the service sends signals (" + heard + "), but no record changes within 2.5 seconds",
           "the unit stands still, or its service does, or that writes to other records"}};
} catch (const Failure&) {
  return {};  // a record is missing, which has been told
}
