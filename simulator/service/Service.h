/// The simulated system service on the bus.
#pragma once

#include <atomic>
#include <functional>

#include "catalog/Signal.h"
#include "simulator/service/Skeleton.h"

constexpr char kServiceName[] = "com.vorn.linux.systemservice";
constexpr char kServicePath[] = "/com/vorn/linux/systemservice";

/// A bus connection of its own, which comes and goes with the service.
class Service {
 public:
  /// @param on_call  answers a call, now or later
  explicit Service(Skeleton::Handler on_call);
  ~Service();
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;

  /// Connects, exports the interface, and owns the name. @throws std::runtime_error when somebody else owns it
  void Open();
  /// Ends the connection without a word, as the end of a process does.
  void Close();
  bool IsOpen() const { return connection_ != nullptr; }

  /// Gives the name away; the connection stays.
  void ReleaseItsName();
  /// Is open and owns the name again, or says on standard error why not.
  void ComeBack();

  /// Whether it answers nothing and sends nothing, as a process does that hangs.
  void SetHanging(bool hanging) { hangs_ = hanging; }
  /// Whether what is sent goes out.
  bool IsAudible() const { return IsOpen() && !hangs_; }

  /// Nothing while it is closed or hangs.
  void Send(const catalog::Signal& signal, GVariant* tuple);

  /// Calls `done` when the bus has taken everything that was sent so far; at once while it is closed.
  void WhenSent(std::function<void()> done);

 private:
  void OwnItsName();
  static GDBusMessage* OnMessage(GDBusConnection* connection, GDBusMessage* message, gboolean incoming,
                                 gpointer service);

  GLibPtr<GDBusConnection> connection_;
  std::atomic<bool> hangs_{false};
  Skeleton skeleton_;
};
