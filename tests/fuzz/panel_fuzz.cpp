// Fuzz target over what a browser sends to the panel: lines, one message each, over a WebSocket of libsoup. Whatever
// comes, all that goes back is JSON, and the next message is answered.
#include <gio/gio.h>

#include <nlohmann/json.hpp>

#include "tests/fuzz/Input.h"
#include "tests/fuzz/StreamPair.h"
#include "tools/common/Bus.h"
#include "tools/hlx-panel/Panel.h"

using nlohmann::json;

namespace {

constexpr char kLast[] = R"({"type":"nothing","id":4294967297})";  ///< is refused
constexpr std::uint64_t kLastId = 4294967297;

class Show {
 public:
  Show() {
    const StreamPair ends;
    SoupWebsocketConnection* const server = Connect(ends[0], SOUP_WEBSOCKET_CONNECTION_SERVER);
    browser_ = Connect(ends[1], SOUP_WEBSOCKET_CONNECTION_CLIENT);
    g_signal_connect(browser_, "message", G_CALLBACK(+[](SoupWebsocketConnection*, gint, GBytes* text, gpointer self) {
                       static_cast<Show*>(self)->Hear(text);
                     }),
                     this);
    panel_.Greet(server);
    g_object_unref(server);
  }

  void Send(const std::string& text) { soup_websocket_connection_send_text(browser_, text.c_str()); }
  void AwaitLast() {
    Send(kLast);
    for (last_came_ = false; !last_came_;) g_main_context_iteration(nullptr, TRUE);
  }

 private:
  static SoupWebsocketConnection* Connect(GIOStream* stream, SoupWebsocketConnectionType type) {
    GUri* const address = g_uri_parse("ws://127.0.0.1/ws", G_URI_FLAGS_NONE, nullptr);
    SoupWebsocketConnection* const connection =
        soup_websocket_connection_new(stream, address, type, nullptr, nullptr, nullptr);
    soup_websocket_connection_set_max_incoming_payload_size(connection, 0);
    g_uri_unref(address);
    return connection;
  }

  void Hear(GBytes* text) {
    gsize size = 0;
    const auto* const data = static_cast<const char*>(g_bytes_get_data(text, &size));
    const json message = json::parse(data, data + size);  // ends the target where it is none
    last_came_ = last_came_ || message.value("id", json(0)) == kLastId;
  }

  const Bus bus_;
  Panel panel_{bus_};
  SoupWebsocketConnection* browser_ = nullptr;
  bool last_came_ = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  static Show* const show = new Show;  // its connections end with the process
  std::string text = Input(data, size).Rest();
  if (g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) == FALSE) return 0;  // libsoup's business
  show->Send(R"({"type":"ready"})");  // the answers before were read
  std::size_t sent = 0;
  for (const std::string& line : Input::Lines(text)) {
    if (++sent < 50) show->Send(line);
  }
  show->AwaitLast();
  return 0;
}
