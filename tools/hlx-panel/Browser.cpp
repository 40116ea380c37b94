#include "tools/hlx-panel/Browser.h"

#include <exception>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <vector>

#include "tools/hlx-panel/Panel.h"

namespace {

constexpr unsigned kMostUnreadAnswers = 100;

std::string Refusal(const std::string& error) { return R"("ok":false,"error":)" + Compact(error); }

/// @throws std::invalid_argument that names the member
std::string TextOf(const Json& message, const char* member) {
  const auto found = message.find(member);
  if (found == message.end() || !found->is_string()) {
    throw std::invalid_argument(std::string("\"") + member + "\" must be a text");
  }
  return found->get<std::string>();
}

std::vector<std::string> WordsOf(const Json& message) {
  const auto found = message.find("arguments");
  if (found == message.end() || !found->is_array()) throw std::invalid_argument("\"arguments\" must be a list");
  std::vector<std::string> words;
  for (const Json& word : *found) {
    if (!word.is_string()) throw std::invalid_argument("\"arguments\" must be texts");
    words.push_back(word.get<std::string>());
  }
  return words;
}

}  // namespace

Browser::Browser(Panel& panel, SoupWebsocketConnection* connection)
    : panel_(panel), connection_(static_cast<SoupWebsocketConnection*>(g_object_ref(connection))) {
  g_signal_connect(connection, "message", G_CALLBACK(+[](SoupWebsocketConnection*, gint, GBytes* bytes, gpointer self) {
                     gsize size = 0;
                     const auto* const data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
                     static_cast<Browser*>(self)->Hear(std::string_view(data, size));
                   }),
                   this);
  g_signal_connect(connection, "closed", G_CALLBACK(+[](SoupWebsocketConnection*, gpointer self) {
                     auto* const browser = static_cast<Browser*>(self);
                     browser->panel_.Forget(browser);
                   }),
                   this);
  // Events of before it came are not its business.
  next_event_ = panel_.State().EventLines().End();
  next_call_ = panel_.Unit().CallLines().End();
  Send(Panel::Hello());
}

Browser::~Browser() {
  g_signal_handlers_disconnect_by_data(connection_.get(), this);
  if (soup_websocket_connection_get_state(connection_.get()) == SOUP_WEBSOCKET_STATE_OPEN) {
    soup_websocket_connection_close(connection_.get(), SOUP_WEBSOCKET_CLOSE_GOING_AWAY, nullptr);
  }
}

void Browser::Send(const std::string& text) {
  if (soup_websocket_connection_get_state(connection_.get()) != SOUP_WEBSOCKET_STATE_OPEN) return;
  soup_websocket_connection_send_text(connection_.get(), text.c_str());
}

void Browser::Answer(std::uint64_t id, const std::string& rest) {
  if (++unread_answers_ > kMostUnreadAnswers) return;  // it asks and does not read
  Send(R"({"type":"answer","id":)" + std::to_string(id) + "," + rest + "}");
}

void Browser::Offer() {
  if (!ready_) return;
  const std::string update = Update();
  if (update.empty()) return;
  ready_ = false;
  Send(update);
}

/// Empty: nothing is new.
std::string Browser::Update() {
  const UnitState& state = panel_.State();
  const SimulatorLink& unit = panel_.Unit();
  std::string update;
  const auto add = [&update](const char* name, const std::string& json) {
    update += std::string(",\"") + name + "\":" + json;
  };
  if (revision_ < state.Revision()) {
    add("values", "{" + state.ChangesAfter(revision_) + "}");
    revision_ = state.Revision();
  }
  std::string lines;
  if (const std::uint64_t lost = state.EventLines().After(&next_event_, &lines)) add("lost", std::to_string(lost));
  if (!lines.empty()) add("events", "[" + lines + "]");
  lines.clear();
  unit.CallLines().After(&next_call_, &lines);
  if (!lines.empty()) add("calls", "[" + lines + "]");
  if (told_service_ != static_cast<int>(state.ServiceThere())) {
    told_service_ = static_cast<int>(state.ServiceThere());
    add("service", state.ServiceThere() ? "true" : "false");
  }
  if (unit_revision_ < unit.Revision()) {
    unit_revision_ = unit.Revision();
    const bool there = !unit.Offers().is_null();
    if (!unit_was_told_ || told_unit_ != there) add("unit", Compact(unit.Offers()));
    unit_was_told_ = true;
    told_unit_ = there;
    add("inbox", Compact(unit.Inbox()));
    add("played", Compact(unit.Played()));
  }
  return update.empty() ? "" : R"({"type":"update")" + update + "}";
}

std::function<void(const std::string&)> Browser::Later(std::uint64_t id) {
  return [weak = std::weak_ptr<Browser*>(self_), id](const std::string& rest) {
    if (const auto self = weak.lock()) (*self)->Answer(id, rest);
  };
}

void Browser::SendCommand(const Json& message, std::uint64_t id) {
  const std::string area_name = TextOf(message, "area");
  const std::string name = TextOf(message, "name");
  const auto area = catalog::FindArea(area_name);
  const catalog::Command* const command = area ? catalog::FindCommand(*area, name) : nullptr;
  if (command == nullptr) throw std::invalid_argument("there is no command '" + area_name + " " + name + "'");
  if (command->asks_first && message.value("confirmed", Json(false)) != true) {
    throw std::invalid_argument(std::string(command->help) + ": must be confirmed");
  }
  panel_.Sender().Send(*command, WordsOf(message), [later = Later(id)](const Commands::Outcome& outcome) {
    if (!outcome.error.empty()) return later(Refusal(outcome.error));
    std::string rest = R"("ok":true,"took_ms":)" + Json(outcome.took_ms).dump();
    if (!outcome.event.empty()) {
      rest += R"(,"event":)" + Compact(outcome.event) + R"(,"event_ms":)" + Json(outcome.event_ms).dump();
    }
    later(rest);
  });
}

void Browser::DriveUnit(const Json& message, std::uint64_t id) {
  const gint64 start = g_get_monotonic_time();
  panel_.Unit().Do(TextOf(message, "verb"), WordsOf(message), [later = Later(id), start](const std::string& error) {
    const double took_ms = static_cast<double>(g_get_monotonic_time() - start) / 1000.0;
    later(error.empty() ? R"("ok":true,"took_ms":)" + Json(took_ms).dump() : Refusal(error));
  });
}

void Browser::Hear(std::string_view text) {
  std::uint64_t id = 0;
  try {
    const Json message = Json::parse(text, nullptr, false);
    if (!message.is_object()) throw std::invalid_argument("a message must be one JSON object");
    const auto number = message.find("id");
    if (number != message.end() && number->is_number_unsigned()) id = number->get<std::uint64_t>();
    const std::string type = TextOf(message, "type");
    if (type == "ready") {
      ready_ = true;
      unread_answers_ = 0;
      Offer();
    } else if (type == "command") {
      SendCommand(message, id);
    } else if (type == "unit") {
      DriveUnit(message, id);
    } else {
      throw std::invalid_argument("there is no message of type '" + type + "'");
    }
  } catch (const std::exception& problem) {
    Answer(id, Refusal(problem.what()));
  }
}
