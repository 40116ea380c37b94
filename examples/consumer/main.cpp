// Reads the factory state through the installed library, without a service and without GLib.
#include <HLXListenerBase.h>
#include <HLXSystemProxy.h>

#include <cstdio>

int main() {
  HLXPowerListenerBase listener;
  IHLXSystemPower* const power = HLX_GetSystemPowerProxy();
  power->AddListener(&listener);
  std::printf("radio state %d, listeners %u\n", static_cast<int>(power->GetRadioOnState()), power->GetListenerCount());
  HLX_ReleaseSystemProxy();
  return 0;
}
