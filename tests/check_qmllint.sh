#!/usr/bin/env bash
# check_qmllint.sh QMLLINT MODULES: fails with what qmllint finds in the documents of the program and
# of its tests. MODULES is the folder of the built modules.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
mapfile -t files < <(find qml tests/qml tools -name '*.qml' -type f | sort)
if ((${#files[@]} == 0)); then
    echo "no document found" >&2
    exit 1
fi
exec "$1" --unused-imports warning --multiline-strings warning -I "$2" "${files[@]}"
