# SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
# SPDX-License-Identifier: MIT
#
# What the scripts of this folder have in common.

# run_cases NAME...: calls these functions, each in a shell of its own that ends at the first command that fails.
run_cases()
{
    local name log
    log=$(mktemp)
    for name in "$@"; do
        (set -eE; trap 'echo "line $LINENO: $BASH_COMMAND" >&2' ERR; "$name") >"$log" 2>&1 &
        if wait $!; then
            echo "PASS   : package::$name()"
        else
            echo "FAIL!  : package::$name()"
            sed 's/^/   /' "$log"
        fi
    done
    rm -f "$log"
}

# wait_until SECONDS COMMAND [ARGUMENT...]: false when the command has not come true by then.
wait_until()
{
    local end=$((SECONDS + $1))
    shift
    until "$@" >/dev/null; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.1
    done
}
