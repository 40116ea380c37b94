#ifndef I_HLX_SYSTEM_TIME_LISTENER_H
#define I_HLX_SYSTEM_TIME_LISTENER_H

#include "HLXExport.h"
#include "HLXTimeTypes.h"

/// Implemented by applications that want to hear of clock changes; register it with IHLXSystemTime::AddListener().
///
/// Callbacks run on the thread that iterates the main context of HLX_StartSystemProxy(), one at a time, with the
/// client's listener mutex held: they must not add or remove listeners, release the library or block for long.
/// References are valid during the call only. The order of the virtual functions is part of the binary interface.
class HLX_API IHLXSystemTimeListener {
 public:
  virtual ~IHLXSystemTimeListener() = default;

  /// @param now date and time as the record holds them
  virtual void OnDateInfoChange(SystemTime::DateTime& now) = 0;
  /// @param is24Mode non-zero: 24-hour display
  virtual void On24TimeModeChange(int is24Mode) = 0;
  /// @param isDst non-zero: daylight saving is in force; negative: not known
  virtual void OnDstStatusChange(int isDst) = 0;
  /// Date and time that an external MCU read from the vehicle.
  virtual void OnExternalMcuTimeChange(SystemTime::DateTime& vehicle) = 0;
  /// The vehicle's 24-hour setting, when it differs from the one told last (0 at first).
  virtual void OnExternalMcu24TimeModeChange(int is24Mode) = 0;
  /// The vehicle's zone, in the vehicle's own numbers, when it differs from the one told last (0 at first).
  virtual void OnExternalMcuTimeZoneChange(unsigned char zone) = 0;
};

#endif
