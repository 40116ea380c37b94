#include "tools/hlxctl/EventLog.h"

#include <nlohmann/json.hpp>

#include "catalog/EveryEvent.h"
#include "cli/TimeStamp.h"
#include "tools/common/ExitCode.h"
#include "tools/common/Loop.h"
#include "tools/common/Values.h"

int Follow(Loop& loop, const Request& request, const std::function<unsigned()>& count, const char* what) {
  if (request.count == 0) {
    loop.Run();
  } else {
    loop.RunUntilDone(
        [&] { return std::to_string(count()) + " of " + std::to_string(request.count) + " " + what + " came"; });
  }
  return kExitDone;
}

EventLog::EventLog(const Request& request, Loop& loop)
    : request_(request), loop_(loop), start_(g_get_monotonic_time()) {}

std::string EventLog::When() const {
  if (!request_.since_start) return TimeStamp();
  char text[32];
  std::snprintf(text, sizeof text, "%10.3f", static_cast<double>(g_get_monotonic_time() - start_) / G_USEC_PER_SEC);
  return text;
}

void EventLog::WriteLine(const char* area, const char* event, const std::string& what) {
  Output::Line(Output::Paint(When(), Tone::kDim) + "  " + area + "  " + Output::Paint(event, Tone::kStrong) +
               (what.empty() ? "" : "  ") + what);
}

void EventLog::WriteJson(const char* area, const char* event, const Json& values) {
  Json line = {{"time", JsonTimeStamp()}};
  if (request_.since_start) {
    line = {{"since_start", static_cast<double>(g_get_monotonic_time() - start_) / G_USEC_PER_SEC}};
  }
  line.update({{"area", area}, {"event", event}, {"values", values}});
  Output::JsonLine(line);
}

void EventLog::WriteReadings(const catalog::Event& event) {
  for (const catalog::EventArgument& argument : event.arguments) {
    if (argument.value == nullptr) continue;
    const std::string name = argument.value->FullName();
    if (request_.json) {
      WriteJson(NameOf(event.area), event.callback, {{name, ToJson(argument.reading, argument.scalar)}});
    } else {
      Output::Line(Output::Paint(When(), Tone::kDim) + "  " + name + "  " +
                   Output::Paint(ForPeople(argument.reading, argument.scalar), Tone::kStrong));
    }
  }
}

void EventLog::Write(const catalog::Event& event) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (request_.count != 0 && count_ == request_.count) return;  // they were asked for, and no more
  loop_.Guard([&] {
    if (request_.values) {
      WriteReadings(event);
    } else if (request_.json) {
      Json values = Json::object();
      for (const auto& argument : event.arguments) values[argument.name] = ToJson(argument.reading, argument.scalar);
      WriteJson(NameOf(event.area), event.callback, values);
    } else {
      std::string what;
      for (const auto& argument : event.arguments) {
        what.append(what.empty() ? "" : ", ").append(argument.name).append(": ") +=
            ForPeople(argument.reading, argument.scalar);
      }
      WriteLine(NameOf(event.area), event.callback, what);
    }
    Output::Flush();
  });
  if (++count_ == request_.count) loop_.Done();
}

void EventLog::WriteService(bool there) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const char* const event = there ? "OnServiceBack" : "OnServiceLost";
  loop_.Guard([&] {
    if (request_.json) {
      WriteJson("connection", event, Json::object());
    } else {
      WriteLine("connection", event, there ? "the service is back" : "the service is gone; waiting for it");
    }
    Output::Flush();
  });
}
