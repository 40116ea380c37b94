/// The rows of all areas as one table, for lookups that the compiler makes.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "catalog/MiscValues.h"
#include "catalog/OtherValues.h"
#include "catalog/PowerValues.h"

namespace catalog::rows {

template <std::size_t... N>
constexpr auto Join(const Value (&... tables)[N]) {
  std::array<Value, (N + ...)> all{};
  std::size_t next = 0;
  const auto append = [&](const Value* rows, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) all[next++] = rows[i];
  };
  (append(tables, N), ...);
  return all;
}

inline constexpr auto kAllValues = Join(power::kValues, misc::kValues, time::kValues, info::kValues, update::kValues);

/// The row's place in the table; where there is no such row, the compiler stops here.
constexpr std::size_t IndexOf(Area area, std::string_view name) {
  for (std::size_t i = 0; i < kAllValues.size(); ++i) {
    if (kAllValues[i].area == area && name == kAllValues[i].name) return i;
  }
  throw BadValue("there is no such value");
}

}  // namespace catalog::rows
