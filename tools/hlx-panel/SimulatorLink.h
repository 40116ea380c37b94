/// The simulated unit's control interface, where there is one on the bus.
#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/Json.h"
#include "tools/common/Bus.h"
#include "tools/hlx-panel/UnitState.h"

class SimulatorLink {
 public:
  /// An empty error: done.
  using Done = std::function<void(const std::string& error)>;

  /// `changed` runs in the main loop when there may be something new.
  SimulatorLink(const Bus& bus, std::function<void()> changed);
  SimulatorLink(const SimulatorLink&) = delete;
  SimulatorLink& operator=(const SimulatorLink&) = delete;
  ~SimulatorLink();

  /// What the unit offers by kind, {"fault":[["form","help"],…],…}; null while there is none.
  const Json& Offers() const { return offers_; }
  /// What applications have sent and no record keeps, by name.
  const Json& Inbox() const { return inbox_; }
  /// The status of what is being played, as the control interface has it; null before anything was.
  const Json& Played() const { return played_; }
  /// Grows with every change of the three.
  std::uint64_t Revision() const { return revision_; }
  const UnitState::Lines& CallLines() const { return calls_; }

  /// Does what `verb` and its words say. `done` runs in the main loop, later.
  /// @throws std::invalid_argument for a verb that there is not, or too few words
  void Do(const std::string& verb, const std::vector<std::string>& words, Done done);

 private:
  void Call(const char* method, GVariant* arguments, std::function<void(GVariant* reply, const GError* problem)> done);
  void Appeared();
  void Vanished();
  void TakeStatus(GVariant* tuple);
  void Hear(const char* signal, GVariant* arguments);
  void Changed();

  const Bus& bus_;
  std::function<void()> changed_;
  Json offers_;
  Json inbox_ = Json::object();
  Json played_;
  std::uint64_t revision_ = 1;
  UnitState::Lines calls_;
  GLibPtr<GCancellable> cancel_{g_cancellable_new()};
  guint watch_ = 0;
  guint subscription_ = 0;
};
