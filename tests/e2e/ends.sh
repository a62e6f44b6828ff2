#!/usr/bin/env bash
# Shows that the scripts which source common.sh end, and end what they started, whatever that does.
# Usage: ends.sh
set -uo pipefail
here=$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")
source "$here/common.sh"

long=86399.$$ # seconds of sleep that nobody else asks for
cat >"$base/stubborn.sh" <<END
#!/usr/bin/env bash
source $here/common.sh
(trap '' TERM; exec sleep $long) & # does not listen
helpers+=(\$!)
until_true grep -qz sleep "/proc/\$!/cmdline"
sleep $long & # halted, and forgotten
kill -STOP \$!
setsid sleep $long & # in a session of its own
finish "a case"
[[ \$1 == ends ]] || sleep $long
end
END
chmod +x "$base/stubborn.sh"
# What reads the output waits for all that could write it.
runs() { # SECONDS HOW
    env -u TERRAVO_TEST LIMIT="$1" PATIENCE=1 timeout 60 "$base/stubborn.sh" "$2" 2>&1 | timeout 60 cat >"$base/said"
}
nothing_left() { ! grep -lsz "${long/8/[8]}" /proc/[0-9]*/cmdline; }

check "it passes" runs 50 ends
check "it names who did not listen" grep -q '^killed  sleep' "$base/said"
check "its case is counted" grep -qx '1 passed, 0 failed' "$base/said"
check "all that it started has ended" nothing_left
finish "a script whose programs do not end"

check "it fails" not runs 1 hangs
check "it says why" grep -qx 'ended after 1 seconds' "$base/said"
check "all that it started has ended" nothing_left
finish "a script that does not end"
end
