/// What "wait-for" waits for: a value that compares, or an event by its name.
#pragma once

#include <string>

#include "catalog/Catalog.h"
#include "tools/hlxctl/Request.h"

namespace catalog {
struct Event;
}

class Condition {
 public:
  /// "power.screen=off", "misc.car_speed >= 50", "OnAccStateChange", "OnServiceBack".
  /// @throws std::invalid_argument that says what is wrong with it
  explicit Condition(const std::string& text);

  const std::string& Text() const { return text_; }

  /// Whether it is about anything but the service's coming and going.
  bool NeedsService() const { return NeedsLooks() || NeedsEvents(); }
  /// Whether it is about a value that can be looked at.
  bool NeedsLooks() const { return value_ != nullptr && !value_->EventOnly(); }
  /// Whether it is about an event, or a value that events alone tell; and whose.
  bool NeedsEvents() const { return (value_ != nullptr && value_->EventOnly()) || signal_ != nullptr; }
  catalog::Area EventArea() const { return value_ != nullptr ? value_->area : signal_->area; }

  /// @throws Failure when what can be looked at is not there
  void RequireRecord() const;
  bool IsMet() const;  ///< by what the value is now; never while the record is being filled
  bool IsMet(const catalog::Event& event) const;
  bool IsMet(bool service_there) const;

  /// The reading that met it.
  void Print(const Request& request) const;
  /// "; it is on", for a value that can be looked at.
  std::string Now() const;

 private:
  bool Holds(const catalog::Scalar& scalar) const;

  std::string text_;
  const catalog::Value* value_ = nullptr;
  std::string operator_;
  catalog::Scalar wanted_;
  const catalog::Signal* signal_ = nullptr;  ///< of the event
};
