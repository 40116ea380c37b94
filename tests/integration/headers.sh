#!/usr/bin/env bash
# Every public header by itself: C++11 and C++17, both compilers, no warning, and no GLib on the include path. The
# records' layout also as C99 and C17.
set -euo pipefail
source=$1 platform_include=$2
strict=(-Wall -Wextra -Wpedantic -Werror -fsyntax-only)
for header in "$source"/include/*.h "$source/data/HLXSystemRecords.h"; do
  for compiler in g++ clang++; do
    for standard in c++11 c++17; do
      echo "#include <$(basename "$header")>" |
        "$compiler" -std=$standard "${strict[@]}" -I"$source/include" -I"$source/data" -I"$platform_include" -x c++ -
    done
  done
done

for compiler in gcc clang; do
  for standard in c99 c17; do
    echo '#include <HLXSystemRecords.h>
      unsigned speed(const HLXMiscShmData *record) { return record->car_speed + (unsigned)(HLX_SHM_MISC_DATA_KEY & 0); }' |
      "$compiler" -std=$standard "${strict[@]}" -I"$source/data" -x c -
  done
done

# On 32-bit machines these have two sizes each: applications and platforms may be built with the other one.
if grep -nE '\b(time_t|off_t|ino_t|timespec|timeval|struct stat)\b|<(ctime|time\.h|sys/stat\.h|sys/types\.h)>' \
  "$source"/include/*.h "$source"/data/HLXSystemRecords.h "$source"/platform/*.h "$platform_include"/*.h; then
  echo "not in a header that is installed, or that a platform implements" >&2
  exit 1
fi
