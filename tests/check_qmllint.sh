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
# The one of Qt 6.4 dies of a signal now and then, on documents that it reads to the end the next time.
# Then it has said nothing about them; what it has to say, it says with a lower exit code.
for _ in 1 2 3; do
    code=0
    "$1" --unused-imports warning --multiline-strings warning -I "$2" "${files[@]}" || code=$?
    ((code >= 128)) || break
done
exit "$code"
