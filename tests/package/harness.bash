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

# count_cases FILE: counts what run_cases said, and is false when anything failed.
count_cases()
{
    local failed
    failed=$(grep -c '^FAIL!' "$1" || true)
    echo "Totals: $(grep -c '^PASS ' "$1") passed, $failed failed, 0 skipped, 0 blacklisted, 0ms"
    [ "$failed" -eq 0 ]
}

# copy_tree SOURCE FOLDER DATE: a copy that seems to have been made then.
copy_tree()
{
    mkdir "$2"
    tar -c -C "$1" --mtime="$3" --exclude-vcs --exclude='./build*' . | tar -x -C "$2"
}

# build_packages TREE FOLDER [OPTION...]: ends the script when the tree does not build.
build_packages()
{
    local log
    log=$(mktemp)
    if ! "$1/packaging/build-deb" "${@:3}" "$2" >"$log" 2>&1; then
        cat "$log"
        echo "FAIL!  : package::build()"
        echo "Totals: 0 passed, 1 failed, 0 skipped, 0 blacklisted, 0ms"
        exit 1
    fi
    rm -f "$log"
}
