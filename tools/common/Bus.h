/// The session bus and who is on it. Nothing here starts the service.
#pragma once

#include <functional>
#include <string>

#include "dbus/GLibPtr.h"

inline constexpr char kServiceName[] = "com.vorn.linux.systemservice";
inline constexpr char kServicePath[] = "/com/vorn/linux/systemservice";
inline constexpr char kServiceInterface[] = "com.vorn.linux.system";

class Bus {
 public:
  /// @throws Failure when the session bus cannot be reached
  Bus();

  GDBusConnection* Connection() const { return connection_.get(); }

  /// The unique name of the service's connection; empty while nobody owns the service's name.
  std::string Owner() const;

  /// The process behind `name`; 0 when the bus does not tell.
  unsigned ProcessOf(const std::string& name) const;

  /// @throws Failure when nobody owns the service's name
  void RequireOwner() const;

  /// Asks the service for its properties, of which it has none: any answer is a sign of life.
  /// @throws Failure when there is no owner, or no answer within two seconds
  void RequireLife() const;
  /// The same without waiting: `done` is called in the main loop.
  void AskForLife(GCancellable* cancel, GAsyncReadyCallback done, gpointer data) const;

  /// A blocking call; `reply` is a tuple's type, or null. @throws what Failed() makes of a GError
  GLibPtr<GVariant> Call(const char* destination, const char* path, const char* interface, const char* method,
                         GVariant* arguments, int timeout_ms, GError** error) const;

 private:
  GLibPtr<GDBusConnection> connection_;
};

/// Whether the service itself has answered a call that ended with `problem`, which is null for none.
bool IsAnswered(const GError* problem);

/// The name of a process, "hlx-simulator"; empty when there is none.
std::string ProcessName(unsigned pid);

/// Tells when the service's name gets and loses its owner, as long as this lives.
class ServiceWatch {
 public:
  /// `changed` runs in the main loop; not for the state that `bus` is in now.
  ServiceWatch(const Bus& bus, std::function<void(bool there)> changed);
  ServiceWatch(const ServiceWatch&) = delete;
  ServiceWatch& operator=(const ServiceWatch&) = delete;
  ~ServiceWatch() { g_bus_unwatch_name(id_); }

 private:
  void Tell(bool there);

  std::function<void(bool there)> changed_;
  bool there_;
  guint id_;
};

/// Hears the bare signals of the interface, as long as it lives.
class Subscription {
 public:
  using Heard = std::function<void(const char* sender, const char* signal, GVariant* arguments)>;

  /// `heard` runs in the main loop, for every signal that is sent after this. `sender`: null for anybody.
  Subscription(const Bus& bus, const char* sender, Heard heard);
  Subscription(const Subscription&) = delete;
  Subscription& operator=(const Subscription&) = delete;
  ~Subscription() { g_dbus_connection_signal_unsubscribe(connection_, id_); }

 private:
  Heard heard_;
  GDBusConnection* connection_;
  guint id_;
};
