#!/bin/sh
# Stands in for the Mac's own tools where an exported script is run: sourced before the script, with
# the name of a log. Changes are written down, one a line, their words separated by the unit
# separator; apply_defaults.py makes them. Reading looks at the files as they were at the start.

log_words() {
    for word in "$@"; do
        printf '%s\037' "$word"
    done >>"$DEFAULTS_LOG"
    printf '\036' >>"$DEFAULTS_LOG"
}

defaults() {
    case $1 in
    read) python3 "$CLI_TESTS/apply_defaults.py" read "$2" "${3-}" ;;
    *) log_words defaults "$@" ;;
    esac
}

killall() {
    log_words killall "$@"
}

chflags() {
    log_words chflags "$@"
}
