/// bench_library: the library as an application uses it.
#include <HLXListenerBase.h>
#include <HLXSystemProxy.h>

#include "bench/Subject.h"

namespace {

class Library : private HLXPowerListenerBase {
 public:
  static constexpr const char* kName = "library";

  Library(bench::Counter& counter, bool with_client) : counter_(counter) {
    if (!HLX_StartSystemProxy()) bench::Fail("the service is not there");
    if (!with_client) return;
    power_ = HLX_GetSystemPowerProxy();
    power_->AddListener(this);
  }

  void Call(unsigned char type, unsigned char level) {
    power_->SetScreenLightLevel(static_cast<HLXPower::LightType>(type), level);
  }

 private:
  void OnScreenLightLevelChanged(HLXPower::LightType type, unsigned char level) override {
    bench::Hit(counter_, static_cast<unsigned char>(type), level);
  }

  bench::Counter& counter_;
  IHLXSystemPower* power_ = nullptr;
};

}  // namespace

int main(int argc, char** argv) { return bench::Run<Library>(argc, argv); }
