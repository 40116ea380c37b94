#include "tools/hlx-panel/Commands.h"

#include <cstring>
#include <stdexcept>
#include <utility>

#include "catalog/EveryEvent.h"
#include "tools/common/CommandCall.h"

namespace {

constexpr unsigned kEventMs = 500;  // how long after the answer an event may follow

double Milliseconds(gint64 from, gint64 to) { return static_cast<double>(to - from) / 1000.0; }

}  // namespace

struct Commands::Pending {
  Commands& owner;
  const catalog::Command& command;
  Done done;
  gint64 sent = g_get_monotonic_time();
  bool answered = false;
  Outcome outcome = {};
  GLibPtr<GCancellable> cancel{g_cancellable_new()};
  guint timer = 0;
};

Commands::Commands(const Bus& bus) : bus_(bus) {}

Commands::~Commands() {
  for (Pending& pending : pending_) {
    if (pending.timer != 0) g_source_remove(pending.timer);
    g_cancellable_cancel(pending.cancel.get());
  }
}

void Commands::Send(const catalog::Command& command, const std::vector<std::string>& words, Done done) {
  GVariant* const arguments = ArgumentsOf(command, ParseArguments(command, words));
  Pending& pending = pending_.emplace_back(Pending{*this, command, std::move(done)});
  g_dbus_connection_call(bus_.Connection(), kServiceName, kServicePath, kServiceInterface, command.method, arguments,
                         nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, pending.cancel.get(), OnAnswer, &pending);
}

void Commands::OnAnswer(GObject* connection, GAsyncResult* result, gpointer data) {
  GError* problem = nullptr;
  const GLibPtr<GVariant> reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &problem));
  const GLibPtr<GError> owned(problem);
  if (g_error_matches(problem, G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;  // the owner is gone
  Pending& pending = *static_cast<Pending*>(data);
  pending.answered = true;
  pending.outcome.took_ms = Milliseconds(pending.sent, g_get_monotonic_time());
  if (problem != nullptr) {
    g_dbus_error_strip_remote_error(problem);
    pending.outcome.error = problem->message;
  } else if (g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(b)")) != FALSE) {
    gboolean taken = FALSE;
    g_variant_get(reply.get(), "(b)", &taken);
    if (taken == FALSE) pending.outcome.error = "the service said no";
  }
  pending.owner.Settle(pending);
}

void Commands::Settle(Pending& pending) {
  if (!pending.answered || pending.timer != 0) return;
  const bool no_event_to_come = pending.command.follows[0] == nullptr || !pending.outcome.event.empty();
  if (no_event_to_come || !pending.outcome.error.empty()) return Finish(pending);
  pending.timer = g_timeout_add(
      kEventMs,
      [](gpointer data) -> gboolean {
        Pending& late = *static_cast<Pending*>(data);
        late.timer = 0;
        late.owner.Finish(late);
        return G_SOURCE_REMOVE;
      },
      &pending);
}

void Commands::Finish(Pending& pending) {
  if (pending.timer != 0) g_source_remove(pending.timer);
  const Done done = std::move(pending.done);
  const Outcome outcome = std::move(pending.outcome);
  pending_.remove_if([&pending](const Pending& other) { return &other == &pending; });
  done(outcome);
}

void Commands::Hear(const catalog::Event& event) {
  const catalog::Signal* const signal = catalog::SignalOf(event.callback);
  if (signal == nullptr) return;
  for (auto next = pending_.begin(); next != pending_.end();) {
    Pending& pending = *next++;  // it may go
    for (const char* const* follows = pending.command.follows; *follows != nullptr; ++follows) {
      if (std::strcmp(*follows, signal->name) != 0 || !pending.outcome.event.empty()) continue;
      pending.outcome.event = event.callback;
      pending.outcome.event_ms = Milliseconds(pending.sent, g_get_monotonic_time());
      if (pending.answered) {
        Finish(pending);
        break;
      }
    }
  }
}
