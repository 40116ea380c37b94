/// The state of the simulated unit, and the one way in which it changes: the record first, then what the unit saves,
/// then the signal, then what follows from it.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "catalog/Value.h"
#include "data/HLXSystemRecords.h"
#include "simulator/model/OwnValues.h"
#include "simulator/model/SignalTable.h"
#include "simulator/model/UnitRecord.h"

class Unit {
 public:
  using Scalar = catalog::Scalar;
  template <class T, class V>
  using IfNumbers = std::enable_if_t<std::is_integral_v<T> && (std::is_integral_v<V> || std::is_enum_v<V>)>;

  /// Who listens to the unit. Each is called after the thing has happened.
  struct Observers {
    std::vector<std::function<void(const catalog::Signal&, GVariant* tuple)>> announced;
    std::vector<std::function<void(const std::string& name, const Scalar&)>> written;  ///< without a signal
    std::vector<std::function<void(const OwnValue&, const Scalar&)>> kept;
  };

  /// Maps the four records. @throws std::runtime_error that names the segment that is not to be had
  Unit();
  Unit(const Unit&) = delete;
  Unit& operator=(const Unit&) = delete;

  HLXSystemData::PowerShmData& power() { return *static_cast<HLXSystemData::PowerShmData*>(State(Record::kPower)); }
  HLXSystemData::MiscShmData& misc() { return *static_cast<HLXSystemData::MiscShmData*>(State(Record::kMisc)); }
  HLXSystemData::TimeShmData& time() { return *static_cast<HLXSystemData::TimeShmData*>(State(Record::kTime)); }
  HLXSystemData::InfoShmData& info() { return *static_cast<HLXSystemData::InfoShmData*>(State(Record::kInfo)); }
  const std::vector<std::unique_ptr<UnitRecord>>& records() const { return records_; }

  /// Changes a field of a record, as everything that happens to a unit does. A signal goes out also when the value is
  /// the old one.
  template <class T, class V, class = IfNumbers<T, V>>
  void Change(const T& field, V value) {
    Change(ValueAt(&field), Scalar(int64_t{value}));
  }
  void Change(const catalog::Value& value, const Scalar& scalar);

  /// Record and saved setting alone: nobody is told and nothing follows.
  template <class T, class V, class = IfNumbers<T, V>>
  void Write(const T& field, V value) {
    Write(ValueAt(&field), Scalar(int64_t{value}));
  }
  void Write(const catalog::Value& value, const Scalar& scalar);

  /// Sends a signal with these arguments; the fields that it stands for are written and saved before. Nothing follows.
  template <class... A>
  void Announce(const char* signal, A... arguments) {
    Announce(SignalNamed(signal), {Scalar(int64_t{arguments})...});
  }
  void Announce(const catalog::Signal& signal, const std::vector<Scalar>& arguments);

  /// A value that stands in no record.
  void Keep(Own id, const Scalar& scalar);
  const Scalar& Kept(Own id) const { return own_[static_cast<std::size_t>(id)]; }
  int64_t KeptNumber(Own id) const { return std::get<int64_t>(Kept(id)); }
  /// What applications have sent is forgotten.
  void ForgetKept();

  /// Nothing for a value that nobody has told yet.
  Scalar Get(const catalog::Value& value) const;

  /// `follow` is called after a change, with the address of its field in state().
  void Follow(std::function<void(const void* field)> follow) { followers_.push_back(std::move(follow)); }
  Observers& observers() { return observers_; }

 private:
  using Record = catalog::Record;

  void* State(Record record) const { return records_[static_cast<std::size_t>(record) - 1]->state(); }
  const catalog::Value& ValueAt(const void* field) const;
  void Store(const catalog::Value& value, const Scalar& scalar);
  void Changed(const catalog::Value& value);
  catalog::RecordSet States() const;

  std::vector<std::unique_ptr<UnitRecord>> records_;  ///< in the order of catalog::Record
  std::map<const catalog::Value*, Scalar> told_;      ///< values that are known from events alone
  std::array<Scalar, kOwnCount> own_;
  std::vector<std::function<void(const void*)>> followers_;
  Observers observers_;
};
