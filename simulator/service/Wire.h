/// The way of a signal from the unit to the bus, with what goes wrong on it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "catalog/Signal.h"
#include "simulator/model/Timer.h"
#include "simulator/service/Faults.h"
#include "simulator/service/Service.h"

class Wire {
 public:
  using Listener = std::function<void(const catalog::Signal&, GVariant* tuple)>;

  Wire(Service& service, Faults& faults) : service_(service), faults_(faults) {}

  void Send(const catalog::Signal& signal, GVariant* tuple);

  /// What waits for another signal goes out now.
  void Flush();

  /// Is told of every signal that goes out.
  void Listen(Listener listener) { listeners_.push_back(std::move(listener)); }

 private:
  struct Waiting {
    const catalog::Signal* signal;
    std::shared_ptr<GVariant> tuple;
  };
  void Emit(const catalog::Signal& signal, GVariant* tuple);

  Service& service_;
  Faults& faults_;
  std::vector<Listener> listeners_;
  std::optional<Waiting> held_;  ///< until another one has gone out
  Delays delayed_;
};
