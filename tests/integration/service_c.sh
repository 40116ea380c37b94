#!/usr/bin/env bash
# The service in C ($1), looked at, commanded and listened to with hlxctl ($2).
set -euo pipefail
service=$1 hlxctl=$2
work=$(mktemp -d)

fail() {
  echo "$*" >&2
  cat "$work"/* >&2
  exit 1
}

until_line() {  # TEXT FILE
  local _
  for _ in $(seq 100); do
    ! grep -qF -- "$1" "$2" || return 0
    sleep 0.1
  done
  fail "no \"$1\" came"
}

"$service" >"$work/service" 2>&1 &
pid=$!
until_line "service: com.vorn.linux.systemservice" "$work/service"
[ "$(ipcs -m | awk '$1 == "0xa8800081" { print $4, $5 }')" = "666 92" ] || fail "the segment has another mode or size"

"$hlxctl" monitor power >"$work/events" 2>"$work/listening" &
monitor=$!
until_line listening "$work/listening"
"$hlxctl" power set screen off
"$hlxctl" power set brightness night 20
kill -USR1 "$pid"
until_line OnAccStateChange "$work/events"
kill -INT "$monitor"
wait "$monitor" || true

events=$(grep -oE 'On(ScreenStateChange|ScreenLightLevelChanged|AccStateChange)' "$work/events" | xargs)
[ "$events" = "OnScreenStateChange OnScreenLightLevelChanged OnAccStateChange" ] || fail "other events came: $events"
"$hlxctl" power --json >"$work/power"
for value in screen=0 acc=0 brightness_day=80 brightness_night=20; do
  grep -qE "\"${value%=*}\": ?\{[^}]*\"value\": ?${value#*=}[,}]" "$work/power" || fail "the record does not say $value"
done

! "$hlxctl" power set brightness day 0 2>"$work/refused" || fail "a refused command succeeded"
until_line "in the dark" "$work/refused"
! "$hlxctl" power set full-brightness on 2>"$work/unknown" || fail "a method that is not there was obeyed"
until_line "is not implemented" "$work/unknown"

kill "$pid"
wait "$pid" || fail "the service ended with $?"
