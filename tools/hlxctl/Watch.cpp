#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <map>
#include <mutex>

#include "catalog/EveryEvent.h"
#include "cli/TimeStamp.h"
#include "tools/common/Bus.h"
#include "tools/common/Events.h"
#include "tools/common/Failure.h"
#include "tools/common/Loop.h"
#include "tools/common/Records.h"
#include "tools/common/Values.h"
#include "tools/hlxctl/EventLog.h"
#include "tools/hlxctl/Verbs.h"

using catalog::Area;

namespace {

constexpr unsigned kLookMs = 100;
constexpr char kGone[] = "the service is gone; these are its last values";
constexpr int kFreshLooks = 20;  ///< so long a change is marked

/// The terminal's other screen, without a cursor.
class Screen {
 public:
  Screen() { Output::Put("\x1b[?1049h\x1b[?25l"); }
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
  ~Screen() {
    try {
      Output::Put("\x1b[?25h\x1b[?1049l");
      Output::Flush();
    } catch (...) {  // it is gone, and nobody sees it
    }
  }

  static winsize Size() {
    winsize size{};
    if (ioctl(Output::Descriptor(), TIOCGWINSZ, &size) != 0 || size.ws_row < 3 || size.ws_col < 20)
      return {24, 80, 0, 0};
    return size;
  }
};

struct Shown {
  const catalog::Value* value;
  std::string text = {};
  int fresh = 0;
};

class Picture {
 public:
  explicit Picture(const std::vector<Area>& areas) {
    for (const Area area : areas) {
      for (const catalog::Value& value : catalog::Values(area)) shown_.push_back({&value});
    }
  }

  /// What an event tells of values that stand in no record. On any thread.
  void Tell(const catalog::Event& event) {
    const std::lock_guard<std::mutex> lock(mutex_);
    for (const catalog::EventArgument& argument : event.arguments) {
      if (argument.value != nullptr && argument.value->EventOnly()) told_[argument.value] = argument.scalar;
    }
  }

  void Look() {
    for (Shown& shown : shown_) {
      const std::string text = TextOf(shown);
      if (text != shown.text && !shown.text.empty()) shown.fresh = kFreshLooks;
      if (shown.fresh > 0) --shown.fresh;
      shown.text = text;
    }
  }

  std::string Draw(const winsize& size, const std::string& title) const {
    std::vector<const Shown*> cells;
    std::size_t label = 0;
    std::size_t text = 0;
    for (const Shown& shown : shown_) {
      if (shown.text.empty()) continue;
      cells.push_back(&shown);
      label = std::max(label, Characters(shown.value->label));
      text = std::max(text, Characters(shown.text));
    }
    const std::size_t rows = size.ws_row - 2U;
    const std::size_t columns = std::max<std::size_t>(1, (size.ws_col + 3U) / (label + text + 5));
    const std::size_t count = std::min(cells.size(), rows * columns);
    const std::size_t height = (count + columns - 1) / columns;
    std::string picture = "\x1b[H" + Output::Paint(title, Tone::kStrong) + "\x1b[K\n";
    for (std::size_t row = 0; row < height; ++row) {
      for (std::size_t i = row; i < count; i += height) {
        picture += cells[i]->value->label + std::string(label - Characters(cells[i]->value->label) + 2, ' ') +
                   Output::Paint(cells[i]->text, cells[i]->fresh > 0 ? Tone::kGood : Tone::kStrong);
        if (i + height < count) picture += std::string(text - Characters(cells[i]->text) + 3, ' ');
      }
      picture += "\x1b[K\n";
    }
    if (count < cells.size()) picture += std::to_string(cells.size() - count) + " more: name an area, or make room";
    return picture + "\x1b[J";
  }

 private:
  std::string TextOf(const Shown& shown) {
    const catalog::Value& value = *shown.value;
    if (!value.EventOnly()) {
      const std::optional<catalog::Scalar> now = ReadUnlessEmpty(value);
      return now ? ForPeople(value.reading, *now) : shown.text;
    }
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto told = told_.find(&value);
    return told == told_.end() ? "" : ForPeople(value.reading, told->second);
  }
  static std::size_t Characters(const std::string& text) {
    return static_cast<std::size_t>(g_utf8_strlen(text.c_str(), -1));
  }

  std::vector<Shown> shown_;
  std::mutex mutex_;
  std::map<const catalog::Value*, catalog::Scalar> told_;
};

}  // namespace

int Watch(const Request& request) {
  if (request.json || !Output::IsTerminal()) {
    throw Failure(kExitUsage, "watch draws on a terminal; for programs there is \"hlxctl monitor\"");
  }
  std::vector<Area> areas;
  for (const std::string& word : request.words) areas.push_back(*catalog::FindArea(word));
  if (areas.empty()) areas = {Area::kPower, Area::kMisc, Area::kTime};
  const Bus bus;
  Loop loop(bus, request.timeout);
  Picture picture(areas);
  const Events events(bus, areas, [&picture](const catalog::Event& event) { picture.Tell(event); });
  bool there = true;
  const ServiceWatch service(bus, [&there](bool now) { there = now; });
  const Screen screen;
  std::string drawn;
  const auto draw = [&] {
    picture.Look();
    const std::string title = there ? TimeStamp().substr(0, sizeof "2024-02-29 23:59:30" - 1) : kGone;
    const std::string now = picture.Draw(Screen::Size(), title);
    if (std::exchange(drawn, now) == now) return;
    Output::Put(now);
    Output::Flush();
  };
  loop.Guard(draw);
  loop.Every(kLookMs, draw);
  loop.Run();
  return kExitDone;
}
