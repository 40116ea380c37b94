#include "tools/hlx-panel/UnitState.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "catalog/EveryEvent.h"
#include "cli/TimeStamp.h"
#include "tools/common/Failure.h"
#include "tools/common/Records.h"
#include "tools/common/Values.h"

namespace {

constexpr std::size_t kLinesKept = 1000;
constexpr unsigned kLookMs = 40;
constexpr unsigned kLooksBetweenTries = 25;  // to hear a service that was not ready

/// Null while the record is not there or not filled.
const void* FindRecord(catalog::Record record) {
  try {
    return RecordOf(record);
  } catch (const Failure&) {
    return nullptr;
  }
}

}  // namespace

void UnitState::Lines::Add(std::string line) {
  kept_.push_back(std::move(line));
  if (kept_.size() > kLinesKept) kept_.pop_front();
  ++end_;
}

std::uint64_t UnitState::Lines::After(std::uint64_t* next, std::string* joined) const {
  const std::uint64_t first = end_ - kept_.size();
  const std::uint64_t lost = *next < first ? first - *next : 0;
  for (std::uint64_t i = *next + lost; i < end_; ++i) {
    if (!joined->empty()) *joined += ',';
    *joined += kept_[static_cast<std::size_t>(i - first)];
  }
  *next = end_;
  return lost;
}

UnitState::UnitState(const Bus& bus, std::function<void()> changed, Heard heard)
    : bus_(bus),
      changed_(std::move(changed)),
      heard_(std::move(heard)),
      shown_(catalog::Values().size()),
      there_(!bus.Owner().empty()) {
  service_ = std::make_unique<ServiceWatch>(bus, [this](bool there) {
    there_ = there;
    if (there) Listen();
    changed_();
  });
  Listen();
  Look();
}

UnitState::~UnitState() {
  if (timer_ != 0) g_source_remove(timer_);
  g_cancellable_cancel(cancel_.get());
}

void UnitState::Watch(bool somebody) {
  if (somebody == (timer_ != 0)) return;
  if (!somebody) {
    g_source_remove(std::exchange(timer_, 0));
    return;
  }
  Look();
  timer_ = g_timeout_add(
      kLookMs,
      [](gpointer self) -> gboolean {
        static_cast<UnitState*>(self)->Look();
        return G_SOURCE_CONTINUE;
      },
      this);
}

/// Once; the library then hears every later owner of the service's name as well. It would wait for one that hangs, and
/// the browsers with it, so a sign of life comes first.
void UnitState::Listen() {
  if (listening_ != nullptr || !there_ || std::exchange(asking_, true)) return;
  bus_.AskForLife(cancel_.get(), OnLife, this);
}

void UnitState::OnLife(GObject* connection, GAsyncResult* result, gpointer data) {
  GError* problem = nullptr;
  const GLibPtr<GVariant> reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &problem));
  const GLibPtr<GError> owned(problem);
  if (g_error_matches(problem, G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;  // it is gone
  UnitState& self = *static_cast<UnitState*>(data);
  self.asking_ = false;
  if (!IsAnswered(problem)) return;
  try {
    self.listening_ = std::make_unique<Events>(self.bus_,
                                               std::vector<catalog::Area>{catalog::Area::kPower, catalog::Area::kMisc,
                                                                          catalog::Area::kTime, catalog::Area::kUpdate},
                                               [&self](const catalog::Event& event) { self.Hear(event); });
  } catch (const Failure&) {
    // A service that has its name but not yet its records: tried again.
  }
}

void UnitState::Look() {
  if (++looks_ % kLooksBetweenTries == 0) Listen();
  const std::uint64_t before = revision_;
  const catalog::View<catalog::Value> values = catalog::Values();
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!values[i].InRecord()) continue;
    const void* const record = FindRecord(values[i].field.record);
    if (record != nullptr) Set(i, catalog::ReadField(values[i], record));
  }
  if (revision_ != before) changed_();
}

void UnitState::Set(std::size_t index, catalog::Scalar scalar) {
  Shown& shown = shown_[index];
  if (shown.revision != 0 && shown.scalar == scalar) return;
  const catalog::Reading& reading = catalog::Values()[index].reading;
  shown.json = Compact(Json::array({JsonOf(scalar), ForPeople(reading, scalar)}));
  shown.scalar = std::move(scalar);
  shown.revision = ++revision_;
}

void UnitState::Hear(const catalog::Event& event) {
  Json told = Json::array();
  for (const catalog::EventArgument& argument : event.arguments) {
    told.push_back({argument.name, ForPeople(argument.reading, argument.scalar)});
    // What stands in a record is read there: the event may be older.
    if (argument.value != nullptr && !argument.value->InRecord()) {
      Set(static_cast<std::size_t>(argument.value - catalog::Values().begin()), argument.scalar);
    }
  }
  events_.Add(Compact({{"time", JsonTimeStamp()},
                       {"area", catalog::NameOf(event.area)},
                       {"event", event.callback},
                       {"values", std::move(told)}}));
  heard_(event);
  changed_();
}

std::string UnitState::ChangesAfter(std::uint64_t revision) const {
  std::string changes;
  const catalog::View<catalog::Value> values = catalog::Values();
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (shown_[i].revision <= revision) continue;
    if (!changes.empty()) changes += ',';
    changes += "\"" + values[i].FullName() + "\":" + shown_[i].json;
  }
  return changes;
}
