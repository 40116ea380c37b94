/// Commands on their way to the service, and what came of each.
#pragma once

#include <functional>
#include <list>
#include <string>
#include <vector>

#include "catalog/Catalog.h"
#include "tools/common/Bus.h"

namespace catalog {
struct Event;
}

class Commands {
 public:
  struct Outcome {
    std::string error;  ///< empty: the service took it
    double took_ms = 0;
    std::string event;  ///< the callback that followed; empty: none did, or none was to be expected
    double event_ms = 0;
  };
  using Done = std::function<void(const Outcome&)>;

  explicit Commands(const Bus& bus);
  Commands(const Commands&) = delete;
  Commands& operator=(const Commands&) = delete;
  ~Commands();

  /// Sends, and calls `done` in the main loop once answer and event are there, or no event came in time.
  /// @throws std::invalid_argument for words that the command does not take; `done` is not called then
  void Send(const catalog::Command& command, const std::vector<std::string>& words, Done done);

  /// Tells of every event.
  void Hear(const catalog::Event& event);

 private:
  struct Pending;

  static void OnAnswer(GObject* connection, GAsyncResult* result, gpointer pending);
  void Settle(Pending& pending);
  void Finish(Pending& pending);

  const Bus& bus_;
  std::list<Pending> pending_;
};
