#!/usr/bin/env bash
# What the shared library exports: the entry points, the whole generated D-Bus interface, and nothing of its inside.
set -euo pipefail
library=$1 header=$2
exported=$(nm --dynamic --defined-only --demangle "$library" | sed 's/^[^ ]* [^ ]* //; s/@.*//' | sort -u)

unexpected=$(grep -vE '^(HLX_[A-Za-z]+\(\)|com_vorn_linux_system_[a-z0-9_]+|(typeinfo|typeinfo name|vtable) for IHLX.*|HLX_SYSTEM_CLIENT_1)$' \
  <<<"$exported" || true)
[ -z "$unexpected" ] || { echo "exported by mistake:"; echo "$unexpected"; exit 1; } >&2

for name in StartSystemProxy GetSystemInfoProxy GetSystemPowerProxy GetSystemMiscProxy GetSystemTimeProxy \
            GetSystemUpdateProxy ReleaseSystemProxy GetLastCallError; do
  grep -qx "HLX_$name()" <<<"$exported" || { echo "missing: HLX_$name" >&2; exit 1; }
done

# Each function that the generated header declares.
declared=$(grep -oE '\bcom_vorn_linux_system_[a-z0-9_]+ \(' "$header" | tr -d ' (' | sort -u)
[ "$(wc -l <<<"$declared")" -gt 290 ]
missing=$(comm -23 <(echo "$declared") <(echo "$exported"))
[ -z "$missing" ] || { echo "declared but not exported:"; echo "$missing"; exit 1; } >&2
