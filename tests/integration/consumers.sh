#!/usr/bin/env bash
# What the build tree $1 installs, as others use it: staged by DESTDIR, moved afterwards, then used through the CMake
# package and through pkg-config, by both compilers, as C++11 and C++17, by the author of a service in C, and by Qt.
set -euo pipefail
build=$1 source=$2
scratch=$(mktemp -d)
moved=$scratch/moved
trap 'rm -rf "$scratch"' EXIT

DESTDIR=$scratch/stage cmake --install "$build" --prefix /opt/hlx >/dev/null
mv "$scratch/stage/opt/hlx" "$moved"
left=$(find "$scratch/stage" -type f)
[ -z "$left" ] || { echo "installed outside the prefix: $left" >&2; exit 1; }

version=$(sed -n 's/^project(.* VERSION \([0-9.]*\) .*/\1/p' "$source/CMakeLists.txt")
libdir=$(dirname "$(find "$moved" -name libhlxsystemclient.so.1)")
for file in include/hlx-system-client/{HLXSystemProxy,HLXVersion,HLXMutex,dbus_system}.h \
            share/dbus-1/interfaces/com.vorn.linux.{system,simulator}.xml bin/hlx{ctl,-simulator} lib/systemd/user/hlx-simulator.service \
            share/hlx-system-client/platform.conf.sample share/doc/hlx-system-client/{LICENSE,README.md,docs/behaviour.md,examples/hmi/main.cpp}; do
  [ -s "$moved/$file" ] || { echo "not installed: $file" >&2; exit 1; }
done
! grep -rlF "$build" "$moved" --include='*.pc' --include='*.cmake' --include='*.h' --include='*.service' ||
  { echo "names the build tree" >&2; exit 1; }
[ "$("$moved/bin/hlxctl" --version)" = "hlxctl $version" ]

expect() { # OUTPUT PROGRAM
  local output
  output=$(LD_LIBRARY_PATH=$libdir "$2" 2>"$scratch/errors")
  [ "$output" = "$1" ] || { echo "$2: expected \"$1\", got \"$output\"" >&2; exit 1; }
}
export PKG_CONFIG_PATH=$libdir/pkgconfig CXXFLAGS="-Wall -Wextra -Wpedantic -Werror"
[ "$(pkg-config --modversion hlx-system-service)" = "$version" ]
client=$(pkg-config --cflags --libs hlx-system-client) service=$(pkg-config --cflags --libs hlx-system-service)
for compilers in "g++ gcc" "clang++ clang"; do
  read -r CXX CC <<<"$compilers"
  export CXX CC
  for standard in 11 17; do
    tree=$scratch/$CXX-$standard
    cmake -G Ninja -S "$source/examples/consumer" -B "$tree" -DCMAKE_PREFIX_PATH="$moved" -DCMAKE_CXX_STANDARD=$standard \
      --log-level=WARNING >/dev/null
    cmake --build "$tree" >"$tree/log" || { cat "$tree/log" >&2; exit 1; }
    # shellcheck disable=SC2086 # flags are words
    {
      $CXX -std=c++$standard $CXXFLAGS "$source/examples/consumer/main.cpp" -o "$tree/consumer.pc" $client
      $CC -std=c99 "$source/examples/consumer/service.c" -o "$tree/service.pc" $service
    }
    for how in "" .pc; do
      expect "radio state 16, listeners 1" "$tree/consumer$how"
      expect "skeleton of com.vorn.linux.system" "$tree/service$how"
    done
    echo "$CXX, C++$standard: CMake package and pkg-config"
  done
done

# An event arrives in Qt's event loop, and a command from its worker at the service.
cmake -G Ninja -S "$source/examples/qt" -B "$scratch/qt" -DCMAKE_PREFIX_PATH="$moved" --log-level=WARNING >/dev/null
cmake --build "$scratch/qt" >/dev/null
trap 'kill $(jobs -p) 2>/dev/null; rm -rf "$scratch"' EXIT
"$moved/bin/hlx-simulator" >"$scratch/service" 2>&1 &
gdbus wait --session --timeout 10 com.vorn.linux.systemservice
QT_QPA_PLATFORM=offscreen "$scratch/qt/statusbar" --dim 33 >"$scratch/shown" 2>&1 &
shows() {
  for _ in $(seq 200); do
    ! grep -qx "shown: $1" "$scratch/shown" || return 0
    sleep 0.05
  done
  echo "the status bar never showed \"$1\":" >&2
  cat "$scratch/shown" "$scratch/service" >&2
  exit 1
}
shows "ACC on"
shows "brightness 33"
"$moved/bin/hlx-simulator" emit AccStateChangeSignal false
shows "ACC off"
echo "Qt: events and commands"

# An application's tests, each with a unit around it.
cmake -G Ninja -S "$source/examples/hmi-test" -B "$scratch/hmi-test" -DCMAKE_PREFIX_PATH="$moved" --log-level=WARNING >/dev/null
cmake --build "$scratch/hmi-test" >/dev/null
LD_LIBRARY_PATH=$libdir ctest --test-dir "$scratch/hmi-test" --output-on-failure >"$scratch/tests" ||
  { cat "$scratch/tests" >&2; exit 1; }
echo "tests of an application with GoogleTest and pytest"
