#include "tools/hlxctl/Monitor.h"

#include <glib-unix.h>

#include <csignal>
#include <memory>

#include "tools/hlxctl/Output.h"

namespace {

struct GLibFree {
  void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
  void operator()(GDateTime* time) const { g_date_time_unref(time); }
  void operator()(gchar* text) const { g_free(text); }
};

std::string Now(const char* form) {
  const std::unique_ptr<GDateTime, GLibFree> now(g_date_time_new_now_local());
  return std::unique_ptr<gchar, GLibFree>(g_date_time_format(now.get(), form)).get();
}

gboolean Quit(gpointer loop) {
  g_main_loop_quit(static_cast<GMainLoop*>(loop));
  return G_SOURCE_CONTINUE;
}

/// A source of the main context for as long as this lives.
class Source {
 public:
  explicit Source(guint id) : id_(id) {}
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;
  ~Source() { g_source_remove(id_); }

 private:
  guint id_;
};

}  // namespace

EventLog::EventLog(const MonitorOptions& options, GMainLoop* loop)
    : options_(options), loop_(loop), bars_(!options.json && Output::IsTerminal()) {}

void EventLog::Write(const char* area, const char* event, const Values& values, const char* nothing) {
  const std::lock_guard<std::mutex> lock(mutex_);
  WriteLine(area, event, values, nothing);
}

void EventLog::WriteLine(const char* area, const char* event, const Values& values, const char* nothing) {
  EndBar();
  if (options_.json) {
    Json shown = Json::object();
    for (const auto& [name, value] : values) shown[name] = value.ToJson();
    Put(Output::Compact(
        {{"time", Now("%Y-%m-%dT%H:%M:%S.%f%:z")}, {"area", area}, {"event", event}, {"values", shown}}));
  } else {
    std::string line = Now("%H:%M:%S.%f").substr(0, 12) + "  " + area + "  " + event;
    const char* separator = "  ";
    for (const auto& [name, value] : values) {
      line += separator + name + ": " + value.ToText();
      separator = ", ";
    }
    if (values.empty() && *nothing != '\0') line.append("  ").append(nothing);
    Put(line);
  }
  Put("\n");
  Count();
}

void EventLog::WriteProgress(const char* area, const char* event, const char* what, int64_t percent) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (!bars_ || percent < 0 || percent > 100) return WriteLine(area, event, {{what, Number{"%"}(percent)}}, "");
  constexpr int kWidth = 40;
  if (bar_ != event) EndBar();
  bar_ = event;
  std::string done(static_cast<std::size_t>(kWidth * percent / 100), '#');
  done.resize(kWidth, '.');
  Put("\r" + std::string(what) + "  [" + done + "] " + std::to_string(percent) + " %\x1b[K");
  Count();
}

void EventLog::Finish() {
  EndBar();
  if (failure_ != nullptr) std::rethrow_exception(failure_);
}

/// Exceptions must not travel through the main loop.
void EventLog::Put(const std::string& text) {
  if (failure_ != nullptr) return;
  try {
    Output::Put(text);
  } catch (...) {
    failure_ = std::current_exception();
    g_main_loop_quit(loop_);
  }
}

void EventLog::EndBar() {
  if (!bar_.empty()) Put("\n");
  bar_.clear();
}

void EventLog::Count() {
  if (++events_ == options_.count) g_main_loop_quit(loop_);
}

void Monitor(const std::vector<const Area*>& areas, const MonitorOptions& options) {
  const std::unique_ptr<GMainLoop, GLibFree> loop(g_main_loop_new(nullptr, FALSE));
  EventLog log(options, loop.get());
  std::vector<std::shared_ptr<void>> listeners;
  std::string names;
  for (const Area* const area : areas) {
    listeners.push_back(area->listen(log));
    names.append(names.empty() ? "" : ", ").append(area->name);
  }
  const Source on_interrupt(g_unix_signal_add(SIGINT, Quit, loop.get()));
  const Source on_terminate(g_unix_signal_add(SIGTERM, Quit, loop.get()));
  if (options.seconds != 0) g_timeout_add_seconds(options.seconds, Quit, loop.get());
  Output::Note("listening to " + names + (options.seconds == 0 ? "; Ctrl-C ends" : ""));
  g_main_loop_run(loop.get());
  HLX_ReleaseSystemProxy();  // before the listeners go
  log.Finish();
}
