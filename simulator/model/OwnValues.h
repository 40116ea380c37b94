/// Values of the simulated unit that stand in no record: what applications have sent, and how the unit is to behave.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "catalog/Reading.h"

enum class Own {
  kState,
  kUpdateFails,
  kUpdateSeconds,
  kSource,
  kVolume,
  kTimeText,
  kRadioText,
  kTouchText,
  kPsText,
  kMediaText,
  kPhoneText,
  kLogo,
  kLogoInfo,
  kBluetoothCall,
  kCarplayCall,
  kButtonLight,
  kRearView,
  kFullBrightness,
  kSpeakerDetection,
  kAutoTest,
  kScreenshot,
  kCount,
};

struct OwnValue {
  Own id;
  const char* name;  ///< "inbox.source"
  const char* label;
  catalog::Reading reading;
  catalog::Scalar start;  ///< what a unit that has just started holds
  bool settable = false;
};

constexpr std::size_t kOwnCount = static_cast<std::size_t>(Own::kCount);

/// By id.
const std::array<OwnValue, kOwnCount>& OwnValues();

/// Null when there is none of this name.
const OwnValue* FindOwnValue(std::string_view name);
