#ifndef I_HLX_SYSTEM_TIME_LISTENER_H
#define I_HLX_SYSTEM_TIME_LISTENER_H

#include "HLXExport.h"
#include "HLXTimeTypes.h"

/// @addtogroup time
/// @{

/// Implemented by applications that want to hear of clock changes; register it with IHLXSystemTime::AddListener().
///
/// Callbacks run on the thread that iterates the main context of HLX_StartSystemProxy(), one at a time, with the
/// client's listener mutex held: they must not add or remove listeners, release the library, iterate a main context,
/// throw or block for long. References are valid during the call only. The application owns the listener. The order of
/// the virtual functions is part of the binary interface.
class HLX_API IHLXSystemTimeListener {
 public:
  virtual ~IHLXSystemTimeListener() = default;

  /// The date or the time was published anew. @param now local date and time as the record holds them
  virtual void OnDateInfoChange(SystemTime::DateTime& now) = 0;
  /// The clock display was set to 24 or 12 hours. @param is24Mode non-zero: 24 hours
  virtual void On24TimeModeChange(int is24Mode) = 0;
  /// Daylight saving in the current zone began or ended. @param isDst non-zero: it is in force
  virtual void OnDstStatusChange(int isDst) = 0;
  /// An external MCU reported the vehicle's date and time. @param vehicle as the record holds them
  virtual void OnExternalMcuTimeChange(SystemTime::DateTime& vehicle) = 0;
  /// The vehicle's 24-hour setting, when it differs from the one told last (0 at first).
  /// @param is24Mode non-zero: 24 hours
  virtual void OnExternalMcu24TimeModeChange(int is24Mode) = 0;
  /// The vehicle's zone, when it differs from the one told last (0 at first).
  /// @param zone in the vehicle's own numbers, 0 to 255
  virtual void OnExternalMcuTimeZoneChange(unsigned char zone) = 0;
};

/// @}

#endif
