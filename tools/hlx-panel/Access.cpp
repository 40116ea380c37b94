#include "tools/hlx-panel/Access.h"

#include <gio/gio.h>
#include <sys/random.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace {

std::string RandomToken() {
  std::array<unsigned char, 24> bytes{};
  if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
    throw std::runtime_error(std::string("no random numbers for the token: ") + std::strerror(errno));
  }
  std::string token;
  for (const unsigned char byte : bytes) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02x", byte);
    token += digits;
  }
  return token;
}

bool IsDigits(std::string_view text) {
  return !text.empty() && text.size() <= 5 && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// "[::1]:80" is "[::1]"; empty when what follows the name is no port.
std::string_view WithoutPort(std::string_view host) {
  const std::size_t end = host.substr(0, 1) == "[" ? host.find(']') + 1 : std::min(host.find(':'), host.size());
  const std::string_view rest = host.substr(end);
  return rest.empty() || (rest[0] == ':' && IsDigits(rest.substr(1))) ? host.substr(0, end) : std::string_view();
}

/// Whether a host is an address in numbers, as "192.0.2.1" or "[2001:db8::1]": nobody's DNS had a say in it.
bool IsNumeric(const std::string& host) {
  const bool brackets = host.size() > 2 && host.front() == '[' && host.back() == ']';
  return g_hostname_is_ip_address((brackets ? host.substr(1, host.size() - 2) : host).c_str()) != FALSE;
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return lower;
}

/// Takes the same time wherever the two differ.
bool Equal(std::string_view one, std::string_view other) {
  unsigned difference = one.size() == other.size() ? 0 : 1;
  for (std::size_t i = 0; i < one.size(); ++i) {
    difference |= static_cast<unsigned char>(one[i]) ^ static_cast<unsigned char>(other[i % other.size()]);
  }
  return difference == 0;
}

}  // namespace

Access::Access(std::string cookie_name, std::vector<std::string> allowed_hosts)
    : cookie_name_(std::move(cookie_name)), allowed_hosts_(std::move(allowed_hosts)), token_(RandomToken()) {
  for (std::string& host : allowed_hosts_) host = LowerCase(host);
  allowed_hosts_.emplace_back("localhost");
}

std::string Access::SetCookie() const { return cookie_name_ + "=" + token_ + "; Path=/; HttpOnly; SameSite=Strict"; }

bool Access::IsHostAllowed(std::string_view host) const {
  const std::string name = LowerCase(WithoutPort(host));
  return IsNumeric(name) || std::find(allowed_hosts_.begin(), allowed_hosts_.end(), name) != allowed_hosts_.end();
}

bool Access::IsOwnOrigin(std::string_view origin, std::string_view host) {
  if (origin.empty()) return true;
  const std::size_t scheme = origin.find("://");
  return scheme != std::string_view::npos && LowerCase(origin.substr(scheme + 3)) == LowerCase(host);
}

bool Access::IsToken(std::string_view text) const { return Equal(text, token_); }

bool Access::HoldsCookie(std::string_view cookies) const {
  const std::string wanted = cookie_name_ + "=";
  while (!cookies.empty()) {
    const std::size_t end = std::min(cookies.find(';'), cookies.size());
    std::string_view cookie = cookies.substr(0, end);
    cookie.remove_prefix(std::min(cookie.find_first_not_of(' '), cookie.size()));
    if (cookie.substr(0, wanted.size()) == wanted && IsToken(cookie.substr(wanted.size()))) return true;
    cookies.remove_prefix(std::min(end + 1, cookies.size()));
  }
  return false;
}
