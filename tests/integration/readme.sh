#!/usr/bin/env bash
# Follows the README's five minutes to the letter, against the build tree $1 installed into a scratch prefix, or, for "",
# against the installed packages. The README is in $2. What builds, installs and opens the sandbox has happened already.
set -euo pipefail
build=$1 source=$2
work=$(mktemp -d)
section=$(sed -n '/^## Five minutes/,/^## Where/p' "$source/README.md")

if [ -n "$build" ]; then
  cmake --install "$build" --prefix "$work/usr" >/dev/null
  libdir=$(dirname "$(find "$work/usr" -name libhlxsystemclient.so.1 -print -quit)")
  export PATH=$work/usr/bin:$PATH LD_LIBRARY_PATH=$libdir PKG_CONFIG_PATH=$libdir/pkgconfig
fi
fail() {
  echo "$*" >&2
  cat "$work/output" >&2
  exit 1
}

cd "$work"
# shellcheck disable=SC2016 # a fence is meant, no command
sed -n '/^```cpp/,/^```/p' <<<"$section" | sed '1d;$d' >program.cpp
# shellcheck disable=SC2016
sed '/^```/,/^```/d' <<<"$section" | sed -n 's/^    //p' >lines
[ "$(wc -l <lines)" -ge 8 ] || fail "the README has lost its command lines"

# A line's comment says what it prints; "(…)" in a line stays a command of the shell.
while IFS= read -r line; do
  case $line in scripts/* | cmake*) continue ;; esac
  eval "stdbuf -oL ${line%%  #*}" >>output 2>&1 </dev/null || fail "failed: $line"
  case $line in
    *'# the screen is on' | *'# ACC off')
      for _ in $(seq 300); do
        ! grep -qxF "${line##*# }" output || continue 2
        sleep 0.1
      done
      fail "never printed: ${line##*# }"
      ;;
  esac
done <lines
grep -q 'Screen' output || fail "hlxctl power showed no screen"
kill %2 %1
