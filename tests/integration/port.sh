#!/usr/bin/env bash
# The library on a platform outside the tree, a copy of the template: built, linked into an application, run. $1 is the
# checkout; for scripts/sandbox, whose /tmp is scratch. It needs no newer GLib than documented.
set -euo pipefail
source=$1 port=/tmp/port
cp -r "$source/platform/template" $port
options=(-G Ninja -DHLX_PLATFORM="$port" -DHLX_BUILD_TESTS=OFF -DHLX_BUILD_TOOLS=OFF
         -DCMAKE_CXX_FLAGS="-Werror -DGLIB_VERSION_MIN_REQUIRED=GLIB_VERSION_2_66 -DGLIB_VERSION_MAX_ALLOWED=GLIB_VERSION_2_66")

if refusal=$(cmake -S "$source" -B /tmp/refused "${options[@]}" -DHLX_ZLOG=on -DZLOG_LIBRARY= 2>&1); then
  echo "configured for a zlog that is not there" >&2
  exit 1
fi
grep -q "HLX_ZLOG=on, but there is no zlog.h" <<<"$refusal"

cmake -S "$source" -B /tmp/build "${options[@]}" -DHLX_ZLOG=off >/tmp/configured
grep "^-- zlog: " /tmp/configured
cmake --build /tmp/build --target hlxsystemclient >/tmp/log || { cat /tmp/log >&2; exit 1; }
c++ -std=c++11 "$source/examples/consumer/main.cpp" -I"$source/include" -I/tmp/build/include -I$port/include \
  -o /tmp/application -L/tmp/build/client -lhlxsystemclient
output=$(LD_LIBRARY_PATH=/tmp/build/client /tmp/application | grep -v "Log system not init")
echo "$output"
[ "$output" = "radio state 16, listeners 1" ]
