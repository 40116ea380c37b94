#include "simulator/control/Stick.h"

#include <filesystem>
#include <stdexcept>
#include <utility>

#include "HLXUpdateTypes.h"
#include "catalog/Catalog.h"
#include "cli/Arguments.h"
#include "platform/LibConfigs.h"
#include "simulator/Installed.h"
#include "simulator/model/Names.h"

namespace fs = std::filesystem;

namespace {

constexpr char kStick[] = "/media/usbstorage0";
constexpr char kNewStick[] = "/media/.usbstorage0";  ///< until it is complete

void NeedScratch() {
  if (IsInSandbox()) return;
  throw std::runtime_error(
      "stick: /media is the machine's here and is never touched; sticks are for units inside hlx-simulator run and "
      "scripts/sandbox");
}

bool IsThere() { return fs::exists(fs::symlink_status(kStick)); }

/// What makes the stick that somebody asked for.
std::vector<std::string> Maker(const std::string& what) {
  if (what.rfind('/', 0) == 0) {
    if (!fs::is_directory(what)) throw catalog::BadValue("stick: there is no directory " + what);
    if (std::string(kStick).rfind((fs::canonical(what) / "").string(), 0) == 0) {
      throw catalog::BadValue("stick: " + what + " holds the unit's own /media");
    }
    return {"cp", "-rT", "--no-preserve=mode", "--", what, kNewStick};
  }
  std::vector<std::string> names;
  for (const StickKind& kind : StickKinds()) {
    names.emplace_back(kind.name);
    if (what != kind.name) continue;
    const std::string program = SiblingProgram("hlx-make-package");
    if (program.empty()) throw std::runtime_error("stick: hlx-make-package was not installed with this program");
    return {program, "--model", GetLibConfigs()->GetString("/project/project_model_name"), what, kNewStick};
  }
  throw UnknownAmong("kind of stick", what, names);
}

}  // namespace

const std::vector<StickKind>& StickKinds() {
  static const std::vector<StickKind> kinds = {{"good", "a package that passes all checks"},
                                               {"older", "a package that is older than the unit"},
                                               {"wrong-hardware", "a package for other hardware"},
                                               {"wrong-project", "a package for another project"},
                                               {"bad-checksum", "a package with a checksum that is not its own"},
                                               {"can-file", "an update for the CAN box"},
                                               {"empty", "nothing"},
                                               {"bomb", "a small package whose version file unpacks to 100 MiB"}};
  return kinds;
}

Stick::~Stick() {
  g_cancellable_cancel(cancel_.get());
  EndMaker();
}

void Stick::EndMaker() {
  if (done_) g_subprocess_force_exit(maker_.get());
}

void Stick::Insert(const std::string& what, Done done) {
  NeedScratch();
  if (done_) throw std::runtime_error("stick: another one is just being made");
  const std::vector<std::string> command = Maker(what);
  fs::remove_all(kNewStick);
  Make(command);
  done_ = std::move(done);
}

void Stick::Remove() {
  NeedScratch();
  EndMaker();
  if (!IsThere() && done_) return;
  if (!IsThere()) throw std::runtime_error("stick: there is none");
  fs::remove_all(kStick);
  unit_.Announce("OnPackageStateChangeNotify", HLXUpdate::UPDATE_PACKAGE_REMOVED);
  unit_.Announce("DetectValidUpdateFileNotifySignal", HLXUpdate::UPDATE_NOTIFY_REMOVED);
}

void Stick::Make(const std::vector<std::string>& command) {
  GError* problem = nullptr;
  maker_.reset(g_subprocess_newv(ArgumentsOf(command).data(), G_SUBPROCESS_FLAGS_STDERR_PIPE, &problem));
  if (maker_ == nullptr) throw std::runtime_error(std::string("stick: ") + GLibPtr<GError>(problem)->message);
  g_subprocess_communicate_utf8_async(maker_.get(), nullptr, cancel_.get(), OnMade, this);
}

void Stick::OnMade(GObject* maker, GAsyncResult* result, gpointer self) {
  gchar* text = nullptr;
  GError* problem = nullptr;
  g_subprocess_communicate_utf8_finish(G_SUBPROCESS(maker), result, nullptr, &text, &problem);
  const GLibPtr<gchar> said(text);
  const GLibPtr<GError> error(problem);
  if (g_error_matches(problem, G_IO_ERROR, G_IO_ERROR_CANCELLED) != FALSE) return;
  auto& stick = *static_cast<Stick*>(self);
  const Done done = std::exchange(stick.done_, nullptr);
  const bool made = error == nullptr && g_subprocess_get_successful(G_SUBPROCESS(maker)) != FALSE;
  if (made) return done(stick.Mount());
  const bool ended = g_subprocess_get_if_signaled(G_SUBPROCESS(maker)) != FALSE;
  done(std::string("stick: ") + (error != nullptr ? error->message : ended ? "taken out" : g_strchomp(said.get())));
}

/// The problem; none when the new stick is where the unit looks.
std::string Stick::Mount() {
  try {
    const bool replaces = IsThere();
    fs::remove_all(kStick);
    fs::rename(kNewStick, kStick);
    unit_.Announce("OnPackageStateChangeNotify",
                   replaces ? HLXUpdate::UPDATE_PACKAGE_CHANGED : HLXUpdate::UPDATE_PACKAGE_INSERTED);
    return {};
  } catch (const fs::filesystem_error& problem) {
    return problem.what();
  }
}
