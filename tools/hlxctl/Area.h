/// An area of the tool: what one client can show, be told and tell.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "HLXSystemProxy.h"
#include "tools/hlxctl/Argument.h"
#include "tools/hlxctl/Value.h"

class EventLog;

/// A shared record that a client maps.
struct Record {
  const char* name;
  unsigned long long key;
  std::size_t size;
};

/// One value that can be shown.
struct Field {
  const char* name;   ///< in JSON
  const char* label;  ///< for people
  std::function<Value()> get;
};

using ArgumentValues = std::vector<ArgumentValue>;

struct Command {
  const char* name;
  const char* help;
  std::vector<Argument> arguments;
  std::function<bool(const ArgumentValues&)> run;  ///< false: the service said no
  bool confirm = false;                            ///< ask before it is sent
};

struct Area {
  const char* name;
  const char* about;
  std::vector<Record> records;  ///< must be there, so that a look does not make them
  std::vector<Field> fields;
  std::vector<Command> commands;
  /// Registers a listener and gives it into the caller's hands; empty for an area without events.
  std::function<std::shared_ptr<void>(EventLog&)> listen;
  const char* warning = "";  ///< what commands and listening do besides
};

Area PowerArea();
Area MiscArea();
Area TimeArea();
Area InfoArea();
Area UpdateArea();

/// The process's client of an interface.
template <class Client>
Client& Proxy();
template <>
inline IHLXSystemPower& Proxy() {
  return *HLX_GetSystemPowerProxy();
}
template <>
inline IHLXSystemMisc& Proxy() {
  return *HLX_GetSystemMiscProxy();
}
template <>
inline IHLXSystemTime& Proxy() {
  return *HLX_GetSystemTimeProxy();
}
template <>
inline IHLXSystemInfo& Proxy() {
  return *HLX_GetSystemInfoProxy();
}
template <>
inline IHLXSystemUpdate& Proxy() {
  return *HLX_GetSystemUpdateProxy();
}

/// Shows what `getter` gives for `fixed` as `format` puts it.
template <class Client, class Result, class... Params, class Format, class... Fixed>
std::function<Value()> Get(Result (Client::*getter)(Params...), Format format, Fixed... fixed) {
  return [=] { return format((Proxy<Client>().*getter)(fixed...)); };
}

template <class T>
T As(const ArgumentValue& value) {
  if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>) {
    return static_cast<T>(std::get<int64_t>(value));
  } else {
    return std::get<T>(value);
  }
}

template <class... T, std::size_t... I>
std::tuple<T...> AsTuple([[maybe_unused]] const ArgumentValues& values, std::index_sequence<I...>) {
  return {As<T>(values.at(I))...};
}

/// A command that passes its arguments on as they are.
template <class Client, class Result, class... Params>
std::function<bool(const ArgumentValues&)> Call(Result (Client::*command)(Params...)) {
  return [command](const ArgumentValues& values) {
    auto arguments = AsTuple<std::decay_t<Params>...>(values, std::index_sequence_for<Params...>());
    return std::apply(
        [&](auto&... argument) {
          if constexpr (std::is_void_v<Result>) {
            (Proxy<Client>().*command)(argument...);
            return true;
          } else {
            return static_cast<bool>((Proxy<Client>().*command)(argument...));
          }
        },
        arguments);
  };
}

/// A listener that lives as long as the returned pointer.
template <class Client, class Listener>
std::shared_ptr<void> Listen(EventLog& log) {
  auto listener = std::make_shared<Listener>(log);
  Proxy<Client>().AddListener(listener.get());
  return listener;
}
