/// A service for tests: the real skeleton on the real bus, on a thread of its own.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "dbus/GLibPtr.h"
#include "dbus_system.h"

class TestService {
 public:
  enum class Answer { kOk, kFalse, kError, kNone };

  /// Owns the service's name and exports the skeleton before it returns.
  TestService();
  ~TestService();

  /// What every call is answered with; kFalse differs from kOk only in the methods that return something, and kNone
  /// leaves the calls to AnswerAll().
  void SetAnswer(Answer answer) { answer_ = answer; }

  /// Answers what was left, as kOk would have.
  void AnswerAll();

  /// The calls since the last time, as "SetColorType (byte 0x05,)".
  std::vector<std::string> TakeCalls();

  /// Sends a signal of the interface; `arguments` is the tuple in GVariant's text form, "(byte 0xff, true)".
  void Emit(const std::string& signal, const std::string& arguments);

 private:
  void Run();
  static void OnCall(GClosure* closure, GValue* result, guint count, const GValue* values, gpointer hint,
                     gpointer self);
  static void Return(GDBusMethodInvocation* call, bool result);

  std::atomic<Answer> answer_{Answer::kOk};
  std::mutex mutex_;
  std::vector<std::string> calls_;
  std::vector<GDBusMethodInvocation*> unanswered_;
  GLibPtr<GMainContext> context_;
  GLibPtr<GMainLoop> loop_;
  GLibPtr<GDBusConnection> connection_;
  std::thread thread_;
};
