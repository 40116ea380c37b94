#!/usr/bin/env bash
# hlx-simulator run: what the command finds, exit codes, signals, ten at once, and what is left behind.
# shellcheck disable=SC2016 # what stands in single quotes is for the shell inside
set -euo pipefail
simulator=$1
export G_DEBUG=fatal-criticals
scratch=$(mktemp -d)
cd "$scratch"
failures=0
fail() { echo "FAILED: $*" >&2 && failures=$((failures + 1)); }

expect() { # CODE PATTERN ARGUMENT…: run must end so, and print a line that fits the pattern, or nothing for ""
  local code=0 output
  output=$(timeout 60 "$simulator" run "${@:3}" 2>&1 </dev/null) || code=$?
  [ $code -eq "$1" ] || fail "${*:3}: exit status $code, not $1: $output"
  grep -qE "${2:-^\$}" <<<"$output" || fail "${*:3}: no \"$2\" in: $output"
}
export HLX_HOST_CONFIG=$2/platform/host/platform.conf.sample

expect 0 "" -- true
expect 7 "" --fresh -- sh -c 'exit 7'
expect 137 "" -- sh -c 'kill -9 $$'
expect 127 "run: /nowhere: No such file" -- /nowhere
expect 2 "run takes -- COMMAND"
expect 2 "there is no option --frsh" --frsh -- true
expect 124 "run: 0.5 s are over" --timeout 0.5 -- sleep 60
expect 124 "run: 1 s are over" --timeout 1 -- sh -c 'trap "" TERM; while :; do sleep 1; done'
for time in nan 0 -1 inf 1e300 soon; do
  expect 2 "'$time' is no time above 0 and up to 86400 seconds" --timeout "$time" -- true
done
expect 125 "nowhere/journal.log: No such file" --log /proc/nowhere -- true
expect 125 "there is no display" --display -- true
expect 126 "the unit has died" -- sh -c 'kill -9 $(pidof hlx-simulator | tr " " "\n" | sort -n | tail -1); sleep 60'

# What is the unit's is scratch, what is the command's is there.
echo mine >file
expect 0 '^mine sys_version.conf on 2 inserted-nowhere$' --fresh -- sh -c '
  "$0" set power.power_off_delay 2
  rm /etc/localtime && ln -s /usr/share/zoneinfo/Asia/Tokyo /etc/localtime && mkdir /media/usbstorage0 /data/update
  echo "$(cat file) $(ls /app/etc) $("$0" get power.acc) $("$0" get power.power_off_delay) inserted-nowhere"' "$simulator"
for changed in /data/update /media/usbstorage0; do [ ! -e "$changed" ] || fail "$changed was made outside"; done
[ "$(readlink /etc/localtime)" != /usr/share/zoneinfo/Asia/Tokyo ] || fail "/etc/localtime was changed"
expect 0 '^20 ' --fresh -- sh -c 'echo "$("$0" get power.power_off_delay) $(pidof sleep | wc -w)"' "$simulator"

expect 0 '^CAN.upg md5.txt update.zip$' --fresh -- sh -c '
  "$0" stick insert can-file; a=$(ls /media/usbstorage0); "$0" stick insert good; echo "$a" $(ls /media/usbstorage0)' "$simulator"

expect 0 '^mine 1$' --fresh -- sh -c '
  mkdir stick && echo mine >stick/file && "$0" stick insert "$PWD/stick" && a=$(cat /media/usbstorage0/file) && "$0" stick remove
  "$0" calls >/dev/null; [ -e /media/usbstorage0 ] || echo "$a $(find /media -mindepth 1 -maxdepth 1 | wc -l)"' "$simulator"
while IFS='|' read -r code said words; do
  expect "$code" "hlx-simulator: $said" -- sh -c '"$0" stick $1' "$simulator" "$words"
done <<'END'
1|stick: there is none|remove
2|there is no kind of stick 'goood'; did you mean good|insert goood
2|stick: there is no directory /nowhere|insert /nowhere
2|stick: / holds the unit's own /media|insert /
END
expect 1 "stick: taken out" -- sh -c '"$0" stick insert /proc & sleep 0.5; "$0" stick remove && wait $!' "$simulator"
mkdir -m 0 locked
expect 1 "stick: cp: .*Permission denied" -- sh -c '"$0" stick insert "$PWD/locked"' "$simulator"
expect 1 "stick: /media is the machine's here" -- sh -c 'rm /media/.hlx-sandbox && "$0" stick remove' "$simulator"

expect 0 '^Parked done$' --fresh --scenario parking -- sh -c '
  sleep 0.2; "$0" play parking --speed 0 --wait && "$0" status | sed -n "s/^label *//p; s/^state *//p" | sort | tr "\n" " " | sed "s/ $//"' "$simulator"
expect 125 "there is no file and no scenario 'parkin'; did you mean parking" --scenario parkin -- true

# What applications sent is in the log.
service=com.vorn.linux.systemservice
expect 0 '^\(\)$' --log called -- gdbus call --session -d $service -o /${service//.//} -m com.vorn.linux.system.SetLogo 5
for log in calls.jsonl capture.jsonl; do
  grep -qE '"call":"SetLogo","args":(\{"nLogo":5\}|\[5\]),"sender":":1' called/$log || fail "the call is not in $log: $(cat called/$log)"
done

# Signals are for the command, whose own answer to them counts.
"$simulator" run -- sh -c 'trap "exit 5" USR1; touch ready; while :; do sleep 0.05; done' &
until [ -e ready ]; do sleep 0.05; done
kill -USR1 $!
code=0
wait $! || code=$?
[ $code -eq 5 ] || fail "a signal: exit status $code, not 5"

# Ten side by side see their own unit only.
for i in $(seq 10); do
  "$simulator" run --fresh --log "log$i" -- sh -c '
    "$0" set misc.car_speed $1 && sleep 0.5 && [ "$("$0" get misc.car_speed)" = $1 ]' "$simulator" $((i * 10)) &
  pids[i]=$!
done
for i in $(seq 10); do
  wait "${pids[i]}" || fail "number $i of ten"
  grep -q "\"signal\":\"CarSpeedChangeSignal\",\"args\":\[$((i * 10))\]" "log$i/capture.jsonl" || fail "capture of number $i"
  grep -q "^emit CarSpeedChangeSignal(speed=$((i * 10)))" "log$i/journal.log" || fail "journal of number $i"
done

# Nothing is left of one that is killed.
processes() { (cd /proc && set -- [0-9]* && echo $#); }
before=$(processes)
"$simulator" run --fresh -- sh -c 'touch running; sleep 60' &
until [ -e running ]; do sleep 0.05; done
kill -9 $!
wait $! || true
for _ in $(seq 100); do
  [ "$(processes)" -gt "$before" ] || break
  sleep 0.05
done
[ "$(processes)" -le "$before" ] || fail "left behind: $(ps ax)"

# Without namespaces.
mkdir bin
for program in bash sh setpriv sleep timeout grep dbus-run-session dbus-daemon true; do ln -s "$(type -P $program)" bin/; done
PATH=$scratch/bin expect 125 "does not give the program bwrap.*/etc/localtime. --on-this-machine" -- true
PATH=$scratch/bin expect 0 "" --on-this-machine -- true

exit $((failures > 0))
