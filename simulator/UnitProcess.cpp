#include "simulator/UnitProcess.h"

#include <glib-unix.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>

#include "simulator/Configuration.h"

namespace {

/// Whether the field `key` begins with `start`.
bool Begins(const GLogField* fields, gsize count, const char* key, const char* start) {
  return std::any_of(fields, fields + count, [key, start](const GLogField& field) {
    return std::strcmp(field.key, key) == 0 &&
           std::strncmp(static_cast<const char*>(field.value), start, std::strlen(start)) == 0;
  });
}

/// Library and platform log through GLib. What they note on their way is for whoever asks; what is wrong, with the
/// platform's configuration and settings too, is for everyone.
GLogWriterOutput WriteErrors(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer /*data*/) {
  const bool wrong = (level & (G_LOG_LEVEL_ERROR | G_LOG_LEVEL_CRITICAL)) != 0 ||
                     ((level & G_LOG_LEVEL_WARNING) != 0 && Begins(fields, count, "CODE_FILE", "platform/"));
  if (!wrong && Begins(fields, count, "GLIB_DOMAIN", "hlx-system-client")) return G_LOG_WRITER_HANDLED;
  return g_log_writer_default(level, fields, count, nullptr);
}

/// What must be done before anything else reads the environment or logs.
const UnitProcess::Options& Prepared(const UnitProcess::Options& options) {
  if (!options.verbose) g_log_set_writer_func(WriteErrors, nullptr, nullptr);
  FindConfiguration();
  return options;
}

}  // namespace

UnitProcess::UnitProcess(const Options& options)
    : scratch_(Prepared(options).fresh ? std::make_unique<ScratchSettings>() : nullptr),
      loop_(g_main_loop_new(nullptr, FALSE)),
      simulator_(options),
      connection_(ConnectToSessionBus()),
      control_(connection_.get(), simulator_) {
  g_signal_connect(connection_.get(), "closed", G_CALLBACK(OnBusGone), this);
  for (const int number : {SIGINT, SIGTERM}) g_unix_signal_add(number, OnStop, this);
  simulator_.unit().Keep(Own::kUpdateFails, int64_t{options.update_fails});
  simulator_.Start();
  if (!options.log.empty()) capture_ = std::make_unique<CaptureWriter>(simulator_, options.log);
  if (!options.scenario.empty()) simulator_.player().Play(ScriptNamed(options.scenario), 1, false);
  if (options.ready_fd < 0) return;
  if (write(options.ready_fd, "\n", 1) != 1) throw std::runtime_error("nobody waits for the unit");
  close(options.ready_fd);
}

UnitProcess::~UnitProcess() {
  while (g_source_remove_by_user_data(this)) continue;
  g_signal_handlers_disconnect_by_data(connection_.get(), this);
}

void UnitProcess::Run() {
  std::printf("hlx-simulator: ready on %s\n", kServiceName);
  g_main_loop_run(loop_.get());
  if (bus_gone_) throw std::runtime_error("the session bus went away");
}

gboolean UnitProcess::OnStop(gpointer process) {
  g_main_loop_quit(static_cast<UnitProcess*>(process)->loop_.get());
  return G_SOURCE_CONTINUE;
}

void UnitProcess::OnBusGone(GDBusConnection* /*connection*/, gboolean /*peer*/, GError* /*problem*/, gpointer process) {
  static_cast<UnitProcess*>(process)->bus_gone_ = true;
  OnStop(process);
}
