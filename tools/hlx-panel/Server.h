/// The panel's web server: its page, and a WebSocket for each browser that shows it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tools/hlx-panel/Access.h"
#include "tools/hlx-panel/SoupPtr.h"

class Server {
 public:
  struct Options {
    std::uint16_t port = 0;  ///< 0: any that is free
    std::string address;     ///< empty: 127.0.0.1 and ::1
    std::vector<std::string> allowed_hosts;
  };
  /// A browser has come; it is told and heard in the main loop until the connection is closed.
  using Greeted = std::function<void(SoupWebsocketConnection*)>;

  /// Listens. @throws std::runtime_error when it cannot
  Server(const Options& options, Greeted greeted);
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server();

  /// What to open in a browser, the token included.
  std::string Address() const;

 private:
  void Listen(const Options& options);
  /// Every request comes through here first. Refuses with a status, or lets it go on.
  void Admit(SoupServerMessage* message, GHashTable* query) const;
  static void Answer(SoupServerMessage* message, const char* path);

  SoupPtr<SoupServer> server_;
  std::uint16_t port_ = 0;
  std::string host_ = "127.0.0.1";
  Access access_;
  Greeted greeted_;
};
