#include <nlohmann/json.hpp>
#include <stdexcept>

#include "catalog/EveryEvent.h"
#include "tools/common/Bus.h"
#include "tools/common/Events.h"
#include "tools/common/Failure.h"
#include "tools/common/Loop.h"
#include "tools/hlxctl/Condition.h"
#include "tools/hlxctl/EventLog.h"
#include "tools/hlxctl/Verbs.h"

using catalog::Area;

namespace {

constexpr unsigned kLookMs = 20;

/// The areas that have events.
std::vector<Area> AreasOf(const std::vector<std::string>& words) {
  std::vector<Area> areas;
  for (const std::string& word : words) {
    areas.push_back(*catalog::FindArea(word));
    if (areas.back() == Area::kInfo)
      throw std::invalid_argument("'info' has no events: power, misc, time and update have");
  }
  return areas.empty() ? std::vector<Area>{Area::kPower, Area::kMisc, Area::kTime, Area::kUpdate} : areas;
}

}  // namespace

int Monitor(const Request& request) {
  const std::vector<Area> areas = AreasOf(request.words);
  const Bus bus;
  Loop loop(bus, request.timeout);
  EventLog log(request, loop);
  const Events events(bus, areas, [&log](const catalog::Event& event) { log.Write(event); });
  const ServiceWatch watch(bus, [&log](bool there) { log.WriteService(there); });
  std::string names;
  for (const Area area : areas) names.append(names.empty() ? "" : ", ").append(NameOf(area));
  Output::Note("listening to " + names + (request.timeout == 0 ? "; Ctrl-C ends" : ""));
  return Follow(
      loop, request, [&log] { return log.Count(); }, "events");
}

int WaitFor(const Request& request) {
  std::string text;  // also in pieces: power.screen = on
  for (const std::string& word : request.words) text += word;
  const Condition condition(text);
  const Bus bus;
  if (condition.NeedsService()) bus.RequireOwner();
  Loop loop(bus, request.timeout);
  Request one = request;
  one.count = 1;
  EventLog log(one, loop);
  std::unique_ptr<Events> events;
  if (condition.NeedsEvents()) {
    events = std::make_unique<Events>(bus, std::vector<Area>{condition.EventArea()}, [&](const catalog::Event& event) {
      if (condition.IsMet(event)) log.Write(event);
    });
  }
  const ServiceWatch watch(bus, [&](bool there) {
    log.WriteService(there);
    if (condition.IsMet(there)) loop.Done();
  });
  const auto look = [&] {
    if (!condition.IsMet()) return;
    condition.Print(request);
    loop.Done();
  };
  if (condition.NeedsLooks()) {
    condition.RequireRecord();
    if (condition.IsMet()) {
      condition.Print(request);
      return kExitDone;
    }
    loop.Every(kLookMs, look);
  }
  Output::Note("waiting for " + condition.Text() + (request.timeout == 0 ? "; Ctrl-C ends" : ""));
  loop.RunUntilDone([&condition] { return condition.Text() + condition.Now(); });
  return kExitDone;
}
