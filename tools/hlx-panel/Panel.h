/// The panel: what it knows of the unit, and the browsers that show it.
#pragma once

#include <list>
#include <memory>
#include <string>

#include "tools/hlx-panel/Browser.h"
#include "tools/hlx-panel/Commands.h"
#include "tools/hlx-panel/SimulatorLink.h"
#include "tools/hlx-panel/UnitState.h"

class Panel {
 public:
  explicit Panel(const Bus& bus);
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;
  ~Panel();

  /// Shows the unit in a browser that has come.
  void Greet(SoupWebsocketConnection* connection);
  /// The browser's connection is closed.
  void Forget(const Browser* browser);

  /// What the page is built from: values and commands of the catalogue, as one message.
  static const std::string& Hello();

  UnitState& State() { return state_; }
  Commands& Sender() { return commands_; }
  SimulatorLink& Unit() { return unit_; }

 private:
  /// Offers what is new to all browsers, once per turn of the main loop and not more than 60 times a second.
  void Changed();

  Commands commands_;
  UnitState state_;
  SimulatorLink unit_;
  std::list<Browser> browsers_;
  guint offer_ = 0;
};
