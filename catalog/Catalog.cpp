#include "catalog/Catalog.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <numeric>

#include "catalog/AllValues.h"

namespace catalog {

namespace {

char Folded(char c) { return c == '-' ? '_' : static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

bool IsSame(std::string_view one, std::string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char a, char b) { return Folded(a) == Folded(b); });
}

/// The rows of `area` in a table that is sorted by area.
template <class Row>
View<Row> RowsOf(const Row* begin, const Row* end, Area area) {
  const auto is_other = [area](const Row& row) { return row.area != area; };
  const Row* const first = std::find_if_not(begin, end, is_other);
  return {first, std::find_if(first, end, is_other)};
}

template <class Row>
const Row* FindIn(View<Row> rows, std::string_view name) {
  const auto* const row = std::find_if(rows.begin(), rows.end(), [name](const Row& r) { return IsSame(r.name, name); });
  return row != rows.end() ? row : nullptr;
}

/// How many characters must be added, dropped, replaced or swapped with their neighbour.
std::size_t Distance(std::string_view one, std::string_view other) {
  std::vector<std::size_t> before_last, last(other.size() + 1);
  std::iota(last.begin(), last.end(), std::size_t{0});
  for (std::size_t i = 1; i <= one.size(); ++i) {
    std::vector<std::size_t> row(other.size() + 1, i);
    for (std::size_t j = 1; j <= other.size(); ++j) {
      const bool same = Folded(one[i - 1]) == Folded(other[j - 1]);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
      const bool swapped =
          i > 1 && j > 1 && Folded(one[i - 1]) == Folded(other[j - 2]) && Folded(one[i - 2]) == Folded(other[j - 1]);
      if (swapped) row[j] = std::min(row[j], before_last[j - 2] + 1);
    }
    before_last = std::move(last);
    last = std::move(row);
  }
  return last.back();
}

/// Whether `name` is `part` with characters left out.
bool IsPartOf(std::string_view part, std::string_view name) {
  std::size_t found = 0;
  for (const char c : name) {
    if (found < part.size() && Folded(c) == Folded(part[found])) ++found;
  }
  return found == part.size();
}

template <class Row>
std::vector<std::string> NamesOf(View<Row> rows) {
  std::vector<std::string> names;
  for (const Row& row : rows) names.emplace_back(row.name);
  return names;
}

}  // namespace

View<Value> Values() { return {rows::kAllValues.data(), rows::kAllValues.data() + rows::kAllValues.size()}; }
View<Value> Values(Area area) { return RowsOf(Values().begin(), Values().end(), area); }
View<Command> Commands(Area area) { return RowsOf(Commands().begin(), Commands().end(), area); }

std::optional<Area> FindArea(std::string_view name) {
  for (const Area area : kAreas) {
    if (IsSame(NameOf(area), name)) return area;
  }
  return {};
}

const Value* FindValue(std::string_view full_name) {
  const std::size_t dot = full_name.find('.');
  if (dot == std::string_view::npos) return nullptr;
  const auto area = FindArea(full_name.substr(0, dot));
  return area ? FindValue(*area, full_name.substr(dot + 1)) : nullptr;
}

const Value* FindValue(Area area, std::string_view name) { return FindIn(Values(area), name); }
const Command* FindCommand(Area area, std::string_view name) { return FindIn(Commands(area), name); }
const Signal* FindSignal(std::string_view name) { return FindIn(Signals(), name); }

const Signal* SignalOf(std::string_view callback) {
  for (const Signal& signal : Signals()) {
    for (const char* const name : signal.callbacks) {
      if (name != nullptr && callback == name) return &signal;
    }
  }
  return nullptr;
}

std::vector<std::string> Nearest(std::string_view wrong, const std::vector<std::string>& right) {
  const std::string_view start = wrong.substr(0, 64);  // no name is longer, and the work is bounded
  std::vector<std::pair<std::size_t, std::string>> near;
  for (const std::string& name : right) {
    const std::size_t distance = Distance(start, name);
    const bool few = distance <= std::max<std::size_t>(1, start.size() / 3);
    if (few || (start.size() > 3 && IsPartOf(start, name))) near.emplace_back(distance, name);
  }
  std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::string> names;
  for (const auto& entry : near) {
    if (names.size() < 3) names.push_back(entry.second);
  }
  return names;
}

std::vector<std::string> NearestValues(std::string_view wrong) {
  std::vector<std::string> names;
  for (const Value& value : Values()) names.push_back(value.FullName());
  return Nearest(wrong, names);
}

std::vector<std::string> NearestCommands(Area area, std::string_view wrong) {
  return Nearest(wrong, NamesOf(Commands(area)));
}

std::vector<std::string> NearestSignals(std::string_view wrong) { return Nearest(wrong, NamesOf(Signals())); }

}  // namespace catalog
