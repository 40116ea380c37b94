#!/usr/bin/env bash
# The simulated unit and an application on one bus: a command goes out, its event comes back. Also for programs of another
# machine, which run in an emulator: SIMULATOR APPLICATION [EMULATOR…]
set -euo pipefail
simulator=$1 application=$2
emulator=("${@:3}")
log=$(mktemp)  # a file of its own: what an earlier run left would already tell of the event
trap 'rm "$log"' EXIT

"${emulator[@]}" "$simulator" --quiet &
gdbus wait --session --timeout 30 com.vorn.linux.systemservice
"${emulator[@]}" "$application" >"$log" &
for _ in {1..300}; do
  ! grep -qx "event: the screen's day brightness is 60" "$log" || break
  sleep 0.1
done
kill %2
wait %2
cat "$log"
grep -qx "event: the screen's day brightness is 60" "$log"
grep -qx bye "$log"
kill %1
wait %1
