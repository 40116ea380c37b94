#include "simulator/model/Unit.h"

#include <stdexcept>

#include "catalog/Catalog.h"
#include "data/InfoShmDataBase.h"
#include "data/MiscShmDataBase.h"
#include "data/PowerShmDataBase.h"
#include "data/TimeShmDataBase.h"
#include "simulator/model/SavedSettings.h"
#include "simulator/model/Values.h"

using namespace catalog;
using namespace HLXSystemData;

namespace {

/// Fills a record that nobody has initialised as the library does.
template <class Segment, class Data>
UnitRecord::Initialiser InitialiserFrom(void (Segment::*initialise)(Data*), unsigned long long key) {
  return [initialise, segment = std::make_shared<Segment>(key, SHM_OP_CREATE, "simulator")](void* record) {
    (segment.get()->*initialise)(static_cast<Data*>(record));
  };
}

UnitRecord::Initialiser InitialiserOf(const RecordInfo& info) {
  switch (info.record) {
    case Record::kPower:
      return InitialiserFrom(&PowerShmDataBase::InitPowerShmData, info.key);
    case Record::kMisc:
      return InitialiserFrom(&MiscShmDataBase::InitMiscShmData, info.key);
    case Record::kTime:
      return InitialiserFrom(&TimeShmDataBase::InitTimeShmData, info.key);
    default:
      return InitialiserFrom(&InfoShmDataBase::InitInfoShmData, info.key);
  }
}

/// Whether a signal with these arguments is about this value, and not about its counterpart.
bool IsMeant(const Value& value, const std::vector<Scalar>& arguments) {
  using When = Announcement::When;
  const When when = value.announced.when;
  return when == When::kAlways || (when == When::kFirstIsZero) == (arguments.at(0) == Scalar(int64_t{0}));
}

}  // namespace

Unit::Unit() {
  for (const RecordInfo& info : Records()) records_.push_back(std::make_unique<UnitRecord>(info, InitialiserOf(info)));
  for (const OwnValue& value : OwnValues()) own_[static_cast<std::size_t>(value.id)] = value.start;
}

const Value& Unit::ValueAt(const void* field) const {
  const auto* const address = static_cast<const unsigned char*>(field);
  for (const auto& record : records_) {
    const auto* const begin = static_cast<const unsigned char*>(record->state());
    if (address < begin || address >= begin + record->info().size) continue;
    for (const Value& value : Values()) {
      const Field& at = value.field;
      if (at.record == record->info().record && begin + at.offset == address && at.bit < 0) return value;
    }
  }
  throw std::logic_error("a field without a row in the catalogue");
}

RecordSet Unit::States() const {
  return {State(Record::kPower), State(Record::kMisc), State(Record::kTime), State(Record::kInfo)};
}

/// What every change of a field begins with.
void Unit::Changed(const Value& value) {
  records_[static_cast<std::size_t>(value.field.record) - 1]->Publish();
  SaveSetting(value.field, Get(value));
}

void Unit::Store(const Value& value, const Scalar& scalar) {
  if (!value.InRecord()) {
    told_[&value] = scalar;
    return;
  }
  StoreField(value, State(value.field.record), scalar);
  Changed(value);
}

Scalar Unit::Get(const Value& value) const {
  if (value.InRecord()) return ReadField(value, State(value.field.record));
  const auto told = told_.find(&value);
  return told == told_.end() ? Scalar() : told->second;
}

void Unit::Change(const Value& value, const Scalar& scalar) {
  Store(value, scalar);
  if (*value.announced.signal == '\0') {
    for (const auto& written : observers_.written) written(value.FullName(), scalar);
  } else {
    const Signal& signal = *FindSignal(value.announced.signal);
    std::vector<Scalar> arguments = ArgumentsFor(value, States());
    for (const Telling& telling : AnnouncedBy(signal)) {
      if (telling.argument < 0 || telling.value->InRecord()) continue;
      const Scalar told = Get(*telling.value);
      if (!std::holds_alternative<std::monostate>(told)) arguments[static_cast<std::size_t>(telling.argument)] = told;
    }
    Announce(signal, arguments);
  }
  if (!value.InRecord()) return;
  const void* const field = static_cast<const char*>(State(value.field.record)) + value.field.offset;
  for (const auto& follow : followers_) follow(field);
}

void Unit::Write(const Value& value, const Scalar& scalar) {
  Store(value, scalar);
  for (const auto& written : observers_.written) written(value.FullName(), scalar);
}

void Unit::Announce(const Signal& signal, const std::vector<Scalar>& arguments) {
  StoreArguments(signal, arguments, States());
  for (const Telling& telling : AnnouncedBy(signal)) {
    if (telling.argument < 0 || !IsMeant(*telling.value, arguments)) continue;
    if (telling.value->InRecord()) {
      Changed(*telling.value);
    } else {
      told_[telling.value] = arguments[static_cast<std::size_t>(telling.argument)];
    }
  }
  const GLibPtr<GVariant> tuple = TupleOf(signal, arguments);
  for (const auto& announced : observers_.announced) announced(signal, tuple.get());
}

void Unit::Keep(Own id, const Scalar& scalar) {
  own_[static_cast<std::size_t>(id)] = scalar;
  for (const auto& kept : observers_.kept) kept(OwnValues()[static_cast<std::size_t>(id)], scalar);
}

void Unit::ForgetKept() {
  for (const OwnValue& value : OwnValues()) {
    if (std::string_view(value.name).rfind("inbox.", 0) == 0) Keep(value.id, value.start);
  }
}
