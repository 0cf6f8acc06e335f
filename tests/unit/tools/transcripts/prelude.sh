# SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
# SPDX-License-Identifier: MIT
# shellcheck shell=sh disable=SC2034  # used by transcripts
#
# Read before each command of a transcript, all of which run in one folder. There lies full.dat, a reply in which every
# field has a value of its own. What begins a line of a transcript:
#   #  a comment       $  a command       >  more of the command
#   |  its output      !  its messages    =  its exit status, unless 0
# After a wanted change of the output, check each changed line by hand; a failed test tells where all of today's is.

driver=/opt/vora/vora-printer-k507
cfg=$driver/cfg

# A reply of a printer that is ready, with these fields too.
reply() {
    vora-printer-sim encode --vendor Vora "$@"
}

# A reply whose only supplies record has so many data bytes, which ends the printer tool.
fatal() {
    vora-printer-sim encode --vendor Vora | head -c 36
    printf "\\001@C\\$(printf %o "$1")%0$1d" 0
}

# The driver package's list: name, model, connection type and port of each printer.
printers() {
    mkdir -p "$cfg"
    printf '[Main]\nCount=%d\n' $(($# / 4)) > "$cfg/printerlist.ini"
    i=0
    while [ $# -gt 0 ]; do
        printf '[printer_%d]\nName="%s"\nModel=%s\nConnectType=%s\nPort="%s"\nURI="vora://%s"\n' \
            "$i" "$1" "$2" "$3" "$4" "$1" >> "$cfg/printerlist.ini"
        i=$((i + 1))
        shift 4
    done
}

# The metrics with the state that it is, not with those that it is not.
metrics() {
    vora-status --prometheus | grep -v '^vora_printer_state.* 0$'
}

# The program on a terminal, whose ends of lines have a further character; an escape character is shown as "ESC".
on_terminal() {
    script -qec "$*" /dev/null | tr -d '\r' | sed 's/\x1b/ESC/g'
}

# With a library in it that stands between it and the system; an address sanitizer wants to be told.
preload() {
    library=$1
    shift
    timeout 5 env LD_PRELOAD="$library" ASAN_OPTIONS="${ASAN_OPTIONS:-}:verify_asan_link_order=0" "$@"
}

# Without the rights that root has.
unprivileged() {
    if [ "$(id -u)" -eq 0 ]; then
        setpriv --bounding-set=-all --inh-caps=-all "$@"
    else
        "$@"
    fi
}

# Plays a scenario in the background; returns when the first files are there, and the folder is told, or it has ended.
play() {
    rm -f told
    mkfifo told
    vora-printer-sim "$@" > told &
    player=$!
    read -r root < told
}

# Waits for its end, which a signal, when one is given, brings about, and shows its exit status and what it left.
end() {
    [ $# -eq 0 ] || kill -s "$1" "$player"
    wait "$player"
    echo "= $?"
    test ! -e "$cfg" || find "$cfg" -mindepth 1 -printf '%f %y\n' | sort
}
