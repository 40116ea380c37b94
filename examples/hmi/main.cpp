// The smallest complete application of the library. Start here.
//
// It connects to the system service, reads some state, sends a command, and prints what it hears until it is
// interrupted. The process is named hmi, like the one that shows the head unit's screens.
#include <HLXListenerBase.h>
#include <HLXSystemProxy.h>
#include <glib-unix.h>
#include <glib.h>

#include <cstdio>
#include <functional>
#include <string>
#include <utility>

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

void ShowState() {
  IHLXSystemPower* const power = HLX_GetSystemPowerProxy();
  std::printf("state: ACC is %s, the screen is %s, brightness by day %u, by night %u\n",
              power->IsAccOnState() != 0 ? "on" : "off", power->IsScreenOnState() != 0 ? "on" : "off",
              power->GetScreenLightLevel(HLXPower::LIGHT_TYPE_DAY),
              power->GetScreenLightLevel(HLXPower::LIGHT_TYPE_NIGHT));
}

// 2. The service may go and come back. What changed meanwhile was not announced: read everything again.
class ConnectionEvents : public IHLXConnectionListener {
 public:
  void OnServiceLost() override { std::printf("service lost\n"); }
  void OnServiceBack() override {
    std::printf("service back\n");
    ShowState();
  }
  void OnBusLost() override { std::printf("bus lost\n"); }  // GIO ends the process now, here through Quit()
};

// 3. A command blocks for one round trip, for as long as the service takes. So that the screen does not stall, a worker
//    sends the commands, one after the other, and takes each outcome back to the main loop.
class Commands {
 public:
  using Outcome = std::function<void(const std::string& error)>;  // an empty error: the command has arrived

  ~Commands() { g_thread_pool_free(worker_, FALSE, TRUE); }  // when the last one is through
  void Send(std::function<void()> command, Outcome outcome) {
    g_thread_pool_push(worker_, new Job{std::move(command), std::move(outcome), ""}, nullptr);
  }

 private:
  struct Job {
    std::function<void()> command;
    Outcome outcome;
    std::string error;
  };

  static void Run(gpointer data, gpointer /*unused*/) {
    auto* const job = static_cast<Job*>(data);
    job->command();
    if (const char* const error = HLX_GetLastCallError()) job->error = error;
    g_main_context_invoke_full(nullptr, G_PRIORITY_DEFAULT, Tell, job, Delete);
  }
  static gboolean Tell(gpointer data) {
    const auto* const job = static_cast<Job*>(data);
    job->outcome(job->error);
    return G_SOURCE_REMOVE;
  }
  static void Delete(gpointer data) { delete static_cast<Job*>(data); }

  GThreadPool* const worker_ = g_thread_pool_new(Run, nullptr, 1, TRUE, nullptr);  // one thread: in order
};

gboolean Quit(gpointer loop) {
  g_main_loop_quit(static_cast<GMainLoop*>(loop));
  return G_SOURCE_CONTINUE;
}

}  // namespace

int main() {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);

  // 4. Connect. Events will be delivered in this thread's main context. False: the service is not there (yet).
  if (!HLX_StartSystemProxy()) {
    std::fprintf(stderr, "hmi: the system service is not on the session bus\n");
    return 1;
  }

  // 5. Ask for a client and listen. The library owns the client; the listeners are yours. A listener of a client must
  //    outlive the release, one of the connection its removal.
  PowerEvents events;
  ConnectionEvents connection;
  IHLXSystemPower* const power = HLX_GetSystemPowerProxy();
  power->AddListener(&events);
  HLX_AddConnectionListener(&connection);

  // 6. Read. Getters look into shared memory: no round trip, no error, callable from any thread.
  ShowState();

  {
    // 7. Command. The change comes back as an event. Most commands return nothing: HLX_GetLastCallError() tells the
    //    thread that sent it whether it has arrived.
    HLX_SetCallTimeout(5000);
    Commands commands;
    commands.Send(
        [power] { power->SetScreenLightLevel(HLXPower::LIGHT_TYPE_DAY, 60); },
        [](const std::string& error) { std::printf("command: %s\n", error.empty() ? "sent" : error.c_str()); });

    // 8. Run a main loop: without one no event arrives.
    GMainLoop* const loop = g_main_loop_new(nullptr, FALSE);
    const guint on_int = g_unix_signal_add(SIGINT, Quit, loop);
    const guint on_term = g_unix_signal_add(SIGTERM, Quit, loop);
    g_main_loop_run(loop);
    g_source_remove(on_int);
    g_source_remove(on_term);
    g_main_loop_unref(loop);
  }

  // 9. Release, when no thread is inside the library any more: afterwards `power` is gone.
  HLX_RemoveConnectionListener(&connection);
  HLX_ReleaseSystemProxy();
  std::printf("bye\n");
  return 0;
}
