#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstring>
#include <map>
#include <nlohmann/json.hpp>

#include "cli/TimeStamp.h"
#include "platform/LibConfigs.h"
#include "tools/common/Bus.h"
#include "tools/common/Failure.h"
#include "tools/common/Loop.h"
#include "tools/common/Records.h"
#include "tools/common/Values.h"
#include "tools/common/Wire.h"
#include "tools/hlxctl/CallMonitor.h"
#include "tools/hlxctl/EventLog.h"
#include "tools/hlxctl/Verbs.h"

namespace {

constexpr int kFormatVersion = 1;

/// JSON lines in a file. Whatever happens, it ends with a whole line.
class LineFile {
 public:
  explicit LineFile(const std::string& name)
      : name_(name), fd_(open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, 0666)) {
    if (fd_ < 0) throw Failure(kExitInternal, "'" + name + "': " + std::strerror(errno));
    fcntl(fd_, F_SETFL, 0);  // that was for a pipe that nobody reads
  }
  LineFile(const LineFile&) = delete;
  LineFile& operator=(const LineFile&) = delete;
  ~LineFile() { close(fd_); }

  void Write(const Json& json) {
    const std::string line = Compact(json) + "\n";
    for (std::size_t done = 0; done < line.size();) {
      const ssize_t n = write(fd_, line.data() + done, line.size() - done);
      if (n < 0 && errno == EINTR) continue;
      if (n < 0) Fail();
      done += static_cast<std::size_t>(n);
    }
    size_ += static_cast<off_t>(line.size());
    ++lines_;
  }
  unsigned Lines() const { return lines_; }

 private:
  [[noreturn]] void Fail() {
    const int error = errno;
    if (ftruncate(fd_, size_) != 0) lseek(fd_, 0, SEEK_END);  // no regular file: nothing to cut
    throw Failure(kExitInternal, "'" + name_ + "': " + std::strerror(error) + " after " + std::to_string(lines_) +
                                     " lines, which are kept");
  }

  std::string name_;
  int fd_;
  off_t size_ = 0;
  unsigned lines_ = 0;
};

/// The fields of the four records, each once: flags as their byte.
std::vector<const catalog::Value*> RecordedValues() {
  std::vector<const catalog::Value*> values;
  for (const catalog::Value& value : catalog::Values()) {
    const bool own = value.area != catalog::Area::kInfo || value.field.record == catalog::Record::kInfo;
    if (value.InRecord() && !value.IsBit() && own) values.push_back(&value);
  }
  return values;
}

class Recorder {
 public:
  explicit Recorder(const std::string& name) : file_(name), values_(RecordedValues()) {
    file_.Write({{"format", "hlx-capture"},
                 {"version", kFormatVersion},
                 {"wall", JsonTimeStamp()},
                 {"can_protocol", GetLibConfigs()->GetString("/system/using_can_protocol")},
                 {"values", Changes()}});
  }

  void Look() {
    const Json changes = Changes();
    if (!changes.empty()) Write({{"values", changes}});
  }
  void Write(const Json& what) {
    const double t = static_cast<double>(g_get_monotonic_time() - start_) / G_USEC_PER_SEC;
    Json line = {{"t", t}, {"wall", JsonTimeStamp()}};
    line.update(what);
    file_.Write(line);
  }
  unsigned Lines() const { return file_.Lines(); }

 private:
  /// What differs from the last look.
  Json Changes() {
    Json changes = Json::object();
    for (const catalog::Value* const value : values_) {
      std::optional<catalog::Scalar> now = ReadUnlessEmpty(*value);
      const auto known = last_.find(value);
      if (!now || (known != last_.end() && known->second == *now)) continue;
      changes[value->FullName()] = JsonOf(*now);
      last_[value] = *std::move(now);
    }
    return changes;
  }

  const int64_t start_ = g_get_monotonic_time();
  LineFile file_;
  const std::vector<const catalog::Value*> values_;
  std::map<const catalog::Value*, catalog::Scalar> last_;
};

}  // namespace

int Record(const Request& request) {
  const Bus bus;
  bus.RequireOwner();
  for (const catalog::RecordInfo& record : catalog::Records()) RecordOf(record.record);
  Loop loop(bus, request.timeout);
  Recorder recorder(request.file);
  const auto told = [&](const char* kind, const char* name, GVariant* arguments) {
    loop.Guard([&] { recorder.Write({{kind, name}, {"args", JsonOf(arguments)}}); });
  };
  const Subscription signals(bus, kServiceName, [&](const char*, const char* signal, GVariant* arguments) {
    told("signal", signal, arguments);
  });
  const CallMonitor calls([&](const char* method, GVariant* arguments) { told("call", method, arguments); });
  const ServiceWatch watch(bus, [&](bool there) {
    Output::Note(there ? "the service is back" : "the service is gone; waiting for it");
    loop.Guard([&] { recorder.Write({{"service", there ? "back" : "lost"}}); });
  });
  loop.Every(request.interval, [&] { recorder.Look(); });
  Output::Note("recording to '" + request.file + "'" +
               (calls.Hears() ? "" : ", without calls: the bus lets no monitor in") +
               (request.timeout == 0 ? "; Ctrl-C ends" : ""));
  loop.Run();
  if (request.json) {
    Output::JsonLine({{"ok", true}, {"file", request.file}, {"lines", recorder.Lines()}});
  } else {
    Output::Line(std::to_string(recorder.Lines()) + " lines in " + request.file);
  }
  return kExitDone;
}
