#include "tools/hlx-panel/Panel.h"

#include <utility>

namespace {

constexpr unsigned kFrameMs = 16;
constexpr std::size_t kMostBrowsers = 64;

}  // namespace

Panel::Panel(const Bus& bus)
    : commands_(bus),
      state_(
          bus, [this] { Changed(); }, [this](const catalog::Event& event) { commands_.Hear(event); }),
      unit_(bus, [this] { Changed(); }) {}

Panel::~Panel() {
  browsers_.clear();
  if (offer_ != 0) g_source_remove(offer_);
}

void Panel::Greet(SoupWebsocketConnection* connection) {
  if (browsers_.size() >= kMostBrowsers) {
    soup_websocket_connection_close(connection, 1013, "too many browsers");  // "try again later"
    return;
  }
  state_.Watch(true);
  browsers_.emplace_back(*this, connection);
}

void Panel::Forget(const Browser* browser) {
  browsers_.remove_if([browser](const Browser& other) { return &other == browser; });
  state_.Watch(!browsers_.empty());
}

void Panel::Changed() {
  if (offer_ != 0) return;
  offer_ = g_timeout_add(
      kFrameMs,
      [](gpointer data) -> gboolean {
        Panel& self = *static_cast<Panel*>(data);
        self.offer_ = 0;
        for (Browser& browser : self.browsers_) browser.Offer();
        return G_SOURCE_REMOVE;
      },
      this);
}
