/// Who may talk to the panel: somebody who holds the token that it printed, from a page that it served itself.
#pragma once

#include <string>
#include <string_view>
#include <vector>

class Access {
 public:
  /// @param cookie_name tells the panels of one machine apart: browsers keep cookies by host, whatever the port
  Access(std::string cookie_name, std::vector<std::string> allowed_hosts);

  const std::string& Token() const { return token_; }
  /// Value of the header Set-Cookie for a browser that came with the token.
  std::string SetCookie() const;

  /// A request is for this machine by address or by a name that was allowed; another name is one that somebody else's
  /// DNS let point here.
  bool IsHostAllowed(std::string_view host) const;
  /// `origin`, "" where the browser sent none, is the page of `host` itself.
  static bool IsOwnOrigin(std::string_view origin, std::string_view host);

  bool IsToken(std::string_view text) const;
  /// `cookies` is the header Cookie as it came.
  bool HoldsCookie(std::string_view cookies) const;

 private:
  std::string cookie_name_;
  std::vector<std::string> allowed_hosts_;
  std::string token_;
};
