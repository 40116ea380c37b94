/// The configuration of any other platform, whose store only it knows.
#include "platform/LibConfigs.h"
#include "tools/hlxctl/Doctor.h"

Findings CheckConfiguration(Patient& /*patient*/) {
  const std::string protocol = GetLibConfigs()->GetString("/system/using_can_protocol");
  if (protocol.empty()) {
    return {{Health::kWarning, "no CAN-box protocol is configured", "set /system/using_can_protocol"}};
  }
  return {{Health::kOk, "the CAN-box protocol is " + protocol}};
}
