/// Names that somebody typed.
#pragma once

#include <string>
#include <vector>

#include "catalog/Catalog.h"

/// "there is no signal X; did you mean Y or Z?": to be thrown.
inline catalog::BadValue Unknown(const std::string& kind, const std::string& name,
                                 const std::vector<std::string>& nearest) {
  std::string text = "there is no " + kind + " '" + name + "'";
  for (std::size_t i = 0; i < nearest.size(); ++i) {
    text += (i == 0 ? "; did you mean " : i + 1 == nearest.size() ? " or " : ", ") + nearest[i];
  }
  return catalog::BadValue(nearest.empty() ? text : text + "?");
}

/// The same with the nearest of all that is `right`, or with all when none is near.
inline catalog::BadValue UnknownAmong(const std::string& kind, const std::string& name,
                                      const std::vector<std::string>& right) {
  const std::vector<std::string> nearest = catalog::Nearest(name, right);
  return Unknown(kind, name, nearest.empty() ? right : nearest);
}
