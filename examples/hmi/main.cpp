// The smallest complete application of the library. Start here.
//
// It connects to the system service, reads some state, sends a command, and prints every power event until it is
// interrupted. The process is named hmi, like the one that shows the head unit's screens.
#include <HLXListenerBase.h>
#include <HLXSystemProxy.h>
#include <glib-unix.h>
#include <glib.h>

#include <cstdio>

namespace {

// 1. Events arrive as callbacks of a listener. HLXPowerListenerBase has an empty body for each of them: override what
//    you care for. Callbacks run in the main loop below, one at a time; keep them short, and do not add or remove
//    listeners in them.
class PowerEvents : public HLXPowerListenerBase {
 public:
  void OnAccStateChange(int on) override { Say("ACC is", on); }
  void OnScreenStateChange(int on) override { Say("the screen is", on); }
  void OnHeadLightStateChange(int on) override { Say("the head lights are", on); }
  void OnScreenLightLevelChanged(HLXPower::LightType type, unsigned char level) override {
    std::printf("event: the screen's %s brightness is %d\n", type == HLXPower::LIGHT_TYPE_DAY ? "day" : "night", level);
  }

 private:
  static void Say(const char* what, int on) { std::printf("event: %s %s\n", what, on != 0 ? "on" : "off"); }
};

gboolean Quit(gpointer loop) {
  g_main_loop_quit(static_cast<GMainLoop*>(loop));
  return G_SOURCE_CONTINUE;
}

}  // namespace

int main() {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);

  // 2. Connect. Events will be delivered in this thread's main context. False: the service is not there (yet).
  if (!HLX_StartSystemProxy()) {
    std::fprintf(stderr, "hmi: the system service is not on the session bus\n");
    return 1;
  }

  // 3. Ask for a client and listen. The library owns the client; the listener is yours and must outlive the release.
  PowerEvents events;
  IHLXSystemPower* const power = HLX_GetSystemPowerProxy();
  power->AddListener(&events);

  // 4. Read. Getters look into shared memory: no round trip, no error, callable from any thread.
  std::printf("state: ACC is %s, the screen is %s, brightness by day %u, by night %u\n",
              power->IsAccOnState() != 0 ? "on" : "off", power->IsScreenOnState() != 0 ? "on" : "off",
              power->GetScreenLightLevel(HLXPower::LIGHT_TYPE_DAY),
              power->GetScreenLightLevel(HLXPower::LIGHT_TYPE_NIGHT));

  // 5. Command. This blocks for one round trip; the change comes back as an event. Most commands return nothing:
  //    HLX_GetLastCallError() tells whether one has failed.
  power->SetScreenLightLevel(HLXPower::LIGHT_TYPE_DAY, 60);
  if (const char* const error = HLX_GetLastCallError()) std::fprintf(stderr, "hmi: the command failed: %s\n", error);

  // 6. Run a main loop: without one no event arrives.
  GMainLoop* const loop = g_main_loop_new(nullptr, FALSE);
  const guint on_int = g_unix_signal_add(SIGINT, Quit, loop);
  const guint on_term = g_unix_signal_add(SIGTERM, Quit, loop);
  g_main_loop_run(loop);
  g_source_remove(on_int);
  g_source_remove(on_term);
  g_main_loop_unref(loop);

  // 7. Release: afterwards `power` is gone.
  HLX_ReleaseSystemProxy();
  std::printf("bye\n");
  return 0;
}
