/// The update stick of a unit whose /media is scratch.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "dbus/GLibPtr.h"
#include "simulator/model/Unit.h"

struct StickKind {
  const char* name;   ///< as hlx-make-package has it
  const char* holds;  ///< in words
};
const std::vector<StickKind>& StickKinds();

constexpr char kRemoveStick[] = "remove";  ///< what stands for a kind where the stick is to be taken out

class Stick {
 public:
  /// Called once: with an empty text when the stick is there and the unit has said so, or with what went wrong.
  using Done = std::function<void(const std::string& problem)>;

  explicit Stick(Unit& unit) : unit_(unit) {}
  Stick(const Stick&) = delete;
  Stick& operator=(const Stick&) = delete;
  ~Stick();

  /// A stick of a kind, or with the content of a directory (a path that begins with "/"), in place of the one that is
  /// there. @throws BadValue for neither, std::runtime_error where /media is the machine's or a stick is being made
  void Insert(const std::string& what, Done done);

  /// Also ends the making of one. @throws std::runtime_error where /media is the machine's or there is no stick
  void Remove();

 private:
  void Make(const std::vector<std::string>& command);
  void EndMaker();
  static void OnMade(GObject* maker, GAsyncResult* result, gpointer self);
  std::string Mount();

  Unit& unit_;
  Done done_;  ///< set while a stick is being made
  GLibPtr<GSubprocess> maker_;
  GLibPtr<GCancellable> cancel_{g_cancellable_new()};
};
