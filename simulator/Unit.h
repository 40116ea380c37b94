/// The simulated unit: its records, its saved settings and the one door through which it speaks.
#pragma once

#include <string>
#include <type_traits>
#include <vector>

#include "data/HLXPersist.h"
#include "simulator/RecordFields.h"
#include "simulator/Values.h"

constexpr char kServiceName[] = "com.vorn.linux.systemservice";
constexpr char kServicePath[] = "/com/vorn/linux/systemservice";

class Unit {
 public:
  /// Maps and initialises the four records. @throws std::runtime_error that names the segment that is not to be had
  explicit Unit(bool quiet);
  Unit(const Unit&) = delete;
  Unit& operator=(const Unit&) = delete;

  /// From here on signals go out through `connection`.
  void SpeakThrough(GDBusConnection* connection) { connection_ = connection; }

  /// Stores the arguments in the fields that the signal stands for and sends it. The arguments are brought into the
  /// signal's own types. @throws BadArgument that names the signal or argument that is wrong
  void AnnounceValues(const std::string& signal, const std::vector<GLibPtr<GVariant>>& arguments);

  template <class... A>
  void Announce(const char* signal, A... values) {
    std::vector<GLibPtr<GVariant>> arguments;
    (arguments.emplace_back(g_variant_ref_sink(Variant(values))), ...);
    AnnounceValues(signal, arguments);
  }

  /// Keeps a setting as the unit does. A failure is reported on standard error and has no other effect.
  void Save(const HLXSystemData::PersistItem& item, int value) const;

  /// One line for the person who watches.
  void Journal(const std::string& line) const;

  Records& records() { return records_; }

 private:
  template <class T>
  static GVariant* Variant(T value) {
    if constexpr (std::is_floating_point_v<T>) return g_variant_new_double(value);
    return g_variant_new_int64(static_cast<int64_t>(value));
  }

  PowerShmDataBase power_;
  MiscShmDataBase misc_;
  TimeShmDataBase time_;
  InfoShmDataBase info_;
  UpdatePlan update_plan_;
  Records records_;
  bool quiet_;
  GDBusConnection* connection_ = nullptr;
};
