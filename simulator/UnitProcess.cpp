#include "simulator/UnitProcess.h"

#include <glib-unix.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>

#include "simulator/Configuration.h"

namespace {

/// Library and platform log through GLib. What they note on their way is for whoever asks; what is wrong is for
/// everyone.
GLogWriterOutput WriteErrors(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer /*data*/) {
  if ((level & (G_LOG_LEVEL_ERROR | G_LOG_LEVEL_CRITICAL)) == 0) {
    for (gsize i = 0; i < count; ++i) {
      if (std::strcmp(fields[i].key, "GLIB_DOMAIN") == 0 &&
          std::strcmp(static_cast<const char*>(fields[i].value), "hlx-system-client") == 0) {
        return G_LOG_WRITER_HANDLED;
      }
    }
  }
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
