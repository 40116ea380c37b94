// Fuzz target over all texts that come from outside the unit's software: version files, the kernel command line and the
// hardware strap. Each result is held to a plain second reading of the same rule.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>

#include "client/info/DeviceIdentity.h"
#include "client/info/VersionFile.h"
#include "tests/fuzz/Input.h"

namespace {

std::optional<std::string> PlainValue(const std::string& text, const std::string& key) {
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    const std::string line = text.substr(start, end - start);
    const std::size_t colon = line.find(':');
    if (colon == key.size() && line.substr(0, colon) == key) return line.substr(colon + 1);
    start = end + 1;
  }
  return std::nullopt;
}

void VersionFile(const std::string& text) {
  // Besides the keys of the library the one that the text begins with, so that there is often something to find.
  for (const std::string& key : {std::string("ARM Version"), std::string(), text.substr(0, text.find(':'))}) {
    Require(FindVersionValue(text, key) == PlainValue(text, key));
  }
}

void SerialNumber(const std::string& text) {
  const std::string serial = DeviceIdentity::SerialNumberFrom(text);
  const std::size_t uuid = text.find("uuid=");
  Require(serial.empty() == (uuid == std::string::npos || text.size() - uuid < 32));
  std::string ungrouped;
  for (std::size_t i = 0; i < serial.size(); ++i) {
    if (i % 5 == 4) {
      Require(serial[i] == ':');
    } else {
      ungrouped += serial[i];
    }
  }
  Require(serial.empty() || ungrouped == text.substr(uuid + 5, 32));
}

void MachineSample(const std::string& text) {
  try {
    const unsigned int value = DeviceIdentity::MachineSampleFrom(text);
    Require(value == static_cast<unsigned int>(std::strtol(text.c_str(), nullptr, 16)));
  } catch (const std::invalid_argument&) {
  } catch (const std::out_of_range&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  VersionFile(text);
  SerialNumber(text);
  MachineSample(text);
  return 0;
}
