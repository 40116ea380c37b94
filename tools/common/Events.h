/// The events of a unit, each with the names of the values that it tells.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "catalog/Catalog.h"

class Bus;

namespace catalog {
class EveryEvent;
struct Event;
}  // namespace catalog

/// Listens as long as it lives. The library's clients decode the events of power, misc and update; those of time come
/// from the bare signals and the record, since the library's time client would change the system.
class Events {
 public:
  /// `sink` is called in the main loop and, for package searches, on a thread of the library's; it must not throw.
  /// @throws Failure when the service or a record is missing
  Events(const Bus& bus, const std::vector<catalog::Area>& areas, std::function<void(const catalog::Event&)> sink);
  Events(const Events&) = delete;
  Events& operator=(const Events&) = delete;
  ~Events();

 private:
  class TimeSignals;

  std::unique_ptr<catalog::EveryEvent> listener_;
  std::unique_ptr<TimeSignals> time_;
};
