/// One browser that shows the page. It asks for each update when it has drawn the one before, so that a slow one gets
/// fewer and larger updates instead of a queue.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "cli/Json.h"
#include "tools/hlx-panel/SoupPtr.h"

class Panel;

class Browser {
 public:
  /// Greets it with what there is. `panel` outlives it.
  Browser(Panel& panel, SoupWebsocketConnection* connection);
  Browser(const Browser&) = delete;
  Browser& operator=(const Browser&) = delete;
  ~Browser();

  /// There may be something new: it is sent if the browser has asked for it.
  void Offer();

 private:
  void Hear(std::string_view text);
  void SendCommand(const Json& message, std::uint64_t id);
  void DriveUnit(const Json& message, std::uint64_t id);
  void Send(const std::string& text);
  /// `rest` is the answer's other members.
  void Answer(std::uint64_t id, const std::string& rest);
  /// An answer that may come when the browser is gone.
  std::function<void(const std::string& rest)> Later(std::uint64_t id);
  std::string Update();

  Panel& panel_;
  const std::shared_ptr<Browser*> self_ = std::make_shared<Browser*>(this);
  SoupPtr<SoupWebsocketConnection> connection_;
  bool ready_ = false;
  unsigned unread_answers_ = 0;  ///< since it last asked for an update
  std::uint64_t revision_ = 0;
  std::uint64_t next_event_ = 0;
  std::uint64_t next_call_ = 0;
  std::uint64_t unit_revision_ = 0;
  int told_service_ = -1;
  bool told_unit_ = false;
  bool unit_was_told_ = false;
};
