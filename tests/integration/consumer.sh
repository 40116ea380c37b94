#!/usr/bin/env bash
# Installs the build tree given as $1 into a scratch prefix, then configures, builds and runs the separate consumer
# project against it: once through the CMake package, once through pkg-config.
set -euo pipefail
build=$1 source=$2
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT

cmake --install "$build" --prefix "$prefix/usr" >/dev/null
cmake -G Ninja -S "$source/tests/consumer" -B "$prefix/build" -DCMAKE_PREFIX_PATH="$prefix/usr" >/dev/null
cmake --build "$prefix/build" >/dev/null

libdir=$(dirname "$(find "$prefix/usr" -name 'libhlxsystemclient.so.1' -print -quit)")
export PKG_CONFIG_PATH=$libdir/pkgconfig
# The .pc file names the configured prefix; pkg-config is told where it went instead.
flags=$(pkg-config --define-variable=prefix="$prefix/usr" --cflags --libs hlx-system-client)
# shellcheck disable=SC2086 # flags are words
${CXX:-c++} -std=c++11 "$source/tests/consumer/main.cpp" -o "$prefix/consumer" $flags

for program in "$prefix/build/consumer" "$prefix/consumer"; do
  output=$(LD_LIBRARY_PATH=$libdir "$program")
  echo "$program: $output"
  [ "$output" = "radio state 16, listeners 1" ]
done

for file in include/hlx-system-client/HLXMutex.h include/hlx-system-client/dbus_system.h \
            share/dbus-1/interfaces/com.vorn.linux.system.xml bin/hlxctl bin/hlx-simulator; do
  [ -e "$prefix/usr/$file" ] || { echo "not installed: $file" >&2; exit 1; }
done
