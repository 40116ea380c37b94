// Reads the factory state through the installed library, without a service and without GLib.
#include <HLXListenerBase.h>
#include <HLXSystemProxy.h>
#include <HLXVersion.h>

#include <cstdio>
#include <cstring>

int main() {
  if (std::strcmp(HLX_GetVersion(), HLX_VERSION_STRING) != 0) {
    std::fprintf(stderr, "built with %s, running with %s\n", HLX_VERSION_STRING, HLX_GetVersion());
    return 1;
  }
  HLXPowerListenerBase listener;
  IHLXSystemPower* const power = HLX_GetSystemPowerProxy();
  power->AddListener(&listener);
  std::printf("radio state %d, listeners %u\n", static_cast<int>(power->GetRadioOnState()), power->GetListenerCount());
  HLX_ReleaseSystemProxy();
  return 0;
}
