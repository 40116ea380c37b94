/// The eleven versions of a unit or of a package.
#pragma once

#include "tools/hlxctl/Area.h"

/// A field for each version that `get` gives.
template <class GetVersions>
void AddVersionFields(std::vector<Field>& fields, GetVersions get) {
  using V = SystemInfo::VersionInfo;
  struct Row {
    const char* name;
    const char* label;
    std::string V::*text;
  };
  constexpr Row kRows[] = {
      {"arm_version", "Software version", &V::arm_version},
      {"arm_internal_version", "Software version, internal", &V::arm_internal_version},
      {"hardware_version", "Hardware version", &V::hardware_version},
      {"serial_number", "Serial number", &V::serial_number},
      {"drawing_code", "Drawing code", &V::drawing_code},
      {"build_time", "Build time", &V::build_time},
      {"production_date", "Production date", &V::production_date},
      {"project_name", "Project", &V::project_name},
      {"mcu_build_time", "MCU build time (file)", &V::mcu_build_time},
      {"mcu_file_version", "MCU version (file)", &V::mcu_version},
      {"mcu_internal_version", "MCU version, internal (file)", &V::mcu_internal_version},
  };
  for (const Row& row : kRows) {
    fields.push_back({row.name, row.label, [get, text = row.text] {
                        V versions;
                        get(versions);
                        return Text{}(versions.*text);
                      }});
  }
}
