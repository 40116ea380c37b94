#!/usr/bin/env bash
# Records through a real zlog: level, source, operation and text. SIMULATOR APPLICATION, as for end_to_end.sh.
set -euo pipefail
cat >/tmp/zlog.conf <<'END'
[formats]
record = "%V %F:%U %m%n"
[rules]
hlx-system-client.* "/tmp/hlx.log"; record
END
export HLX_HOST_ZLOG_CONF=/tmp/zlog.conf
"$(dirname "${BASH_SOURCE[0]}")/end_to_end.sh" "$@"
cat /tmp/hlx.log
grep -qx "INFO data/HLXSystemData:SystemShmDataBase system share data:power_client" /tmp/hlx.log
grep -qx "WARN data/HLXSystemData:InitPowerShmData Read PERSIST_ID_SCREEN_DAY_LEVEL fail:PERSIST_ERROR_DATA_NOT_FOUND" /tmp/hlx.log
