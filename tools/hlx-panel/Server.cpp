#include "tools/hlx-panel/Server.h"

#include <stdexcept>
#include <string_view>
#include <utility>

#include "dbus/GLibPtr.h"
#include "tools/common/Failure.h"

namespace {

constexpr guint64 kLongestMessage = guint64{64} * 1024;  // from a browser
constexpr char kResources[] = "/hlx-panel";
constexpr char kSocketPath[] = "/ws";

struct ContentType {
  std::string_view ending;
  const char* type;
};
constexpr ContentType kContentTypes[] = {{".html", "text/html; charset=utf-8"},
                                         {".js", "text/javascript; charset=utf-8"},
                                         {".css", "text/css; charset=utf-8"},
                                         {".svg", "image/svg+xml"}};

constexpr std::pair<const char*, const char*> kHeaders[] = {
    {"Content-Security-Policy",
     "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; connect-src 'self'; base-uri 'none'; "
     "form-action 'none'; frame-ancestors 'none'"},
    {"X-Content-Type-Options", "nosniff"},
    {"Referrer-Policy", "no-referrer"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
    {"Cache-Control", "no-store"},
};

std::string Header(SoupServerMessage* message, const char* name) {
  const char* const value = soup_message_headers_get_list(soup_server_message_get_request_headers(message), name);
  return value != nullptr ? value : "";
}

void Refuse(SoupServerMessage* message, guint status, const std::string& text) {
  soup_server_message_set_status(message, status, nullptr);
  soup_server_message_set_response(message, "text/plain; charset=utf-8", SOUP_MEMORY_COPY, text.data(), text.size());
}

[[noreturn]] void FailToListen(GError* problem) {
  const GLibPtr<GError> owned(problem);
  throw std::runtime_error(std::string("cannot listen: ") + problem->message);
}

}  // namespace

Server::Server(const Options& options, Greeted greeted)
    : server_(soup_server_new("server-header", "hlx-panel", nullptr)),
      access_("hlx_panel_" + std::to_string(options.port != 0 ? options.port : g_random_int()), options.allowed_hosts),
      greeted_(std::move(greeted)) {
  // The handlers of a path stand in for those of the paths above it: each path is guarded itself.
  for (const char* const path : {"/", kSocketPath}) {
    soup_server_add_early_handler(
        server_.get(), path,
        [](SoupServer*, SoupServerMessage* message, const char*, GHashTable* query, gpointer self) {
          static_cast<const Server*>(self)->Admit(message, query);
        },
        this, nullptr);
  }
  soup_server_add_handler(
      server_.get(), nullptr,
      [](SoupServer*, SoupServerMessage* message, const char* path, GHashTable*, gpointer) { Answer(message, path); },
      this, nullptr);
  soup_server_add_websocket_handler(
      server_.get(), kSocketPath, nullptr, nullptr,
      [](SoupServer*, SoupServerMessage*, const char*, SoupWebsocketConnection* connection, gpointer self) {
        soup_websocket_connection_set_max_incoming_payload_size(connection, kLongestMessage);
        static_cast<Server*>(self)->greeted_(connection);
      },
      this, nullptr);
  Listen(options);
}

Server::~Server() { soup_server_disconnect(server_.get()); }

void Server::Listen(const Options& options) {
  GError* problem = nullptr;
  gboolean listening = FALSE;
  if (options.address.empty()) {
    listening = soup_server_listen_local(server_.get(), options.port, SOUP_SERVER_LISTEN_IPV4_ONLY, &problem);
  } else {
    const GLibPtr<GSocketAddress> address(g_inet_socket_address_new_from_string(options.address.c_str(), options.port));
    if (address == nullptr) throw Failure(kExitUsage, "'" + options.address + "' is not an IP address");
    listening = soup_server_listen(server_.get(), address.get(), static_cast<SoupServerListenOptions>(0), &problem);
  }
  if (listening == FALSE) FailToListen(problem);
  GSList* const uris = soup_server_get_uris(server_.get());
  port_ = static_cast<std::uint16_t>(g_uri_get_port(static_cast<GUri*>(uris->data)));
  if (!options.address.empty()) host_ = g_uri_get_host(static_cast<GUri*>(uris->data));
  g_slist_free_full(uris, reinterpret_cast<GDestroyNotify>(g_uri_unref));
  if (!options.address.empty()) return;
  // The other loopback address, which is not everywhere. Another program's there could be taken for the panel.
  soup_server_listen_local(server_.get(), port_, SOUP_SERVER_LISTEN_IPV6_ONLY, &problem);
  if (options.port != 0 && g_error_matches(problem, G_IO_ERROR, G_IO_ERROR_ADDRESS_IN_USE)) FailToListen(problem);
  g_clear_error(&problem);
}

std::string Server::Address() const {
  const std::string host = host_.find(':') == std::string::npos ? host_ : "[" + host_ + "]";
  return "http://" + host + ":" + std::to_string(port_) + "/?token=" + access_.Token();
}

void Server::Admit(SoupServerMessage* message, GHashTable* query) const {
  SoupMessageHeaders* const answer = soup_server_message_get_response_headers(message);
  for (const auto& [name, value] : kHeaders) soup_message_headers_append(answer, name, value);
  const std::string host = Header(message, "Host");
  if (!access_.IsHostAllowed(host)) {
    return Refuse(message, SOUP_STATUS_MISDIRECTED_REQUEST,
                  "This panel is not reached under the name '" + host + "'; see --allow-host.\n");
  }
  if (!Access::IsOwnOrigin(Header(message, "Origin"), host)) {
    return Refuse(message, SOUP_STATUS_FORBIDDEN, "Pages of others may not use the panel.\n");
  }
  const char* const method = soup_server_message_get_method(message);
  if (method != SOUP_METHOD_GET && method != SOUP_METHOD_HEAD) {
    return Refuse(message, SOUP_STATUS_METHOD_NOT_ALLOWED, "Only GET and HEAD.\n");
  }
  const auto* const token = query == nullptr ? nullptr : static_cast<const char*>(g_hash_table_lookup(query, "token"));
  if (token != nullptr && access_.IsToken(token)) {
    // Off the address bar, and so out of the browser's history.
    soup_message_headers_append(answer, "Set-Cookie", access_.SetCookie().c_str());
    soup_server_message_set_redirect(message, SOUP_STATUS_SEE_OTHER, "/");
  } else if (!access_.HoldsCookie(Header(message, "Cookie"))) {
    Refuse(message, SOUP_STATUS_UNAUTHORIZED, "Open the address that hlx-panel printed, with its token.\n");
  }
}

void Server::Answer(SoupServerMessage* message, const char* path) {
  std::string file = path;
  if (file == "/") file = "/index.html";
  const std::size_t dot = file.rfind('.');
  const std::string_view ending = dot == std::string::npos ? std::string_view() : std::string_view(file).substr(dot);
  for (const ContentType& candidate : kContentTypes) {
    if (candidate.ending != ending) continue;
    GBytes* const bytes = g_resources_lookup_data((kResources + file).c_str(), G_RESOURCE_LOOKUP_FLAGS_NONE, nullptr);
    if (bytes == nullptr) break;
    gsize size = 0;
    const auto* const data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
    soup_server_message_set_status(message, SOUP_STATUS_OK, nullptr);
    soup_server_message_set_response(message, candidate.type, SOUP_MEMORY_COPY, data, size);
    g_bytes_unref(bytes);
    return;
  }
  Refuse(message, SOUP_STATUS_NOT_FOUND, "There is no such page.\n");
}
