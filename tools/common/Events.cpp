#include "tools/common/Events.h"

#include <algorithm>

#include "HLXSystemProxy.h"
#include "catalog/EveryEvent.h"
#include "data/SharedField.h"
#include "dbus_system.h"
#include "tools/common/Bus.h"
#include "tools/common/Failure.h"
#include "tools/common/Records.h"

using catalog::Area;
using HLXSystemData::Load;
using HLXSystemData::TimeShmData;

namespace {

SystemTime::DateInfo Copy(const SystemTime::DateInfo& date) {
  return {Load(date.year), Load(date.month), Load(date.day), Load(date.week)};
}

SystemTime::TimeInfo Copy(const SystemTime::TimeInfo& time) {
  return {Load(time.hour), Load(time.minute), Load(time.second)};
}

}  // namespace

/// The four signals of time, told as the library's time client tells them.
class Events::TimeSignals {
 public:
  TimeSignals(const Bus& bus, IHLXSystemTimeListener& listener)
      : record_(*static_cast<const TimeShmData*>(RecordOf(catalog::Record::kTime))), listener_(listener) {
    GError* problem = nullptr;
    constexpr int kFlags = G_DBUS_PROXY_FLAGS_DO_NOT_AUTO_START | G_DBUS_PROXY_FLAGS_DO_NOT_LOAD_PROPERTIES;
    proxy_.reset(com_vorn_linux_system_proxy_new_sync(bus.Connection(), static_cast<GDBusProxyFlags>(kFlags),
                                                      kServiceName, kServicePath, nullptr, &problem));
    const GLibPtr<GError> owned(problem);
    if (proxy_ == nullptr) throw Failure(kExitNoService, problem->message);
    Connect<&TimeSignals::On24Mode>("on24-time-mode-change-signal");
    Connect<&TimeSignals::OnDst>("on-dst-status-change-signal");
    Connect<&TimeSignals::OnDate>("on-date-info-change-signal");
    Connect<&TimeSignals::OnVehicle>("on-external-mcu-time-change-signal");
  }
  TimeSignals(const TimeSignals&) = delete;
  TimeSignals& operator=(const TimeSignals&) = delete;
  ~TimeSignals() { g_signal_handlers_disconnect_by_data(proxy_.get(), this); }

 private:
  template <auto Handler, class Argument>
  static void Relay(ComVornLinuxSystem* /*proxy*/, Argument argument, gpointer self) {
    (static_cast<TimeSignals*>(self)->*Handler)(argument);
  }
  template <auto Handler>
  void Connect(const char* signal) {
    g_signal_connect(proxy_.get(), signal, G_CALLBACK((RelayOf<Handler>(Handler))), this);
  }
  template <auto Handler, class Argument>
  static auto RelayOf(void (TimeSignals::*)(Argument)) {
    return &Relay<Handler, Argument>;
  }

  void On24Mode(gboolean on) { listener_.On24TimeModeChange(on); }
  void OnDst(gboolean on) { listener_.OnDstStatusChange(on); }
  void OnDate(guchar /*type*/) {
    SystemTime::DateTime now{Copy(record_.cur_date), Copy(record_.cur_time)};
    listener_.OnDateInfoChange(now);
  }
  void OnVehicle(guchar /*param*/) {
    SystemTime::DateTime vehicle{Copy(record_.ext_mcu_can_date_time.date), Copy(record_.ext_mcu_can_date_time.time)};
    listener_.OnExternalMcuTimeChange(vehicle);
    const int mode = Load(record_.ext_mcu_can_time_24_mode);
    if (std::exchange(told_mode_, mode) != mode) listener_.OnExternalMcu24TimeModeChange(mode);
    const unsigned char zone = Load(record_.ext_mcu_can_time_zone);
    if (std::exchange(told_zone_, zone) != zone) listener_.OnExternalMcuTimeZoneChange(zone);
  }

  const TimeShmData& record_;
  IHLXSystemTimeListener& listener_;
  GLibPtr<ComVornLinuxSystem> proxy_;
  int told_mode_ = 0;
  unsigned char told_zone_ = 0;
};

Events::Events(const Bus& bus, const std::vector<Area>& areas, std::function<void(const catalog::Event&)> sink)
    : listener_(std::make_unique<catalog::EveryEvent>(std::move(sink))) {
  bus.RequireLife();  // the library would wait longer
  for (const Area area : areas) RequireRecords(area);
  const auto wanted = [&areas](Area area) { return std::find(areas.begin(), areas.end(), area) != areas.end(); };
  if (wanted(Area::kPower) || wanted(Area::kMisc) || wanted(Area::kUpdate)) {
    if (!HLX_StartSystemProxy()) throw Failure(kExitNoService, "the system service has just left the session bus");
    if (wanted(Area::kPower)) HLX_GetSystemPowerProxy()->AddListener(listener_.get());
    if (wanted(Area::kMisc)) HLX_GetSystemMiscProxy()->AddListener(listener_.get());
    if (wanted(Area::kUpdate)) HLX_GetSystemUpdateProxy()->AddListener(listener_.get());
  }
  if (wanted(Area::kTime)) time_ = std::make_unique<TimeSignals>(bus, *listener_);
}

Events::~Events() { HLX_ReleaseSystemProxy(); }  // before the listener goes
