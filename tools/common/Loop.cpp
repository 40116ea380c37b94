#include "tools/common/Loop.h"

#include <glib-unix.h>

#include <csignal>

#include "tools/common/Bus.h"
#include "tools/common/Failure.h"
#include "tools/common/Output.h"

namespace {

void OnClosed(GDBusConnection* /*connection*/, gboolean /*by_peer*/, GError* why, gpointer loop) {
  static_cast<Loop*>(loop)->Guard([why] {
    throw Failure(kExitNoService,
                  std::string("the session bus is gone: ") + (why != nullptr ? why->message : "connection closed"));
  });
}

}  // namespace

Loop::Loop(const Bus& bus, double seconds)
    : loop_(g_main_loop_new(nullptr, FALSE)),
      connection_(bus.Connection()),
      closed_(g_signal_connect(connection_, "closed", G_CALLBACK(OnClosed), this)) {
  for (const int number : {SIGINT, SIGTERM}) {
    Attach(g_unix_signal_source_new(number), [this, number] {
      signal_ = number;
      Quit(End::kInterrupted);
    });
  }
  if (seconds > 0) Attach(g_timeout_source_new(static_cast<guint>(seconds * 1000)), [this] { Quit(End::kTimeUp); });
  // A pipe says so by itself when its reader is gone; what else there is to write to may not be waited for.
  GSource* const output = g_unix_fd_source_new(Output::Descriptor(), G_IO_ERR);
  g_source_set_callback(output, G_SOURCE_FUNC(+[](gint, GIOCondition, gpointer loop) -> gboolean {
                          static_cast<Loop*>(loop)->Guard([] { throw ClosedPipe(); });
                          return G_SOURCE_REMOVE;
                        }),
                        this, nullptr);
  sources_.push_back(g_source_attach(output, nullptr));
  g_source_unref(output);
}

Loop::~Loop() {
  for (const guint id : sources_) {
    GSource* const source = g_main_context_find_source_by_id(nullptr, id);
    if (source != nullptr) g_source_destroy(source);
  }
  g_signal_handler_disconnect(connection_, closed_);
}

void Loop::Attach(GSource* source, Work work) {
  works_.push_back(std::move(work));
  g_source_set_callback(source, Dispatch, &works_.back(), nullptr);
  sources_.push_back(g_source_attach(source, nullptr));
  g_source_unref(source);
}

gboolean Loop::Dispatch(gpointer work) {
  (*static_cast<Work*>(work))();
  return G_SOURCE_CONTINUE;
}

void Loop::Every(unsigned ms, std::function<void()> work) {
  Attach(g_timeout_source_new(ms), [this, work = std::move(work)] { Guard(work); });
}

void Loop::Quit(End end) {
  end_ = end;
  over_ = true;
  g_main_loop_quit(loop_.get());
}

Loop::End Loop::Run() {
  if (!over_) g_main_loop_run(loop_.get());
  if (failure_ != nullptr) std::rethrow_exception(failure_);
  return end_;
}

void Loop::Fail(End end, const std::string& missing) const {
  if (end == End::kTimeUp) throw Failure(kExitTimeUp, "the time is up: " + missing);
  throw Failure(signal_ == SIGINT ? kExitInterrupted : kExitTerminated, "interrupted: " + missing);
}
