#!/usr/bin/env bash
# Fails with every include that points up or across the layers, with every C++ file that lies in none
# of them, and with every header of the operating system outside of platform/.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Each layer with those that it stands on: a file includes what lies in its own and in these.
layers='
platform
engine/parallel
engine/poker
engine/game      engine/poker engine/parallel
engine/solver    engine/game engine/poker engine/parallel
session          engine platform
app              session engine platform
cli              app session engine platform
'
# C++ knows no headers with an ending. Not of the system: the vector instructions, numbers in a locale of
# their own, and a library for signatures.
harmless_headers='immintrin|locale|sodium|stdlib'

# matching PATTERN FOLDER...: the lines of C++ files there, as "file:line:text".
matching() {
    grep -rnE --include='*.h' --include='*.cpp' "$@" || true
}

# telling WHAT: its standard input under a heading, nothing for nothing.
telling() {
    local lines
    lines=$(cat)
    [[ -z $lines ]] || printf '%s:\n%s\n' "$1" "$lines"
}

without() {
    grep -vE "$1" || true
}

check_includes() {
    local layer below folders=()
    while read -r layer below; do
        [[ -n $layer ]] || continue
        folders+=("$layer")
        matching '^ *# *include *"' "$layer" | without "\"(${layer}${below:+|${below// /|}})/" |
            telling "$layer includes what is not below it"
    done <<<"$layers"
    local all
    all=$(IFS='|' && echo "${folders[*]}")
    find "${folders[@]%%/*}" \( -name '*.h' -o -name '*.cpp' \) | sort -u | without "^($all)/" |
        telling "in no layer"
}

check_headers() {
    matching '^ *# *include *<([a-z0-9_/]+\.h|csignal)>' app cli engine session |
        without "<($harmless_headers)\.h>" | telling "calls of the operating system belong to platform/"
    matching '^ *# *include *<Q' platform engine session | telling "nothing below app/ knows Qt"
}

complaints=$(
    check_includes
    check_headers
)
if [[ -n $complaints ]]; then
    echo "$complaints" >&2
    exit 1
fi
