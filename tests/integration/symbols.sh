#!/usr/bin/env bash
# What the shared library exports: the entry points, the whole generated D-Bus interface, and nothing of its inside.
set -euo pipefail
library=$1 header=$2
exported=$(nm --dynamic --defined-only --demangle "$library" | sed 's/^[^ ]* [^ ]* //; s/@.*//' | sort -u)

functions=(StartSystemProxy\(\) GetSystem{Info,Power,Misc,Time,Update}Proxy\(\) ReleaseSystemProxy\(\)
           GetLastCallError\(\) SetCallTimeout\(int\) {Add,Remove}ConnectionListener\(IHLXConnectionListener\*\)
           IsServiceConnected\(\) GetVersion\(\))
diff <(printf 'HLX_%s\n' "${functions[@]}" | sort) <(grep '^HLX_[A-Za-z]' <<<"$exported" | grep -vx HLX_SYSTEM_CLIENT_1) ||
  { echo "not the entry points" >&2; exit 1; }

unexpected=$(grep -vE '^(HLX_.*|com_vorn_linux_system_[a-z0-9_]+|(typeinfo|typeinfo name|vtable) for IHLX.*)$' \
  <<<"$exported" || true)
[ -z "$unexpected" ] || { echo "exported by mistake:"; echo "$unexpected"; exit 1; } >&2

# Each function that the generated header declares.
declared=$(grep -oE '\bcom_vorn_linux_system_[a-z0-9_]+ \(' "$header" | tr -d ' (' | sort -u)
[ "$(wc -l <<<"$declared")" -gt 290 ]
missing=$(comm -23 <(echo "$declared") <(echo "$exported"))
[ -z "$missing" ] || { echo "declared but not exported:"; echo "$missing"; exit 1; } >&2
