#!/usr/bin/env bash
# Every public header by itself, and all together: C++11 and C++17, both compilers, no warning, and no GLib on the include
# path. The records' layout also as C99 and C17.
set -euo pipefail
source=$1 platform_include=$2
strict=(-Wall -Wextra -Wpedantic -Werror -fsyntax-only)
headers=("$source"/include/*.h "$source/data/HLXSystemRecords.h")
compile() {  # COMPILER STANDARD HEADER…
  printf '#include <%s>\n' "${@:3}" |
    "$1" -std="$2" "${strict[@]}" -I"$source/include" -I"$source/data" -I"$platform_include" -x c++ -
}
for header in "${headers[@]##*/}"; do
  compile g++ c++11 "$header"
  compile clang++ c++17 "$header"
done
compile g++ c++17 "${headers[@]##*/}"
compile clang++ c++11 "${headers[@]##*/}"

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
